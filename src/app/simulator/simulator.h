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
    void pass(double seconds);
    [[nodiscard]] RunLoopClock::duration sinceStart() const;
    [[nodiscard]] RunLoopTime runLoopTimeAt(double at) const;

    void perform(const step::SetDisplays& set);
    void perform(const step::SetUser& set);
    void perform(const step::SetIdle& set);
    void perform(const step::SetFrontmost& set);
    void perform(const step::SetWindows& set);
    void perform(const step::SetAssertions& set);
    void perform(const step::Announce& announce);
    void perform(const step::PressHotkey& press);
    void perform(const step::ValidateChord& validate);
    void perform(const step::Sleep& sleep);
    void perform(const step::ShiftClock& shift);
    void perform(const step::SetTimeZone& zone);
    void perform(const step::BecomeActive& become);
    void perform(const step::ChangeSettings& change);
    void perform(const step::ApplyPreset& apply);
    void perform(const step::Pause& pause);
    void perform(const step::Resume& resume);
    void perform(const step::StartNow& start);
    void perform(const step::PressKey& press);
    void perform(const step::PressOverlay& press);
    void perform(const step::PressToast& press);
    void perform(const step::AnswerNotification& answer);
    void perform(const step::Relaunch& relaunch);
    void perform(const step::FailEncoding& failing);
    void perform(const step::PrintReport& report);
    void perform(const step::Snapshot& snapshot);

    const Scenario& scenario_;
    MakeUuid makeUuid_;
    VirtualPlatform platform_;
    RunLoopClock::duration notRunning_{0};  // asleep or between two launches
    EventLog events_;
    std::unique_ptr<AppEnvironment> environment_;
    std::vector<Subscription> platformEvents_;
    std::vector<Subscription> environmentEvents_;
};

}  // namespace ostrel
