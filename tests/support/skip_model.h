#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "base/clock.h"
#include "records/break_log_entry.h"
#include "support/counts.h"

namespace ostrel {

// What skipping costs, worked out the slow way: every skip ever made is kept, and each question
// looks through all of them.
class SkipModel {
  public:
    struct Skip {
        BreakKind kind;
        WallTime at;
        bool isForgotten = false;  // penalties were switched off since
    };

    explicit SkipModel(Counts& counts) : counts_(counts) {}

    [[nodiscard]] std::int64_t poolSec() const { return poolSec_; }
    [[nodiscard]] WallTime pooledAt() const { return pooledAt_; }  // when the pool last grew
    [[nodiscard]] bool isDisabled() const { return isDisabled_; }
    [[nodiscard]] const std::vector<Skip>& skips() const { return skips_; }

    // What the next skip costs if it is paid for.
    [[nodiscard]] std::int64_t costSec(WallTime now) const {
        const std::int64_t before = countWithinHour(BreakKind::eye, now);
        return before == 0 ? 90 : before == 1 ? 180 : 300;
    }
    [[nodiscard]] std::int64_t countWithinHour(BreakKind kind, WallTime now) const {
        return std::ranges::count_if(skips_, [&](const Skip& skip) {
            return !skip.isForgotten && skip.kind == kind && skip.at >= now - wallSec(3600);
        });
    }

    void launch(WallTime now) {
        effectiveTicks_ = 0;
        if (now - pooledAt_ > wallSec(3600)) {
            emptyPool("pool too old at a launch");
        } else if (poolSec_ > 0) {
            ++counts_["pool restored at a launch"];
        }
    }

    // One second of the schedule, neither paused nor switched off.
    void tick(WallTime now) {
        if (++effectiveTicks_ % 60 == 0 && countWithinHour(BreakKind::eye, now) == 0) {
            emptyPool("pool went stale");
        }
    }

    // A break is put on the screen; returns the seconds it is to carry.
    [[nodiscard]] std::int64_t open(BreakKind kind) {
        if (kind == BreakKind::body) {
            counts_["body break left a pool alone"] += poolSec_ > 0 ? 1 : 0;
            return 0;
        }
        counts_["eye break carried a penalty"] += poolSec_ > 0 ? 1 : 0;
        return std::exchange(poolSec_, 0);
    }

    // Returns whether the user is to be told of the streak.
    bool skip(BreakKind kind, WallTime now) {
        if (isDisabled_) {
            ++counts_["skip while penalties were off"];
            return false;
        }
        const std::int64_t cost = costSec(now);
        ++counts_["skip of " + std::string(nameOf(kind)) + " for " + std::to_string(cost)];
        counts_["skip an hour after another"] += std::ranges::count_if(
            skips_, [&](const Skip& skip) { return skip.at == now - wallSec(3600); });
        skips_.push_back({kind, now});
        if (kind == BreakKind::eye) {
            poolSec_ += cost;
            pooledAt_ = now;
        }
        return countWithinHour(BreakKind::eye, now) + countWithinHour(BreakKind::body, now) >= 3;
    }

    void applyPreset() { emptyPool("pool cleared by a preset"); }
    void wake(std::int64_t sleptSec) {
        if (sleptSec > 3600) {
            emptyPool("pool cleared by a long absence");
        }
    }
    void setDisabled(bool isDisabled) {
        if (isDisabled && !isDisabled_) {
            emptyPool("pool cleared by switching penalties off");
            std::ranges::for_each(skips_, [](Skip& skip) { skip.isForgotten = true; });
        }
        isDisabled_ = isDisabled;
    }

  private:
    void emptyPool(const std::string& why) {
        counts_[why] += poolSec_ > 0 ? 1 : 0;
        poolSec_ = 0;
    }

    Counts& counts_;
    std::vector<Skip> skips_;
    std::int64_t poolSec_ = 0;
    WallTime pooledAt_;
    int effectiveTicks_ = 0;
    bool isDisabled_ = false;
};

}  // namespace ostrel
