#include "platform/api/aside_names.h"

#include <gtest/gtest.h>

#include <set>

namespace ostrel {
namespace {

TEST(AsideNamesTest, GoFromOneLetterToTwoAndAreNeverNumbers) {
    const std::pair<int, const char*> cases[] = {
        {0, ".damaged"},     {1, ".damaged-b"},   {25, ".damaged-z"},
        {26, ".damaged-aa"}, {51, ".damaged-az"}, {kMostSetAside - 1, ".damaged-zz"}};
    for (const auto& [count, suffix] : cases) {
        EXPECT_EQ(asideSuffix(count), suffix) << count;
    }
}

TEST(AsideNamesTest, TheFirstFreeOneIsTakenAndTheLastWhenNoneIs) {
    std::set<std::string> taken;
    const auto isTaken = [&](const std::string& name) { return taken.contains(name); };
    EXPECT_EQ(freeAsideName("a.v1", isTaken), "a.v1.damaged");
    taken = {"a.v1.damaged", "a.v1.damaged-c"};
    EXPECT_EQ(freeAsideName("a.v1", isTaken), "a.v1.damaged-b");
    EXPECT_EQ(freeAsideName("a.v1", [](const std::string&) { return true; }), "a.v1.damaged-zz");
}

TEST(AsideNamesTest, AreToldFromKeys) {
    const std::pair<const char*, bool> cases[] = {
        {"a.v1.damaged", true},        {"a.v1.damaged-zz", true}, {"a.v1", false},
        {"a.damaged.v1", false},       {"damaged", false},        {"", false},
        {"a.damagedreport.v1", false}, {"a.v1.damagedx", false}};
    for (const auto& [key, isAside] : cases) {
        EXPECT_EQ(isAsideName(key), isAside) << key;
    }
}

}  // namespace
}  // namespace ostrel
