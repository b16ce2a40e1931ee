#include "records/break_log.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "records/report_summary.h"
#include "support/records_bench.h"

namespace ostrel {
namespace {

constexpr const char* kKey = "ostrel.breakLog.v1";
using Outcome = BreakLogEntry::Outcome;
using Range = ReportSummaryView::Range;

struct Bench : RecordsBench {
    using RecordsBench::RecordsBench;

    BreakLog load() { return {preferences, calendar, clock()}; }
    // "DAY eye+body", of the days that have any.
    std::vector<std::string> buckets(const BreakLog& log, Range range) {
        std::vector<std::string> days;
        for (const auto& bucket :
             ReportSummaryView(log, calendar, clock()).dayBuckets(*log.entries(), range)) {
            EXPECT_EQ(bucket.id, bucket.day);
            if (bucket.eye + bucket.body > 0) {
                days.push_back(calendar.dayKeyOf(bucket.day) + " " + std::to_string(bucket.eye) +
                               "+" + std::to_string(bucket.body));
            }
        }
        return days;
    }
};

constexpr const char* kTwoEntries =
    R"([{"id":"0F1E2D3C-4B5A-4968-8778-A695B4C3D2E1","startedAt":794739600.25,)"
    R"("endedAt":794739720.123456,"kind":"eye","outcome":"autoFadeOut",)"
    R"("penaltyAppliedSec":90,"durationSec":210},)"
    R"({"id":"00000000-0000-4000-8000-000000000000","startedAt":1.0,"endedAt":2.5,)"
    R"("kind":"body","outcome":"deferred","penaltyAppliedSec":0,"durationSec":0}])";

}  // namespace

TEST(BreakLogTest, StoredHistoryIsTakenAsItIsAndGoesOnBitForBit) {
    Bench bench("2026-03-09T09:02:05");
    bench.preferences.write(kKey, kTwoEntries);
    BreakLog log = bench.load();
    ASSERT_EQ(log.entries()->size(), 2U) << "older than 60 days, and yet there until an append";
    EXPECT_EQ(bench.stored(kKey), kTwoEntries);

    log.append(bench.entry(bench.now()));
    ASSERT_EQ(log.entries()->size(), 2U);
    const std::string text = bench.stored(kKey);
    EXPECT_EQ(text.substr(0, text.find("},") + 1),
              std::string(kTwoEntries).substr(0, std::string(kTwoEntries).find("},") + 1));
    EXPECT_EQ(*bench.load().entries(), *log.entries());
}

TEST(BreakLogTest, SixtyCalendarDaysAreKept) {
    // The summer time of Berlin begins in between: 60 days are not 60 times 24 hours.
    Bench bench("2026-05-08T00:30:00", "Europe/Berlin");
    BreakLog log = bench.load();
    std::vector<std::size_t> seen;
    const Subscription watching =
        log.entries().onChange([&](const auto& entries) { seen.push_back(entries.size()); });
    const BreakLogEntry kept = bench.entry(bench.at("2026-03-09T00:00:00"));
    const BreakLogEntry old = bench.entry(bench.at("2026-03-08T23:59:59"));
    const BreakLogEntry future = bench.entry(bench.at("2026-05-10T12:00:00"));
    EXPECT_EQ(log.dayAge(kept), 60);
    EXPECT_EQ(log.dayAge(old), 61);
    EXPECT_EQ(log.dayAge(future), -2);
    log.append(kept);
    log.append(future);
    log.append(old);
    EXPECT_EQ(*log.entries(), (std::vector{kept, future})) << "not sorted, the old one gone";
    EXPECT_EQ(seen, (std::vector<std::size_t>{1, 2}));
}

TEST(BreakLogTest, WhatIsStoredIsAlwaysTheWholeListAsItStands) {
    Bench bench;
    BreakLog log = bench.load();
    std::mt19937 random(20'260'309);
    const std::vector<double> jumps = {3600, 86'400, -86'400, 40 * 86'400.0, -30 * 86'400.0};
    std::size_t longest = 0;
    for (int i = 0; i < 2'000; ++i) {
        const bool jumpsFar = random() % 50 == 0;
        bench.runLoop.shiftWallClock(WallClock::duration{jumpsFar ? jumps[random() % 5] : 3600});
        const bool fails = random() % 20 == 0;
        bench.preferences.setEncoding(fails ? MemoryPreferences::Encoding::fails
                                            : MemoryPreferences::Encoding::works);
        log.append(bench.entry(bench.now()));
        if (!fails) {
            ASSERT_EQ(bench.stored(kKey), *printJson(*log.entries()).text) << i;
        }
        longest = std::max(longest, log.entries()->size());
    }
    EXPECT_GT(longest, 100U);
}

TEST(ReportTest, OneBucketADayOldestFirst) {
    Bench bench("2026-03-31T08:00:00", "Europe/Berlin");
    BreakLog log = bench.load();
    const ReportSummaryView report(log, bench.calendar, bench.clock());
    const auto week = report.dayBuckets({}, Range::weekly);
    ASSERT_EQ(week.size(), 7U);
    EXPECT_EQ(week.front().day, bench.at("2026-03-25T00:00:00"));
    EXPECT_EQ(week.back().day, bench.at("2026-03-31T00:00:00"));

    log.append(
        bench.entry(bench.at("2026-03-29T00:00:30")));  // 23 hours long, begun the day before
    log.append(bench.entry(bench.at("2026-03-29T23:59:59"), BreakKind::body));
    log.append(bench.entry(bench.at("2026-03-24T23:59:59")));
    log.append(bench.entry(bench.now(), BreakKind::eye, Outcome::autoFadeOut));
    log.append(bench.entry(bench.at("2026-03-02T00:00:00"), BreakKind::eye, Outcome::postponed));
    log.append(bench.entry(bench.at("2026-03-01T23:59:59"), BreakKind::eye, Outcome::postponed));
    EXPECT_EQ(bench.buckets(log, Range::weekly), (std::vector<std::string>{"2026-03-29 1+1"}));
    EXPECT_EQ(report.stats(Range::weekly).postponements, 0);
    EXPECT_EQ(report.stats(Range::monthly).postponements, 1);
    EXPECT_EQ(report.stats(Range::full).postponements, 2);
}

}  // namespace ostrel
