#pragma once

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

#include "base/clock.h"
#include "base/published.h"
#include "core/settings/document.h"
#include "platform/api/run_loop.h"
#include "records/break_records.h"

namespace ostrel {

class Calendar;
class SystemEvents;

// The counts of one calendar day.
struct DailyCounterModel {
    std::string dateKey;
    std::int64_t eyeBreaksCompleted = 0;
    std::int64_t bodyBreaksCompleted = 0;
    std::int64_t skipsToday = 0;
    std::int64_t postponesToday = 0;

    static constexpr auto fields() {
        using M = DailyCounterModel;
        return std::tuple{
            Field{"dateKey", &M::dateKey}, Field{"eyeBreaksCompleted", &M::eyeBreaksCompleted},
            Field{"bodyBreaksCompleted", &M::bodyBreaksCompleted},
            Field{"skipsToday", &M::skipsToday}, Field{"postponesToday", &M::postponesToday}};
    }

    bool operator==(const DailyCounterModel&) const = default;
};

// Counts today's breaks under "ostrel.dailyCounter.v1" and starts anew with each calendar day: at
// midnight, and as soon as the clock, the zone or the day is heard to have changed.
class DailyCounter : public DailyCounting {
  public:
    // What the counter works with. All of it outlives the counter.
    struct Services {
        PreferencesStore& preferences;
        const Calendar& calendar;
        RunLoop& runLoop;
        const SystemEvents& systemEvents;
        NowFunction now;
    };

    explicit DailyCounter(Services services);
    DailyCounter(const DailyCounter&) = delete;
    DailyCounter& operator=(const DailyCounter&) = delete;
    ~DailyCounter() override;

    [[nodiscard]] const Published<DailyCounterModel>& model() const { return model_; }

    void recordEyeCompleted() override;
    void recordBodyCompleted() override;
    void recordSkip() override;
    void recordPostpone();

    // Whether a new day has begun since: then all counts are 0 again, and saved.
    bool rollOverIfNeeded();

  private:
    [[nodiscard]] DailyCounterModel today() const;
    void increment(std::int64_t DailyCounterModel::*count);
    void armMidnightTimer();

    Services services_;
    Document<DailyCounterModel> document_;
    Published<DailyCounterModel> model_;
    Timer midnightTimer_;
    std::vector<Subscription> observers_;
};

}  // namespace ostrel
