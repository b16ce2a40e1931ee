#pragma once

#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "platform/api/displays.h"
#include "platform/api/frontmost_application.h"
#include "platform/api/haptics.h"
#include "platform/api/input_idle.h"
#include "platform/api/motion_settings.h"

namespace ostrel {

// Displays as a script sets them.
class VirtualDisplays : public Displays {
  public:
    VirtualDisplays() { set({{1, {0, 0, 1920, 1080}}}, 1); }

    [[nodiscard]] std::vector<Display> current() const override { return displays_; }
    [[nodiscard]] std::optional<std::uint32_t> mainDisplayID() const override { return mainID_; }

    void set(std::vector<Display> displays, std::optional<std::uint32_t> mainID) {
        displays_ = std::move(displays);
        mainID_ = mainID;
        changed.send();
    }

  private:
    std::vector<Display> displays_;
    std::optional<std::uint32_t> mainID_;
};

class VirtualFrontmostApplication : public FrontmostApplication {
  public:
    [[nodiscard]] std::optional<Application> current() const override { return current_; }
    void set(std::optional<Application> application) { current_ = std::move(application); }

  private:
    std::optional<Application> current_;
};

// Reads 0 until it is given another reading.
class VirtualInputIdle : public InputIdle {
  public:
    [[nodiscard]] std::optional<double> secondsSinceLastInput() const override {
        return reading_ ? reading_() : 0;
    }
    void setReading(std::function<std::optional<double>()> reading) {
        reading_ = std::move(reading);
    }

  private:
    std::function<std::optional<double>()> reading_;
};

class VirtualMotionSettings : public MotionSettings {
  public:
    [[nodiscard]] bool reduceMotion() const override { return reduceMotion_; }
    void setReduceMotion(bool reduceMotion) { reduceMotion_ = reduceMotion; }

  private:
    bool reduceMotion_ = false;
};

// Tells of each tap instead of giving it.
class VirtualHaptics : public Haptics {
  public:
    void play(int pattern) override { played.send(pattern); }

    Signal<int> played;
};

}  // namespace ostrel
