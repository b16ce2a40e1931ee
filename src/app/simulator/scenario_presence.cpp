#include "app/simulator/scenario_presence.h"

#include <charconv>
#include <set>
#include <string>
#include <utility>

namespace ostrel::ScenarioPresence {
namespace {

struct DisplayEntry {
    std::uint32_t displayID = 0;
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    std::optional<bool> main;

    static constexpr auto fields() {
        using D = DisplayEntry;
        return std::tuple{Field{"displayID", &D::displayID},
                          Field{"x", &D::x},
                          Field{"y", &D::y},
                          Field{"width", &D::width},
                          Field{"height", &D::height},
                          Field{"main", &D::main}};
    }
};

struct FrontmostEntry {
    std::string bundleIdentifier;
    std::int64_t processIdentifier = 0;

    static constexpr auto fields() {
        return std::tuple{Field{"bundleIdentifier", &FrontmostEntry::bundleIdentifier},
                          Field{"processIdentifier", &FrontmostEntry::processIdentifier}};
    }
};

struct WindowEntry {
    std::int64_t processIdentifier = 0;
    double width = 0;
    double height = 0;

    static constexpr auto fields() {
        using W = WindowEntry;
        return std::tuple{Field{"processIdentifier", &W::processIdentifier},
                          Field{"width", &W::width}, Field{"height", &W::height}};
    }
};

struct ChordEntry {
    std::uint32_t keyCode = 0;
    std::uint32_t modifiers = 0;

    static constexpr auto fields() {
        return std::tuple{Field{"keyCode", &ChordEntry::keyCode},
                          Field{"modifiers", &ChordEntry::modifiers}};
    }
};

std::int64_t processIdentifier(ScenarioReader& in, const std::string& text) {
    std::int64_t value = 0;
    const char* end = text.data() + text.size();
    const auto [rest, failure] = std::from_chars(text.data(), end, value);
    if (failure != std::errc{} || rest != end) {
        in.fail("not a process identifier");
    }
    return value;
}

DistributedAnnouncements::Value announcedValue(const Json& json) {
    if (json.is_boolean()) {
        return json.get<bool>();
    }
    if (json.is_string()) {
        return json.get<std::string>();
    }
    const auto number = JsonCodec<std::int64_t>::decode(json);
    return number ? DistributedAnnouncements::Value(*number) : DistributedAnnouncements::Value();
}

}  // namespace

ScenarioDisplays displays(ScenarioReader& in, const Json& json) {
    ScenarioDisplays result;
    std::set<std::uint32_t> seen;
    const auto entries = in.read<std::vector<DisplayEntry>>(
        json, "a list of displays, each with displayID, x, y, width and height");
    for (const DisplayEntry& entry : entries) {
        if (!seen.insert(entry.displayID).second) {
            in.fail("two displays have the same displayID");
        }
        if (entry.width <= 0 || entry.height <= 0) {
            in.fail("a display has no size");
        }
        if (entry.main.value_or(false)) {
            if (result.mainID) {
                in.fail("two displays are the main one");
            }
            result.mainID = entry.displayID;
        }
        result.displays.push_back({entry.displayID, {entry.x, entry.y, entry.width, entry.height}});
    }
    return result;
}

std::optional<FrontmostApplication::Application> frontmost(ScenarioReader& in, const Json& json) {
    if (json.is_null()) {
        return std::nullopt;
    }
    const auto entry = in.read<FrontmostEntry>(
        json, "an application with bundleIdentifier and processIdentifier, or null");
    return FrontmostApplication::Application{entry.bundleIdentifier, entry.processIdentifier};
}

std::vector<ScreenWindows::Window> windows(ScenarioReader& in, const Json& json) {
    std::vector<ScreenWindows::Window> result;
    for (const WindowEntry& entry : in.read<std::vector<WindowEntry>>(
             json, "a list of windows, each with processIdentifier, width and height")) {
        result.push_back({entry.processIdentifier, entry.width, entry.height});
    }
    return result;
}

PowerAssertions::ByProcess assertions(ScenarioReader& in, const Json& json) {
    PowerAssertions::ByProcess result;
    in.eachKey(json, "the assertions", [&](const std::string& key, const Json& value) {
        const auto place = in.enter(key);
        auto& types = result[processIdentifier(in, key)];
        for (auto& type : in.read<std::vector<std::string>>(value, "a list of types")) {
            types.emplace_back(std::move(type));
        }
    });
    return result;
}

DistributedAnnouncements::Announcement announcement(ScenarioReader& in, const Json& json) {
    DistributedAnnouncements::Announcement result;
    in.eachKey(json, "an announcement", [&](const std::string& key, const Json& value) {
        const auto place = in.enter(key);
        if (key == "name") {
            result.name = in.read<std::string>(value, "the name of an announcement");
        } else if (key == "userInfo") {
            in.eachKey(value, "the user info", [&](const std::string& name, const Json& one) {
                result.userInfo[name] = announcedValue(one);
            });
        } else {
            in.fail("unknown key");
        }
    });
    if (in.ok() && result.name.empty()) {
        in.fail("an announcement has a name");
    }
    return result;
}

HotkeyChord chord(ScenarioReader& in, const Json& json) {
    const auto entry = in.read<ChordEntry>(json, "a chord with keyCode and modifiers");
    return {entry.keyCode, entry.modifiers, {}};
}

}  // namespace ostrel::ScenarioPresence
