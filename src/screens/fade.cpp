#include "screens/fade.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace ostrel {
namespace {

constexpr std::chrono::milliseconds kFrame{33};
constexpr double kNsPerSecond = 1e9;

double easeOut(double share) {
    return 1.0 - (1.0 - share) * (1.0 - share);
}

}  // namespace

Fade::Fade() {
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.setInterval(kFrame);
    timer_.callOnTimeout([this] { advance(); });
}

void Fade::run(double seconds, Step step) {
    seconds_ = seconds;
    step_ = std::move(step);
    elapsed_.start();
    timer_.start();
}

void Fade::stop() {
    timer_.stop();
    step_ = nullptr;
}

void Fade::advance() {
    const double passed = static_cast<double>(elapsed_.nsecsElapsed()) / kNsPerSecond;
    const double share = seconds_ > 0 ? std::min(passed / seconds_, 1.0) : 1.0;
    if (share < 1.0) {
        step_(easeOut(share));
        return;
    }
    timer_.stop();
    if (const Step last = std::exchange(step_, nullptr)) {
        last(1.0);
    }
}

}  // namespace ostrel
