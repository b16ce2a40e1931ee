#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/api/calendar.h"
#include "platform/api/run_loop.h"
#include "platform/api/system_events.h"
#include "platform/api/system_notifications.h"

namespace ostrel {

// The notifications of a system that exists only in memory: it delivers each when it is due and
// tells of all that becomes of it. Like a real one it outlives the program that posts.
class VirtualNotifications : public SystemNotifications {
  public:
    // All of it outlives the notifications.
    VirtualNotifications(RunLoop& runLoop, const Calendar& calendar, const SystemEvents& events,
                         NowFunction now);

    void registerCategories(std::vector<NotificationCategory> categories) override;
    void add(const NotificationRequest& request) override;
    void removePending(const std::string& id) override;
    void removeDelivered(const std::string& id) override;
    [[nodiscard]] Authorization authorization() const override { return Authorization::granted; }

    [[nodiscard]] const std::vector<NotificationCategory>& categories() const {
        return categories_;
    }
    [[nodiscard]] std::vector<std::string> pending() const;
    [[nodiscard]] std::vector<std::string> delivered() const;

    // The user presses a button, or the notification itself; it goes with that.
    void respond(const NotificationResponse& response);

    Signal<const NotificationRequest&> posted;
    Signal<const std::string&> wasDelivered;
    Signal<const std::string&> removed;

  private:
    struct Pending {
        NotificationRequest request;
        Timer timer;
    };

    void arm(const std::string& id);
    void armWeekly();
    [[nodiscard]] bool offers(const std::string& category, const std::string& action) const;
    void deliver(const std::string& id);

    RunLoop& runLoop_;
    const Calendar& calendar_;
    NowFunction now_;
    std::vector<NotificationCategory> categories_;
    std::map<std::string, NotificationRequest> delivered_;
    std::map<std::string, Pending> pending_;
    Subscription clockChanges_;
};

}  // namespace ostrel
