#pragma once

#include <array>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

// What a new user starts with and what the settings screens and the command line offer. Durations
// are whole seconds, times of day minutes after local midnight, weekdays 1 = Sunday to 7 =
// Saturday.
namespace ostrel {

namespace SettingsDefaults {
inline constexpr std::int64_t kEyeIntervalSec = 1200;
inline constexpr std::int64_t kEyeDurationSec = 120;
inline constexpr std::int64_t kBodyIntervalSec = 3000;
inline constexpr std::int64_t kBodyDurationSec = 300;
inline constexpr std::string_view kPresetID = "standard";
inline constexpr double kOverlayDimOpacity = 0.7;
inline constexpr std::int64_t kDailyGoalBreaks = 6;
}  // namespace SettingsDefaults

namespace PresenceDefaults {
inline constexpr std::int64_t kMaxDeferralSec = 900;
inline constexpr std::array<std::int64_t, 5> kDeferralChoicesSec = {300, 600, 900, 1800, 3600};
// Call and meeting programs by bundle identifier; the last is a browser web app.
[[nodiscard]] std::vector<std::string> deferAppBundleIDs();
}  // namespace PresenceDefaults

namespace WorkHoursDefaults {
inline constexpr std::int64_t kStartMinute = 540;
inline constexpr std::int64_t kEndMinute = 1080;
[[nodiscard]] std::set<std::int64_t> workDays();
}  // namespace WorkHoursDefaults

namespace IdleDefaults {
inline constexpr std::int64_t kThresholdSec = 300;
inline constexpr std::array<std::int64_t, 5> kThresholdChoicesSec = {60, 120, 300, 600, 900};
}  // namespace IdleDefaults

namespace PreBreakDefaults {
inline constexpr std::int64_t kBreakSoonLeadSec = 60;
inline constexpr std::int64_t kToastLeadSec = 10;
inline constexpr std::array<std::int64_t, 4> kBreakSoonChoicesSec = {0, 30, 60, 120};
inline constexpr std::array<std::int64_t, 4> kToastChoicesSec = {0, 5, 10, 20};

// The lead that the on/off switch of earlier documents stood for.
[[nodiscard]] constexpr std::int64_t legacyBreakSoonLeadSec(bool notifyBreakSoon) {
    return notifyBreakSoon ? 120 : 0;
}
}  // namespace PreBreakDefaults

// Closed ranges of the timing sliders, in seconds. Stored values may lie outside.
namespace TimingRanges {
struct Range {
    std::int64_t least;
    std::int64_t most;
};
inline constexpr Range kEyeIntervalSec = {600, 1800};
inline constexpr Range kEyeDurationSec = {20, 240};
inline constexpr Range kBodyIntervalSec = {1800, 5400};
inline constexpr Range kBodyDurationSec = {180, 600};
}  // namespace TimingRanges

// Likewise of the other numbers that can be chosen.
namespace SettingsRanges {
using Range = TimingRanges::Range;
// A lighter one would not tell the break from the desktop behind it.
inline constexpr Range kOverlayDimPercent = {20, 100};
inline constexpr Range kDailyGoalBreaks = {1, 60};
inline constexpr Range kMinuteOfDay = {0, 1439};
inline constexpr Range kWeekday = {1, 7};
}  // namespace SettingsRanges

}  // namespace ostrel
