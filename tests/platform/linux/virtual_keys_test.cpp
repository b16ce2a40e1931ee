#include "platform/linux/virtual_keys.h"

#include <gtest/gtest.h>

#include <set>
#include <utility>

namespace ostrel {
namespace {

TEST(VirtualKeysTest, EveryCodeHasAKeyOfItsOwn) {
    std::set<std::uint8_t> keys;
    for (std::uint32_t code = 0; code < 300; ++code) {
        const auto key = x11KeycodeOf(code);
        EXPECT_TRUE(!key || keys.insert(*key).second) << code;
    }
    EXPECT_EQ(x11KeycodeOf(54), std::nullopt) << "a modifier";
}

// By the numbers that the kernel gives them, which are 8 less.
TEST(VirtualKeysTest, FunctionKeysAreThoseOfTheKeyboard) {
    const std::pair<std::uint32_t, int> cases[] = {
        {122, 59},  {120, 60},  {99, 61},  {118, 62}, {96, 63},  {97, 64},   {98, 65},
        {100, 66},  {101, 67},  {109, 68}, {103, 87}, {111, 88}, {105, 183}, {107, 184},
        {113, 185}, {106, 186}, {64, 187}, {79, 188}, {80, 189}, {90, 190}};
    for (const auto& [code, key] : cases) {
        EXPECT_EQ(x11KeycodeOf(code), key + 8) << code;
    }
}

}  // namespace
}  // namespace ostrel
