#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

#include "app/simulator/simulator.h"
#include "core/settings/settings_model.h"

namespace ostrel {
namespace {

constexpr double kDaySec = 86'400;
constexpr int kEscape = 53;
constexpr int kReturn = 36;
constexpr int kP = 35;
constexpr double kNoticeSec = 60;  // ahead of each break

// Some days of March 2026, worked out without a calendar: before them there were 25 years with 6
// leap days since 2001-01-01, and 59 days of 2026.
struct Week {
    const char* zone;
    int firstDay;
    double utcOffsetHours;
    int dayCount;

    // Nine in the morning, in seconds since 2001.
    [[nodiscard]] double nine(int day) const {
        const int daysBefore = 25 * 365 + 6 + 59 + firstDay - 1 + day;
        return daysBefore * kDaySec + (9 - utcOffsetHours) * 3600;
    }
    [[nodiscard]] std::string key(int day) const {
        const int dayOfMonth = firstDay + day;
        const std::string text = std::to_string(dayOfMonth);
        return "2026-03-" + (dayOfMonth < 10 ? "0" + text : text);
    }
    [[nodiscard]] double last() const { return nine(dayCount - 1); }
};

// What the week should leave behind, added up break by break.
class Expected {
  public:
    explicit Expected(const Week& week) : week_(week), hourBegan_(week.nine(0)) {}

    // Times are seconds after nine of that day.
    void entry(int day, const char* kind, const char* outcome, double startedAt, double endedAt,
               int durationSec, int penaltySec = 0) {
        log_.push_back({{"id", "masked"},
                        {"startedAt", week_.nine(day) + startedAt},
                        {"endedAt", week_.nine(day) + endedAt},
                        {"kind", kind},
                        {"outcome", outcome},
                        {"penaltyAppliedSec", penaltySec},
                        {"durationSec", durationSec}});
        const std::string what = outcome;
        if (what == "completed" || what == "autoFadeOut") {
            ++counts_[day][kind];
        } else {
            ++counts_[day][what];
        }
    }
    void skip(double at, const char* kind, int costSec) {
        ledger_.push_back(
            {{"kind", kind}, {"occurredAt", week_.last() + at}, {"appliedPenaltySec", costSec}});
    }
    // A day that was missed is judged when the next one begins for the program.
    void missedDay(int day, double judgedAt) {
        streak_.push_back({{"day", week_.key(day)},
                           {"verdict", "missed"},
                           {"judgedAt", week_.nine(day) + judgedAt}});
    }
    void reachedDay(int day, double firstBreakAt, double lastBreakAt) {
        streak_.push_back({{"day", week_.key(day)},
                           {"verdict", "reached"},
                           {"judgedAt", week_.nine(day) + lastBreakAt},
                           {"firstBreakAt", week_.nine(day) + firstBreakAt},
                           {"lastBreakAt", week_.nine(day) + lastBreakAt}});
        ++reachedDays_;
    }

    // A break that closed had shown so many guided moves.
    void moves(const char* kind, int count) { moves_[kind] += count; }
    // Whether a postpone is left is asked for `at` seconds after nine of that day. An hour that is
    // over by then is followed by the next.
    void askForPostpones(int day, double at) {
        const double now = week_.nine(day) + at;
        if (now >= hourBegan_ + 3600) {
            hourBegan_ = now;
        }
    }

    // `lastQuitAt` since 2001, `poolSavedAt` after nine of the last day.
    [[nodiscard]] Json documents(double lastQuitAt, int poolSec, double poolSavedAt) {
        auto& counts = counts_[week_.dayCount - 1];
        return {
            {"ostrel.breakLog.v1", log_},
            {"ostrel.dailyCounter.v1",
             {{"dateKey", week_.key(week_.dayCount - 1)},
              {"eyeBreaksCompleted", counts["eye"]},
              {"bodyBreaksCompleted", counts["body"]},
              {"skipsToday", counts["skipped"]},
              {"postponesToday", counts["postponed"]}}},
            {"ostrel.guidedRotation.v1",
             {{"eye", moves_["eye"]}, {"body", moves_["body"]}, {"message", 0}}},
            {"ostrel.penaltyLedger.v1", ledger_},
            {"ostrel.penaltyPool.v1",
             {{"seconds", poolSec}, {"savedAt", week_.last() + poolSavedAt}}},
            {"ostrel.postponeQuota.v1", {{"used", 0}, {"windowStart", hourBegan_}}},
            {"ostrel.sessionState.v1",
             {{"isPaused", false}, {"lastQuitAt", lastQuitAt}, {"pauseReasons", Json::array()}}},
            {"ostrel.settings.v1", asJson(SettingsModel{})},
            {"ostrel.streak.v1",
             {{"earlierDays", 0}, {"longestDays", reachedDays_}, {"recent", streak_}}}};
    }

