#include "platform/macos/hotkey_presses.h"

#include <gtest/gtest.h>

#include <memory>

namespace ostrel {
namespace {

TEST(HotkeyPresses, APressReachesTheOneThatHasItsNumber) {
    HotkeyPresses presses;
    int first = 0;
    int second = 0;
    const std::uint32_t one = presses.add([&] { ++first; });
    const std::uint32_t two = presses.add([&] { ++second; });
    EXPECT_TRUE(presses.press(two));
    EXPECT_FALSE(presses.press(0)) << "a press of somebody else's";
    EXPECT_EQ(first, 0);
    EXPECT_EQ(second, 1);
    EXPECT_TRUE(presses.press(one));
    EXPECT_EQ(first, 1);
}

TEST(HotkeyPresses, APressThatArrivesLateReachesNobodyNotEvenASuccessor) {
    HotkeyPresses presses;
    int calls = 0;
    const std::uint32_t old = presses.add([&] { ++calls; });
    presses.remove(old);
    const std::uint32_t successor = presses.add([&] { ++calls; });
    EXPECT_FALSE(presses.press(old));
    EXPECT_EQ(calls, 0);
    EXPECT_NE(successor, old);
}

TEST(HotkeyPresses, WhatIsCalledMayRemoveItself) {
    HotkeyPresses presses;
    auto told = std::make_shared<int>(0);
    std::uint32_t number = 0;
    number = presses.add([&presses, &number, told] {
        presses.remove(number);
        ++*told;
    });
    EXPECT_TRUE(presses.press(number));
    EXPECT_EQ(*told, 1);
    EXPECT_FALSE(presses.press(number));
}

TEST(HotkeyPresses, AChordIsAKeyOfTheTableWithAtLeastOneModifierOfOurs) {
    struct Case {
        std::uint32_t keyCode;
        std::uint32_t modifiers;
        bool isChord;
    };
    const Case cases[] = {
        {11, 768, true}, {35, 4352, true},  {127, 256, true},  {128, 256, false},
        {11, 0, false},  {11, 1024, false}, {11, 1280, false}, {11, 256 + 512 + 2048 + 4096, true},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(HotkeyPresses::isChord(each.keyCode, each.modifiers), each.isChord)
            << each.keyCode << " with " << each.modifiers;
    }
}

}  // namespace
}  // namespace ostrel
