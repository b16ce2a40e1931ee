#include "app/simulator/simulator.h"

#include <gtest/gtest.h>

#include "support/events.h"

namespace ostrel {
namespace {

std::vector<Json> run(const std::string& text) {
    const ScenarioResult result = parseScenario(text);
    EXPECT_TRUE(result.scenario) << result.error;
    std::vector<Json> lines;
    if (result.scenario) {
        Simulator(*result.scenario, seededUuids(1), [&](const std::string& line) {
            lines.push_back(*parseJson(line));
        }).run();
    }
    return lines;
}

// The events of these names as "AT name VALUES...", in order.
Events events(const std::vector<Json>& lines, const std::vector<std::string>& names,
              const std::vector<std::string>& fields) {
    Events found;
    for (const Json& line : lines) {
        if (std::find(names.begin(), names.end(), line["event"]) == names.end()) {
            continue;
        }
        std::string text = line["at"].dump() + " " + line["event"].get<std::string>();
        for (const std::string& field : fields) {
            if (line.contains(field)) {
                text += " " + (line[field].is_string() ? line[field].get<std::string>()
                                                       : line[field].dump());
            }
        }
        found.push_back(text);
    }
    return found;
}

}  // namespace

TEST(SimulatorTest, DefaultDayHasItsBreaksToTheSecond) {
    const auto lines = run(R"({"durationSec": 28800})");
    const Events opened = events(lines, {"overlay.opened"}, {"kind"});
    Events expected;
    // An eye break every 20 minutes, except where the body break of every 50 minutes takes it in.
    for (std::int64_t at = 1200; at <= 28'800; at += 600) {
        const bool body = at % 3000 == 0;
        if (body || at % 1200 == 0) {
            expected.push_back(std::to_string(at) + " overlay.opened " + (body ? "body" : "eye"));
        }
    }
    EXPECT_EQ(opened, expected);
    EXPECT_EQ(lines.back()["event"], "end");
    EXPECT_EQ(lines.back()["at"], 28'800);
}

TEST(SimulatorTest, SameScenarioPrintsTheSame) {
    const char* scenario = R"({"durationSec": 9000, "timeZone": "Europe/Berlin",
        "steps": [{"at": 1210, "key": 53}, {"at": 2000, "pause": {"minutes": 30}},
                  {"at": 5000, "relaunchAfterSec": 60}, {"at": 8000, "snapshot": true}]})";
    EXPECT_EQ(run(scenario), run(scenario));
}

TEST(SimulatorTest, FailureToEncodeLosesNothing) {
    const auto lines = run(R"({"durationSec": 300, "steps": [{"at": 10, "failEncoding": true},
        {"at": 20, "settings": {"strictMode": true}}, {"at": 30, "failEncoding": false},
        {"at": 40, "settings": {"dailyGoalBreaks": 9}}]})");
    EXPECT_EQ(events(lines, {"persistence.failed", "preferences.written"}, {"key"}),
              (Events{"0 preferences.written ostrel.settings.v1",
                      "20 persistence.failed ostrel.settings.v1",
                      "40 preferences.written ostrel.settings.v1"}));
    const Json& settings = lines.back()["preferences"]["ostrel.settings.v1"];
    EXPECT_EQ(settings["strictMode"], true);
    EXPECT_EQ(settings["dailyGoalBreaks"], 9);
}

TEST(ScenarioTest, SaysWhereItCannotBeUsed) {
    const std::pair<const char*, const char*> cases[] = {
        {"", "not a JSON document"},
        {R"({"durationSec": 1, "speed": 2})", "speed: "},
        {R"({"durationSec": 1, "timeZone": "Mars/Olympus"})", "timeZone: "},
        {R"({"durationSec": 1, "start": "2026-02-29T09:00:00"})", "start: "},
        {R"({"durationSec": 1, "start": "9999-12-31T23:59:55"})", "start: "},
        {R"({"durationSec": 1, "steps": [{"at": 0, "resume": true, "key": 1}]})", "steps[0]: "},
        {R"({"durationSec": 9, "steps": [{"at": 5, "resume": true}, {"at": 4, "resume": true}]})",
         "steps[1]: "},
        {R"({"durationSec": 1, "steps": [{"at": 0, "settings": {"strictMode": 1}}]})",
         "steps[0].settings: "},
        {R"({"durationSec": 1, "steps": [{"at": 0, "pause": {"minutes": 1.5}}]})",
         "steps[0].pause: "},
        {R"({"durationSec": 1, "displays": [{"displayID": 1, "x": 0, "y": 0, "width": 9}]})",
         "displays: "},
    };
    for (const auto& [text, where] : cases) {
        const ScenarioResult result = parseScenario(text);
        EXPECT_FALSE(result.scenario) << text;
        EXPECT_TRUE(result.error.starts_with(where)) << text << ": " << result.error;
    }
}

}  // namespace ostrel
