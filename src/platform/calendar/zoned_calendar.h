#pragma once

#include <functional>
#include <string>

#include "platform/api/calendar.h"

namespace date {
class time_zone;
}

namespace ostrel {

// The Gregorian calendar in a zone of the system's time zone database.
//
// It knows the years 1 to 9999. An instant outside of them, infinite ones included, counts as the
// nearest one inside, not-a-number as the reference date; where the interface allows it the answer
// is absent instead. A day that the zone left out altogether matches nothing.
class ZonedCalendar : public Calendar {
  public:
    // Gives the IANA name of the zone; it is asked at every call, so it must be cheap. An unknown
    // name counts as UTC.
    using ZoneName = std::function<std::string()>;

    explicit ZonedCalendar(ZoneName zoneName);

    [[nodiscard]] Components components(WallTime time) const override;
    [[nodiscard]] WallTime startOfDay(WallTime time) const override;
    [[nodiscard]] std::optional<WallTime> nextMatching(WallTime after, int hour,
                                                       int minute) const override;

    // A time of day that the other day leaps over becomes the instant that the clock lands on; of
    // one that it shows twice the first is taken. Moving by 0 days changes nothing.
    [[nodiscard]] std::optional<WallTime> addDays(WallTime time, std::int64_t count) const override;
    [[nodiscard]] std::int64_t daysBetween(WallTime from, WallTime to) const override;
    [[nodiscard]] std::int64_t utcOffsetSec(WallTime time) const override;

  private:
    [[nodiscard]] const date::time_zone* zone() const;

    ZoneName zoneName_;
    mutable std::optional<std::string> lookedUpName_;
    mutable const date::time_zone* lookedUp_ = nullptr;  // null is UTC
};

}  // namespace ostrel
