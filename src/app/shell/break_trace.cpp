#include "app/shell/break_trace.h"

#include <QtGlobal>
#include <chrono>
#include <cstdio>
#include <string>

#include "app/environment/app_environment.h"

namespace ostrel {
namespace {

double monotonicMs() {
    return std::chrono::duration<double, std::milli>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

void traceDue() {
    std::fprintf(stderr, "trace due %.3f\n", monotonicMs());
}

}  // namespace

// Made before the overlay manager, so that it hears of a break before there are windows.
BreakTrace::BreakTrace(AppEnvironment& environment) {
    if (!qEnvironmentVariableIsSet("OSTREL_TRACE")) {
        return;
    }
    TimerEngine& engine = environment.timerEngine();
    subscriptions_.push_back(engine.shouldOpenEyeBreak.subscribe([](std::int64_t) { traceDue(); }));
    subscriptions_.push_back(
        engine.shouldOpenBodyBreak.subscribe([](std::int64_t) { traceDue(); }));
    subscriptions_.push_back(
        environment.overlayManager().didPaintWindow.subscribe([](std::uint32_t displayID) {
            std::fprintf(stderr, "trace painted %u %.3f\n", displayID, monotonicMs());
        }));
    subscriptions_.push_back(environment.overlayManager().didReachZero.subscribe(
        [](BreakLogEntry::Kind) { std::fprintf(stderr, "trace zero %.3f\n", monotonicMs()); }));
    subscriptions_.push_back(environment.overlayManager().didClose.subscribe(
        [](BreakLogEntry::Kind, CloseReason reason) {
            const std::string name(nameOf(reason));
            std::fprintf(stderr, "trace closed %s %.3f\n", name.c_str(), monotonicMs());
        }));
}

}  // namespace ostrel
