#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "base/clock.h"
#include "records/break_log_entry.h"
#include "support/events.h"

namespace ostrel {

// What skipping costs, worked out the slow way: every skip ever made is kept, and each question
// looks through all of them.
class SkipModel {
  public:
    explicit SkipModel(Counts& counts) : counts_(counts) {}

    [[nodiscard]] std::int64_t poolSec() const { return poolSec_; }
    [[nodiscard]] bool isDisabled() const { return isDisabled_; }

    // What the next skip costs if it is paid for.
    [[nodiscard]] std::int64_t costSec(WallTime now) const {
        const std::int64_t before = countWithinHour(BreakKind::eye, now);
        return before == 0 ? 90 : before == 1 ? 180 : 300;
    }
    [[nodiscard]] std::int64_t countWithinHour(BreakKind kind, WallTime now) const {
        return std::ranges::count_if(skips_, [&](const Skip& skip) {
            return skip.kind == kind && skip.at >= now - wallSec(3600);
        });
    }

    void launch(WallTime now) {
        effectiveTicks_ = 0;
        if (now - pooledAt_ > wallSec(3600)) {
            poolSec_ = 0;
        }
    }

    // One second of the schedule, neither paused nor switched off.
    void tick(WallTime now) {
        if (++effectiveTicks_ % 60 == 0 && countWithinHour(BreakKind::eye, now) == 0) {
            poolSec_ = 0;
        }
    }

    // A break is put on the screen; returns the seconds it is to carry.
    [[nodiscard]] std::int64_t open(BreakKind kind) {
        if (kind == BreakKind::body) {
            return 0;
        }
        counts_["penalty carried"] += poolSec_ > 0 ? 1 : 0;
        return std::exchange(poolSec_, 0);
    }

    // Returns whether the user is to be told of the streak.
    bool skip(BreakKind kind, WallTime now) {
        if (isDisabled_) {
            return false;
        }
        const std::int64_t cost = costSec(now);
        ++counts_["skip of " + std::string(nameOf(kind)) + " for " + std::to_string(cost)];
        skips_.push_back({kind, now});
        if (kind == BreakKind::eye) {
            poolSec_ += cost;
            pooledAt_ = now;
        }
        return countWithinHour(BreakKind::eye, now) + countWithinHour(BreakKind::body, now) >= 3;
    }

    void emptyPool() { poolSec_ = 0; }
    void setDisabled(bool isDisabled) {
        if (isDisabled && !isDisabled_) {
            emptyPool();
            skips_.clear();
        }
        isDisabled_ = isDisabled;
    }

  private:
    struct Skip {
        BreakKind kind;
        WallTime at;
    };

    Counts& counts_;
    std::vector<Skip> skips_;
    std::int64_t poolSec_ = 0;
    WallTime pooledAt_;
    int effectiveTicks_ = 0;
    bool isDisabled_ = false;
};

}  // namespace ostrel
