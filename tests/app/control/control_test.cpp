#include "app/control/control.h"

#include <gtest/gtest.h>

#include "app/control/control_report.h"
#include "app/environment/app_environment.h"
#include "app/simulator/virtual_platform.h"
#include "platform/calendar/local_time.h"
#include "support/events.h"

namespace ostrel {
namespace {

using Outcome = BreakLogEntry::Outcome;

constexpr const char* kZone = "Europe/Berlin";

// The running program, and what its environment does.
struct ControlTest : ::testing::Test {
    ControlTest() { environment.launch(); }

    void run(double seconds) { platform.runLoop.runFor(runLoopSec(seconds)); }
    void setUp(const std::function<void(SettingsModel&)>& change) {
        environment.settingsStore().update(change);
    }
    [[nodiscard]] const SettingsModel& settings() {
        return *environment.settingsStore().settings();
    }
    [[nodiscard]] std::vector<std::int64_t> left() {
        const TimerState& timers = *environment.timerEngine().state();
        return {timers.eye.remainingSec, timers.body.remainingSec};
    }
    [[nodiscard]] Json statusJson() const { return parseJson(control.printStatus()).value(); }
    void beginMeeting() { platform.frontmost.set({{"us.zoom.xos", 7}}); }
    void showBreak() { EXPECT_TRUE(control.startBreak("eye").isDone()); }
    [[nodiscard]] Events log() {
        Events outcomes;
        for (const BreakLogEntry& entry : *environment.breakLog().entries()) {
            outcomes.push_back(std::string(nameOf(entry.kind)) + " " +
                               std::string(nameOf(entry.outcome)));
        }
        return outcomes;
    }

