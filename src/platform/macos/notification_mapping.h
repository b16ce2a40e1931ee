#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/api/system_notifications.h"
#include "platform/macos/plain_values.h"

// What the notification centre's numbers and texts stand for.
namespace ostrel::NotificationMapping {

// Of UNAuthorizationStatus: 0 not determined, 1 denied, 2 authorised, 3 provisional (delivered, but
// quietly). Others are unknown.
[[nodiscard]] SystemNotifications::Authorization authorizationOf(std::int64_t status);

// Seconds that a time-interval trigger takes; the centre throws at one that is not positive.
[[nodiscard]] double intervalOf(const AfterSeconds& trigger);

// The centre's own names for a tap on the notification and for clearing it away.
struct OwnActions {
    std::string tap;
    std::string dismissal;
};

struct Touch {
    std::string action;
    std::string category;
    PlainDictionary userInfo;
};

// Absent for what was only cleared away. Of the user info only texts are kept.
[[nodiscard]] std::optional<NotificationResponse> responseOf(const Touch& touch,
                                                             const OwnActions& own);

}  // namespace ostrel::NotificationMapping
