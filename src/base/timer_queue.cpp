#include "base/timer_queue.h"

#include <set>
#include <tuple>
#include <utility>

#include "base/fatal.h"

namespace ostrel {

struct TimerQueue::Entry {
    Callback callback;
    RunLoopTime runLoopDue;
    RunLoopClock::duration period{0};
    WallTime wallDue;
    bool onWallClock = false;
    std::uint64_t armed = 0;  // in which order

    [[nodiscard]] double overdueSec(RunLoopTime runLoopNow, WallTime wallNow) const {
        return onWallClock ? (wallNow - wallDue).count()
                           : std::chrono::duration<double>(runLoopNow - runLoopDue).count();
    }
};

struct TimerQueue::State {
    using Shared = std::shared_ptr<Entry>;

    // Within one clock; the other's time is the same for all.
    struct IsEarlier {
        bool operator()(const Shared& a, const Shared& b) const {
            return std::tie(a->runLoopDue, a->wallDue, a->armed) <
                   std::tie(b->runLoopDue, b->wallDue, b->armed);
        }
    };
    using Entries = std::set<Shared, IsEarlier>;

    Entries onRunLoop;
    Entries onWallClock;
    std::uint64_t armed = 0;

    Entries& of(const Entry& entry) { return entry.onWallClock ? onWallClock : onRunLoop; }
};

TimerQueue::TimerQueue() : state_(std::make_shared<State>()) {}
TimerQueue::~TimerQueue() = default;

Timer TimerQueue::insert(const std::shared_ptr<Entry>& entry) {
    entry->armed = ++state_->armed;
    state_->of(*entry).insert(entry);
    return Timer([weakState = std::weak_ptr<State>(state_), weakEntry = std::weak_ptr(entry)] {
        const auto state = weakState.lock();
        const auto held = weakEntry.lock();
        if (state && held) {
            state->of(*held).erase(held);
        }
    });
}

Timer TimerQueue::add(RunLoopTime due, RunLoopClock::duration period, Callback callback) {
    if (period < RunLoopClock::duration::zero()) {
        fatal("a timer with a negative period");
    }
    auto entry = std::make_shared<Entry>();
    entry->callback = std::move(callback);
    entry->runLoopDue = due;
    entry->period = period;
    return insert(entry);
}

Timer TimerQueue::add(WallTime due, Callback callback) {
    auto entry = std::make_shared<Entry>();
    entry->callback = std::move(callback);
    entry->wallDue = due;
    entry->onWallClock = true;
    return insert(entry);
}

std::optional<RunLoopTime> TimerQueue::nextRunLoopDue() const {
    const auto& entries = state_->onRunLoop;
    return entries.empty() ? std::nullopt : std::optional((*entries.begin())->runLoopDue);
}

std::optional<WallTime> TimerQueue::nextWallDue() const {
    const auto& entries = state_->onWallClock;
    return entries.empty() ? std::nullopt : std::optional((*entries.begin())->wallDue);
}

bool TimerQueue::runNext(RunLoopTime runLoopNow, WallTime wallNow) {
    State::Shared chosen;
    double chosenOverdueSec = 0;
    for (const auto* entries : {&state_->onRunLoop, &state_->onWallClock}) {
        if (entries->empty()) {
            continue;
        }
        const auto& first = *entries->begin();
        const double overdueSec = first->overdueSec(runLoopNow, wallNow);
        const bool isBeforeChosen =
            !chosen || overdueSec > chosenOverdueSec ||
            (overdueSec == chosenOverdueSec && first->armed < chosen->armed);
        if (overdueSec >= 0 && isBeforeChosen) {
            chosen = first;
            chosenOverdueSec = overdueSec;
        }
    }
    if (!chosen) {
        return false;
    }
    auto& entries = state_->of(*chosen);
    auto place = entries.extract(chosen);
    if (chosen->period > RunLoopClock::duration::zero()) {
        const auto missed = (runLoopNow - chosen->runLoopDue) / chosen->period;
        chosen->runLoopDue += (missed + 1) * chosen->period;
        entries.insert(std::move(place));
    }
    chosen->callback();
    return true;
}

}  // namespace ostrel
