// Every stored document, damaged at random: the program comes up with it and goes on, the other
// records keep what they hold, and what could not be read is set aside, not lost.
//
// A failure names its case; OSTREL_TEST_CASE="ostrel.streak.v1 17" runs that one alone.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <exception>
#include <map>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "support/case_in_hand.h"
#include "support/document_damage.h"
#include "support/document_mutations.h"
#include "support/document_scenes.h"
#include "support/random_runs.h"
#include "support/stored_documents.h"

namespace ostrel::stored {
namespace {

constexpr std::array kKeys = {kSettings, kSession, kLog,    kCounter,  kPool, kLedger,
                              kQuota,    kStreak,  kDayEnd, kRotation, kTally};

void expectOthersUntouched(Desk& desk, const Damage& damage, Moment moment) {
    Documents expected = expectedOthers(damage, moment);
    Documents others = desk.documents();
    others.erase(damage.key);
    if (damage.key == kSettings &&
        desk.environment().settingsStore().settings()->workHoursEnabled) {
        others.erase(kSession);  // they may well say that nobody works now
        expected.erase(kSession);
    }
    if (mayReachGoal(damage)) {
        others.erase(kStreak);
    }
    EXPECT_EQ(others, expected);
    if (!isDueToBeWritten(damage, moment)) {
        EXPECT_EQ(desk.documents().at(damage.key), damage.bytes);
    }
}

// A field is what the document says or, when that cannot be, the default.
void expectSettingsAsStored(const Json& settings, const Damage& damage) {
    static const Json kDefaults = asJson(SettingsModel{});
    static const std::set<std::string> kRepaired = {
        "remindersMigrated",    "breakSoonLeadSec",         "preBreakToastLeadSec",
        "eyeBreakIntervalSec",  "eyeBreakDurationSec",      "bodyBreakIntervalSec",
        "bodyBreakDurationSec", "presetDurationsNormalized"};
    const Json before = Json::parse(damage.scene.documents.at(kSettings));
    for (const auto& [key, value] : settings.items()) {
        Json stored = valueOf(*damage.json, key.c_str());
        if (key == "workDays" && listOf(isInteger)(stored)) {
            std::sort(stored.begin(), stored.end());
            stored.erase(std::unique(stored.begin(), stored.end()), stored.end());
        } else if (stored.is_object() && value.is_object()) {
            Json known = Json::object();
            for (const auto& [part, ignored] : value.items()) {
                known[part] = valueOf(stored, part.c_str());
            }
            stored = known;
        }
        const bool isUntouched = stored == before[key];
        if (!isDueToBeWritten(damage, Moment::afterLaunch) || !kRepaired.contains(key)) {
            EXPECT_TRUE(value == stored || (!isUntouched && value == kDefaults[key]))
                << key << " is " << value << ", stored as " << stored;
        }
    }
}

void expectSameAtASecondLaunch(Desk& desk) {
    const auto records = desk.records();
    Desk again(desk.documents(), desk.now());
    EXPECT_EQ(again.records(), records);
    EXPECT_EQ(again.documents(), desk.documents());
    EXPECT_TRUE(again.damaged().empty());
}

void expectRecordsKept(Desk& desk) {
    const auto records = desk.records();
    desk.quit();
    for (const auto& [key, bytes] : desk.documents()) {
        EXPECT_TRUE(isReadable(key, parsed(bytes).value_or(Json()))) << key << " " << bytes;
    }
    Desk next(desk.documents(), desk.now());
    auto restored = next.records();
    // Of a pause not everything is taken up again, nor is a pool that was saved an hour ago.
    for (const auto& [key, record] : records) {
        if (key != kSession && key != kPool) {
            EXPECT_EQ(restored[key], record) << key;
        }
    }
}

// What a day may bring. By its end every record has been written.
void workADay(Desk& desk, std::mt19937& random) {
    using Way = Desk::Way;
    constexpr std::array kWays = {Way::complete, Way::fadeOut, Way::skip, Way::postpone};
    TimerEngine& engine = desk.environment().timerEngine();
    SystemEvents& events = desk.platform().systemEvents;
    events.didWake.send();
    desk.readAll();
    engine.endAllPauses();
    if (random() % 2 == 0) {
        desk.change([](SettingsModel& settings) { settings.disableSkipPenalty = true; });
        desk.change([](SettingsModel& settings) { settings.disableSkipPenalty = false; });
    }
    desk.takeBreak(BreakKind::eye, Way::skip);
    desk.takeBreak(BreakKind::body, kWays[random() % kWays.size()]);
    engine.markUserIdle();
    engine.markUserReturned(400);
    desk.sitInMeeting(1000);
    desk.takeBreak(BreakKind::eye, Way::complete);
    desk.takeBreak(BreakKind::body, Way::postpone);
    desk.change([](SettingsModel& settings) { settings.strictMode = !settings.strictMode; });
    engine.pauseByUser(PauseDuration::untilNextMorning());
    const auto until = desk.environment().sessionStateStore().current()->userPauseUntil;
    EXPECT_TRUE(until > desk.now() && until <= desk.now() + std::chrono::hours(25));
    engine.togglePause();
    if (random() % 2 == 0) {
        events.willSleep.send();
        desk.waitUntil(desk.now() + std::chrono::hours(24));
        events.didWake.send();
        events.clockChanged.send();
        desk.run(2);
    }
    desk.readAll();
    EXPECT_TRUE(desk.endWorkDay());
    engine.startNow(BreakKind::eye);
}

void tryOut(const Damage& damage, std::mt19937& random) {
    Desk desk(damage.scene.documents, damage.scene.start, {{damage.key, damage.bytes}});
    expectOthersUntouched(desk, damage, Moment::afterLaunch);
    if (damage.isReadableAs(kSettings)) {
        expectSettingsAsStored(desk.records()[kSettings], damage);
    }
    expectSameAtASecondLaunch(desk);
    if (damage.readable && hasHugeCount(*damage.json)) {
        return;
    }
    desk.run(kQuietSec);
    const TimerEngine& engine = desk.environment().timerEngine();
    // Settings may well ask for a break sooner, or for none now.
    if (damage.key != kSettings || (engine.activeIntervalSec(BreakKind::eye) > kQuietSec &&
                                    engine.activeIntervalSec(BreakKind::body) > kQuietSec &&
                                    !desk.environment().sessionStateStore().isPaused())) {
        expectOthersUntouched(desk, damage, Moment::afterQuietTime);
    }
    workADay(desk, random);
    expectRecordsKept(desk);
    std::multimap<std::string, std::string> lost;
    if (!damage.readable) {
        lost.emplace(damage.key, damage.bytes);
    }
    EXPECT_EQ(desk.damaged(), lost);
    EXPECT_EQ(desk.failed, std::vector<std::string>{});
}

// Names the case to whoever has to look into it, whatever becomes of it.
void tryOut(const std::string& name, const Damage& damage, std::mt19937& random) {
    const std::string description = name + ", scene " +
                                    std::to_string(static_cast<int>(damage.scene.kind)) + ": " +
                                    testing::PrintToString(damage.bytes);
    const CaseInHand inHand(description);
    const testing::ScopedTrace trace(__FILE__, __LINE__, description);
    try {
        tryOut(damage, random);
    } catch (const std::exception& thrown) {
        ADD_FAILURE() << thrown.what();
    }
}

// Whether anything has failed since.
class FailureCount {
  public:
    [[nodiscard]] bool isSame() const { return now() == before_; }

