#include <gtest/gtest.h>

#include <memory>

#include "records/daily_counter.h"
#include "records/penalty_engine.h"
#include "records/penalty_ledger.h"
#include "records/postpone_quota.h"
#include "records/postpone_service.h"
#include "support/records_bench.h"

namespace ostrel {
namespace {

constexpr const char* kPool = "ostrel.penaltyPool.v1";
constexpr const char* kLedger = "ostrel.penaltyLedger.v1";
constexpr const char* kQuota = "ostrel.postponeQuota.v1";

class Bench : public RecordsBench {
  public:
    Bench() { launch(); }

    // A second call is a relaunch over the same preferences.
    void launch() {
        service_.reset();
        engine_.reset();
        counter_ = std::make_unique<DailyCounter>(
            DailyCounter::Services{preferences, calendar, runLoop, systemEvents, clock()});
        ledger_ = std::make_unique<PenaltyLedger>(preferences);
        engine_ = std::make_unique<PenaltyEngine>(PenaltyEngine::Services{
            clock(), *ledger_, settings, *counter_, nullptr, preferences, [] {}});
        quota_ = std::make_unique<PostponeQuota>(preferences, clock());
        service_ = std::make_unique<PostponeService>(clock(), *quota_, *counter_);
    }
    void minutes(double count) { run(count * 60); }
    std::int64_t skipEye() { return engine_->registerSkip(BreakKind::eye); }
    [[nodiscard]] std::int64_t pool() const { return *engine_->unconsumedPenaltySec(); }

    DailyCounter& counter() { return *counter_; }
    PostponeService& postpones() { return *service_; }

  private:
    std::unique_ptr<DailyCounter> counter_;
    std::unique_ptr<PenaltyLedger> ledger_;
    std::unique_ptr<PenaltyEngine> engine_;
    std::unique_ptr<PostponeQuota> quota_;
    std::unique_ptr<PostponeService> service_;
};

}  // namespace

TEST(PenaltyTest, StoredRecordsAreReadStrictly) {
    struct Case {
        const char* key;
        const char* bytes;
        bool isReadable;
    };
    // 2026-03-09 09:00:00 UTC is 794739600.
    for (const Case& one : {
             Case{kPool, R"({"seconds":90,"savedAt":794739000.0})", true},
             Case{kPool, R"({"seconds":90.0,"savedAt":794739000})", true},
             Case{kPool, R"({"seconds":90})", false},
             Case{kPool, R"({"seconds":90.5,"savedAt":794739000})", false},
             Case{kPool, "90", false},
             Case{kLedger, R"([{"kind":"eye","occurredAt":794739000.0,"appliedPenaltySec":90}])",
                  true},
             Case{kLedger,
                  R"([{"kind":"eye","occurredAt":794739000.0,"appliedPenaltySec":90},)"
                  R"({"kind":"eye","occurredAt":794739000.0}])",
                  false},
         }) {
        Bench bench;
        bench.preferences.write(one.key, one.bytes);
        bench.launch();
        const bool wasRead = bench.pool() == 90 || bench.skipEye() == 180;
        EXPECT_EQ(wasRead, one.isReadable) << one.bytes;
        if (!one.isReadable) {
            bench.skipEye();
            EXPECT_EQ(bench.preferences.damaged().find(one.key)->second, one.bytes);
        }
    }
    Bench bench;
    bench.preferences.write(kPool, R"({"seconds":-90,"savedAt":794739000.0})");
    bench.launch();
    EXPECT_EQ(bench.pool(), 0);
}

TEST(PostponeTest, OneAnHour) {
    Bench bench;
    EXPECT_EQ(bench.postpones().remainingPostpones(), 1);
    bench.minutes(50);
    EXPECT_TRUE(bench.postpones().tryPostpone());
    EXPECT_EQ(bench.postpones().remainingPostpones(), 0);
    EXPECT_FALSE(bench.postpones().tryPostpone());
    EXPECT_EQ(bench.counter().model()->postponesToday, 1) << "a refused one does not count";
    bench.minutes(10);  // an hour after the span began, not after the postpone
    EXPECT_TRUE(bench.postpones().tryPostpone());
    bench.minutes(59);
    bench.launch();
    EXPECT_FALSE(bench.postpones().tryPostpone()) << "a relaunch is no new hour";
    bench.minutes(1);
    EXPECT_EQ(bench.postpones().remainingPostpones(), 1);
    EXPECT_EQ(bench.stored(kQuota), R"({"used":0,"windowStart":794746800.0})")
        << "asking began the new hour";
}

}  // namespace ostrel
