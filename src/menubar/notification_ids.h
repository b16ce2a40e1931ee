#pragma once

#include <string_view>

// The identifiers of notifications, as the system knows them.
namespace ostrel {

namespace NotificationCategoryID {
inline constexpr std::string_view kPauseForgotten = "ostrel.notification.pauseForgotten";
inline constexpr std::string_view kConsecutiveSkips = "ostrel.notification.consecutiveSkips";
inline constexpr std::string_view kBreakSoon = "ostrel.notification.breakSoon";
inline constexpr std::string_view kBreakSoonNoPostpone = "ostrel.notification.breakSoonNoPostpone";
inline constexpr std::string_view kWeeklySummary = "ostrel.notification.weeklySummary";
inline constexpr std::string_view kDayEnd = "ostrel.notification.dayEnd";
}  // namespace NotificationCategoryID

namespace NotificationActionID {
inline constexpr std::string_view kResume = "ostrel.notification.action.resume";
inline constexpr std::string_view kOpenApp = "ostrel.notification.action.openApp";
inline constexpr std::string_view kOpenReport = "ostrel.notification.action.openReport";
inline constexpr std::string_view kStartNow = "ostrel.notification.action.startNow";
inline constexpr std::string_view kPostpone = "ostrel.notification.action.postpone";
}  // namespace NotificationActionID

namespace NotificationRequestID {
inline constexpr std::string_view kBreakSoon = "ostrel.notification.request.breakSoon";
inline constexpr std::string_view kConsecutiveSkips =
    "ostrel.notification.request.consecutiveSkips";
inline constexpr std::string_view kPauseForgotten = "ostrel.notification.request.pauseForgotten";
inline constexpr std::string_view kWeeklySummary = "ostrel.notification.request.weeklySummary";
inline constexpr std::string_view kDayEnd = "ostrel.notification.request.dayEnd";
}  // namespace NotificationRequestID

}  // namespace ostrel
