#include "platform/linux/x11_idle_counters.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/linux/x11_idle_reading.h"

namespace ostrel {
namespace {

using Bytes = std::vector<std::byte>;

// As the server lists them: the counter, its resolution, the length of its name and the name,
// filled up to a multiple of four bytes.
Bytes listOf(const std::vector<std::pair<std::uint32_t, std::string_view>>& counters) {
    Bytes list;
    for (const auto& [counter, name] : counters) {
        const auto length = static_cast<std::uint16_t>(name.size());
        const std::size_t begin = list.size();
        list.resize(begin + (14 + name.size() + 3) / 4 * 4);
        std::memcpy(list.data() + begin, &counter, sizeof counter);
        std::memcpy(list.data() + begin + 12, &length, sizeof length);
        std::memcpy(list.data() + begin + 14, name.data(), name.size());
    }
    return list;
}

const Bytes kList = listOf({{1, "SERVERTIME"},
                            {2, "IDLETIME"},
                            {9, "DEVICEIDLETIME 10"},
                            {3, "DEVICEIDLETIME 2"},
                            {8, "x"},
                            {4, "DEVICEIDLETIME 3"},
                            {5, "DEVICEIDLETIME 4"},
                            {6, "DEVICEIDLETIME 5"}});
const X11IdleCounters kCounters{1, 2, {3, 4, 5, 6}};

TEST(X11IdleCountersTest, AreFoundAmongOthersByNamesOfAnyLength) {
    EXPECT_EQ(idleCountersIn(kList), kCounters);
    EXPECT_EQ(idleCountersIn(listOf({{1, "SERVERTIME"}, {2, "IDLETIME"}})), std::nullopt);
}

TEST(X11IdleCountersTest, AListThatIsCutOffOrLiesAboutItsLengthsIsReadNoFurther) {
    const std::size_t nameEnd = kList.size() - 2;  // what fills it up tells nothing
    for (std::size_t size = 0; size < nameEnd; ++size) {
        const Bytes cut(kList.begin(), kList.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_EQ(idleCountersIn(cut), std::nullopt) << size;
    }
    Bytes lying = kList;
    lying[12] = lying[13] = std::byte{0xFF};
    EXPECT_EQ(idleCountersIn(lying), std::nullopt);
}

TEST(X11IdleReadingTest, AResetIsWhatSetsBackAllDevices) {
    const struct {
        std::array<std::int64_t, 4> devicesMs;
        std::int64_t inputMs;
        bool isReset;
    } cases[] = {
        {{500, 500, 500, 500}, 500, true},
        {{500, 500, 500, 500}, 502, true},     // read two milliseconds later
        {{500, 500, 500, 500}, 0, false},      // input while it was being read
        {{500, 500, 501, 500}, 500, false},    // a key right after a reset
        {{7, 9000, 7, 9000}, 7, false},        // the pointer by XTEST
        {{9000, 7, 9000, 9000}, 7, false},     // a keyboard
        {{9000, 9000, 9000, 9000}, 3, false},  // one without a master
    };
    for (const auto& [devicesMs, inputMs, isReset] : cases) {
        EXPECT_EQ((X11IdleReading{devicesMs, 0, inputMs}.isReset()), isReset)
            << testing::PrintToString(devicesMs);
    }
}

TEST(X11IdleReadingTest, AnAlarmFromBeforeTheResetTellsOfInputAlsoWhereTheServersTimeWraps) {
    constexpr std::uint32_t kMost = std::numeric_limits<std::uint32_t>::max();
    const struct {
        std::uint32_t serverTimeMs = 0;
        std::int64_t inputMs = 0;
        std::uint32_t alarmTimeMs = 0;
        std::optional<std::int64_t> sinceMs;
    } cases[] = {
        {50'000, 1000, 48'999, 1001},   {50'000, 1000, 49'000, std::nullopt},
        {500, 1000, kMost - 600, 1101}, {500, 1000, kMost - 400, std::nullopt},
        {500, 1000, 3, std::nullopt},
    };
    for (const auto& [serverTimeMs, inputMs, alarmTimeMs, sinceMs] : cases) {
        const X11IdleReading reading{{}, serverTimeMs, inputMs};
        EXPECT_EQ(reading.sinceHiddenMs(alarmTimeMs), sinceMs)
            << serverTimeMs << ' ' << alarmTimeMs;
    }
}

}  // namespace
}  // namespace ostrel