    VirtualPlatform platform{kZone, wallTimeOf(*parseLocalTime("2026-03-09T09:00:00"), kZone)};
    AppEnvironment environment{platform.platform(seededUuids(1))};
    Events opened;
    Control control{{environment,
                     platform.calendar,
                     [this] { return platform.runLoop.wallNow(); },
                     {"en", "de"},
                     [this](AppWindow window) { opened.emplace_back(nameOf(window)); }}};
};

// "done", or the key of the reason after what kind of refusal it is.
std::string inShort(const ControlOutcome& outcome) {
    switch (outcome.kind) {
        case ControlOutcome::Kind::refused:
            return "refused " + outcome.reason.key;
        case ControlOutcome::Kind::invalid:
            return "invalid " + outcome.reason.key;
        case ControlOutcome::Kind::done:
            break;
    }
    return "done";
}

TEST_F(ControlTest, TheStatusTellsWhatTheStatusItemTells) {
    run(60);
    EXPECT_EQ(
        control.printStatus(),
        R"({"state":"running","pauseReasons":[],"eye":{"remainingSec":1140,"intervalSec":1200},)"
        R"("body":{"remainingSec":2940,"intervalSec":3000},"next":"eye","eyeJoinsBody":false,)"
        R"("penaltySec":0,"strictMode":false,"canPostpone":true,)"
        R"("today":{"eyeBreaksCompleted":0,"bodyBreaksCompleted":0,"skips":0,"postpones":0},)"
        R"("dailyGoalBreaks":6,"streakDays":0,"longestStreakDays":0})");
    setUp([](SettingsModel& changed) { changed.ostrelEnabled = false; });
    EXPECT_EQ(statusJson()["state"], "off");
}

TEST_F(ControlTest, APauseIsAsLongAsPeopleTypeIt) {
    const std::pair<const char*, const char*> lengths[] = {
        {"30m", "2026-03-09T09:30:00+01:00"},
        {"24h", "2026-03-10T09:00:00+01:00"},
        {"indefinite", ""},  // for ever
        {"until-morning", "2026-03-10T09:00:00+01:00"},
    };
    for (const auto& [typed, until] : lengths) {
        EXPECT_EQ(inShort(control.pause(typed)), "done") << typed;
        EXPECT_EQ(statusJson().value("pausedUntil", ""), until) << typed;
        EXPECT_EQ(inShort(control.resume()), "done");
        EXPECT_EQ(statusJson()["state"], "running");
    }
    for (const char* typed : {"", "m", "0m", "-5m", "5", "1.5h", "25h", "1441m", "+5m", "5 m",
                              "99999999999999999999m", "Indefinite"}) {
        EXPECT_EQ(inShort(control.pause(typed)), "invalid cli.error.pause %@") << typed;
    }
    setUp([](SettingsModel& changed) { changed.ostrelEnabled = false; });
    EXPECT_EQ(inShort(control.pause("5m")), "refused cli.refused.off");
}

TEST_F(ControlTest, APostponePutsOffWhatIsOnTheScreenOrElseWhatComesNext) {
    run(100);
    EXPECT_EQ(inShort(control.postpone()), "done");
    EXPECT_EQ(left(), (std::vector<std::int64_t>{1400, 2900}));
    EXPECT_EQ(statusJson()["canPostpone"], false);
    run(3600);
    environment.overlayManager().close(CloseReason::done);
    showBreak();
    EXPECT_EQ(inShort(control.postpone()), "done");
    EXPECT_EQ(left().front(), 300);
}

TEST_F(ControlTest, ABreakWhoseTimeIsUpIsOverThoughItsCardStillStands) {
    setUp([](SettingsModel& changed) { changed.eyePresentation = BreakPresentation::gentle; });
    showBreak();
    run(119);
    platform.inputIdle.setReading([] { return 119; });
    run(1.5);
    EXPECT_TRUE(statusJson().contains("breakOnScreen"));
    EXPECT_EQ(inShort(control.skip()), "refused cli.refused.over");
    platform.inputIdle.setReading([] { return 0; });
    run(10);
    showBreak();
    run(125);
    EXPECT_EQ(inShort(control.postpone()), "refused cli.refused.over");
    EXPECT_EQ(statusJson()["canPostpone"], true);
    // The answer to its question.
    EXPECT_EQ(inShort(control.skip()), "done");
    EXPECT_EQ(log(), (Events{"eye autoFadeOut", "eye skipped"}));
}

TEST_F(ControlTest, APostponeIsNotSpentOnABreakThatDoesNotCome) {
    control.pause("30m");
    EXPECT_EQ(inShort(control.postpone()), "refused cli.refused.paused");
    control.resume();
    setUp([](SettingsModel& changed) { changed.ostrelEnabled = false; });
    EXPECT_EQ(inShort(control.postpone()), "refused cli.refused.off");
    setUp([](SettingsModel& changed) { changed.ostrelEnabled = true; });
    beginMeeting();
    run(1200);
    EXPECT_EQ(inShort(control.postpone()), "refused cli.refused.held");
    EXPECT_EQ(statusJson()["canPostpone"], true);
}

TEST_F(ControlTest, OwnTimingRestartsOnlyTheCountdownThatItChanges) {
    run(100);
    EXPECT_EQ(inShort(control.setSetting("eyeBreakDurationSec", "30")), "done");
    EXPECT_EQ(left(), (std::vector<std::int64_t>{1100, 2900}));
    EXPECT_EQ(settings().activePresetID, "custom");
    EXPECT_EQ(inShort(control.setSetting("eyeBreakIntervalSec", "900")), "done");
    EXPECT_EQ(left(), (std::vector<std::int64_t>{900, 2900}));
    EXPECT_EQ(settings().eyeBreakDurationSec, 30);
    for (int i = 0; i < 2; ++i) {  // a preset begins anew, also one that has the same values
        EXPECT_EQ(inShort(control.setSetting("activePresetID", "light")), "done");
        EXPECT_EQ(left(), (std::vector<std::int64_t>{1800, 5400}));
        run(100);
        EXPECT_EQ(inShort(control.setSetting("activePresetID", "custom")), "done");
        EXPECT_EQ(left(), (std::vector<std::int64_t>{1700, 5300}));
    }
}

TEST_F(ControlTest, AnImportIsTakenAsAStoredDocumentIs) {
    run(100);
    for (const char* odd : {"[1]", "{", R"({"days":[]})"}) {
        EXPECT_EQ(inShort(control.importSettings(odd)), "invalid cli.error.document") << odd;
    }
    setUp([](SettingsModel& changed) { changed.hasOnboarded = true; });
    // What cannot be read gets its default; what is missing stays.
    EXPECT_EQ(inShort(control.importSettings(R"({"activePresetID":"own","dailyGoalBreaks":"nine",
        "eyeBreakIntervalSec":100,"bodyBreakIntervalSec":3000,"strictMode":true})")),
              "done");
    EXPECT_EQ(left(), (std::vector<std::int64_t>{100, 2900}));
    EXPECT_EQ(settings().dailyGoalBreaks, 6);
    EXPECT_TRUE(settings().strictMode);
    // The same again changes nothing; another one puts right what an older version left.
    const std::string same = control.settings();
    run(10);
    EXPECT_EQ(inShort(control.importSettings(same)), "done");
    EXPECT_EQ(left(), (std::vector<std::int64_t>{90, 2890}));
    EXPECT_EQ(inShort(control.importSettings(R"({"presetDurationsNormalized":false,
        "activePresetID":"strict","eyeBreakDurationSec":20})")),
              "done");
    EXPECT_EQ(settings().eyeBreakDurationSec, 90);
    EXPECT_EQ(left(), (std::vector<std::int64_t>{900, 2400}));
    EXPECT_TRUE(settings().strictMode);
    EXPECT_EQ(inShort(control.importSettings(R"({"eyeBreakIntervalSec":1500})")), "done");
    EXPECT_EQ(settings().activePresetID, "custom");
    EXPECT_EQ(left(), (std::vector<std::int64_t>{1500, 2400}));
    EXPECT_EQ(inShort(control.importSettings(R"({"hasOnboarded":false})")), "done");
    EXPECT_TRUE(settings().hasOnboarded) << "nobody is welcomed twice";
}

TEST_F(ControlTest, TheReportHasTheFiguresAndADayEach) {
    const WallTime before = platform.runLoop.wallNow() - wallSec(std::int64_t{8} * 86'400);
    const MakeUuid uuids = seededUuids(2);
    for (const auto outcome : {Outcome::skipped, Outcome::deferred, Outcome::deferred}) {
        environment.breakLog().append({uuids(), before, before, BreakKind::body, outcome, 0, 300});
    }
    setUp([](SettingsModel& changed) { changed.dailyGoalBreaks = 1; });
    beginMeeting();
    run(1201);
    environment.timerEngine().markUserReturned(300);
    showBreak();
    run(130);
    EXPECT_EQ(inShort(control.report("yearly", "json")), "invalid cli.error.range %@");
    for (const auto& [range, dropped] : {std::pair{"weekly", 0}, {"monthly", 2}}) {
        const Json json = parseJson(control.report(range, "json").text).value();
        const auto report = JsonCodec<ControlReport>::decode(json);
        ASSERT_TRUE(report);
        EXPECT_EQ(report->eyeFadedOut, 1);
        EXPECT_EQ(report->held, 1);
        EXPECT_EQ(report->dropped, dropped) << range;
        EXPECT_EQ(report->credited, 2);
        EXPECT_EQ(report->streakDays, 1);
        EXPECT_EQ(json["days"].back(), parseJson(R"({"day":"2026-03-09","eye":0,"body":0})"));
    }
    const std::string csv = control.report("weekly", "csv").text;
    EXPECT_TRUE(csv.starts_with("id,startedAt,endedAt,kind,outcome,"));
    EXPECT_NE(csv.find("2026-03-09T09:20:01+01:00,2026-03-09T09:22:02.500+01:00,eye,autoFadeOut"),
              std::string::npos)
        << csv;
    EXPECT_EQ(csv.find("skipped"), std::string::npos);
    EXPECT_NE(control.report("monthly", "csv").text.find("body,skipped"), std::string::npos);
}

}  // namespace
}  // namespace ostrel
