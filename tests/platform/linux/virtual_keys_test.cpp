#include "platform/linux/virtual_keys.h"

#include <gtest/gtest.h>

#include <set>

namespace ostrel {
namespace {

TEST(VirtualKeysTest, EveryCodeHasAKeyOfItsOwn) {
    std::set<std::uint8_t> keys;
    for (std::uint32_t code = 0; code < 300; ++code) {
        const auto key = x11KeycodeOf(code);
        EXPECT_TRUE(!key || keys.insert(*key).second) << code;
    }
    EXPECT_EQ(x11KeycodeOf(54), std::nullopt) << "a modifier";
    EXPECT_EQ(x11KeycodeOf(122), 67) << "F1";
    EXPECT_EQ(x11KeycodeOf(111), 96) << "F12";
}

}  // namespace
}  // namespace ostrel
