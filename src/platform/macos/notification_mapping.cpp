#include "platform/macos/notification_mapping.h"

#include <utility>

namespace ostrel {

SystemNotifications::Authorization NotificationMapping::authorizationOf(std::int64_t status) {
    using Authorization = SystemNotifications::Authorization;
    switch (status) {
        case 1:
            return Authorization::denied;
        case 2:
        case 3:
            return Authorization::granted;
        default:
            return Authorization::unknown;
    }
}

double NotificationMapping::intervalOf(const AfterSeconds& trigger) {
    return trigger.seconds > 1 ? trigger.seconds : 1;
}

std::optional<NotificationResponse> NotificationMapping::responseOf(const Touch& touch,
                                                                    const OwnActions& own) {
    if (touch.action == own.dismissal) {
        return std::nullopt;
    }
    NotificationResponse response;
    if (touch.action != own.tap) {
        response.action = touch.action;
    }
    response.category = touch.category;
    for (const auto& [key, value] : touch.userInfo) {
        if (auto text = textOf(value)) {
            response.userInfo[key] = std::move(*text);
        }
    }
    return response;
}

}  // namespace ostrel
