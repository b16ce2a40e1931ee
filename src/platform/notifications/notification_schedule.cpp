#include "platform/notifications/notification_schedule.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace ostrel {
namespace {

using Pending = NotificationSchedule::Pending;

constexpr std::int64_t kDaySec = 86'400;
constexpr double kFarSec = 1e10;

// A day that a zone left out makes a week miss its day.
constexpr int kDaysOfTwoWeeks = 14;

// The zones lie up to 26 hours apart: who flies west has the same day and hour ahead again. So
// after a delivery nothing counts until five days before the next one.
constexpr WallClock::duration kBeforeNext = wallSec(5 * kDaySec);

// A weekly request counts from no later than two days ahead, and a clock may be set back by a few
// hours. What lies further ahead comes from a clock that was wrong.
constexpr WallClock::duration kFurthestAhead = wallSec(3 * kDaySec);

std::optional<WallTime> nextInWeek(const Calendar& calendar, const EveryWeek& trigger,
                                   WallTime after) {
    std::optional<WallTime> time = after;
    for (int day = 0; day <= kDaysOfTwoWeeks; ++day) {
        time = calendar.nextMatching(*time, trigger.hour, 0);
        if (!time || calendar.components(*time).weekday == trigger.weekday) {
            return time;
        }
    }
    return std::nullopt;
}

// Nobody waits longer because the clock was ahead when the waiting began.
void countFromNowIfAhead(Pending& pending, WallTime now) {
    const bool isWeekly = std::holds_alternative<EveryWeek>(pending.request.trigger);
    if (pending.since > now + (isWeekly ? kFurthestAhead : WallClock::duration::zero())) {
        pending.since = now;
    }
}

}  // namespace

NotificationSchedule::NotificationSchedule(RunLoop& runLoop, const Calendar& calendar,
                                           NowFunction now, const SystemEvents& events,
                                           Deliver deliver)
    : runLoop_(runLoop),
      calendar_(calendar),
      now_(std::move(now)),
      deliver_(std::move(deliver)),
      clockChanges_(events.clockChanged.subscribe([this] { replaceWith(pending_.get()); })) {}

void NotificationSchedule::restore(const std::vector<Pending>& stored) {
    std::vector<Pending> all = pending_.get();
    for (const Pending& one : stored) {
        const auto isSame = [&](const Pending& p) { return p.request.id == one.request.id; };
        if (std::none_of(all.begin(), all.end(), isSame)) {
            all.push_back(one);
        }
    }
    replaceWith(std::move(all));
}

void NotificationSchedule::add(const NotificationRequest& request) {
    std::vector<Pending> all = pending_.get();
    const auto old = std::find_if(all.begin(), all.end(),
                                  [&](const Pending& p) { return p.request.id == request.id; });
    Pending added{request, now_()};
    if (auto* after = std::get_if<AfterSeconds>(&added.request.trigger)) {
        after->seconds = std::fmin(std::fmax(after->seconds, 1.0), kFarSec);
    }
    if (old != all.end()) {
        const bool isWeekly = std::holds_alternative<EveryWeek>(request.trigger);
        if (isWeekly && old->request.trigger == request.trigger) {
            added.since = old->since;
        }
        all.erase(old);
    }
    const bool isPending = !std::holds_alternative<std::monostate>(request.trigger);
    if (isPending) {
        all.push_back(added);
    }
    replaceWith(std::move(all));
    if (!isPending) {
        deliver_(request);
    }
}

void NotificationSchedule::remove(const std::string& id) {
    std::vector<Pending> all = pending_.get();
    if (std::erase_if(all, [&](const Pending& p) { return p.request.id == id; }) > 0) {
        replaceWith(std::move(all));
    }
}

std::optional<WallTime> NotificationSchedule::dueOf(const Pending& pending) const {
    if (const auto* after = std::get_if<AfterSeconds>(&pending.request.trigger)) {
        return pending.since + WallClock::duration{after->seconds};
    }
    if (const auto* weekly = std::get_if<EveryWeek>(&pending.request.trigger)) {
        return nextInWeek(calendar_, *weekly, pending.since);
    }
    return pending.since;
}

std::optional<NotificationSchedule::Next> NotificationSchedule::next() const {
    std::optional<Next> earliest;
    for (std::size_t i = 0; i < pending_->size(); ++i) {
        const std::optional<WallTime> due = dueOf((*pending_)[i]);
        if (due && (!earliest || *due < earliest->due)) {
            earliest = {i, *due};
        }
    }
    return earliest;
}

void NotificationSchedule::replaceWith(std::vector<Pending> pending) {
    const WallTime now = now_();
    for (Pending& one : pending) {
        countFromNowIfAhead(one, now);
    }
    std::sort(pending.begin(), pending.end(),
              [](const Pending& a, const Pending& b) { return a.request.id < b.request.id; });
    pending_.set(std::move(pending));
    const std::optional<Next> earliest = next();
    timer_ = earliest ? runLoop_.callAt(earliest->due, [this] { deliverNext(); }) : Timer();
}

// One at a time: whoever is told of it may add, remove and end this schedule.
void NotificationSchedule::deliverNext() {
    const WallTime now = now_();
    const std::optional<Next> earliest = next();
    std::vector<Pending> all = pending_.get();
    if (!earliest || earliest->due > now) {
        replaceWith(std::move(all));
        return;
    }
    const auto due = all.begin() + static_cast<std::ptrdiff_t>(earliest->index);
    const NotificationRequest request = due->request;
    const Deliver deliver = deliver_;
    const auto* weekly = std::get_if<EveryWeek>(&request.trigger);
    const auto following = weekly ? nextInWeek(calendar_, *weekly, now) : std::nullopt;
    if (following) {
        due->since = *following - kBeforeNext;
    } else {
        all.erase(due);
    }
    replaceWith(std::move(all));
    deliver(request);
}

}  // namespace ostrel
