#include "platform/linux/linux_run_loop.h"

#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <utility>

#include "platform/linux/linux_clock.h"
#include "platform/linux/wall_alarm.h"

namespace ostrel {
namespace {

using std::chrono::milliseconds;

// Beyond this range, some centuries around the present, the ends will do.
constexpr double kFarSec = 9e9;

WallAlarm::UnixTime unixTime(WallTime time) {
    const double sec = secondsSinceReference(time) + WallClock::kUnixOffsetSec;
    const double milli = std::ceil(std::clamp(sec, -kFarSec, kFarSec) * 1000);
    return milliseconds{std::llround(milli)};
}

// The system's time at which the clock that shows `now` will show `due`. Clocks that are the same
// are not compared, for the system's may be set between two looks at it.
WallAlarm::UnixTime systemTimeOf(WallTime due, WallTime now) {
    const WallTime systemNow = systemWallTime();
    const bool isSystemClock = std::abs((systemNow - now).count()) < 1;
    return unixTime(isSystemClock ? due : due + (systemNow - now));
}

RunLoopTime monotonicNow() {
    return RunLoopTime{std::chrono::steady_clock::now().time_since_epoch()};
}

}  // namespace

LinuxRunLoop::LinuxRunLoop(NowFunction wallNow)
    : QueuedRunLoop({monotonicNow, std::move(wallNow)}),
      timer_(std::make_unique<QTimer>()),
      alarm_(std::make_unique<WallAlarm>([this](WallAlarm::Reason reason) {
          alarmIsSet_ = false;
          reason == WallAlarm::Reason::clockSet ? handleClockChange() : runDue();
      })) {
    timer_->setSingleShot(true);
    timer_->setTimerType(Qt::PreciseTimer);
    QObject::connect(timer_.get(), &QTimer::timeout, timer_.get(), [this] { runDue(); });
}

LinuxRunLoop::~LinuxRunLoop() = default;

void LinuxRunLoop::handleClockChange() {
    const std::weak_ptr stillThere = alive();
    alarmIsSet_ = false;
    clockWasSet.send();
    if (!stillThere.expired()) {
        runDue();
    }
}

void LinuxRunLoop::armAtOnce() {
    armedFor_.reset();
    timer_->start(0);
}

void LinuxRunLoop::arm() {
    armForRunLoopTimers();
    armForWallTimers();
}

void LinuxRunLoop::armForRunLoopTimers() {
    const auto due = queue().nextRunLoopDue();
    if (!due) {
        timer_->stop();
    } else if (due != armedFor_ || !timer_->isActive()) {
        const auto wait = std::chrono::ceil<milliseconds>(*due - now()).count();
        timer_->start(
            static_cast<int>(std::clamp<std::int64_t>(wait, 0, std::numeric_limits<int>::max())));
    }
    armedFor_ = due;
}

void LinuxRunLoop::armForWallTimers() {
    const auto due = queue().nextWallDue();
    if (alarmIsSet_ && due == alarmSetFor_) {
        return;
    }
    alarmIsSet_ = true;
    alarmSetFor_ = due;
    alarm_->setFor(due ? std::optional(systemTimeOf(*due, wallNow())) : std::nullopt);
}

}  // namespace ostrel
