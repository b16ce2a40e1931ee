#include "platform/linux/wall_alarm.h"

#include <sys/timerfd.h>
#include <unistd.h>

#include <QMetaObject>
#include <QSocketNotifier>
#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <utility>

#include "base/fatal.h"

namespace ostrel {
namespace {

// An unarmed timer would not tell of a set clock; in the year 2255 it rings in vain.
constexpr WallAlarm::UnixTime kFarFuture = std::chrono::seconds{9'000'000'000};

}  // namespace

WallAlarm::WallAlarm(Ring ring)
    : ring_(std::move(ring)), timer_(timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC)) {
    if (timer_ < 0) {
        fatal("the system gives no timer on the wall clock");
    }
    notifier_ = std::make_unique<QSocketNotifier>(timer_, QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                     [this] { rang(); });
    setFor(std::nullopt);
}

WallAlarm::~WallAlarm() {
    notifier_.reset();
    close(timer_);
}

void WallAlarm::setFor(std::optional<UnixTime> due) {
    // Zero would disarm it.
    const UnixTime at = std::clamp(due.value_or(kFarFuture), UnixTime{1}, kFarFuture);
    const auto whole = std::chrono::floor<std::chrono::seconds>(at);
    itimerspec spec{};
    spec.it_value.tv_sec = whole.count();
    spec.it_value.tv_nsec = (at - whole).count();
    const int result =
        timerfd_settime(timer_, TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &spec, nullptr);
    if (result != 0 && errno == ECANCELED) {
        // It is armed, but tells here, and only here, that the clock was set before.
        QMetaObject::invokeMethod(
            notifier_.get(), [this] { ring_(Reason::clockSet); }, Qt::QueuedConnection);
    }
}

void WallAlarm::rang() {
    std::uint64_t expirations = 0;
    if (read(timer_, &expirations, sizeof expirations) == sizeof expirations) {
        ring_(Reason::due);
    } else if (errno == ECANCELED) {
        ring_(Reason::clockSet);
    }
}

}  // namespace ostrel
