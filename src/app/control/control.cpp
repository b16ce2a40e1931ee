#include "app/control/control.h"

#include <algorithm>
#include <utility>

#include "app/control/control_report.h"
#include "app/control/pause_argument.h"
#include "app/environment/app_environment.h"
#include "menubar/menu_bar_context.h"
#include "platform/api/iso_time.h"

namespace ostrel {
namespace {

std::optional<ControlStatus::OnScreen> onScreenOf(const OverlayManager& overlay) {
    const auto& session = *overlay.activeSession();
    if (!session) {
        return std::nullopt;
    }
    const bool canSkip =
        overlay.enables(OverlayAction::skip) || overlay.enables(OverlayAction::gentleSkip);
    return ControlStatus::OnScreen{session->kind, session->remainingSec, session->totalSec(),
                                   canSkip, overlay.enables(OverlayAction::postpone)};
}

}  // namespace

Control::Control(Services services) : services_(std::move(services)) {}

ControlStatus Control::status() const {
    AppEnvironment& environment = services_.environment;
    const TimerEngine& engine = environment.timerEngine();
    const SessionStateModel& session = *environment.sessionStateStore().current();
    const SettingsModel& settings = *environment.settingsStore().settings();
    const DailyCounterModel& today = *environment.dailyCounter().model();
    const Streak& streak = *environment.streakTracker().streak();
    const TimerState& timers = *engine.state();

    ControlStatus status;
    status.state = MenuBarFormatter::format(menuBarContext(engine, environment.sessionStateStore(),
                                                           environment.settingsStore()))
                       .status;
    status.pauseReasons = session.pauseReasons;
    if (session.userPauseUntil) {
        status.pausedUntil = isoLocalTime(services_.calendar, *session.userPauseUntil);
    }
    status.eye = {timers.eye.remainingSec, engine.activeIntervalSec(BreakKind::eye)};
    status.body = {timers.body.remainingSec, engine.activeIntervalSec(BreakKind::body)};
    status.next = nextKind();
    status.eyeJoinsBody = engine.eyeJoinsBody();
    status.heldBreak = engine.heldKind();
    status.breakOnScreen = onScreenOf(environment.overlayManager());
    status.penaltySec = std::max<std::int64_t>(timers.eye.pendingPenaltySec, 0);
    status.strictMode = settings.strictMode;
    status.canPostpone = environment.postponeQuota().remainingAt(services_.now()) > 0;
    status.today = {today.eyeBreaksCompleted, today.bodyBreaksCompleted, today.skipsToday,
                    today.postponesToday};
    status.dailyGoalBreaks = settings.dailyGoalBreaks;
    status.streakDays = streak.currentDays;
    status.longestStreakDays = streak.longestDays;
    return status;
}

std::string Control::printStatus() const {
    return printJson(status()).text.value_or(std::string());
}

// An eye break that joins the body break is not the one that comes.
BreakKind Control::nextKind() const {
    const TimerEngine& engine = services_.environment.timerEngine();
    const bool isBody =
        engine.eyeJoinsBody() ||
        MenuBarFormatter::nearestChannel(*engine.state()).kind == MenuBarFormatter::Channel::body;
    return isBody ? BreakKind::body : BreakKind::eye;
}

ControlOutcome Control::pause(std::string_view duration) {
    const auto length = parsePause(duration);
    if (!length) {
        return ControlOutcome::invalid({"cli.error.pause %@", {std::string(duration)}});
    }
    if (!services_.environment.settingsStore().settings()->ostrelEnabled) {
        return ControlOutcome::refused("cli.refused.off");
    }
    services_.environment.timerEngine().pauseByUser(*length);
    return ControlOutcome::done();
}

ControlOutcome Control::resume() {
    services_.environment.timerEngine().endAllPauses();
    return ControlOutcome::done();
}

ControlOutcome Control::startBreak(std::string_view kind) {
    const auto wanted = enumFrom<BreakKind>(kind);
    if (!wanted) {
        return ControlOutcome::invalid({"cli.error.kind %@", {std::string(kind)}});
    }
    if (services_.environment.overlayManager().activeSession()->has_value()) {
        return ControlOutcome::refused("cli.refused.on_screen");
    }
    services_.environment.timerEngine().startNow(*wanted);
    return ControlOutcome::done();
}

ControlOutcome Control::skip() {
    OverlayManager& overlay = services_.environment.overlayManager();
    if (!overlay.activeSession()->has_value()) {
        return ControlOutcome::refused("cli.refused.no_break");
    }
    // The second answers the card that asks whether its user rested.
    if (overlay.press(OverlayAction::skip) || overlay.press(OverlayAction::gentleSkip)) {
        return ControlOutcome::done();
    }
    return ControlOutcome::refused(services_.environment.settingsStore().settings()->strictMode
                                       ? "cli.refused.strict"
                                       : "cli.refused.over");
}

ControlOutcome Control::postpone() {
    AppEnvironment& environment = services_.environment;
    OverlayManager& overlay = environment.overlayManager();
    const bool isOnScreen = overlay.activeSession()->has_value();
    if (isOnScreen && overlay.press(OverlayAction::postpone)) {
        return ControlOutcome::done();
    }
    if (environment.postponeService().remainingPostpones() <= 0) {
        return ControlOutcome::refused("cli.refused.none_left");
    }
    if (isOnScreen) {
        return ControlOutcome::refused("cli.refused.over");  // the card only asks
    }
    if (!environment.settingsStore().settings()->ostrelEnabled) {
        return ControlOutcome::refused("cli.refused.off");
    }
    if (environment.sessionStateStore().isPaused()) {
        return ControlOutcome::refused("cli.refused.paused");
    }
    return environment.timerEngine().postpone(nextKind())
               ? ControlOutcome::done()
               : ControlOutcome::refused("cli.refused.held");
}

ControlOutcome Control::report(std::string_view range, std::string_view format) const {
    AppEnvironment& environment = services_.environment;
    return printReport({environment.breakLog(), environment.presenceTally(), services_.calendar,
                        services_.now, environment.settingsStore().settings()->dailyGoalBreaks,
                        *environment.streakTracker().streak()},
                       range, format);
}

std::string Control::settings() const {
    return SettingValues::document(*services_.environment.settingsStore().settings());
}

ControlOutcome Control::setSetting(std::string_view name, const std::string& value) {
    const SettingsModel& before = *services_.environment.settingsStore().settings();
    const auto [after, problem] = SettingValues::change(before, name, value, services_.languages);
    if (!after) {
        return ControlOutcome::invalid(problem);
    }
    TimerEngine& engine = services_.environment.timerEngine();
    const auto preset = PresetCatalog::find(after->activePresetID);
    if (preset && after->activePresetID != before.activePresetID) {
        engine.applyPreset(*preset);
        return ControlOutcome::done();
    }
    return apply(*after);
}

ControlOutcome Control::importSettings(std::string_view document) {
    const auto settings =
        SettingsStore::merged(*services_.environment.settingsStore().settings(), document);
    return settings ? apply(*settings) : ControlOutcome::invalid({"cli.error.document", {}});
}

// Whoever could not arrange the start at login has taken it back by the end.
ControlOutcome Control::apply(const SettingsModel& settings) {
    services_.environment.timerEngine().applySettings(settings);
    const SettingsModel& now = *services_.environment.settingsStore().settings();
    return now.launchAtLogin == settings.launchAtLogin
               ? ControlOutcome::done()
               : ControlOutcome::refused("welcome.ready.login.failed");
}

ControlOutcome Control::open(std::string_view window) {
    const auto wanted = enumFrom<AppWindow>(window);
    if (!wanted || !services_.openWindow) {
        return ControlOutcome::invalid({"cli.error.window %@", {std::string(window)}});
    }
    services_.openWindow(*wanted);
    return ControlOutcome::done();
}

std::vector<Subscription> Control::onChange(const std::function<void()>& changed) const {
    AppEnvironment& environment = services_.environment;
    TimerEngine& engine = environment.timerEngine();
    const auto tell = [changed](const auto&...) { changed(); };
    std::vector<Subscription> subscriptions;
    subscriptions.push_back(engine.state().onChange(tell));
    subscriptions.push_back(engine.holdBegan.subscribe(tell));
    subscriptions.push_back(engine.holdEnded.subscribe(tell));
    subscriptions.push_back(environment.sessionStateStore().current().onChange(tell));
    subscriptions.push_back(environment.settingsStore().settings().onChange(tell));
    subscriptions.push_back(environment.overlayManager().activeSession().onChange(tell));
    subscriptions.push_back(environment.dailyCounter().model().onChange(tell));
    subscriptions.push_back(environment.streakTracker().streak().onChange(tell));
    subscriptions.push_back(environment.postponeQuota().used().onChange(tell));
    return subscriptions;
}

}  // namespace ostrel
