#pragma once

#include <array>
#include <string_view>

namespace ostrel {

// Whether one thing that the program does for people works on this system.
struct Capability {
    enum class Topic {
        away,
        calls,
        films,
        doNotDisturb,
        sleep,
        lock,
        hotkeys,
        notifications,
        statusItem,
        chimes
    };
    enum class State { works, partly, missing };

    Topic topic = Topic::away;
    State state = State::works;
    // The key of a text that says what is lacking and what would make it work; empty when it works.
    std::string_view reason = {};

    bool operator==(const Capability&) const = default;
};
constexpr std::array<std::string_view, 10> enumNames(Capability::Topic) {
    return {"away", "calls",   "films",         "do_not_disturb", "sleep",
            "lock", "hotkeys", "notifications", "status_item",    "chimes"};
}
constexpr std::array<std::string_view, 3> enumNames(Capability::State) {
    return {"works", "partly", "missing"};
}

}  // namespace ostrel
