#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "base/localized_text.h"
#include "base/published.h"
#include "base/signal.h"
#include "base/subscription.h"
#include "core/settings/hotkey_chord.h"
#include "platform/api/global_hotkeys.h"

namespace ostrel {

class SettingsStore;
class TimerEngine;

// Registers the two chords of the settings with the system, anew after each change of them, and
// routes their presses to the engine: one starts an eye break, one begins or ends a pause.
class HotkeyRouter {
  public:
    // A chord that the system itself uses.
    struct ReservedShortcut {
        std::uint32_t keyCode;
        std::uint32_t modifiers;
        std::string_view label;
    };

    // A `collision` carries the label of what it collides with.
    struct ChordValidationResult {
        enum class Kind { ok, invalid, collision };

        Kind kind = Kind::ok;
        std::string_view label;

        bool operator==(const ChordValidationResult&) const = default;
    };

    struct BoundChords {
        HotkeyChord startBreak;
        HotkeyChord togglePause;

        bool operator==(const BoundChords&) const = default;
    };

    enum class Action { startBreak, togglePause };

    // What the router works with. All of it outlives the router.
    struct Services {
        const SettingsStore& settingsStore;
        GlobalHotkeys& hotkeys;
        TimerEngine* timerEngine = nullptr;  // may be absent
    };

    explicit HotkeyRouter(Services services);
    HotkeyRouter(const HotkeyRouter&) = delete;
    HotkeyRouter& operator=(const HotkeyRouter&) = delete;
    ~HotkeyRouter();

    [[nodiscard]] static std::span<const ReservedShortcut> reservedShortcuts();
    [[nodiscard]] static ChordValidationResult validate(const HotkeyChord& chord);

    // Whether they are the same keys, however they are written.
    [[nodiscard]] static bool areSame(const HotkeyChord& one, const HotkeyChord& other);

    // What speaks against a chord beside that of the other action; absent when nothing does.
    [[nodiscard]] static std::optional<LocalizedText> problemOf(const HotkeyChord& chord,
                                                                const HotkeyChord& other);

    // While active the chords are registered.
    void setActive(bool isActive);
    [[nodiscard]] bool isActive() const { return isActive_; }

    // The pair that was registered last; absent while inactive.
    [[nodiscard]] const Published<std::optional<BoundChords>>& boundChords() const {
        return boundChords_;
    }

    // Whether the system delivers the chord's presses. It does not where another program holds it,
    // nor for the second of two equal chords.
    [[nodiscard]] bool isRegistered(Action action) const;

    // Does what a press of the action's chord does.
    void perform(Action action);

    // A chord that the system did not give us, after a rebind.
    Signal<const HotkeyChord&> refused;

  private:
    using Registration = std::unique_ptr<GlobalHotkeys::Registration>;

    void rebind();
    [[nodiscard]] Registration registered(const HotkeyChord& chord, Action action);

    Services services_;
    bool isActive_ = false;
    Published<std::optional<BoundChords>> boundChords_;
    std::array<Registration, 2> hotKeys_;  // by Action
    Subscription cancellables_;
};
constexpr std::array<std::string_view, 3> enumNames(HotkeyRouter::ChordValidationResult::Kind) {
    return {"ok", "invalid", "collision"};
}
constexpr std::array<std::string_view, 2> enumNames(HotkeyRouter::Action) {
    return {"startBreak", "togglePause"};
}

}  // namespace ostrel
