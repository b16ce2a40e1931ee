#include "base/uuid.h"

#include <cstddef>
#include <memory>
#include <random>

namespace ostrel {
namespace {

constexpr std::string_view kForm = "00000000-0000-0000-0000-000000000000";

template <class Source>
Uuid makeUuid(Source& source) {
    Uuid uuid;
    for (std::uint8_t& byte : uuid.bytes) {
        byte = static_cast<std::uint8_t>(source() & 0xFFU);
    }
    // Version 4, variant 10.
    uuid.bytes[6] = static_cast<std::uint8_t>(0x40U | (uuid.bytes[6] & 0x0FU));
    uuid.bytes[8] = static_cast<std::uint8_t>(0x80U | (uuid.bytes[8] & 0x3FU));
    return uuid;
}

std::optional<unsigned> hexDigit(char character) {
    if (character >= '0' && character <= '9') {
        return character - '0';
    }
    if (character >= 'A' && character <= 'F') {
        return character - 'A' + 10;
    }
    if (character >= 'a' && character <= 'f') {
        return character - 'a' + 10;
    }
    return std::nullopt;
}

}  // namespace

std::string uuidText(const Uuid& uuid) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text(kForm);
    std::size_t nibble = 0;
    for (char& place : text) {
        if (place != '-') {
            const unsigned byte = uuid.bytes[nibble / 2];
            place = kDigits[nibble % 2 == 0 ? byte >> 4U : byte & 0xFU];
            ++nibble;
        }
    }
    return text;
}

std::optional<Uuid> parseUuid(std::string_view text) {
    if (text.size() != kForm.size()) {
        return std::nullopt;
    }
    Uuid uuid;
    std::size_t nibble = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (kForm[i] == '-') {
            if (text[i] != '-') {
                return std::nullopt;
            }
            continue;
        }
        const auto digit = hexDigit(text[i]);
        if (!digit) {
            return std::nullopt;
        }
        std::uint8_t& byte = uuid.bytes[nibble / 2];
        byte = static_cast<std::uint8_t>((static_cast<unsigned>(byte) << 4U) | *digit);
        ++nibble;
    }
    return uuid;
}

MakeUuid randomUuids() {
    return [source = std::make_shared<std::random_device>()] { return makeUuid(*source); };
}

MakeUuid seededUuids(std::uint64_t seed) {
    return [source = std::make_shared<std::mt19937_64>(seed)] { return makeUuid(*source); };
}

}  // namespace ostrel
