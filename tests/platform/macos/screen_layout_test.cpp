#include "platform/macos/screen_layout.h"

#include <gtest/gtest.h>

namespace ostrel {
namespace {

PlainValue number(std::int64_t value) {
    return value;
}

TEST(ScreenLayout, CoordinatesGrowDownwardsFromTheUpperLeftCornerOfTheFirstScreen) {
    const Rect first{0, 0, 1440, 900};
    struct Case {
        const char* label = "";
        Rect appKit;
        Rect ours;
    };
    const Case cases[] = {
        {"on the right, level at the foot", {1440, 0, 1920, 1080}, {1440, -180, 1920, 1080}},
        {"on the right, level at the top", {1440, -180, 1920, 1080}, {1440, 0, 1920, 1080}},
        {"above", {0, 900, 1440, 900}, {0, -900, 1440, 900}},
        {"below, to the left", {-1280, -1024, 1280, 1024}, {-1280, 900, 1280, 1024}},
        {"half a point", {0, 900.5, 100, 200}, {0, -200.5, 100, 200}},
    };
    for (const Case& each : cases) {
        const std::vector<Displays::Display> expected = {{1, first}, {2, each.ours}};
        EXPECT_EQ(displaysOf({{number(1), first}, {number(2), each.appKit}}), expected)
            << each.label;
    }
}

TEST(ScreenLayout, AScreenWithoutANumberOrASizeIsNoneButTheFirstStillTellsWhereTheTopIs) {
    const Rect small{0, 0, 800, 600};
    const std::vector<Displays::Display> expected = {{7, {800, 0, 800, 600}}};
    EXPECT_EQ(displaysOf({{{}, small},
                          {number(7), {800, 0, 800, 600}},
                          {number(8), {0, 0, 0, 600}},
                          {number(9), {0, 0, 800, 0}}}),
              expected);
    EXPECT_TRUE(displaysOf({}).empty());
}

TEST(ScreenLayout, ADisplayNumberHas32BitsAndNoSign) {
    EXPECT_EQ(displayNumberOf(number(0)), 0u);
    EXPECT_EQ(displayNumberOf(number(4'294'967'295)), 4'294'967'295u);
    EXPECT_EQ(displayNumberOf(number(4'294'967'296)), std::nullopt);
    EXPECT_EQ(displayNumberOf(number(-1)), std::nullopt);
    EXPECT_EQ(displayNumberOf(1.5), std::nullopt);
    EXPECT_EQ(displayNumberOf(std::string("1")), std::nullopt);
}

}  // namespace
}  // namespace ostrel
