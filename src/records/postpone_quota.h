#pragma once

#include <cstdint>
#include <tuple>

#include "base/clock.h"
#include "base/published.h"
#include "core/settings/document.h"

namespace ostrel {

// How many breaks were postponed in the present hour, kept under "ostrel.postponeQuota.v1". The
// hour begins with the first question after the one before has run out.
class PostponeQuota {
  public:
    static constexpr std::int64_t kSpanSec = 3600;
    static constexpr std::int64_t kAllowance = 1;

    struct Stored {
        std::int64_t used = 0;
        WallTime windowStart;

        static constexpr auto fields() {
            return std::tuple{Field{"used", &Stored::used},
                              Field{"windowStart", &Stored::windowStart}};
        }
    };

    PostponeQuota(PreferencesStore& preferences, const NowFunction& now);

    [[nodiscard]] const Published<WallTime>& windowStart() const { return windowStart_; }
    [[nodiscard]] const Published<std::int64_t>& used() const { return used_; }

    // How many are left, without beginning a new hour.
    [[nodiscard]] std::int64_t remainingAt(WallTime now) const;

    void rollIfNeeded(WallTime now);
    [[nodiscard]] bool canPostpone(WallTime now);
    void consume(WallTime now);

  private:
    [[nodiscard]] bool isOver(WallTime now) const;
    void save();

    Document<Stored> document_;
    Published<WallTime> windowStart_;
    Published<std::int64_t> used_;
};

}  // namespace ostrel
