#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/published.h"
#include "platform/api/calendar.h"
#include "platform/api/run_loop.h"
#include "platform/api/system_events.h"
#include "platform/api/system_notifications.h"

namespace ostrel {

// Keeps the notification requests that wait for their trigger, on a system that does not, and hands
// each over when it is due.
//
// It writes nothing down: its owner keeps what pending() publishes and gives it back after a
// restart. What fell due in between is then delivered, once however often it did.
class NotificationSchedule {
  public:
    struct Pending {
        NotificationRequest request;
        // What the trigger counts from, and not when it is due: a weekly one follows the zone.
        WallTime since;

        bool operator==(const Pending&) const = default;
    };
    using Deliver = std::function<void(const NotificationRequest&)>;

    // What is handed over references; all of it outlives the schedule.
    NotificationSchedule(RunLoop& runLoop, const Calendar& calendar, NowFunction now,
                         const SystemEvents& events, Deliver deliver);
    NotificationSchedule(const NotificationSchedule&) = delete;
    NotificationSchedule& operator=(const NotificationSchedule&) = delete;

    // What was pending in an earlier run; an id that is pending already stays as it is. What is
    // overdue is delivered with the next turns of the run loop.
    void restore(const std::vector<Pending>& stored);

    // Takes the place of what is pending under this id. A weekly request with the same trigger
    // carries on with its time, so that adding it at each launch neither puts it off nor loses one
    // that was missed. Without a trigger it is delivered before this returns.
    void add(const NotificationRequest& request);

    void remove(const std::string& id);

    // In the order of the ids.
    [[nodiscard]] const Published<std::vector<Pending>>& pending() const { return pending_; }

  private:
    struct Next {
        std::size_t index = 0;
        WallTime due;
    };

    [[nodiscard]] std::optional<WallTime> dueOf(const Pending& pending) const;
    [[nodiscard]] std::optional<Next> next() const;
    void replaceWith(std::vector<Pending> pending);
    void deliverNext();

    RunLoop& runLoop_;
    const Calendar& calendar_;
    NowFunction now_;
    Deliver deliver_;
    Published<std::vector<Pending>> pending_;
    Timer timer_;
    Subscription clockChanges_;
};

}  // namespace ostrel
