#include "platform/loop/queued_run_loop.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <utility>

namespace ostrel {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kLongTurn{100};
// A turn, or a start of the program, that has lasted longer than this is not one moment.
constexpr milliseconds kOneMoment{250};

}  // namespace

QueuedRunLoop::QueuedRunLoop(Clocks clocks)
    : clocks_(std::move(clocks)),
      turnBegan_(clocks_.now()),
      alive_(std::make_shared<const int>(0)) {}

QueuedRunLoop::~QueuedRunLoop() = default;

RunLoopTime QueuedRunLoop::instantOfThisTurn() const {
    const RunLoopTime current = now();
    return turnBegan_ && current - *turnBegan_ < kOneMoment ? *turnBegan_ : current;
}

Timer QueuedRunLoop::repeat(RunLoopClock::duration first, RunLoopClock::duration period,
                            Callback callback) {
    return armed(queue_.add(instantOfThisTurn() + first, period, std::move(callback)));
}

Timer QueuedRunLoop::callAfter(RunLoopClock::duration delay, Callback callback) {
    return armed(queue_.add(now() + std::max(delay, RunLoopClock::duration::zero()),
                            RunLoopClock::duration::zero(), std::move(callback)));
}

Timer QueuedRunLoop::callAt(WallTime due, Callback callback) {
    if (std::isnan(secondsSinceReference(due))) {
        due = wallTimeAt(std::numeric_limits<double>::infinity());
    }
    return armed(queue_.add(due, std::move(callback)));
}

Timer QueuedRunLoop::armed(Timer timer) {
    arm();
    return Timer([this, alive = alive(), held = std::make_shared<Timer>(std::move(timer))] {
        held->cancel();
        if (!alive.expired()) {
            arm();
        }
    });
}

void QueuedRunLoop::runDue() {
    const std::weak_ptr alive = alive_;
    const RunLoopTime began = now();
    const WallTime wallBegan = wallNow();
    turnBegan_ = began;
    // An event loop inside a callback goes on with what is still due.
    armAtOnce();
    while (now() - began < kLongTurn && queue_.runNext(began, wallBegan)) {
        if (alive.expired()) {
            return;
        }
    }
    turnBegan_.reset();
    arm();
}

}  // namespace ostrel
