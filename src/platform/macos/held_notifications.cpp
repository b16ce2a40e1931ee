#include "platform/macos/held_notifications.h"

#include <algorithm>
#include <utility>

namespace ostrel {

void HeldNotifications::hold(const NotificationRequest& request, WallTime now) {
    remove(request.id);
    held_.push_back({request, now});
}

void HeldNotifications::remove(const std::string& id) {
    std::erase_if(held_, [&](const Held& held) { return held.request.id == id; });
}

std::vector<NotificationRequest> HeldNotifications::take(WallTime now) {
    std::vector<NotificationRequest> due;
    for (Held& held : std::exchange(held_, {})) {
        // A clock that was set back has nothing wait longer.
        const WallClock::duration waited = std::max(now - held.since, WallClock::duration{});
        if (auto* after = std::get_if<AfterSeconds>(&held.request.trigger)) {
            after->seconds = std::max(after->seconds - waited.count(), 1.0);
        }
        const bool isForNow = std::holds_alternative<std::monostate>(held.request.trigger);
        if (!isForNow || waited <= wallSec(kNewsSec)) {
            due.push_back(std::move(held.request));
        }
    }
    return due;
}

}  // namespace ostrel
