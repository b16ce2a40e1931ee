#include "presence/hotkey_router.h"

#include <gtest/gtest.h>

#include "platform/virtual/virtual_devices.h"
#include "support/events.h"
#include "support/records_bench.h"

namespace ostrel {

using Action = HotkeyRouter::Action;

constexpr std::uint32_t kCommand = HotkeyChord::kCommand;
constexpr std::uint32_t kShift = HotkeyChord::kShift;
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

TEST(ChordValidationTest, OnlyTheChordsOfTheSystemItselfCollideAndOnlyAsTheyAre) {
    const struct {
        std::uint32_t keyCode;
        std::uint32_t modifiers;
        const char* holder;  // empty: nobody; "invalid": no chord at all
    } cases[] = {
        {49, kCommand, "Spotlight"},
        {12, kCommand, "Quit Application"},
        {20, kCommand + kShift, "Screenshot Entire Screen"},
        {126, kControl, "Mission Control"},
        {125, kControl, "App Exposé"},
        {49, kCommand + kShift, ""},
        {20, kCommand, ""},
        {127, kControl, ""},
        {128, kControl, "invalid"},
        {49, 0, "invalid"},
    };
    for (const auto& [keyCode, modifiers, holder] : cases) {
        const auto [kind, label] = HotkeyRouter::validate({keyCode, modifiers, ""});
        using Kind = HotkeyRouter::ChordValidationResult::Kind;
        EXPECT_EQ(kind == Kind::invalid ? "invalid" : label, holder) << keyCode;
        EXPECT_EQ(kind == Kind::ok, *holder == '\0') << keyCode;
    }
}

}  // namespace ostrel
