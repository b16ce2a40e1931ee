#include "app/simulator/simulator.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace ostrel {
namespace {

using namespace std::chrono_literals;

constexpr double kNanosecondsPerSec = 1e9;

RunLoopClock::duration runLoopSec(double seconds) {
    return std::chrono::round<RunLoopClock::duration>(std::chrono::duration<double>(seconds));
}

}  // namespace

Simulator::Simulator(const Scenario& scenario, MakeUuid makeUuid, EventLog::Print print)
    : scenario_(scenario),
      makeUuid_(std::move(makeUuid)),
      platform_(scenario.timeZone, wallTimeOf(scenario.start, scenario.timeZone)),
      events_(
          platform_,
          [this] {
              return static_cast<double>(platform_.runLoop.now().time_since_epoch().count()) /
                         kNanosecondsPerSec +
                     notRunningSec_;
          },
          std::move(print)) {
    for (const auto& [key, bytes] : scenario_.preferences) {
        platform_.preferences.write(key, bytes);
    }
    platform_.displays.set(scenario_.displays.displays, scenario_.displays.mainID);
    platform_.motion.setReduceMotion(scenario_.reduceMotion);
    platformEvents_ = events_.watchPlatform();
}

Simulator::~Simulator() = default;

RunLoopTime Simulator::runLoopTimeAt(double at) const {
    return RunLoopTime{} + runLoopSec(at - notRunningSec_);
}

void Simulator::run() {
    launch();
    for (const Step& step : scenario_.steps) {
        if (step.at > scenario_.durationSec) {
            break;
        }
        platform_.runLoop.runUpTo(runLoopTimeAt(step.at));
        perform(step.action);
    }
    platform_.runLoop.runUntil(runLoopTimeAt(scenario_.durationSec));
    events_.printEnd();
    environmentEvents_.clear();
}

void Simulator::launch() {
    environment_ = std::make_unique<AppEnvironment>(platform_.platform(makeUuid_));
    environment_->launch();
    events_.print("launched", {{"settings", JsonCodec<SettingsModel>::encode(
                                                *environment_->settingsStore().settings())}});
    environmentEvents_ = events_.watch(*environment_);
}

void Simulator::quit() {
    environment_->quit();
    events_.print("quit");
    environmentEvents_.clear();
    environment_.reset();
}

// Time goes by while nothing runs.
void Simulator::pass(double seconds) {
    platform_.runLoop.shiftWallClock(WallClock::duration{seconds});
    notRunningSec_ += seconds;
}

double Simulator::untilEnd(double seconds) const {
    const double now = static_cast<double>(platform_.runLoop.now().time_since_epoch().count()) /
                           kNanosecondsPerSec +
                       notRunningSec_;
    return std::min(seconds, scenario_.durationSec - now);
}

void Simulator::perform(const StepAction& action) {
    struct Performer {
        Simulator& self;

        void operator()(const step::SetDisplays& set) const {
            self.platform_.displays.set(set.displays.displays, set.displays.mainID);
        }
        void operator()(const step::Sleep& sleep) const {
            self.platform_.systemEvents.willSleep.send();
            self.pass(self.untilEnd(sleep.seconds));
            self.platform_.systemEvents.didWake.send();
            self.platform_.runLoop.runOverdueWallTimers();
        }
        void operator()(const step::ShiftClock& shift) const {
            self.platform_.runLoop.shiftWallClock(WallClock::duration{shift.seconds});
            self.platform_.systemEvents.clockChanged.send();
        }
        void operator()(const step::SetTimeZone& zone) const {
            self.platform_.timeZone = zone.name;
            self.platform_.systemEvents.clockChanged.send();
        }
        void operator()(const step::ChangeSettings& change) const {
            self.environment_->settingsStore().update([&change](SettingsModel& settings) {
                forEachField<SettingsModel>(
                    [&]<class Value>(const Field<SettingsModel, Value>& field) {
                        if (const auto found = change.fields.find(field.key);
                            found != change.fields.end()) {
                            settings.*field.member = *JsonCodec<Value>::decode(*found);
                        }
                    });
            });
        }
        void operator()(const step::ApplyPreset& apply) const {
            self.environment_->timerEngine().applyPreset(*PresetCatalog::find(apply.id));
        }
        void operator()(const step::Pause& pause) const {
            self.environment_->timerEngine().pauseByUser(pause.duration);
        }
        void operator()(const step::Resume&) const {
            self.environment_->timerEngine().endPause(PauseReason::user);
        }
        void operator()(const step::StartNow& start) const {
            self.environment_->timerEngine().startNow(start.kind);
        }
        void operator()(const step::PressKey& press) const {
            const KeyOutcome outcome = self.environment_->overlayManager().handleKey(press.keyCode);
            self.events_.print("overlay.key",
                               {{"keyCode", press.keyCode}, {"outcome", nameOf(outcome)}});
        }
        void operator()(const step::PressOverlay& press) const {
            if (!self.environment_->overlayManager().press(press.action)) {
                self.events_.print("press.refused",
                                   {{"on", "overlay"}, {"action", nameOf(press.action)}});
            }
        }
        void operator()(const step::Relaunch& relaunch) const {
            self.quit();
            self.pass(self.untilEnd(relaunch.afterSec));
            self.launch();
        }
        void operator()(const step::FailEncoding& failing) const {
            self.platform_.preferences.setEncoding(failing.fails
                                                       ? MemoryPreferences::Encoding::fails
                                                       : MemoryPreferences::Encoding::works);
        }
        void operator()(const step::Snapshot& snapshot) const {
            self.events_.printSnapshot(*self.environment_,
                                       snapshot.label ? Json(*snapshot.label) : Json());
        }
    };
    std::visit(Performer{*this}, action);
}

}  // namespace ostrel
