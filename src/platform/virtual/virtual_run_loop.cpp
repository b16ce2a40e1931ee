#include "platform/virtual/virtual_run_loop.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace ostrel {
Timer VirtualRunLoop::repeat(RunLoopClock::duration first, RunLoopClock::duration period,
                             Callback callback) {
    return queue_.add(now_ + first, period, std::move(callback));
}

Timer VirtualRunLoop::callAfter(RunLoopClock::duration delay, Callback callback) {
    return queue_.add(now_ + std::max(delay, RunLoopClock::duration::zero()),
                      RunLoopClock::duration::zero(), std::move(callback));
}

Timer VirtualRunLoop::callAt(WallTime due, Callback callback) {
    return queue_.add(due, std::move(callback));
}

WallTime VirtualRunLoop::wallNow() const {
    return wallOrigin_ + WallClock::duration{inSeconds(now_.time_since_epoch())};
}

void VirtualRunLoop::runDue() {
    while (queue_.runNext(now_, wallNow())) {
    }
}

// Run-loop timers that are due at exactly this instant are left out.
void VirtualRunLoop::runOverdueWallTimers() {
    while (queue_.runNext(now_ - RunLoopClock::duration(1), wallNow())) {
    }
}

void VirtualRunLoop::runUntil(RunLoopTime end) {
    runUpTo(end);
    runDue();
}

void VirtualRunLoop::runUpTo(RunLoopTime end) {
    for (auto due = nextDue(); due && *due < end; due = nextDue()) {
        now_ = std::max(now_, *due);
        runDue();
    }
    now_ = std::max(now_, end);
}

std::optional<RunLoopTime> VirtualRunLoop::nextDue() const {
    std::optional<RunLoopTime> next = queue_.nextRunLoopDue();
    if (const auto wallDue = queue_.nextWallDue()) {
        const double delaySec = std::max((*wallDue - wallNow()).count(), 0.0);
        // Beyond the range of run-loop time is never.
        if (delaySec < 1e9) {
            const RunLoopTime at = now_ + std::chrono::ceil<RunLoopClock::duration>(
                                              std::chrono::duration<double>(delaySec));
            next = next ? std::min(*next, at) : at;
        }
    }
    return next;
}

}  // namespace ostrel
