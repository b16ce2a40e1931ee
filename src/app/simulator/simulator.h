#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/environment/app_environment.h"
#include "app/simulator/event_log.h"
#include "app/simulator/scenario.h"
#include "app/simulator/virtual_platform.h"
#include "base/uuid.h"

namespace ostrel {

// Runs a scenario over the very environment that the desktop application builds and prints what
// happens, one JSON object a line.
//
// The same scenario prints the same lines, fresh identifiers excepted.
class Simulator {
  public:
    Simulator(const Scenario& scenario, MakeUuid makeUuid, EventLog::Print print);
    Simulator(const Simulator&) = delete;
    Simulator& operator=(const Simulator&) = delete;
    ~Simulator();

    void run();

  private:
    void launch();
    void quit();
    void perform(const StepAction& action);
    void pass(double seconds);
    [[nodiscard]] RunLoopTime runLoopTimeAt(double at) const;
    [[nodiscard]] double untilEnd(double seconds) const;

    const Scenario& scenario_;
    MakeUuid makeUuid_;
    VirtualPlatform platform_;
    double notRunningSec_ = 0;  // asleep or between two launches
    EventLog events_;
    std::unique_ptr<AppEnvironment> environment_;
    std::vector<Subscription> platformEvents_;
    std::vector<Subscription> environmentEvents_;
};

}  // namespace ostrel
