#include "base/timer_queue.h"

#include <algorithm>
#include <utility>

#include "base/fatal.h"

namespace ostrel {

struct TimerQueue::Entry {
    Callback callback;
    RunLoopTime runLoopDue;
    RunLoopClock::duration period{0};
    WallTime wallDue;
    bool onWallClock = false;

    [[nodiscard]] double overdueSec(RunLoopTime runLoopNow, WallTime wallNow) const {
        return onWallClock ? (wallNow - wallDue).count()
                           : std::chrono::duration<double>(runLoopNow - runLoopDue).count();
    }
};

// In the order in which they were armed.
struct TimerQueue::State {
    std::vector<std::shared_ptr<Entry>> entries;

    void remove(const Entry* gone) {
        const auto found = std::find_if(entries.begin(), entries.end(),
                                        [gone](const auto& entry) { return entry.get() == gone; });
        if (found != entries.end()) {
            entries.erase(found);
        }
    }
};

TimerQueue::TimerQueue() : state_(std::make_shared<State>()) {}
TimerQueue::~TimerQueue() = default;

Timer TimerQueue::insert(std::shared_ptr<Entry> entry) {
    const Entry* key = entry.get();
    std::weak_ptr<Entry> held = entry;
    state_->entries.push_back(std::move(entry));
    return Timer([weak = std::weak_ptr<State>(state_), held, key] {
        const auto state = weak.lock();
        if (state && !held.expired()) {
            state->remove(key);
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
    return insert(std::move(entry));
}

Timer TimerQueue::add(WallTime due, Callback callback) {
    auto entry = std::make_shared<Entry>();
    entry->callback = std::move(callback);
    entry->wallDue = due;
    entry->onWallClock = true;
    return insert(std::move(entry));
}

std::optional<RunLoopTime> TimerQueue::nextRunLoopDue() const {
    std::optional<RunLoopTime> next;
    for (const auto& entry : state_->entries) {
        if (!entry->onWallClock && (!next || entry->runLoopDue < *next)) {
            next = entry->runLoopDue;
        }
    }
    return next;
}

std::optional<WallTime> TimerQueue::nextWallDue() const {
    std::optional<WallTime> next;
    for (const auto& entry : state_->entries) {
        if (entry->onWallClock && (!next || entry->wallDue < *next)) {
            next = entry->wallDue;
        }
    }
    return next;
}

bool TimerQueue::runNext(RunLoopTime runLoopNow, WallTime wallNow) {
    const std::shared_ptr<Entry>* mostOverdue = nullptr;
    double mostOverdueSec = 0;
    for (const auto& entry : state_->entries) {
        const double overdueSec = entry->overdueSec(runLoopNow, wallNow);
        if (overdueSec >= 0 && (!mostOverdue || overdueSec > mostOverdueSec)) {
            mostOverdue = &entry;
            mostOverdueSec = overdueSec;
        }
    }
    if (!mostOverdue) {
        return false;
    }
    const std::shared_ptr<Entry> chosen = *mostOverdue;
    if (chosen->period > RunLoopClock::duration::zero()) {
        const auto missed = (runLoopNow - chosen->runLoopDue) / chosen->period;
        chosen->runLoopDue += (missed + 1) * chosen->period;
    } else {
        state_->remove(chosen.get());
    }
    chosen->callback();
    return true;
}

}  // namespace ostrel
