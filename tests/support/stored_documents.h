#pragma once

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <initializer_list>
#include <map>
#include <optional>
#include <regex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/settings/json.h"

// What a stored document has to look like, told once more without the program's own readers.
namespace ostrel::stored {

inline constexpr const char* kSettings = "ostrel.settings.v1";
inline constexpr const char* kSession = "ostrel.sessionState.v1";
inline constexpr const char* kLog = "ostrel.breakLog.v1";
inline constexpr const char* kCounter = "ostrel.dailyCounter.v1";
inline constexpr const char* kPool = "ostrel.penaltyPool.v1";
inline constexpr const char* kLedger = "ostrel.penaltyLedger.v1";
inline constexpr const char* kQuota = "ostrel.postponeQuota.v1";
inline constexpr const char* kStreak = "ostrel.streak.v1";
inline constexpr const char* kDayEnd = "ostrel.dayEnd.v1";
inline constexpr const char* kRotation = "ostrel.guidedRotation.v1";
inline constexpr const char* kTally = "ostrel.presenceTally.v1";

[[nodiscard]] inline bool isNumberTooLarge(const std::string& token) {
    static const std::regex kNumber(R"(-?(0|[1-9][0-9]*)(\.[0-9]+)?([eE][-+]?[0-9]+)?)");
    return std::isinf(std::strtod(token.c_str(), nullptr)) && std::regex_match(token, kNumber);
}

// A number too large for any double counts as null; absent: no JSON.
[[nodiscard]] inline std::optional<Json> parsed(const std::string& text) {
    if (Json::accept(text)) {
        return Json::parse(text);
    }
    std::string finite;
    for (std::size_t at = 0, end = 0; at < text.size(); at = end) {
        end = at + 1;
        if (text[at] == '"') {
            while (end < text.size() && text[end] != '"') {
                end += text[end] == '\\' ? 2U : 1U;
            }
            ++end;
        } else if (text[at] == '-' || (text[at] >= '0' && text[at] <= '9')) {
            end = text.find_first_not_of("0123456789+-.eE", at);
        }
        end = std::min(end, text.size());
        const std::string token = text.substr(at, end - at);
        finite += isNumberTooLarge(token) ? "null" : token;
    }
    return Json::accept(finite) ? std::optional(Json::parse(finite)) : std::nullopt;
}

using Check = std::function<bool(const Json&)>;

[[nodiscard]] inline bool isInteger(const Json& json) {
    if (json.is_number_unsigned()) {
        return json.get<std::uint64_t>() <= std::uint64_t{INT64_MAX};
    }
    if (json.is_number_float()) {
        const double number = json.get<double>();
        return std::floor(number) == number && number >= -0x1p63 && number < 0x1p63;
    }
    return json.is_number_integer();
}

[[nodiscard]] inline bool isCountOfADay(const Json& json) {
    return isInteger(json) && json.get<double>() >= 0 && json.get<double>() <= 1'000'000;
}

[[nodiscard]] inline bool isNumber(const Json& json) {
    return json.is_number();
}
[[nodiscard]] inline bool isText(const Json& json) {
    return json.is_string();
}
[[nodiscard]] inline bool isBool(const Json& json) {
    return json.is_boolean();
}

[[nodiscard]] inline Check oneOf(std::initializer_list<const char*> names) {
    return [all = std::vector<Json>(names.begin(), names.end())](const Json& json) {
        return std::ranges::find(all, json) != all.end();
    };
}

[[nodiscard]] inline Check listOf(Check isEntry) {
    return [isEntry = std::move(isEntry)](const Json& json) {
        return json.is_array() && std::ranges::all_of(json, isEntry);
    };
}

// x: a hexadecimal digit; 0: a decimal one; anything else stands for itself.
[[nodiscard]] inline bool hasForm(const Json& json, std::string_view form) {
    const std::string text = json.is_string() ? json.get<std::string>() : "";
    return std::ranges::equal(text, form, [](char character, char place) {
        return place == 'x' ? std::string_view("0123456789abcdefABCDEF").find(character) !=
                                  std::string_view::npos
               : place == '0' ? character >= '0' && character <= '9'
                              : character == place;
    });
}

[[nodiscard]] inline bool isUuid(const Json& json) {
    return hasForm(json, "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx");
}

[[nodiscard]] inline bool isDay(const Json& json) {
    if (!hasForm(json, "0000-00-00")) {
        return false;
    }
    const auto text = json.get<std::string>();
    const std::chrono::year_month_day day{
        std::chrono::year{std::stoi(text)},
        std::chrono::month{static_cast<unsigned>(std::stoi(text.substr(5)))},
        std::chrono::day{static_cast<unsigned>(std::stoi(text.substr(8)))}};
    return day.ok() && static_cast<int>(day.year()) >= 1;
}

struct Key {
    const char* name;
    Check check;
    enum class Presence { required, optional } presence = Presence::required;
};

[[nodiscard]] inline Check objectWith(std::initializer_list<Key> keys) {
    return [keys = std::vector<Key>(keys)](const Json& json) {
        return json.is_object() && std::ranges::all_of(keys, [&json](const Key& key) {
                   const auto found = json.find(key.name);
                   return found == json.end() || found->is_null()
                              ? key.presence == Key::Presence::optional
                              : key.check(*found);
               });
    };
}

[[nodiscard]] inline bool isSoundStreak(const Json& streak) {
    // As many days as the years 1 to 9999 have at most.
    constexpr std::int64_t kMostDays = 9999LL * 366;
    const auto isLength = [&streak](const char* key) {
        const auto days = streak[key].get<double>();
        return days >= 0 && days <= kMostDays;
    };
    const auto isLater = [](const Json& a, const Json& b) { return a["day"] >= b["day"]; };
    const Json& recent = streak["recent"];
    return isLength("earlierDays") && isLength("longestDays") &&
           std::ranges::adjacent_find(recent, isLater) == recent.end();
}

[[nodiscard]] inline bool isReadable(std::string_view key, const Json& document) {
    constexpr auto kOptional = Key::Presence::optional;
    static const auto kIsStreak =
        objectWith({{"earlierDays", isInteger},
                    {"longestDays", isInteger},
                    {"recent", listOf(objectWith({{"day", isDay},
                                                  {"verdict", oneOf({"reached", "missed", "free"})},
                                                  {"judgedAt", isNumber},
                                                  {"firstBreakAt", isNumber, kOptional},
                                                  {"lastBreakAt", isNumber, kOptional}}))}});
    static const std::map<std::string_view, Check> kChecks = {
        // Each of its keys falls back to a default.
        {kSettings, [](const Json& json) { return json.is_object(); }},
        {kSession, objectWith({{"isPaused", isBool},
                               {"pausedAt", isNumber, kOptional},
                               {"lastQuitAt", isNumber},
                               {"systemSleepWakeMarker", isNumber, kOptional},
                               {"pendingPauseForgottenFireAt", isNumber, kOptional},
                               {"pauseReasons", listOf(oneOf({"user", "focus", "schedule"}))},
                               {"userPauseUntil", isNumber, kOptional}})},
        {kLog, listOf(objectWith({{"id", isUuid},
                                  {"startedAt", isNumber},
                                  {"endedAt", isNumber},
                                  {"kind", oneOf({"eye", "body"})},
                                  {"outcome", oneOf({"completed", "skipped", "postponed",
                                                     "autoFadeOut", "deferred"})},
                                  {"penaltyAppliedSec", isInteger},
                                  {"durationSec", isInteger}}))},
        {kCounter, objectWith({{"dateKey", isText},
                               {"eyeBreaksCompleted", isInteger},
                               {"bodyBreaksCompleted", isInteger},
                               {"skipsToday", isInteger},
                               {"postponesToday", isInteger}})},
        {kPool, objectWith({{"seconds", isInteger}, {"savedAt", isNumber}})},
        {kLedger, listOf(objectWith({{"kind", oneOf({"eye", "body"})},
                                     {"occurredAt", isNumber},
                                     {"appliedPenaltySec", isInteger}}))},
        {kQuota, objectWith({{"used", isInteger}, {"windowStart", isNumber}})},
        {kStreak, [](const Json& json) { return kIsStreak(json) && isSoundStreak(json); }},
        {kDayEnd, objectWith({{"dateKey", isText}})},
        {kRotation, objectWith({{"eye", isInteger}, {"body", isInteger}, {"message", isInteger}})},
        {kTally, listOf(objectWith(
                     {{"day", isDay}, {"held", isCountOfADay}, {"credited", isCountOfADay}}))}};
    return kChecks.at(key)(document);
}

}  // namespace ostrel::stored
