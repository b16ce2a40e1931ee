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

Events breaks(const std::string& scenario) {
    return events(run(scenario), {"overlay.opened", "overlay.closed"}, {"kind", "reason"});
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

TEST(SimulatorTest, SleepClosesTheBreakAndALongOneStartsOver) {
    EXPECT_EQ(breaks(R"({"durationSec": 8000, "steps": [{"at": 1210, "sleepSec": 3600},
                        {"at": 2000, "key": 53}]})"),
              (Events{"1200 overlay.opened eye", "1210 overlay.closed eye forcedBySleep",
                      "6000 overlay.opened eye", "6121.5 overlay.closed eye autoFade",
                      "6600 overlay.opened body", "6901.5 overlay.closed body autoFade",
                      "7200 overlay.opened eye", "7321.5 overlay.closed eye autoFade"}));
    EXPECT_EQ(breaks(R"({"durationSec": 6100, "steps": [{"at": 1210, "sleepSec": 3601}]})"),
              (Events{"1200 overlay.opened eye", "1210 overlay.closed eye forcedBySleep",
                      "6010 overlay.opened eye"}));
}

TEST(SimulatorTest, TimedPauseFollowsTheClockAndSurvivesARelaunch) {
    const auto pauses = [](const std::string& steps) {
        return events(run(R"({"durationSec": 20000, "steps": [)" + steps + "]}"), {"pause.changed"},
                      {"isPaused"});
    };
    EXPECT_EQ(pauses(R"({"at": 100, "pause": {"minutes": 60}})"),
              (Events{"100 pause.changed true", "3700 pause.changed false"}));
    EXPECT_EQ(
        pauses(R"({"at": 100, "pause": {"minutes": 60}}, {"at": 200, "shiftClockSec": 1800})"),
        (Events{"100 pause.changed true", "1900 pause.changed false"}));
    EXPECT_EQ(pauses(R"({"at": 100, "pause": {"minutes": 60}}, {"at": 200, "sleepSec": 7200})"),
              (Events{"100 pause.changed true", "7400 pause.changed false"}));
    EXPECT_EQ(
        pauses(R"({"at": 100, "pause": {"minutes": 60}}, {"at": 200, "relaunchAfterSec": 600})"),
        (Events{"100 pause.changed true", "800 pause.changed true", "3700 pause.changed false"}));
    EXPECT_EQ(pauses(R"({"at": 100, "pause": "indefinite"}, {"at": 200, "relaunchAfterSec": 600})"),
              (Events{"100 pause.changed true"}));
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
        {"{}", "\"durationSec\" is missing"},
        {R"({"durationSec": -1})", "durationSec: "},
        {R"({"durationSec": 1, "speed": 2})", "speed: "},
        {R"({"durationSec": 1, "timeZone": "Mars/Olympus"})", "timeZone: "},
        {R"({"durationSec": 1, "start": "2026-02-29T09:00:00"})", "start: "},
        {R"({"durationSec": 1, "start": "9999-12-31T23:59:55"})", "start: "},
        {R"({"durationSec": 1, "steps": [{"at": 0, "resume": true}, {"at": 1, "frontmots": 1}]})",
         "steps[1]: "},
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