  private:
    static int now() {
        return testing::UnitTest::GetInstance()->current_test_info()->result()->total_part_count();
    }
    int before_ = now();
};

}  // namespace

TEST(RandomDocumentTest, DamageStopsNothingAndReachesNoOtherRecord) {
    const int runs = randomRuns(200, 5'000);
    const char* only = std::getenv("OSTREL_TEST_CASE");
    for (std::size_t document = 0; document < kKeys.size(); ++document) {
        const std::string key = kKeys[document];
        int readable = 0;
        int run = 0;
        for (const FailureCount failures; run < runs && failures.isSame(); ++run) {
            const std::string name = key + " " + std::to_string(run);
            if (only != nullptr && name != only) {
                continue;
            }
            std::mt19937 random(static_cast<unsigned>(run) * 100 + static_cast<unsigned>(document));
            const Scene& scene = scenes()[random() % scenes().size()];
            const Damage damage{key, DocumentMutator(random).mutated(scene.documents.at(key)),
                                scene};
            readable += damage.readable ? 1 : 0;
            tryOut(name, damage, random);
        }
        // What is always read, or never, tries out only half.
        EXPECT_TRUE(only != nullptr || (readable > run / 25 && readable < run * 9 / 10))
            << key << ": " << readable << " of " << run << " can be read";
    }
}

TEST(RandomDocumentTest, DatesAndNumbersBeyondAllSenseAreBorne) {
    struct Row {
        const char* key;
        const char* at;
        const char* value;
    };
    static constexpr Row kRows[] = {
        {kSettings, "/workHoursStartMinute", "100000"},
        {kSettings, "/workHoursStartMinute", "-1"},
        {kSettings, "/workHoursEndMinute", "-1"},
        {kSettings, "/maxDeferralSec", "-1000000000000"},
        {kSession, "/systemSleepWakeMarker", "-1e308"},
        {kSession, "/systemSleepWakeMarker", "1e308"},
        {kSession, "/userPauseUntil", "1e308"},
        {kLog, "/0/endedAt", "-1e308"},
        {kLog, "/0/endedAt", "1e308"},
        {kPool, "/savedAt", "-1e308"},
        {kLedger, "/0/occurredAt", "1e308"},
        {kQuota, "/windowStart", "1e308"},
        {kStreak, "/recent/0/judgedAt", "1e308"},
        {kStreak, "/recent/0/day", "\"9999-12-31\""},
        {kTally, "/0/day", "\"9999-12-31\""},
        {kStreak, "",
         R"({"earlierDays":3659634,"longestDays":0,"recent":[{"day":"2026-03-26","verdict":"reached","judgedAt":1.0}]})"},
    };
    for (const auto& [key, at, value] : kRows) {
        for (const Scene& scene : scenes()) {
            Json document = Json::parse(scene.documents.at(key));
            document[Json::json_pointer(at)] = Json::parse(value);
            std::mt19937 random(1);
            tryOut(std::string(key) + at, {key, document.dump(), scene}, random);
        }
    }
}

TEST(RandomDocumentTest, StartsFromDocumentsInWhichEveryKeyExists) {
    for (const Scene& scene : scenes()) {
        ASSERT_EQ(scene.documents.size(), kKeys.size());
        for (const char* key : kKeys) {
            std::mt19937 random(1);
            tryOut("as it was", {key, scene.documents.at(key), scene}, random);
        }
        for (const char* part : {"completed", "autoFadeOut", "skipped", "postponed", "deferred"}) {
            EXPECT_NE(scene.documents.at(kLog).find(part), std::string::npos) << part;
        }
        for (const char* part : {"firstBreakAt", "lastBreakAt", "reached", "missed", "free"}) {
            EXPECT_NE(scene.documents.at(kStreak).find(part), std::string::npos) << part;
        }
    }
    for (const char* part :
         {"pausedAt", "systemSleepWakeMarker", "pendingPauseForgottenFireAt", "userPauseUntil"}) {
        EXPECT_NE(scenes()[1].documents.at(kSession).find(part), std::string::npos) << part;
    }
}

}  // namespace ostrel::stored
