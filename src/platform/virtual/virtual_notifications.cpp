#include "platform/virtual/virtual_notifications.h"

#include <algorithm>
#include <utility>

namespace ostrel {
namespace {

constexpr int kDaysPerWeek = 7;

std::optional<WallTime> nextTime(const EveryWeek& trigger, const Calendar& calendar, WallTime now) {
    std::optional<WallTime> time = now;
    for (int day = 0; day <= kDaysPerWeek && time; ++day) {
        time = calendar.nextMatching(*time, trigger.hour, 0);
        if (time && calendar.components(*time).weekday == trigger.weekday) {
            break;
        }
    }
    return time;
}

}  // namespace

VirtualNotifications::VirtualNotifications(RunLoop& runLoop, const Calendar& calendar,
                                           const SystemEvents& events, NowFunction now)
    : runLoop_(runLoop),
      calendar_(calendar),
      now_(std::move(now)),
      clockChanges_(events.clockChanged.subscribe([this] { armWeekly(); })) {}

// They follow the user into another zone.
void VirtualNotifications::armWeekly() {
    for (const auto& [id, pending] : pending_) {
        if (std::holds_alternative<EveryWeek>(pending.request.trigger)) {
            arm(id);
        }
    }
}

bool VirtualNotifications::offers(const std::string& category, const std::string& action) const {
    const auto found = std::ranges::find(categories_, category, &NotificationCategory::id);
    return found != categories_.end() &&
           std::ranges::any_of(found->actions, [&action](const NotificationAction& one) {
               return one.id == action;
           });
}

void VirtualNotifications::respond(const NotificationResponse& response) {
    std::erase_if(delivered_, [&](const auto& one) {
        const NotificationRequest& request = one.second;
        return response.action ? offers(request.category, *response.action) &&
                                     request.userInfo == response.userInfo
                               : request.category == response.category;
    });
    responded.send(response);
}

void VirtualNotifications::registerCategories(std::vector<NotificationCategory> categories) {
    categories_ = std::move(categories);
}

void VirtualNotifications::add(const NotificationRequest& request) {
    const auto same = pending_.find(request.id);
    if (same != pending_.end() && same->second.request == request) {
        return;
    }
    pending_[request.id] = {request, {}};
    posted.send(request);
    arm(request.id);
}

void VirtualNotifications::arm(const std::string& id) {
    Pending& pending = pending_.at(id);
    const auto& trigger = pending.request.trigger;
    if (std::holds_alternative<std::monostate>(trigger)) {
        deliver(id);
        return;
    }
    std::optional<WallTime> due;
    if (const auto* after = std::get_if<AfterSeconds>(&trigger)) {
        due = now_() + WallClock::duration{after->seconds};
    } else {
        due = nextTime(std::get<EveryWeek>(trigger), calendar_, now_());
    }
    if (due) {
        pending.timer = runLoop_.callAt(*due, [this, id] { deliver(id); });
    }
}

void VirtualNotifications::deliver(const std::string& id) {
    const NotificationRequest request = pending_.at(id).request;
    delivered_[id] = request;
    const bool repeats = std::holds_alternative<EveryWeek>(request.trigger);
    if (!repeats) {
        pending_.erase(id);
    }
    wasDelivered.send(id);
    if (repeats && pending_.contains(id)) {
        arm(id);
    }
}

void VirtualNotifications::removePending(const std::string& id) {
    if (pending_.erase(id) > 0) {
        removed.send(id);
    }
}

void VirtualNotifications::removeDelivered(const std::string& id) {
    if (delivered_.erase(id) > 0) {
        removed.send(id);
    }
}

std::vector<std::string> VirtualNotifications::pending() const {
    std::vector<std::string> ids;
    for (const auto& [id, pending] : pending_) {
        ids.push_back(id);
    }
    return ids;
}

std::vector<std::string> VirtualNotifications::delivered() const {
    std::vector<std::string> ids;
    for (const auto& [id, request] : delivered_) {
        ids.push_back(id);
    }
    return ids;
}

}  // namespace ostrel
