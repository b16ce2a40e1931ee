#include <gtest/gtest.h>

#include <limits>

#include "platform/macos/assertion_lists.h"
#include "platform/macos/idle_reading.h"
#include "platform/macos/window_descriptions.h"

namespace ostrel {
namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

PlainValue whole(std::int64_t value) {
    return value;
}

TEST(PlainValues, ANumberIsNeitherATextNorATruthAndOneOf32BitsHasNoFraction) {
    struct Case {
        const char* label;
        PlainValue value;
        std::optional<double> number;
        std::optional<std::int32_t> in32Bits;
    };
    const Case cases[] = {
        {"nothing", {}, {}, {}},
        {"truth", true, {}, {}},
        {"text", std::string("7"), {}, {}},
        {"whole", whole(7), 7, 7},
        {"real without a fraction", 7.0, 7, 7},
        {"real", 7.5, 7.5, {}},
        {"greatest", whole(2'147'483'647), 2'147'483'647.0, 2'147'483'647},
        {"too great", whole(2'147'483'648), 2'147'483'648.0, {}},
        {"least", whole(-2'147'483'648LL), -2'147'483'648.0, std::numeric_limits<int>::min()},
        {"too small", whole(-2'147'483'649LL), -2'147'483'649.0, {}},
        {"endless", kInfinity, kInfinity, {}},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(numberOf(each.value), each.number) << each.label;
        EXPECT_EQ(int32Of(each.value), each.in32Bits) << each.label;
    }
    EXPECT_EQ(int32Of(kNan), std::nullopt);
}

TEST(WindowDescriptions, WhatIsMissingOrOfAnotherTypeIsAbsentAndTheRestIsKept) {
    const PlainDictionary bounds = {
        {"X", whole(0)}, {"Y", 24.0}, {"Width", 1920.0}, {"Height", whole(1080)}};
    using Window = ScreenWindows::Window;
    EXPECT_EQ(windowOf({whole(501), bounds}), (Window{501, 1920, 1080}));
    EXPECT_EQ(windowOf({std::string("501"), bounds}), (Window{std::nullopt, 1920, 1080}));
    EXPECT_EQ(windowOf({whole(501), {}}), (Window{501, std::nullopt, std::nullopt}));
    EXPECT_EQ(windowOf({{}, {{"Width", std::string("1920")}, {"Height", 1080.0}}}),
              (Window{std::nullopt, std::nullopt, 1080}));
}

TEST(AssertionLists, TypesStandUnderTheirProcessAndThoseWithoutOneAreAbsent) {
    const PlainDictionary film = {{"AssertType", std::string("PreventUserIdleDisplaySleep")},
                                  {"AssertLevel", whole(255)}};
    const PlainDictionary odd = {{"AssertType", whole(3)}};
    const PlainDictionary none = {{"AssertName", std::string("film")}};
    const auto found = assertionTypes({{whole(501), {film, odd}},
                                       {std::string("502"), {film}},
                                       {whole(503), {none}},
                                       {whole(504), {}}},
                                      "AssertType");
    const PowerAssertions::ByProcess expected = {
        {501, {"PreventUserIdleDisplaySleep", std::nullopt}}, {503, {std::nullopt}}, {504, {}}};
    EXPECT_EQ(found, expected);
}

TEST(IdleReading, IsNeverNegativeAndAbsentWhenItIsNoNumber) {
    EXPECT_EQ(idleSecondsOf(12.5), 12.5);
    EXPECT_EQ(idleSecondsOf(0), 0);
    EXPECT_EQ(idleSecondsOf(-0.25), 0) << "just after a wake-up";
    EXPECT_EQ(idleSecondsOf(kNan), std::nullopt);
    EXPECT_EQ(idleSecondsOf(kInfinity), std::nullopt);
}

}  // namespace
}  // namespace ostrel
