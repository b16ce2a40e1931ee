#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "base/uuid.h"
#include "platform/calendar/zoned_calendar.h"
#include "platform/linux/file_preferences.h"
#include "platform/virtual/memory_preferences.h"
#include "platform/virtual/virtual_run_loop.h"
#include "records/break_log.h"

namespace ostrel {
namespace {

constexpr int kDays = 60;
constexpr int kBreaksPerDay = 60;

// A log as long as the retention allows for, with a new break about to be appended.
class FullLog {
  public:
    FullLog()
        : runLoop_(wallTimeAt(794'739'600)),
          calendar_([] { return std::string("Europe/Berlin"); }) {}

    void appendTo(PreferencesStore& preferences, benchmark::State& state) {
        fill(preferences);
        BreakLog log(preferences, calendar_, [this] { return runLoop_.wallNow(); });
        for (auto _ : state) {
            runLoop_.shiftWallClock(wallSec(1440));  // one is trimmed for each that is appended
            log.append(entryAt(runLoop_.wallNow()));
        }
        state.counters["entries"] = static_cast<double>(log.entries()->size());
    }

    VirtualRunLoop& runLoop() { return runLoop_; }

  private:
    BreakLogEntry entryAt(WallTime endedAt) {
        return {makeUuid_(),
                endedAt - wallSec(121),
                endedAt - WallClock::duration{0.123456},
                BreakKind::eye,
                BreakLogEntry::Outcome::autoFadeOut,
                90,
                210};
    }
    void fill(PreferencesStore& preferences) {
        std::vector<BreakLogEntry> entries;
        for (int i = kDays * kBreaksPerDay; i > 0; --i) {
            entries.push_back(entryAt(runLoop_.wallNow() - wallSec(1440 * i)));
        }
        Document<std::vector<BreakLogEntry>>(preferences, "ostrel.breakLog.v1").save(entries);
    }

    VirtualRunLoop runLoop_;
    ZonedCalendar calendar_;
    MakeUuid makeUuid_ = seededUuids(1);
};

void logAppend(benchmark::State& state) {
    MemoryPreferences preferences;
    FullLog().appendTo(preferences, state);
}
BENCHMARK(logAppend)->Unit(benchmark::kMicrosecond);

// Written as on the desktop, flush and rename included, to a file system in memory: all but the
// disk's own time.
void logAppendToFile(benchmark::State& state) {
    std::string name = "/dev/shm/ostrel-bench-XXXXXX";
    if (mkdtemp(name.data()) == nullptr) {
        state.SkipWithError("no folder in memory");
        return;
    }
    FullLog log;
    FilePreferences preferences(name, log.runLoop());
    log.appendTo(preferences, state);
    std::filesystem::remove_all(name);
}
BENCHMARK(logAppendToFile)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace ostrel
