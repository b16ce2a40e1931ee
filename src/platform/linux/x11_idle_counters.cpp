#include "platform/linux/x11_idle_counters.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace ostrel {
namespace {

template <class Number>
Number numberAt(std::span<const std::byte> bytes, std::size_t offset) {
    Number number{};
    std::memcpy(&number, bytes.subspan(offset).data(), sizeof number);
    return number;
}

std::string_view textOf(std::span<const std::byte> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

}  // namespace

// By hand: the iterator that libxcb has takes the padding of its own struct for part of an entry.
std::optional<X11IdleCounters> idleCountersIn(std::span<const std::byte> list) {
    constexpr std::size_t kLengthOffset = 12;  // behind the counter and its resolution
    constexpr std::size_t kNameOffset = 14;
    X11IdleCounters found;
    const struct {
        std::string_view name;
        X11IdleCounters::Counter& counter;
    } wanted[] = {{"SERVERTIME", found.serverTime},       {"IDLETIME", found.input},
                  {"DEVICEIDLETIME 2", found.devices[0]}, {"DEVICEIDLETIME 3", found.devices[1]},
                  {"DEVICEIDLETIME 4", found.devices[2]}, {"DEVICEIDLETIME 5", found.devices[3]}};
    while (list.size() >= kNameOffset) {
        const std::size_t length = numberAt<std::uint16_t>(list, kLengthOffset);
        if (length > list.size() - kNameOffset) {
            break;
        }
        const std::string_view name = textOf(list.subspan(kNameOffset, length));
        for (const auto& [wantedName, counter] : wanted) {
            if (name == wantedName) {
                counter = numberAt<X11IdleCounters::Counter>(list, 0);
            }
        }
        const std::size_t padded = (kNameOffset + length + 3) / 4 * 4;
        list = list.subspan(std::min(padded, list.size()));
    }
    const bool isWhole =
        std::ranges::all_of(wanted, [](const auto& entry) { return entry.counter != 0; });
    return isWhole ? std::optional(found) : std::nullopt;
}

}  // namespace ostrel
