#include "presence/hotkey_router.h"

#include <algorithm>
#include <utility>

#include "core/engine/timer_engine.h"
#include "core/settings/settings_store.h"

namespace ostrel {
namespace {

using Kind = HotkeyRouter::ChordValidationResult::Kind;

constexpr std::uint32_t kLastKeyCode = 127;
constexpr std::uint32_t kCommandShift = HotkeyChord::kCommand + HotkeyChord::kShift;

constexpr std::array<HotkeyRouter::ReservedShortcut, 10> kReserved = {{
    {49, HotkeyChord::kCommand, "Spotlight"},
    {48, HotkeyChord::kCommand, "App Switcher"},
    {12, HotkeyChord::kCommand, "Quit Application"},
    {13, HotkeyChord::kCommand, "Close Window"},
    {17, HotkeyChord::kCommand, "Hide Application"},
    {20, kCommandShift, "Screenshot Entire Screen"},
    {21, kCommandShift, "Screenshot Region"},
    {23, kCommandShift, "Screenshot UI"},
    {126, HotkeyChord::kControl, "Mission Control"},
    {125, HotkeyChord::kControl, "App Exposé"},
}};

template <class One, class Other>
bool isSameChord(const One& one, const Other& other) {
    return one.keyCode == other.keyCode && one.modifiers == other.modifiers;
}

HotkeyRouter::BoundChords chordsOf(const SettingsModel& settings) {
    return {settings.startBreakHotkey, settings.togglePauseHotkey};
}

}  // namespace

HotkeyRouter::HotkeyRouter(Services services)
    : services_(services),
      cancellables_(
          services_.settingsStore.settings().onChange([this](const SettingsModel& settings) {
              if (isActive_ && *boundChords_ != chordsOf(settings)) {
                  rebind();
              }
          })) {}

HotkeyRouter::~HotkeyRouter() = default;

std::span<const HotkeyRouter::ReservedShortcut> HotkeyRouter::reservedShortcuts() {
    return kReserved;
}

HotkeyRouter::ChordValidationResult HotkeyRouter::validate(const HotkeyChord& chord) {
    if (chord.keyCode > kLastKeyCode || chord.modifiers == 0) {
        return {Kind::invalid, {}};
    }
    const auto hit = std::ranges::find_if(
        kReserved, [&chord](const auto& reserved) { return isSameChord(reserved, chord); });
    return hit == kReserved.end() ? ChordValidationResult{}
                                  : ChordValidationResult{Kind::collision, hit->label};
}

bool HotkeyRouter::areSame(const HotkeyChord& one, const HotkeyChord& other) {
    return isSameChord(one, other);
}

std::optional<LocalizedText> HotkeyRouter::problemOf(const HotkeyChord& chord,
                                                     const HotkeyChord& other) {
    const auto [kind, label] = validate(chord);
    switch (kind) {
        case Kind::invalid:
            return LocalizedText{"settings.shortcuts.invalid", {}};
        case Kind::collision:
            return LocalizedText{"settings.shortcuts.collision %@", {std::string(label)}};
        case Kind::ok:
            break;
    }
    return areSame(chord, other) ? std::optional(LocalizedText{"settings.shortcuts.equal", {}})
                                 : std::nullopt;
}

void HotkeyRouter::setActive(bool isActive) {
    isActive_ = isActive;
    rebind();
}

bool HotkeyRouter::isRegistered(Action action) const {
    return hotKeys_[static_cast<std::size_t>(action)] != nullptr;
}

void HotkeyRouter::rebind() {
    hotKeys_ = {};
    if (!isActive_) {
        boundChords_.set(std::nullopt);
        return;
    }
    const BoundChords chords = chordsOf(*services_.settingsStore.settings());
    hotKeys_[0] = registered(chords.startBreak, Action::startBreak);
    if (!isSameChord(chords.startBreak, chords.togglePause)) {
        hotKeys_[1] = registered(chords.togglePause, Action::togglePause);
    }
    boundChords_.set(chords);
    if (!hotKeys_[0]) {
        refused.send(chords.startBreak);
    }
    if (!hotKeys_[1]) {
        refused.send(chords.togglePause);
    }
}

HotkeyRouter::Registration HotkeyRouter::registered(const HotkeyChord& chord, Action action) {
    return services_.hotkeys.add(chord.keyCode, chord.modifiers,
                                 [this, action] { perform(action); });
}

void HotkeyRouter::perform(Action action) {
    if (!services_.timerEngine) {
        return;
    }
    if (action == Action::startBreak) {
        services_.timerEngine->startNow(BreakKind::eye);
    } else {
        services_.timerEngine->togglePause();
    }
}

}  // namespace ostrel
