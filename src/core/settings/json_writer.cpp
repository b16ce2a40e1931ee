#include "core/settings/json_writer.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>

#include "core/settings/json.h"

namespace ostrel {
namespace {

#ifndef __APPLE__
// Beyond these a number is shorter with an exponent.
constexpr double kLeastPlain = 1e-5;
constexpr double kMostPlain = 1e15;
#endif

using Digits = std::array<char, 32>;

template <class... Arguments>
std::string_view printed(Digits& digits, Arguments... arguments) {
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), arguments...);
    return {digits.data(), static_cast<std::size_t>(result.ptr - digits.data())};
}

}  // namespace

void JsonWriter::separate() {
    if (!text_.empty() && text_.back() != '{' && text_.back() != '[' && text_.back() != ':') {
        text_ += ',';
    }
}

void JsonWriter::open(char bracket) {
    separate();
    text_ += bracket;
}

void JsonWriter::fail(std::string error) {
    if (error_.empty()) {
        error_ = std::move(error);
    }
}

void JsonWriter::boolean(bool value) {
    separate();
    text_ += value ? "true" : "false";
}

void JsonWriter::integer(std::int64_t value) {
    separate();
    Digits digits;
    text_ += printed(digits, value);
}

void JsonWriter::unsignedInteger(std::uint64_t value) {
    separate();
    Digits digits;
    text_ += printed(digits, value);
}

void JsonWriter::number(double value) {
    if (!std::isfinite(value)) {
        fail("a number is not finite");
        return;
    }
    separate();
#ifdef __APPLE__
    // Its own library prints such a number only since macOS 13.3.
    text_ += Json(value).dump();
#else
    const double size = std::abs(value);
    Digits digits;
    if (size != 0 && (size < kLeastPlain || size >= kMostPlain)) {
        text_ += printed(digits, value, std::chars_format::scientific);
        return;
    }
    const std::string_view plain = printed(digits, value, std::chars_format::fixed);
    text_ += plain;
    if (plain.find('.') == std::string_view::npos) {
        text_ += ".0";
    }
#endif
}

void JsonWriter::text(const std::string& value) {
    try {
        const std::string escaped = Json(value).dump();
        separate();
        text_ += escaped;
    } catch (const Json::exception& failure) {
        fail(failure.what());
    }
}

void JsonWriter::plainText(std::string_view value) {
    separate();
    text_ += '"';
    text_ += value;
    text_ += '"';
}

JsonText JsonWriter::take() {
    return error_.empty() ? JsonText{std::move(text_), {}}
                          : JsonText{std::nullopt, std::move(error_)};
}

}  // namespace ostrel
