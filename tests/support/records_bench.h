#pragma once

#include <functional>
#include <string>
#include <utility>

#include "base/uuid.h"
#include "core/settings/settings_store.h"
#include "platform/api/system_events.h"
#include "platform/calendar/local_time.h"
#include "platform/calendar/zoned_calendar.h"
#include "platform/virtual/memory_preferences.h"
#include "platform/virtual/virtual_run_loop.h"
#include "records/break_log_entry.h"

namespace ostrel {

// A user's clock, calendar and preferences for tests of the records.
class RecordsBench {
  public:
    explicit RecordsBench(const char* start = "2026-03-09T09:00:00", std::string timeZone = "UTC")
        : zone(std::move(timeZone)),
          runLoop(wallTimeOf(*parseLocalTime(start), zone)),
          calendar([this] { return zone; }),
          settings(preferences) {}

    [[nodiscard]] NowFunction clock() {
        return [this] { return runLoop.wallNow(); };
    }
    [[nodiscard]] WallTime now() const { return runLoop.wallNow(); }
    [[nodiscard]] WallTime at(const char* local) const {
        return wallTimeOf(*parseLocalTime(local), zone);
    }

    void run(double seconds) { runLoop.runFor(runLoopSec(seconds)); }
    // The clock is set, or time goes by while the computer sleeps: run loop timers stand still.
    void jumpTo(const char* local) { runLoop.shiftWallClock(at(local) - now()); }
    void setUp(const std::function<void(SettingsModel&)>& change) { settings.update(change); }

    [[nodiscard]] BreakLogEntry entry(
        WallTime endedAt, BreakKind kind = BreakKind::eye,
        BreakLogEntry::Outcome outcome = BreakLogEntry::Outcome::completed,
        std::int64_t penaltySec = 0) {
        return {makeUuid_(), endedAt - wallSec(120), endedAt, kind, outcome, penaltySec, 120};
    }
    [[nodiscard]] std::string stored(const char* key) const {
        return preferences.read(key).value_or("nothing");
    }

    std::string zone;
    VirtualRunLoop runLoop;
    ZonedCalendar calendar;
    SystemEvents systemEvents;
    MemoryPreferences preferences;
    SettingsStore settings;

  private:
    MakeUuid makeUuid_ = seededUuids(1);
};

}  // namespace ostrel
