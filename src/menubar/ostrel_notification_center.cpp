#include "menubar/ostrel_notification_center.h"

#include <algorithm>
#include <string>
#include <utility>

#include "core/settings/settings_store.h"
#include "menubar/notification_ids.h"

namespace ostrel {
namespace {

constexpr int kSummaryWeekday = 2;
constexpr int kSummaryHour = 9;

NotificationAction action(std::string_view id) {
    static constexpr std::pair<std::string_view, std::string_view> kTitles[] = {
        {NotificationActionID::kResume, "menubar.action.resume"},
        {NotificationActionID::kOpenApp, "action.open_ostrel"},
        {NotificationActionID::kOpenReport, "notification.weekly_report.action"},
        {NotificationActionID::kStartNow, "notification.action.start_now"},
        {NotificationActionID::kPostpone, "notification.action.postpone"}};
    const auto* title =
        std::ranges::find(kTitles, id, [](const auto& entry) { return entry.first; });
    return {std::string(id), std::string(title->second)};
}

LocalizedText text(std::string_view key, std::vector<std::string> args = {}) {
    return {std::string(key), std::move(args)};
}

// Whole minutes from a minute on, rounded half up.
LocalizedText leadText(std::int64_t leadSec) {
    return leadSec < 60 ? text("notification.break_soon.seconds %lld", {std::to_string(leadSec)})
                        : text("notification.break_soon.minutes %lld",
                               {std::to_string((leadSec + 30) / 60)});
}

}  // namespace

OstrelNotificationCenter::OstrelNotificationCenter(Services services)
    : services_(std::move(services)),
      isPauseForgottenOn_(services_.settingsStore.settings()->notifyPauseForgotten) {
    registerCategories();
}

OstrelNotificationCenter::~OstrelNotificationCenter() = default;

void OstrelNotificationCenter::registerCategories() {
    if (std::exchange(didRegisterCategories_, true)) {
        return;
    }
    const auto category = [](std::string_view id, std::initializer_list<std::string_view> actions) {
        NotificationCategory result{std::string(id), {}};
        for (const std::string_view each : actions) {
            result.actions.push_back(action(each));
        }
        return result;
    };
    namespace CategoryID = NotificationCategoryID;
    namespace ActionID = NotificationActionID;
    services_.center.registerCategories(
        {category(CategoryID::kPauseForgotten, {ActionID::kResume, ActionID::kOpenApp}),
         category(CategoryID::kConsecutiveSkips, {ActionID::kOpenApp}),
         category(CategoryID::kBreakSoon, {ActionID::kStartNow, ActionID::kPostpone}),
         category(CategoryID::kBreakSoonNoPostpone, {ActionID::kStartNow}),
         category(CategoryID::kWeeklySummary, {ActionID::kOpenReport}),
         category(CategoryID::kDayEnd, {ActionID::kOpenReport})});
}

void OstrelNotificationCenter::start(Answers answers) {
    answers_ = std::move(answers);
    responses_ = services_.center.responded.subscribe(
        [this](const NotificationResponse& response) { handle(response); });
    settingsChanges_ =
        services_.settingsStore.settings().onChange([this](const auto&) { applySettings(); });
    applySettings();
}

void OstrelNotificationCenter::applySettings() {
    const SettingsModel& settings = *services_.settingsStore.settings();
    if (settings.notifyWeeklySummary && !std::exchange(isWeeklyScheduled_, true)) {
        scheduleWeeklySummary();
    } else if (!settings.notifyWeeklySummary) {
        isWeeklyScheduled_ = false;
        services_.center.removePending(std::string(NotificationRequestID::kWeeklySummary));
    }
    const bool wasOn = std::exchange(isPauseForgottenOn_, settings.notifyPauseForgotten);
    if (wasOn && !isPauseForgottenOn_) {
        withdraw(NotificationRequestID::kPauseForgotten);
    } else if (!wasOn && isPauseForgottenOn_ && pauseForgottenAt_ > services_.now()) {
        schedulePauseForgotten(*pauseForgottenAt_);
    }
}

void OstrelNotificationCenter::scheduleWeeklySummary() {
    services_.center.add({std::string(NotificationRequestID::kWeeklySummary),
                          std::string(NotificationCategoryID::kWeeklySummary),
                          text("notification.weekly_report.title"),
                          text("notification.weekly_report.body"),
                          {},
                          EveryWeek{kSummaryWeekday, kSummaryHour}});
}

void OstrelNotificationCenter::postBreakSoon(BreakKind kind, std::int64_t leadSec,
                                             bool canPostpone) {
    const std::string name(nameOf(kind));
    services_.center.add({std::string(NotificationRequestID::kBreakSoon),
                          std::string(canPostpone ? NotificationCategoryID::kBreakSoon
                                                  : NotificationCategoryID::kBreakSoonNoPostpone),
                          text(kind == BreakKind::eye ? "notification.break_soon.eye.title"
                                                      : "notification.break_soon.body.title"),
                          leadText(leadSec),
                          {{"kind", name}},
                          {},
                          NotificationSound::standard});
}

void OstrelNotificationCenter::cancelBreakSoon() {
    withdraw(NotificationRequestID::kBreakSoon);
}

void OstrelNotificationCenter::schedulePauseForgotten(WallTime fireAt) {
    pauseForgottenAt_ = fireAt;
    if (!isPauseForgottenOn_) {
        return;
    }
    const double delaySec = std::max((fireAt - services_.now()).count(), 1.0);
    services_.center.add({std::string(NotificationRequestID::kPauseForgotten),
                          std::string(NotificationCategoryID::kPauseForgotten),
                          text("notification.still_paused.title"),
                          text("notification.still_paused.body"),
                          {},
                          AfterSeconds{delaySec}});
}

void OstrelNotificationCenter::cancelPauseForgotten() {
    pauseForgottenAt_.reset();
    withdraw(NotificationRequestID::kPauseForgotten);
}

void OstrelNotificationCenter::postSkipStreak(std::int64_t count) {
    services_.center.add({std::string(NotificationRequestID::kConsecutiveSkips),
                          std::string(NotificationCategoryID::kConsecutiveSkips),
                          text("notification.skip_streak.title"),
                          text("notification.skip_streak.body %lld", {std::to_string(count)}),
                          {},
                          {}});
}

void OstrelNotificationCenter::postDayEnd(std::int64_t completed, std::int64_t goal) {
    services_.center.add({std::string(NotificationRequestID::kDayEnd),
                          std::string(NotificationCategoryID::kDayEnd),
                          text("notification.day_end.title"),
                          text("notification.day_end.body %lld %lld",
                               {std::to_string(completed), std::to_string(goal)}),
                          {},
                          {}});
}

void OstrelNotificationCenter::withdraw(std::string_view requestID) {
    services_.center.removePending(std::string(requestID));
    services_.center.removeDelivered(std::string(requestID));
}

void OstrelNotificationCenter::handle(const NotificationResponse& response) {
    namespace ActionID = NotificationActionID;
    namespace CategoryID = NotificationCategoryID;
    const bool offersReport =
        response.category == CategoryID::kWeeklySummary || response.category == CategoryID::kDayEnd;
    const std::string action = response.action.value_or(
        std::string(offersReport ? ActionID::kOpenReport : ActionID::kOpenApp));
    if (action == ActionID::kStartNow || action == ActionID::kPostpone) {
        if (const auto info = response.userInfo.find("kind"); info != response.userInfo.end()) {
            handleBreak(action, info->second);
        }
    } else if (action == ActionID::kResume) {
        answers_.resume();
    } else if (action == ActionID::kOpenReport) {
        answers_.openReport();
    } else if (action == ActionID::kOpenApp) {
        answers_.openApp();
    }
}

void OstrelNotificationCenter::handleBreak(std::string_view action, std::string_view kindName) {
    if (const auto kind = enumFrom<BreakKind>(kindName)) {
        (action == NotificationActionID::kStartNow ? answers_.startNow : answers_.postpone)(*kind);
    }
}

}  // namespace ostrel
