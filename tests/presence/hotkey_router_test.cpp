#include "presence/hotkey_router.h"

#include <gtest/gtest.h>

#include "platform/virtual/virtual_devices.h"
#include "support/events.h"
#include "support/records_bench.h"

namespace ostrel {

using Result = HotkeyRouter::ChordValidationResult;
using Kind = Result::Kind;
using Action = HotkeyRouter::Action;

constexpr std::uint32_t kCommand = HotkeyChord::kCommand;
constexpr std::uint32_t kShift = HotkeyChord::kShift;
constexpr std::uint32_t kOption = HotkeyChord::kOption;
constexpr std::uint32_t kControl = HotkeyChord::kControl;

struct HotkeyRouterTest : ::testing::Test, RecordsBench {
    HotkeyRouterTest() { router.setActive(true); }
    void bind(const HotkeyChord& startBreak, const HotkeyChord& togglePause) {
        setUp([&](SettingsModel& model) {
            model.startBreakHotkey = startBreak;
            model.togglePauseHotkey = togglePause;
        });
    }

    VirtualHotkeys hotkeys;
    Events refused;
    HotkeyRouter router{{settings, hotkeys, nullptr}};
    Subscription watching = router.refused.subscribe(
        [this](const HotkeyChord& chord) { refused.push_back(chord.displayString); });
};

TEST(HotkeyValidation, RefusesWhatCannotBeAndWhatTheSystemUses) {
    const struct {
        std::uint32_t keyCode = 0;
        std::uint32_t modifiers = 0;
        Result result;
    } cases[] = {
        {128, kCommand, {Kind::invalid, {}}},
        {127, kCommand, {}},
        {11, 0, {Kind::invalid, {}}},
        {49, kCommand, {Kind::collision, "Spotlight"}},
        {49, kCommand + kOption, {}},
        {20, kCommand + kShift, {Kind::collision, "Screenshot Entire Screen"}},
        {125, kControl, {Kind::collision, "App Exposé"}},
        {125, kCommand, {}},
    };
    for (const auto& [keyCode, modifiers, result] : cases) {
        EXPECT_EQ(HotkeyRouter::validate({keyCode, modifiers, "any"}), result)
            << keyCode << " " << modifiers;
    }
}

TEST_F(HotkeyRouterTest, AChangedChordDoesNotStayBesideItsSuccessor) {
    bind({12, kControl, "⌃Q"}, SettingsModel().togglePauseHotkey);
    EXPECT_FALSE(hotkeys.press(11, kCommand + kShift));
    EXPECT_TRUE(hotkeys.press(12, kControl));
    router.setActive(false);
    bind({14, kControl, "⌃E"}, SettingsModel().togglePauseHotkey);
    EXPECT_EQ(hotkeys.count(), 0U);
}

TEST_F(HotkeyRouterTest, WhatAnotherProgramHoldsOrBothWouldShareIsTold) {
    hotkeys.heldByOthers = {{14, kControl}};
    bind({14, kControl, "⌃E"}, {15, kControl, "⌃R"});
    EXPECT_EQ(refused, Events{"⌃E"});
    EXPECT_FALSE(router.isRegistered(Action::startBreak));
    EXPECT_TRUE(router.isRegistered(Action::togglePause));
    bind({16, kControl, "⌃Y"}, {16, kControl, "also"});
    EXPECT_EQ(refused, (Events{"⌃E", "also"}));
    EXPECT_TRUE(router.isRegistered(Action::startBreak));
}

}  // namespace ostrel