  private:
    Week week_;
    Json log_ = Json::array();
    Json ledger_ = Json::array();
    Json streak_ = Json::array();
    double hourBegan_;
    int reachedDays_ = 0;
    std::map<std::string, int> moves_;
    std::map<int, std::map<std::string, int>> counts_;
};

// Runs the week and compares every document that it leaves behind.
void expectWeek(const Week& week, Json scenario, const Json& expected, std::int64_t chargedSec) {
    scenario["timeZone"] = week.zone;
    scenario["start"] = week.key(0) + "T09:00:00";
    const ScenarioResult read = parseScenario(scenario.dump());
    ASSERT_TRUE(read.scenario) << read.error;
    Json last;
    std::int64_t isChargedSec = 0;
    Simulator(*read.scenario, seededUuids(1), [&](const std::string& line) {
        last = *parseJson(line);
        if (last["event"] == "penalty.applied") {
            isChargedSec += last["penaltySec"].get<std::int64_t>();
        }
    }).run();
    EXPECT_EQ(isChargedSec, chargedSec);
    Json& documents = last["preferences"];
    std::set<std::string> identifiers;
    for (Json& entry : documents["ostrel.breakLog.v1"]) {
        identifiers.insert(entry["id"].get<std::string>());
        entry["id"] = "masked";
    }
    EXPECT_EQ(identifiers.size(), documents["ostrel.breakLog.v1"].size());
    EXPECT_EQ(Json::diff(documents, expected).dump(1), "[]")
        << "is what leads from the documents to what they should be";
}

}  // namespace

// Every ten minutes of the default day have one break or none: n counts them. Each fifth is a body
// break, each second an eye break, and what is both is a body break that takes the eye break in.
TEST(WeeksTest, OrdinaryWorkWeek) {
    const Week week{"America/New_York", 9, -4, 5};
    constexpr double kQuit = 28'800;
    // A skip costs 90, or 180 when there was one of an eye break within the hour before; the next
    // eye break carries it if it was one of an eye break.
    const std::map<int, int> costOfSkip = {{12, 90}, {14, 180}, {24, 90}, {25, 180},
                                           {35, 90}, {36, 90},  {44, 90}, {46, 180}};
    const std::map<int, int> carried = {{14, 90}, {16, 180}, {26, 90},
                                        {38, 90}, {46, 90},  {48, 180}};
    Expected expected(week);
    Json steps = Json::array();
    for (int day = 0; day < week.dayCount; ++day) {
        for (int n = 1; n <= 47; ++n) {
            const bool isBody = n % 5 == 0;
            if (!isBody && n % 2 != 0) {
                continue;
            }
            const char* kind = isBody ? "body" : "eye";
            const double opens = 600 * n;
            const int penaltySec = carried.contains(n) ? carried.at(n) : 0;
            const int lasts = (isBody ? 300 : 120) + penaltySec;
            const bool isSkipped = costOfSkip.contains(n);
            const bool fades = n % 3 == 0;
            const double closes = opens + (isSkipped ? 20 : lasts + (fades ? 1.5 : 1));
            if (isSkipped || !fades) {
                steps.push_back(
                    {{"at", day * kDaySec + closes}, {"key", isSkipped ? kEscape : kReturn}});
            }
            const char* outcome = isSkipped ? "skipped" : fades ? "autoFadeOut" : "completed";
            expected.entry(day, kind, outcome, opens, closes, lasts, penaltySec);
            expected.askForPostpones(day, opens - kNoticeSec);
            expected.moves(kind, isBody && !isSkipped ? 6 : 1);
            if (n % 10 == 0) {
                expected.entry(day, "eye", "completed", opens, closes, lasts);
            }
        }
        // The sixth break taken is the one at n = 10: 2, 4, 5, 6 and 8 come before it.
        expected.reachedDay(day, 1200 + 121, 6000 + 301);
        if (day + 1 < week.dayCount) {
            steps.push_back({{"at", day * kDaySec + kQuit}, {"relaunchAfterSec", kDaySec - kQuit}});
        }
    }
    // The eye break of the very last second opens, takes the pool and is left on the screen. Of the
    // skips those of the last hour are kept.
    expected.skip(600 * 44 + 20, "eye", 90);
    expected.skip(600 * 46 + 20, "eye", 180);
    const int lastDay = week.dayCount - 1;
    expected.askForPostpones(lastDay, kQuit - kNoticeSec);
    expectWeek(week, {{"durationSec", lastDay * kDaySec + kQuit}, {"steps", steps}},
               expected.documents(week.nine(lastDay - 1) + kQuit, 0, kQuit),
               5 * (90 + 180 + 90 + 90 + 90) + 180);
}

// The first body break that took an eye break in is skipped, so that the eye break follows within a
// minute of it; from then on the two never meet again.
TEST(WeeksTest, WeekOfSkippingEverything) {
    const Week week{"Asia/Kolkata", 9, 5.5, 7};
    constexpr double kQuit = 28'800;
    constexpr double kAfter = 10;
    Expected expected(week);
    Json steps = Json::array();
    std::int64_t chargedSec = 0;
    for (int day = 0; day < week.dayCount; ++day) {
        std::map<double, const char*> opens;
        for (double at = 1200; at <= 4800; at += 1200) {
            opens[at] = "eye";
        }
        for (double at = 3000; at < kQuit; at += 3000) {
            opens[at] = "body";
        }
        // Cut to 60 seconds before the tick of the skip, which takes the first of them.
        for (double at = 6000 + kAfter + 59; at < kQuit; at += 1200) {
            opens[at] = "eye";
        }
        int eyeSkips = 0;
        int pool = 0;  // too old each morning
        for (const auto& [at, kind] : opens) {
            const bool isEye = kind == std::string("eye");
            // Eye breaks are 20 minutes apart: from the third on there were two within the hour.
            const int cost = eyeSkips == 0 ? 90 : eyeSkips == 1 ? 180 : 300;
            const int carried = isEye ? pool : 0;
            expected.entry(day, kind, "skipped", at, at + kAfter, (isEye ? 120 : 300) + carried,
                           carried);
            // Of a break whose notice falls due while another is on the screen it comes after that.
            const bool isCovered = opens.contains(at - kNoticeSec - 9);
            expected.askForPostpones(day, at - kNoticeSec + (isCovered ? 1 : 0));
            expected.moves(kind, 1);
            steps.push_back({{"at", day * kDaySec + at + kAfter}, {"key", kEscape}});
            chargedSec += carried;
            if (isEye) {
                ++eyeSkips;
                pool = cost;
            }
            if (day + 1 == week.dayCount && at + kAfter >= kQuit - 3600) {
                expected.skip(at + kAfter, kind, cost);
            }
        }
        if (day + 1 < week.dayCount) {
            expected.missedDay(day, kDaySec);
            steps.push_back({{"at", day * kDaySec + kQuit}, {"relaunchAfterSec", kDaySec - kQuit}});
        }
    }
    const int lastDay = week.dayCount - 1;
    const double lastEyeSkip = 6069 + 18 * 1200 + kAfter;
    expectWeek(week, {{"durationSec", lastDay * kDaySec + kQuit}, {"steps", steps}},
               expected.documents(week.nine(lastDay - 1) + kQuit, 300, lastEyeSkip), chargedSec);
}

// The same day seven times, across a change to summer time, without one quit: after a night's sleep
// both countdowns start anew.
TEST(WeeksTest, WeekOfSleepMeetingsAndPostpones) {
    const Week week{"Europe/Berlin", 25, 1, 7};
    constexpr double kEvening = 14'400;
    const Json meeting = {{"bundleIdentifier", "us.zoom.xos"}, {"processIdentifier", 4711}};
    const Json dayOfSteps = {
        // From 1000 to 3650 a meeting. The eye break of 1200 is held for 900 s and dropped. The one
        // of 2400 is held until the body break of 3000 takes it in and the hold over, and dropped
        // with it at 3300. The eye break is back within a minute, at 3359, is held, and opens when
        // the meeting is found over, at the tenth look after 30 s each.
        {{"at", 1000}, {"frontmost", meeting}},
        {{"at", 3650}, {"frontmost", nullptr}},
        {{"at", 3670}, {"key", kP}},  // is back 300 ticks later, the one of 3670 included
        {{"at", 3980}, {"key", kP}},  // none is left: fades out
        {{"at", 5169 + 121}, {"key", kReturn}},  // 1200 s after it opened
        // The body break of 6000 is closed by a nap; everything is 1800 s later from here on.
        {{"at", 6100}, {"sleepSec", 1800}},
        {{"at", 6369 + 1800 + 10}, {"key", kEscape}},  // 90, which the one of 9369 carries
        // The eye break of 10569 falls due 231 s before the body break of 10800, which takes it in.
        {{"at", 10'800 + 301}, {"key", kReturn}},
        {{"at", 11'700}, {"frontmost", meeting}},  // the eye break of 11769 is held
        {{"at", 11'900}, {"frontmost", nullptr}},  // and opens at 11919
        {{"at", 11'930}, {"key", kP}},             // more than an hour after the first
        {{"at", 12'229 + 121}, {"key", kReturn}},
        // The eye break of 13429 goes into the body break of 13800. That is skipped, and the eye
        // break follows a minute later.
        {{"at", 13'810}, {"key", kP}},
        {{"at", 13'810}, {"key", kEscape}}};
    Expected expected(week);
    Json steps = Json::array();
    for (int day = 0; day < week.dayCount; ++day) {
        expected.entry(day, "eye", "deferred", 1200, 2100, 0);
        expected.entry(day, "body", "deferred", 2400, 3300, 0);
        expected.entry(day, "eye", "postponed", 3659, 3670, 120);
        expected.entry(day, "eye", "autoFadeOut", 3969, 3969 + 121.5, 120);
        expected.entry(day, "eye", "completed", 5169, 5169 + 121, 120);
        expected.entry(day, "eye", "skipped", 8169, 8179, 120);
        expected.entry(day, "eye", "autoFadeOut", 9369, 9369 + 211.5, 210, 90);
        expected.entry(day, "body", "completed", 10'800, 11'101, 300);
        expected.entry(day, "eye", "completed", 10'800, 11'101, 300);
        expected.entry(day, "eye", "postponed", 11'919, 11'930, 120);
        expected.entry(day, "eye", "completed", 12'229, 12'350, 120);
        expected.entry(day, "body", "skipped", 13'800, 13'810, 300);
        expected.entry(day, "eye", "autoFadeOut", 13'869, 13'869 + 121.5, 120);
        expected.reachedDay(day, 3969 + 121.5, 13'869 + 121.5);  // the seventh
        for (Json step : dayOfSteps) {
            step["at"] = day * kDaySec + step["at"].get<double>();
            steps.push_back(step);
        }
        // The tick of the second at which the night began comes right after it: a second past nine,
        // so that all the following is as if ticks had begun at nine.
        if (day + 1 < week.dayCount) {
            steps.push_back(
                {{"at", day * kDaySec + kEvening}, {"sleepSec", kDaySec - kEvening + 1}});
        }
    }
    // Without the notices ahead of a break nothing but the keys asks for postpones.
    const Json settings = {{"dailyGoalBreaks", 7}, {"breakSoonLeadSec", 0}};
    // The body breaks were left after 100 s, 300 s and 10 s.
    expected.moves("eye", 8 * week.dayCount);
    expected.moves("body", (2 + 6 + 1) * week.dayCount);
    expected.skip(13'810, "body", 90);  // the eye skip of 8179 was more than an hour ago
    Json documents = expected.documents(week.nine(0), 0, 13'869);
    for (int day = 0; day < week.dayCount; ++day) {
        documents["ostrel.presenceTally.v1"].push_back(
            {{"day", week.key(day)}, {"held", 4}, {"credited", 0}});
    }
    documents["ostrel.postponeQuota.v1"] = {{"used", 1}, {"windowStart", week.last() + 11'930}};
    // It could be used as it stood.
    documents["ostrel.settings.v1"] = settings;
    expectWeek(week,
               {{"durationSec", (week.dayCount - 1) * kDaySec + kEvening},
                {"preferences", {{"ostrel.settings.v1", settings}}},
                {"steps", steps}},
               documents, std::int64_t{7} * 90);
}

}  // namespace ostrel
