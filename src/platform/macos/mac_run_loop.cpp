#include "platform/macos/mac_run_loop.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace ostrel {
namespace {

using Duration = RunLoopClock::duration;
constexpr Duration kLongestWait = std::chrono::hours{24};

Duration waitFor(WallTime due, WallTime now) {
    const double sec = (due - now).count();
    return runLoopSec(std::clamp(sec, 0.0, inSeconds(kLongestWait)));
}

}  // namespace

MacRunLoop::MacRunLoop(Clocks clocks, std::unique_ptr<Alarm> alarm)
    : QueuedRunLoop(std::move(clocks)),
      alarm_(std::move(alarm)),
      rings_(alarm_->rang.subscribe([this] {
          const std::weak_ptr stillThere = alive();
          turnBegins.send();
          if (!stillThere.expired()) {
              recheck();
          }
      })) {}

MacRunLoop::~MacRunLoop() = default;

void MacRunLoop::recheck() {
    if (!isHeld_) {
        runDue();
    }
}

void MacRunLoop::armAtOnce() {
    armedFor_.reset();
    alarm_->ringIn(Duration::zero());
}

void MacRunLoop::arm() {
    const Due due{queue().nextRunLoopDue(), queue().nextWallDue()};
    if (armedFor_ == due) {
        return;
    }
    armedFor_ = due;
    std::optional<Duration> wait;
    if (due.first) {
        wait = std::clamp(*due.first - now(), Duration::zero(), kLongestWait);
    }
    if (due.second) {
        wait = std::min(wait.value_or(kLongestWait), waitFor(*due.second, wallNow()));
    }
    alarm_->ringIn(wait);
}

}  // namespace ostrel
