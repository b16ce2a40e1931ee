#include "app/simulator/simulator.h"

#include <algorithm>
#include <utility>
#include <variant>

namespace ostrel {

Simulator::Simulator(const Scenario& scenario, MakeUuid makeUuid, EventLog::Print print)
    : scenario_(scenario),
      makeUuid_(std::move(makeUuid)),
      platform_(scenario.timeZone, wallTimeOf(scenario.start, scenario.timeZone)),
      events_(
          platform_, [this] { return inSeconds(sinceStart()); }, std::move(print)) {
    for (const auto& [key, bytes] : scenario_.preferences) {
        platform_.preferences.write(key, bytes);
    }
    platform_.displays.set(scenario_.displays.displays, scenario_.displays.mainID);
    platform_.motion.setReduceMotion(scenario_.reduceMotion);
    platformEvents_ = events_.watchPlatform();
}

Simulator::~Simulator() = default;

RunLoopClock::duration Simulator::sinceStart() const {
    return platform_.runLoop.now().time_since_epoch() + notRunning_;
}

RunLoopTime Simulator::runLoopTimeAt(double at) const {
    return RunLoopTime{runLoopSec(at) - notRunning_};
}

void Simulator::run() {
    launch();
    for (const Step& step : scenario_.steps) {
        if (step.at > scenario_.durationSec) {
            break;
        }
        platform_.runLoop.runUpTo(runLoopTimeAt(step.at));
        std::visit([this](const auto& action) { perform(action); }, step.action);
    }
    platform_.runLoop.runUntil(runLoopTimeAt(scenario_.durationSec));
    events_.printEnd();
    environmentEvents_.clear();
}

void Simulator::launch() {
    environment_ = std::make_unique<AppEnvironment>(platform_.platform(makeUuid_));
    environment_->launch();
    events_.print("launched", {{"settings", asJson(*environment_->settingsStore().settings())}});
    environmentEvents_ = events_.watch(*environment_);
}

void Simulator::quit() {
    environment_->quit();
    events_.print("quit");
    environmentEvents_.clear();
    environment_.reset();
}

// Time goes by while nothing runs, but not past the end.
void Simulator::pass(double seconds) {
    const auto length =
        std::min(runLoopSec(seconds), runLoopSec(scenario_.durationSec) - sinceStart());
    platform_.runLoop.shiftWallClock(length);
    notRunning_ += length;
}

void Simulator::perform(const step::SetDisplays& set) {
    platform_.displays.set(set.displays.displays, set.displays.mainID);
}

void Simulator::perform(const step::SetUser& set) {
    if (!set.isAway) {
        platform_.inputIdle.setReading(nullptr);
        return;
    }
    platform_.inputIdle.setReading(
        [this, since = sinceStart()] { return inSeconds(sinceStart() - since); });
}

void Simulator::perform(const step::SetIdle& set) {
    platform_.inputIdle.setReading([seconds = set.seconds] { return seconds; });
}

void Simulator::perform(const step::SetFrontmost& set) {
    platform_.frontmost.set(set.application);
}

void Simulator::perform(const step::SetWindows& set) {
    platform_.windows.set(set.windows);
}

void Simulator::perform(const step::SetAssertions& set) {
    platform_.assertions.set(set.assertions);
}

void Simulator::perform(const step::Announce& announce) {
    platform_.announcements.announced.send(announce.announcement);
}

void Simulator::perform(const step::PressHotkey& press) {
    const auto& bound = *environment_->hotkeyRouter()->boundChords();
    const HotkeyChord chord =
        press.action == HotkeyRouter::Action::startBreak ? bound->startBreak : bound->togglePause;
    if (!environment_->hotkeyRouter()->isRegistered(press.action) ||
        !platform_.hotkeys.press(chord.keyCode, chord.modifiers)) {
        events_.print("press.refused", {{"on", "hotkey"}, {"action", nameOf(press.action)}});
    }
}

void Simulator::perform(const step::ValidateChord& validate) {
    const auto result = HotkeyRouter::validate(validate.chord);
    const bool hasLabel = !result.label.empty();
    events_.print("chord", {{"result", nameOf(result.kind)},
                            {"label", hasLabel ? Json(result.label) : Json()}});
}

void Simulator::perform(const step::Sleep& sleep) {
    platform_.systemEvents.willSleep.send();
    pass(sleep.seconds);
    platform_.systemEvents.didWake.send();
    platform_.runLoop.runOverdueWallTimers();
}

void Simulator::perform(const step::ShiftClock& shift) {
    platform_.runLoop.shiftWallClock(WallClock::duration{shift.seconds});
    platform_.systemEvents.clockChanged.send();
}

void Simulator::perform(const step::SetTimeZone& zone) {
    platform_.timeZone = zone.name;
    platform_.systemEvents.clockChanged.send();
}

void Simulator::perform(const step::BecomeActive& /*become*/) {
    platform_.systemEvents.didBecomeActive.send();
}

void Simulator::perform(const step::ChangeSettings& change) {
    environment_->settingsStore().update([&change](SettingsModel& settings) {
        forEachField<SettingsModel>([&]<class Value>(const Field<SettingsModel, Value>& field) {
            const auto found = change.fields.find(field.key);
            if (found != change.fields.end()) {
                settings.*field.member = *JsonCodec<Value>::decode(*found);
            }
        });
    });
}

void Simulator::perform(const step::ApplyPreset& apply) {
    environment_->timerEngine().applyPreset(*PresetCatalog::find(apply.id));
}

void Simulator::perform(const step::Pause& pause) {
    environment_->timerEngine().pauseByUser(pause.duration);
}

void Simulator::perform(const step::Resume& /*resume*/) {
    environment_->timerEngine().endPause(PauseReason::user);
}

void Simulator::perform(const step::StartNow& start) {
    environment_->timerEngine().startNow(start.kind);
}

void Simulator::perform(const step::PressKey& press) {
    const KeyOutcome outcome = environment_->overlayManager().handleKey(press.keyCode);
    events_.print("overlay.key", {{"keyCode", press.keyCode}, {"outcome", nameOf(outcome)}});
}

void Simulator::perform(const step::PressOverlay& press) {
    if (!environment_->overlayManager().press(press.action)) {
        events_.print("press.refused", {{"on", "overlay"}, {"action", nameOf(press.action)}});
    }
}

void Simulator::perform(const step::PressToast& press) {
    ToastDispatcher& toasts = environment_->toastDispatcher();
    const auto& current = *toasts.currentToast();
    const bool isToast = current && !toasts.isCard(*current);
    if (isToast && press.actionID == "dismiss") {
        toasts.dismiss();
    } else if (!isToast || !toasts.press(press.actionID)) {
        events_.print("press.refused", {{"on", "toast"}, {"action", press.actionID}});
    }
}

void Simulator::perform(const step::AnswerNotification& answer) {
    platform_.notifications.respond(answer.response);
}

void Simulator::perform(const step::Relaunch& relaunch) {
    quit();
    pass(relaunch.afterSec);
    launch();
}

void Simulator::perform(const step::FailEncoding& failing) {
    platform_.preferences.setEncoding(failing.fails ? MemoryPreferences::Encoding::fails
                                                    : MemoryPreferences::Encoding::works);
}

void Simulator::perform(const step::PrintReport& report) {
    events_.printReport(*environment_, report.range);
}

void Simulator::perform(const step::Snapshot& snapshot) {
    events_.printSnapshot(*environment_, snapshot.label ? Json(*snapshot.label) : Json());
}

}  // namespace ostrel
