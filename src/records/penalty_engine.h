#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <tuple>

#include "base/clock.h"
#include "base/published.h"
#include "core/settings/document.h"
#include "records/break_records.h"
#include "records/record_announcements.h"

namespace ostrel {

class DailyCounter;
class PenaltyLedger;
class SettingsStore;

// What skipping costs: each skip of an eye break within an hour costs more than the one before, and
// what it costs waits in a pool, kept under "ostrel.penaltyPool.v1", until the next eye break takes
// it. An hour after the last skip what is left is forgotten.
//
// With disableSkipPenalty nothing is charged, noted or counted; switching it on forgets everything.
class PenaltyEngine : public SkipPenalties {
  public:
    static constexpr std::int64_t kFirstPenaltySec = 90;
    static constexpr std::int64_t kSecondPenaltySec = 180;
    static constexpr std::int64_t kFurtherPenaltySec = 300;
    static constexpr std::int64_t kSkipStreak = 3;

    struct StoredPool {
        std::int64_t seconds = 0;
        WallTime savedAt;

        static constexpr auto fields() {
            return std::tuple{Field{"seconds", &StoredPool::seconds},
                              Field{"savedAt", &StoredPool::savedAt}};
        }
    };

    // What the engine works with. All of it outlives the engine.
    struct Services {
        NowFunction now;
        PenaltyLedger& ledger;
        const SettingsStore& settingsStore;
        DailyCounter& dailyCounter;
        SkipStreakNotifying* notificationCenter = nullptr;  // may be absent
        PreferencesStore& preferences;
        std::function<void()> requestUserAttention;  // may be empty
    };

    explicit PenaltyEngine(Services services);
    PenaltyEngine(const PenaltyEngine&) = delete;
    PenaltyEngine& operator=(const PenaltyEngine&) = delete;
    ~PenaltyEngine() override;

    [[nodiscard]] const Published<std::int64_t>& unconsumedPenaltySec() const override {
        return unconsumedPenaltySec_;
    }

    std::int64_t registerSkip(BreakLogEntry::Kind kind) override;
    [[nodiscard]] std::int64_t previewPenalty(BreakLogEntry::Kind kind) override;
    std::int64_t consumePenalty() override;
    // Forgets old skips, and leaves the pool as it is.
    [[nodiscard]] std::int64_t pendingPenaltySec();
    [[nodiscard]] std::int64_t recentSkipCount() const override;
    void clearPenalty() override;
    void expireIfStale() override;
    void resetAll();

  private:
    [[nodiscard]] bool isDisabled() const;
    [[nodiscard]] std::int64_t penaltyAt(WallTime now);
    [[nodiscard]] std::int64_t loadPool();
    void setPool(std::int64_t seconds);
    void announceSkipStreak(WallTime now);

    Services services_;
    Document<StoredPool> document_;
    Published<std::int64_t> unconsumedPenaltySec_;
    bool wasDisabled_;
    Subscription settingsChanges_;
};

}  // namespace ostrel
