#include "presence/hotkey_router.h"

#include <gtest/gtest.h>

#include <optional>

#include "support/events.h"
#include "support/presence_bench.h"

namespace ostrel {
namespace {

using Result = HotkeyRouter::ChordValidationResult;
using Kind = Result::Kind;
using Action = HotkeyRouter::Action;

constexpr std::uint32_t kCommand = HotkeyChord::kCommand;
constexpr std::uint32_t kShift = HotkeyChord::kShift;
constexpr std::uint32_t kOption = HotkeyChord::kOption;
constexpr std::uint32_t kControl = HotkeyChord::kControl;

struct HotkeyRouterTest : ::testing::Test, PresenceBench {
    HotkeyRouterTest() {
        engineEvents.push_back(
            engine.shouldOpenEyeBreak.subscribe([this](auto) { told.emplace_back("eye break"); }));
        engineEvents.push_back(router->refused.subscribe([this](const HotkeyChord& chord) {
            told.push_back("refused " + chord.displayString);
        }));
        router->setActive(true);
    }
    void bind(const HotkeyChord& startBreak, const HotkeyChord& togglePause) {
        setUp([&](SettingsModel& model) {
            model.startBreakHotkey = startBreak;
            model.togglePauseHotkey = togglePause;
        });
    }

    VirtualHotkeys hotkeys;
    Events told;
    std::optional<HotkeyRouter> router{std::in_place,
                                       HotkeyRouter::Services{settings, hotkeys, &engine}};
    std::vector<Subscription> engineEvents;
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
    const SettingsModel defaults;
    EXPECT_EQ(HotkeyRouter::validate(defaults.startBreakHotkey), Result{});
    EXPECT_EQ(HotkeyRouter::validate(defaults.togglePauseHotkey), Result{});
}

TEST_F(HotkeyRouterTest, AChangedChordDoesNotStayBesideItsSuccessor) {
    bind({12, kControl, "⌃Q"}, SettingsModel().togglePauseHotkey);
    EXPECT_FALSE(hotkeys.press(11, kCommand + kShift));
    EXPECT_TRUE(hotkeys.press(12, kControl));
    EXPECT_EQ((*router->boundChords())->startBreak.displayString, "⌃Q");
    router->setActive(false);
    EXPECT_EQ(hotkeys.count(), 0U);
    EXPECT_FALSE(*router->boundChords());
    bind({14, kControl, "⌃E"}, SettingsModel().togglePauseHotkey);
    EXPECT_EQ(hotkeys.count(), 0U);
}

TEST_F(HotkeyRouterTest, WhatAnotherProgramHoldsOrBothWouldShareIsTold) {
    hotkeys.heldByOthers = {{14, kControl}};
    bind({14, kControl, "⌃E"}, {15, kControl, "⌃R"});
    EXPECT_EQ(told, Events{"refused ⌃E"});
    EXPECT_FALSE(router->isRegistered(Action::startBreak));
    EXPECT_TRUE(router->isRegistered(Action::togglePause));
    bind({16, kControl, "⌃Y"}, {16, kControl, "also"});
    EXPECT_EQ(told, (Events{"refused ⌃E", "refused also"}));
    EXPECT_TRUE(hotkeys.press(16, kControl));
    EXPECT_EQ(told.back(), "eye break");
}

}  // namespace
}  // namespace ostrel
