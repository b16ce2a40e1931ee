#include "app/simulator/event_log.h"

#include <charconv>
#include <cmath>
#include <memory>
#include <utility>

#include "core/settings/settings_model.h"
#include "menubar/menu_bar_context.h"
#include "menubar/menu_bar_tooltip.h"
#include "platform/api/iso_time.h"

namespace ostrel {
namespace {

// Whole numbers without a fraction: 1200, not 1200.0.
Json number(double value) {
    if (value == std::trunc(value) && std::abs(value) < 1e15) {
        return static_cast<std::int64_t>(value);
    }
    return value;
}

Json timerFields(const BreakTimer& timer) {
    return {{"remainingSec", timer.remainingSec},
            {"isRunning", timer.isRunning},
            {"isAway", timer.isAway},
            {"pendingPenaltySec", timer.pendingPenaltySec}};
}

Json pauseFields(const SessionStateModel& session) {
    const Json document = asJson(session);
    return {{"isPaused", session.isPaused},
            {"pauseReasons", document["pauseReasons"]},
            {"userPauseUntil", document.value("userPauseUntil", Json())}};
}

Json menuBarFields(const MenuBarFormatter::Context& context) {
    const MenuBarFormatter::Output shown = MenuBarFormatter::format(context);
    Json tooltip = Json::array();
    for (const LocalizedText& line : menuBarTooltip(context)) {
        tooltip.push_back({{"key", line.key}, {"args", line.args}});
    }
    return {{"title", shown.title},
            {"status", nameOf(shown.status)},
            {"nearest", nameOf(shown.nearest)},
            {"eyeFraction", shown.eyeFraction},
            {"bodyFraction", shown.bodyFraction},
            {"penaltyPending", shown.penaltyPending},
            {"tooltip", tooltip}};
}

// Arguments that are whole numbers stand as numbers.
Json textFields(const LocalizedText& text) {
    Json args = Json::array();
    for (const std::string& argument : text.args) {
        std::int64_t value = 0;
        const char* end = argument.data() + argument.size();
        const auto [rest, failure] = std::from_chars(argument.data(), end, value);
        const bool isNumber = failure == std::errc{} && rest == end;
        args.push_back(isNumber ? Json(value) : Json(argument));
    }
    return {{"key", text.key}, {"args", args}};
}

Json triggerFields(const NotificationTrigger& trigger) {
    if (const auto* after = std::get_if<AfterSeconds>(&trigger)) {
        return {{"afterSec", after->seconds}};
    }
    if (const auto* weekly = std::get_if<EveryWeek>(&trigger)) {
        return {{"weekday", weekly->weekday}, {"hour", weekly->hour}, {"repeats", true}};
    }
    return {};
}

Json toastFields(const ToastDispatcher& toasts) {
    const auto& current = *toasts.currentToast();
    return current && !toasts.isCard(*current) ? textFields(current->message) : Json();
}

Json queueFields(const ToastDispatcher& toasts) {
    Json keys = Json::array();
    for (const auto& pending : toasts.pendingQueue()) {
        keys.push_back(pending.toast.message.key);
    }
    return keys;
}

Json optionalText(const std::optional<std::string>& text) {
    return text ? Json(*text) : Json();
}

bool isMeetingActive(AppEnvironment& environment) {
    const MeetingWatcher* watcher = environment.meetingWatcher();
    return watcher != nullptr && watcher->isMeetingActive();
}

}  // namespace

EventLog::EventLog(VirtualPlatform& platform, SecondsNow secondsNow, Print print)
    : platform_(platform), secondsNow_(std::move(secondsNow)), print_(std::move(print)) {}

void EventLog::print(std::string_view event, const Json& fields) {
    Json line = {{"at", number(secondsNow_())},
                 {"time", isoLocalTime(platform_.calendar, platform_.runLoop.wallNow())},
                 {"event", event}};
    line.update(fields);
    print_(line.dump());
}

std::vector<Subscription> EventLog::watchPlatform() {
    std::vector<Subscription> watching;
    MemoryPreferences& preferences = platform_.preferences;
    watching.push_back(preferences.written.subscribe([this](const std::string& key) {
        print("preferences.written", {{"key", key}});
    }));
    watching.push_back(preferences.removed.subscribe([this](const std::string& key) {
        print("preferences.removed", {{"key", key}});
    }));
    watching.push_back(
        preferences.persistenceWriteFailed.subscribe([this](const PersistenceError& error) {
            print("persistence.failed", {{"key", error.key}});
        }));
    watching.push_back(
        platform_.attentionRequested.subscribe([this] { print("attention.requested"); }));
    watching.push_back(platform_.windowOpened.subscribe([this](AppWindow window) {
        print("window.opened", {{"window", nameOf(window)}});
    }));
    watchNotifications(watching);
    watching.push_back(platform_.haptics.played.subscribe([this](int pattern) {
        print("haptic", {{"pattern", pattern}});
    }));
    watching.push_back(platform_.sounds.played.subscribe(
        [this](const std::string& name, VirtualSounds::Beginning beginning) {
            constexpr std::string_view kPrefix = "chime-";
            print("chime", {{"which", name.substr(kPrefix.size())},
                            {"restarted", beginning == VirtualSounds::Beginning::restarted}});
        }));
    return watching;
}

std::vector<Subscription> EventLog::watch(AppEnvironment& environment) {
    std::vector<Subscription> watching;
    watchOverlay(environment.overlayManager(), watching);
    watchRecords(environment, watching);
    watchToasts(environment.toastDispatcher(), watching);
    watchEngine(environment.timerEngine(), watching);
    watchPauses(environment.sessionStateStore(), watching);
    return watching;
}

void EventLog::watchOverlay(OverlayManager& overlay, std::vector<Subscription>& watching) {
    watching.push_back(overlay.didPresent.subscribe([this, &overlay] {
        const ActiveOverlaySession& session = **overlay.activeSession();
        print("overlay.opened", {{"kind", nameOf(session.kind)},
                                 {"baseDurationSec", session.baseDurationSec},
                                 {"penaltySec", session.penaltySec},
                                 {"totalSec", session.totalSec()},
                                 {"guideStartIndex", session.guideStartIndex},
                                 {"message", optionalText(session.message)},
                                 {"presentation", overlay.isGentle() ? "gentle" : "fullScreen"},
                                 {"windows", windows(overlay)}});
    }));
    watching.push_back(overlay.didRebuildWindows.subscribe([this, &overlay] {
        print("overlay.windows", {{"windows", windows(overlay)}});
    }));
    watching.push_back(overlay.didReachZero.subscribe([this](BreakKind kind) {
        print("overlay.zero", {{"kind", nameOf(kind)}});
    }));
    watching.push_back(overlay.didAsk.subscribe([this](BreakKind kind) {
        print("overlay.asking", {{"kind", nameOf(kind)}});
    }));
    watching.push_back(overlay.didClose.subscribe([this](BreakKind kind, CloseReason reason) {
        print("overlay.closed", {{"kind", nameOf(kind)}, {"reason", nameOf(reason)}});
    }));
    watching.push_back(overlay.penaltyAppliedPublisher.subscribe([this](std::int64_t penaltySec) {
        print("penalty.applied", {{"penaltySec", penaltySec}});
    }));
}

void EventLog::watchNotifications(std::vector<Subscription>& watching) {
    VirtualNotifications& notifications = platform_.notifications;
    watching.push_back(notifications.posted.subscribe([this](const NotificationRequest& request) {
        print("notification.posted", {{"request", request.id},
                                      {"category", request.category},
                                      {"title", textFields(request.title)},
                                      {"body", textFields(request.body)},
                                      {"userInfo", Json(request.userInfo)},
                                      {"trigger", triggerFields(request.trigger)}});
    }));
    watching.push_back(notifications.wasDelivered.subscribe([this](const std::string& id) {
        print("notification.delivered", {{"request", id}});
    }));
    watching.push_back(notifications.removed.subscribe([this](const std::string& id) {
        print("notification.removed", {{"request", id}});
    }));
}

void EventLog::watchToasts(ToastDispatcher& toasts, std::vector<Subscription>& watching) {
    const auto printKey = [this](const char* event) {
        return [this, event](const Toast& toast) { print(event, {{"key", toast.message.key}}); };
    };
    watching.push_back(toasts.didShow.subscribe([this](const ToastDispatcher::PendingToast& shown) {
        Json actions = Json::array();
        for (const Toast::Action& action : shown.toast.actions) {
            actions.push_back(action.id);
        }
        Json fields = textFields(shown.toast.message);
        fields.update({{"kind", nameOf(shown.toast.kind)},
                       {"actions", actions},
                       {"durationSec", number(shown.duration)}});
        print("toast.shown", fields);
    }));
    watching.push_back(toasts.didQueue.subscribe(printKey("toast.queued")));
    watching.push_back(toasts.didDrop.subscribe(printKey("toast.dropped")));
    watching.push_back(toasts.didDismiss.subscribe(printKey("toast.dismissed")));
}

void EventLog::watchRecords(AppEnvironment& environment, std::vector<Subscription>& watching) {
    watching.push_back(environment.breakLog().didAppend.subscribe(
        [this](const BreakLogEntry& entry) { print("log.appended", asJson(entry)); }));
    if (const MeetingWatcher* watcher = environment.meetingWatcher()) {
        watching.push_back(watcher->meetingActive().onChange([this](bool isActive) {
            print("meeting.changed", {{"value", isActive}});
        }));
    }
}

void EventLog::watchEngine(TimerEngine& engine, std::vector<Subscription>& watching) {
    watching.push_back(engine.holdBegan.subscribe([this](BreakKind kind) {
        print("hold.began", {{"kind", nameOf(kind)}});
    }));
    watching.push_back(engine.holdEnded.subscribe([this](BreakKind kind, HoldEnd how) {
        print("hold.ended", {{"kind", nameOf(kind)}, {"how", nameOf(how)}});
    }));
}

void EventLog::watchPauses(const SessionStateStore& session, std::vector<Subscription>& watching) {
    auto shown = std::make_shared<Json>(pauseFields(SessionStateModel{}));
    const auto printPause = [this, shown](const SessionStateModel& state) {
        Json fields = pauseFields(state);
        if (fields != *shown) {
            *shown = fields;
            print("pause.changed", fields);
        }
    };
    printPause(*session.current());
    watching.push_back(session.current().onChange(printPause));
}

Json EventLog::windows(const OverlayManager& overlay) {
    Json list = Json::array();
    for (const auto& window : overlay.openWindows()) {
        list.push_back({{"displayID", window->displayID()}, {"role", nameOf(window->role())}});
    }
    return list;
}

void EventLog::printReport(AppEnvironment& environment, ReportSummaryView::Range range) {
    const ReportSummaryView& report = environment.reportSummary();
    const ReportSummaryStats stats = report.stats(range);
    Json buckets = Json::array();
    for (const auto& bucket : report.dayBuckets(*environment.breakLog().entries(), range)) {
        buckets.push_back({{"day", platform_.calendar.dayKeyOf(bucket.day)},
                           {"eye", bucket.eye},
                           {"body", bucket.body}});
    }
    print("report", {{"range", nameOf(range)},
                     {"stats",
                      {{"eyeCompleted", stats.eyeCompleted},
                       {"bodyCompleted", stats.bodyCompleted},
                       {"skipRate", stats.skipRate},
                       {"avgPenaltySec", stats.avgPenaltySec},
                       {"postponements", stats.postponements}}},
                     {"buckets", buckets}});
}

void EventLog::printSnapshot(AppEnvironment& environment, const Json& label) {
    const TimerEngine& engine = environment.timerEngine();
    const OverlayManager& manager = environment.overlayManager();
    Json overlay;
    if (const auto& session = *manager.activeSession()) {
        overlay = {{"kind", nameOf(session->kind)},
                   {"baseDurationSec", session->baseDurationSec},
                   {"penaltySec", session->penaltySec},
                   {"startedAt", secondsSinceReference(session->startedAt)},
                   {"remainingSec", session->remainingSec},
                   {"extensionsAppliedSec", session->extensionsAppliedSec},
                   {"guideStartIndex", session->guideStartIndex},
                   {"message", optionalText(session->message)},
                   {"totalSec", session->totalSec()},
                   {"windows", windows(manager)}};
    }
    print(
        "snapshot",
        {{"label", label},
         {"timer",
          {{"eye", timerFields(engine.state()->eye)}, {"body", timerFields(engine.state()->body)}}},
         {"eyeMergedIntoBody", engine.eyeMergedIntoBody()},
         {"isDeferring", engine.isDeferring()},
         {"session", asJson(*environment.sessionStateStore().current())},
         {"dailyCounter", asJson(*environment.dailyCounter().model())},
         {"unconsumedPenaltySec", *environment.penaltyEngine().unconsumedPenaltySec()},
         {"recentSkipCount", environment.penaltyEngine().recentSkipCount()},
         {"remainingPostpones",
          environment.postponeQuota().remainingAt(platform_.runLoop.wallNow())},
         {"overlay", overlay},
         {"menuBar", menuBarFields(menuBarContext(engine, environment.sessionStateStore(),
                                                  environment.settingsStore()))},
         {"toast", toastFields(environment.toastDispatcher())},
         {"toastQueue", queueFields(environment.toastDispatcher())},
         {"notifications",
          {{"pending", platform_.notifications.pending()},
           {"delivered", platform_.notifications.delivered()}}},
         {"presence", {{"isMeetingActive", isMeetingActive(environment)}}},
         {"streak", environment.streakTracker().streak()->currentDays}});
}

void EventLog::printEnd() {
    Json documents = Json::object();
    for (const auto& [key, bytes] : platform_.preferences.contents()) {
        documents[key] = parseJson(bytes).value_or(Json(bytes));
    }
    print("end", {{"preferences", documents}});
}

}  // namespace ostrel
