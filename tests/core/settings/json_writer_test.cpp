#include "core/settings/json_writer.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "core/settings/json_codec.h"

namespace ostrel {

TEST(JsonWriterTest, NumbersReadBackBitForBit) {
    std::mt19937_64 random(20'260'309);
    std::vector<double> numbers = {0.0, -0.0, 5e-324, std::numeric_limits<double>::max(), 0x1p53};
    for (int i = 0; i < 20'000; ++i) {
        numbers.push_back(std::bit_cast<double>(random()));
        numbers.push_back(7.9e8 + std::ldexp(static_cast<double>(random()), -40));
    }
    for (const double number : numbers) {
        if (!std::isfinite(number)) {
            continue;
        }
        const JsonText printed = printJson(number);
        ASSERT_TRUE(printed.text);
        const auto json = parseJson(*printed.text);
        ASSERT_TRUE(json && json->is_number_float()) << *printed.text;
        EXPECT_EQ(std::bit_cast<std::uint64_t>(json->get<double>()),
                  std::bit_cast<std::uint64_t>(number))
            << *printed.text;
    }
}

TEST(JsonWriterTest, WhatJsonCannotHoldIsRefused) {
    EXPECT_FALSE(printJson(std::string("\xc3")).text);
    EXPECT_FALSE(printJson(std::nan("")).text);
    EXPECT_FALSE(printJson(std::vector{1.0, HUGE_VAL}).text);
}

}  // namespace ostrel
