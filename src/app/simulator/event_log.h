#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "app/environment/app_environment.h"
#include "app/simulator/virtual_platform.h"
#include "base/subscription.h"
#include "core/settings/json.h"

namespace ostrel {

// Turns what happens in an environment into lines of JSON, each with `at`, `time` and `event`.
class EventLog {
  public:
    using Print = std::function<void(const std::string& line)>;
    using SecondsNow = std::function<double()>;

    // `secondsNow` counts from the start of the scenario.
    EventLog(VirtualPlatform& platform, SecondsNow secondsNow, Print print);

    [[nodiscard]] std::vector<Subscription> watchPlatform();
    [[nodiscard]] std::vector<Subscription> watch(AppEnvironment& environment);

    void print(std::string_view event, const Json& fields = Json::object());
    void printReport(AppEnvironment& environment, ReportSummaryView::Range range);
    void printSnapshot(AppEnvironment& environment, const Json& label);
    void printEnd();

  private:
    void watchOverlay(OverlayManager& overlay, std::vector<Subscription>& watching);
    void watchNotifications(std::vector<Subscription>& watching);
    void watchToasts(ToastDispatcher& toasts, std::vector<Subscription>& watching);
    void watchRecords(AppEnvironment& environment, std::vector<Subscription>& watching);
    void watchEngine(TimerEngine& engine, std::vector<Subscription>& watching);
    void watchPresence(AppEnvironment& environment, std::vector<Subscription>& watching);
    void watchPauses(const SessionStateStore& session, std::vector<Subscription>& watching);
    [[nodiscard]] static Json windows(const OverlayManager& overlay);

    VirtualPlatform& platform_;
    SecondsNow secondsNow_;
    Print print_;
};

}  // namespace ostrel
