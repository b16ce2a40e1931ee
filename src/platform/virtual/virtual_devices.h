#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "platform/api/displays.h"
#include "platform/api/frontmost_application.h"
#include "platform/api/global_hotkeys.h"
#include "platform/api/haptics.h"
#include "platform/api/input_idle.h"
#include "platform/api/motion_settings.h"
#include "platform/api/power_assertions.h"
#include "platform/api/screen_windows.h"

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

class VirtualScreenWindows : public ScreenWindows {
  public:
    [[nodiscard]] std::optional<std::vector<Window>> onScreen() const override { return windows_; }
    void set(std::vector<Window> windows) { windows_ = std::move(windows); }

  private:
    std::vector<Window> windows_;
};

class VirtualPowerAssertions : public PowerAssertions {
  public:
    [[nodiscard]] std::optional<ByProcess> byProcess() const override { return byProcess_; }
    void set(ByProcess byProcess) { byProcess_ = std::move(byProcess); }

  private:
    ByProcess byProcess_;
};

// Chords are pressed by a script; some may be held by another program.
class VirtualHotkeys : public GlobalHotkeys {
  public:
    using Chord = std::pair<std::uint32_t, std::uint32_t>;  // key code and modifiers

    [[nodiscard]] std::unique_ptr<Registration> add(std::uint32_t keyCode, std::uint32_t modifiers,
                                                    std::function<void()> onPress) override {
        const Chord chord{keyCode, modifiers};
        if (heldByOthers.contains(chord) || presses_.contains(chord)) {
            return nullptr;
        }
        presses_[chord] = std::move(onPress);
        return std::make_unique<VirtualRegistration>(*this, chord);
    }

    // False when nobody registered it.
    bool press(std::uint32_t keyCode, std::uint32_t modifiers) {
        const auto found = presses_.find({keyCode, modifiers});
        if (found == presses_.end()) {
            return false;
        }
        const std::function<void()> onPress = found->second;
        onPress();
        return true;
    }

    [[nodiscard]] std::size_t count() const { return presses_.size(); }

    std::set<Chord> heldByOthers;

  private:
    class VirtualRegistration : public Registration {
      public:
        VirtualRegistration(VirtualHotkeys& hotkeys, Chord chord)
            : hotkeys_(hotkeys), chord_(chord) {}
        VirtualRegistration(const VirtualRegistration&) = delete;
        VirtualRegistration& operator=(const VirtualRegistration&) = delete;
        ~VirtualRegistration() override { hotkeys_.presses_.erase(chord_); }

      private:
        VirtualHotkeys& hotkeys_;
        Chord chord_;
    };

    std::map<Chord, std::function<void()>> presses_;
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
