#include "platform/macos/hotkey_presses.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace ostrel {
namespace {

TEST(HotkeyPresses, APressReachesTheOneThatHasItsNumberAndNeverASuccessor) {
    HotkeyPresses presses;
    std::string log;
    const std::uint32_t one = presses.add([&] { log += '1'; });
    const std::uint32_t two = presses.add([&] { log += '2'; });
    EXPECT_TRUE(presses.press(HotkeyPresses::kSignature, two));
    EXPECT_FALSE(presses.press(HotkeyPresses::kSignature + 1, two)) << "another program's";
    presses.remove(one);
    const std::uint32_t successor = presses.add([&] { log += '3'; });
    EXPECT_FALSE(presses.press(HotkeyPresses::kSignature, one)) << "one that arrives late";
    EXPECT_EQ(log, "2");
    EXPECT_TRUE(presses.press(HotkeyPresses::kSignature, successor));
}

TEST(HotkeyPresses, WhatIsCalledMayRemoveItself) {
    HotkeyPresses presses;
    auto told = std::make_shared<int>(0);
    std::uint32_t number = 0;
    number = presses.add([&presses, &number, told] {
        presses.remove(number);
        ++*told;
    });
    EXPECT_TRUE(presses.press(HotkeyPresses::kSignature, number));
    EXPECT_EQ(*told, 1);
    EXPECT_FALSE(presses.press(HotkeyPresses::kSignature, number));
}

TEST(HotkeyPresses, AChordIsAKeyOfTheTableWithAtLeastOneModifierOfOurs) {
    const struct {
        std::uint32_t keyCode;
        std::uint32_t modifiers;
        bool isChord;
    } cases[] = {
        {11, 768, true}, {35, 4352, true},  {127, 256, true},  {128, 256, false},
        {11, 0, false},  {11, 1024, false}, {11, 1280, false}, {11, 256 + 512 + 2048 + 4096, true},
    };
    for (const auto& [keyCode, modifiers, isChord] : cases) {
        EXPECT_EQ(HotkeyPresses::isChord(keyCode, modifiers), isChord)
            << keyCode << " with " << modifiers;
    }
}

}  // namespace
}  // namespace ostrel
