#include "app/control/pause_argument.h"

#include <charconv>
#include <cstdint>

namespace ostrel {
namespace {

constexpr std::int64_t kMinutesPerHour = 60;
// A longer one would not outlive a restart.
constexpr std::int64_t kMostMinutes = 24 * kMinutesPerHour;

}  // namespace

std::optional<PauseDuration> parsePause(std::string_view text) {
    if (text == "indefinite") {
        return PauseDuration::indefinite();
    }
    if (text == "until-morning") {
        return PauseDuration::untilNextMorning();
    }
    if (!text.ends_with('m') && !text.ends_with('h')) {
        return std::nullopt;
    }
    const std::int64_t unit = text.ends_with('h') ? kMinutesPerHour : 1;
    const char* end = text.data() + text.size() - 1;
    std::int64_t count = 0;
    const auto [rest, failure] = std::from_chars(text.data(), end, count);
    if (failure != std::errc{} || rest != end || count < 1 || count > kMostMinutes / unit) {
        return std::nullopt;
    }
    return PauseDuration::forMinutes(count * unit);
}

}  // namespace ostrel
