// Every stored document, damaged at random: the program comes up with it and goes on, the other
// records keep what they hold, and what could not be read is set aside, not lost.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "support/document_mutations.h"
#include "support/document_scenes.h"
#include "support/random_runs.h"

namespace ostrel::stored {
namespace {

constexpr std::array kKeys = {kSettings, kSession, kLog,    kCounter,  kPool, kLedger,
                              kQuota,    kStreak,  kDayEnd, kRotation, kTally};

struct Damage {
    std::string key;
    std::string bytes;
    const Scene& scene;
};

// The damaged record, and those that follow from it, may change.
Documents withoutFollowers(Documents documents, const std::string& key) {
    static const std::multimap<std::string, std::string> kFollowers = {
        {kSettings, kSession}, {kSettings, kStreak}, {kSettings, kPool}, {kSettings, kLedger},
        {kSession, kPool},     {kSession, kLedger},  {kLog, kStreak},    {kLedger, kPool}};
    const auto [first, last] = kFollowers.equal_range(key);
    std::for_each(first, last, [&](const auto& pair) { documents.erase(pair.second); });
    documents.erase(key);
    return documents;
}

// Second counts near 2^63 are fatal by rule as soon as anything is added to them.
bool hasHugeCount(const Json& json, const std::string& key = "") {
    if (json.is_structured()) {
        for (auto inner = json.begin(); inner != json.end(); ++inner) {
            if (hasHugeCount(*inner, json.is_object() ? inner.key() : "")) {
                return true;
            }
        }
        return false;
    }
    const bool isDate = key.ends_with("At") || key.ends_with("Start") || key.ends_with("Marker") ||
                        key.ends_with("Until");
    return json.is_number() && !isDate && std::abs(json.get<double>()) > 1e12;
}

void expectSameAtASecondLaunch(Desk& desk) {
    const auto records = desk.records();
    Desk again(desk.documents(), desk.now());
    EXPECT_EQ(again.records(), records);
    EXPECT_EQ(again.documents(), desk.documents());
}

void expectRecordsKept(Desk& desk) {
    const auto records = desk.records();
    desk.quit();
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
    desk.endWorkDay();
    engine.startNow(BreakKind::eye);
}

// Returns whether the damaged document had to be set aside.
bool tryOut(const std::string& name, const Damage& damage, std::mt19937& random) {
    SCOPED_TRACE(name + ": " + testing::PrintToString(damage.bytes));
    const auto json = parseJson(damage.bytes);
    Desk desk(damage.scene.documents, damage.scene.start, {{damage.key, damage.bytes}});
    EXPECT_EQ(withoutFollowers(desk.documents(), damage.key),
              withoutFollowers(damage.scene.afterLaunch, damage.key));
    expectSameAtASecondLaunch(desk);
    EXPECT_GE(*desk.environment().penaltyEngine().unconsumedPenaltySec(), 0);
    const std::size_t entries = desk.environment().breakLog().entries()->size();
    if (json && hasHugeCount(*json)) {
        return false;
    }
    desk.run(kQuietSec);
    if (damage.key != kSettings) {  // they may well ask for a break sooner
        EXPECT_EQ(withoutFollowers(desk.documents(), damage.key),
                  withoutFollowers(damage.scene.afterQuietTime, damage.key));
    }
    workADay(desk, random);
    expectRecordsKept(desk);
    const bool isSetAside = !desk.damaged().empty();
    if (isSetAside) {
        EXPECT_EQ(desk.damaged(),
                  (std::multimap<std::string, std::string>{{damage.key, damage.bytes}}));
    } else {
        EXPECT_TRUE(json) << "is lost";
        EXPECT_TRUE(damage.key != kLog || entries == json->size()) << entries << " are left";
    }
    EXPECT_EQ(desk.failed, std::vector<std::string>{});
    return isSetAside;
}

// A value put into a sound document, at an RFC 6901 pointer.
struct Change {
    const char* key;
    const char* at;
    const char* value;
};
bool tryOut(const Change& change, const Scene& scene) {
    Json document = Json::parse(scene.documents.at(change.key));
    document[Json::json_pointer(change.at)] = Json::parse(change.value);
    std::mt19937 random(1);
    return tryOut(std::string(change.key) + change.at, {change.key, document.dump(), scene},
                  random);
}

}  // namespace

TEST(RandomDocumentTest, DamageStopsNothingAndReachesNoOtherRecord) {
    const int runs = randomRuns(200, 5'000);
    for (std::size_t document = 0; document < kKeys.size() && !HasFailure(); ++document) {
        const std::string key = kKeys[document];
        int setAside = 0;
        for (int run = 0; run < runs && !HasFailure(); ++run) {
            std::mt19937 random(static_cast<unsigned>(run) * 100 + static_cast<unsigned>(document));
            const Scene& scene = scenes()[random() % scenes().size()];
            ASSERT_EQ(scene.documents.size(), kKeys.size());
            const std::string& sound = scene.documents.at(key);
            const std::string bytes = run == 0 ? sound : DocumentMutator(random).mutated(sound);
            const std::string name = key + " " + std::to_string(run);
            setAside += tryOut(name, {key, bytes, scene}, random) ? 1 : 0;
        }
        // What is always read, or never, tries out only half.
        EXPECT_TRUE(setAside > 0 && setAside < runs * 9 / 10) << key;
    }
}

TEST(RandomDocumentTest, DatesAndNumbersBeyondAllSenseAreBorne) {
    static constexpr Change kChanges[] = {
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
        {kPool, "/seconds", "-90"},
        {kLedger, "/0/occurredAt", "1e308"},
        {kQuota, "/windowStart", "1e308"},
        {kStreak, "/recent/0/judgedAt", "1e308"},
        {kStreak, "/recent/0/day", "\"9999-12-31\""},
        {kTally, "/0/day", "\"9999-12-31\""},
        {kStreak, "",
         R"({"earlierDays":3659634,"longestDays":0,"recent":[{"day":"2026-03-26","verdict":"reached","judgedAt":1.0}]})"},
    };
    for (const Change& change : kChanges) {
        for (const Scene& scene : scenes()) {
            tryOut(change, scene);
        }
    }
}

TEST(RandomDocumentTest, OneFieldThatCannotBeReadSetsItsDocumentAside) {
    static constexpr Change kChanges[] = {
        {kSession, "/isPaused", "1"},
        {kSession, "/lastQuitAt", "\"1\""},
        {kSession, "/pauseReasons", "[\"boss\"]"},
        {kSession, "/pausedAt", "\"now\""},
        {kLog, "/0", "null"},
        {kLog, "/0/id", "\"00000000-0000-4000-8000-00000000000\""},
        {kLog, "/0/outcome", "4"},
        {kLog, "/0/durationSec", "0.5"},
        {kPool, "", "90"},
        {kPool, "/seconds", "90.5"},
        {kPool, "/savedAt", "\"now\""},
        {kLedger, "/0/appliedPenaltySec", "null"},
        {kStreak, "/earlierDays", "-5"},
        {kTally, "/0/day", "\"2026-02-30\""},
        {kTally, "/0/held", "\"1\""},
        {kTally, "/0/held", "-1"},
        {kTally, "/0/credited", "1000001"},
    };
    for (const Change& change : kChanges) {
        EXPECT_TRUE(tryOut(change, scenes().front())) << change.key << change.at << change.value;
    }
}

}  // namespace ostrel::stored
