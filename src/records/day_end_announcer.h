#pragma once

#include <string>
#include <tuple>

#include "base/clock.h"
#include "core/settings/document.h"
#include "records/record_announcements.h"

namespace ostrel {

class BreakLog;
class Calendar;
class SettingsStore;

// Tells the figures of a work day once, when it is over.
//
// The day is the one on which the work hours began, so that a night's work is one day and an end
// that is noticed on the next morning belongs to the day before. "ostrel.dayEnd.v1" keeps the last
// day that was announced.
class DayEndAnnouncer {
  public:
    struct Marker {
        std::string dateKey;

        static constexpr auto fields() { return std::tuple{Field{"dateKey", &Marker::dateKey}}; }
    };

    // What the announcer works with. All of it outlives the announcer.
    struct Services {
        PreferencesStore& preferences;
        const SettingsStore& settingsStore;
        const BreakLog& breakLog;
        const Calendar& calendar;
        NowFunction now;
        DayEndNotifying* notificationCenter = nullptr;  // may be absent
    };

    explicit DayEndAnnouncer(Services services);

    // The work hours of a day have just ended.
    void dayEnded();

  private:
    Services services_;
    Document<Marker> document_;
    Marker announced_;
};

}  // namespace ostrel
