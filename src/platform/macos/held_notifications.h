#pragma once

#include <string>
#include <vector>

#include "base/clock.h"
#include "platform/api/system_notifications.h"

namespace ostrel {

// The requests that wait for the user's permission: the notification centre forgets what it gets
// before.
class HeldNotifications {
  public:
    // How long what was to be shown at once is still news.
    static constexpr std::int64_t kNewsSec = 10;

    // Takes the place of the one with the same id.
    void hold(const NotificationRequest& request, WallTime now);

    void remove(const std::string& id);

    // All of them, to be handed over now, oldest first. What should have been shown long ago is
    // left out; the others fire when they would have, or in a moment if that is over.
    [[nodiscard]] std::vector<NotificationRequest> take(WallTime now);

  private:
    struct Held {
        NotificationRequest request;
        WallTime since;
    };

    std::vector<Held> held_;
};

}  // namespace ostrel
