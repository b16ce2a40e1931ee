#pragma once

#include <functional>
#include <string>

#include "base/clock.h"
#include "platform/api/system_notifications.h"
#include "platform/macos/held_notifications.h"

namespace ostrel {

// Requests on their way to the notification centre, which wants the user's permission first: it is
// asked for with the first of them, and all wait for the answer.
class PermissionGate {
  public:
    using Authorization = SystemNotifications::Authorization;

    // What the centre does; the first two are answered by settle(), later.
    struct Centre {
        std::function<void()> ask;   // the user
        std::function<void()> read;  // what the user has said
        std::function<void(const NotificationRequest&)> post;
    };

    PermissionGate(Centre centre, NowFunction now);

    void add(const NotificationRequest& request);
    void remove(const std::string& id) { held_.remove(id); }

    // What the permission is now.
    void settle(Authorization authorization);

    [[nodiscard]] Authorization authorization() const { return authorization_; }

  private:
    Centre centre_;
    NowFunction now_;
    Authorization authorization_ = Authorization::unknown;
    bool isAsked_ = false;
    HeldNotifications held_;
};

}  // namespace ostrel
