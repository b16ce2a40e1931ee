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

// After that long the other events of the loop get their turn.
constexpr milliseconds kLongTurn{100};
// A turn, or a start of the program, that has lasted longer than this is not one moment.
constexpr milliseconds kOneMoment{250};

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
    : wallNow_(std::move(wallNow)),
      turnBegan_(monotonicNow()),
      alive_(std::make_shared<const int>(0)),
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

RunLoopTime LinuxRunLoop::now() const {
    return monotonicNow();
}

RunLoopTime LinuxRunLoop::instantOfThisTurn() const {
    const RunLoopTime current = now();
    return turnBegan_ && current - *turnBegan_ < kOneMoment ? *turnBegan_ : current;
}

Timer LinuxRunLoop::repeat(RunLoopClock::duration first, RunLoopClock::duration period,
                           Callback callback) {
    return armed(queue_.add(instantOfThisTurn() + first, period, std::move(callback)));
}

Timer LinuxRunLoop::callAfter(RunLoopClock::duration delay, Callback callback) {
    return armed(queue_.add(now() + std::max(delay, RunLoopClock::duration::zero()),
                            RunLoopClock::duration::zero(), std::move(callback)));
}

Timer LinuxRunLoop::callAt(WallTime due, Callback callback) {
    if (std::isnan(secondsSinceReference(due))) {
        due = wallTimeAt(std::numeric_limits<double>::infinity());
    }
    return armed(queue_.add(due, std::move(callback)));
}

// Nothing may wake the process for a timer that was stopped.
Timer LinuxRunLoop::armed(Timer timer) {
    arm();
    return Timer(
        [this, alive = std::weak_ptr(alive_), held = std::make_shared<Timer>(std::move(timer))] {
            held->cancel();
            if (!alive.expired()) {
                arm();
            }
        });
}

void LinuxRunLoop::handleClockChange() {
    const std::weak_ptr alive = alive_;
    alarmIsSet_ = false;
    clockWasSet.send();
    if (!alive.expired()) {
        runDue();
    }
}

void LinuxRunLoop::runDue() {
    const std::weak_ptr alive = alive_;
    const RunLoopTime began = now();
    const WallTime wallBegan = wallNow_();
    turnBegan_ = began;
    // An event loop inside a callback goes on with what is still due.
    armedFor_.reset();
    timer_->start(0);
    while (now() - began < kLongTurn && queue_.runNext(began, wallBegan)) {
        if (alive.expired()) {
            return;
        }
    }
    turnBegan_.reset();
    armedFor_.reset();
    arm();
}

void LinuxRunLoop::arm() {
    armForRunLoopTimers();
    armForWallTimers();
}

void LinuxRunLoop::armForRunLoopTimers() {
    const auto due = queue_.nextRunLoopDue();
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
    const auto due = queue_.nextWallDue();
    if (alarmIsSet_ && due == alarmSetFor_) {
        return;
    }
    alarmIsSet_ = true;
    alarmSetFor_ = due;
    alarm_->setFor(due ? std::optional(systemTimeOf(*due, wallNow_())) : std::nullopt);
}

}  // namespace ostrel
