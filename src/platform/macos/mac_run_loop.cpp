#include "platform/macos/mac_run_loop.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>

namespace ostrel {
namespace {

using Duration = RunLoopClock::duration;
using std::chrono::milliseconds;

// After that long the other events of the loop get their turn.
constexpr milliseconds kLongTurn{100};
// A turn, or a start of the program, that has lasted longer than this is not one moment.
constexpr milliseconds kOneMoment{250};
constexpr Duration kLongestWait = std::chrono::hours{24};

Duration waitFor(WallTime due, WallTime now) {
    const double sec = (due - now).count();
    return runLoopSec(std::clamp(sec, 0.0, inSeconds(kLongestWait)));
}

}  // namespace

MacRunLoop::MacRunLoop(Clocks clocks, std::unique_ptr<Alarm> alarm)
    : clocks_(std::move(clocks)),
      turnBegan_(clocks_.awakeNow()),
      alive_(std::make_shared<const int>(0)),
      alarm_(std::move(alarm)),
      rings_(alarm_->rang.subscribe([this] {
          const std::weak_ptr alive = alive_;
          turnBegins.send();
          if (!alive.expired()) {
              runDue();
          }
      })) {}

MacRunLoop::~MacRunLoop() = default;

RunLoopTime MacRunLoop::now() const {
    return clocks_.awakeNow();
}

RunLoopTime MacRunLoop::instantOfThisTurn() const {
    const RunLoopTime current = now();
    return turnBegan_ && current - *turnBegan_ < kOneMoment ? *turnBegan_ : current;
}

Timer MacRunLoop::repeat(Duration first, Duration period, Callback callback) {
    return armed(queue_.add(instantOfThisTurn() + first, period, std::move(callback)));
}

Timer MacRunLoop::callAfter(Duration delay, Callback callback) {
    return armed(queue_.add(now() + std::max(delay, Duration::zero()), Duration::zero(),
                            std::move(callback)));
}

Timer MacRunLoop::callAt(WallTime due, Callback callback) {
    if (std::isnan(secondsSinceReference(due))) {
        due = wallTimeAt(std::numeric_limits<double>::infinity());
    }
    return armed(queue_.add(due, std::move(callback)));
}

// Nothing may wake the process for a timer that was stopped.
Timer MacRunLoop::armed(Timer timer) {
    arm();
    return Timer(
        [this, alive = std::weak_ptr(alive_), held = std::make_shared<Timer>(std::move(timer))] {
            held->cancel();
            if (!alive.expired()) {
                arm();
            }
        });
}

void MacRunLoop::recheck() {
    runDue();
}

void MacRunLoop::runDue() {
    const std::weak_ptr alive = alive_;
    const RunLoopTime began = now();
    const WallTime wallBegan = clocks_.wallNow();
    turnBegan_ = began;
    // An event loop inside a callback goes on with what is still due.
    armedFor_.reset();
    alarm_->ringIn(Duration::zero());
    while (now() - began < kLongTurn && queue_.runNext(began, wallBegan)) {
        if (alive.expired()) {
            return;
        }
    }
    turnBegan_.reset();
    armedFor_.reset();
    arm();
}

void MacRunLoop::arm() {
    const Due due{queue_.nextRunLoopDue(), queue_.nextWallDue()};
    if (armedFor_ == due) {
        return;
    }
    armedFor_ = due;
    std::optional<Duration> wait;
    if (due.first) {
        wait = std::clamp(*due.first - now(), Duration::zero(), kLongestWait);
    }
    if (due.second) {
        wait = std::min(wait.value_or(kLongestWait), waitFor(*due.second, clocks_.wallNow()));
    }
    alarm_->ringIn(wait);
}

}  // namespace ostrel
