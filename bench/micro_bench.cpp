#include <benchmark/benchmark.h>

#include "core/settings/document.h"
#include "core/settings/settings_model.h"
#include "platform/calendar/zoned_calendar.h"
#include "platform/virtual/memory_preferences.h"

namespace ostrel {
namespace {

// Every change of a setting and every record writes its whole document.
void documentSave(benchmark::State& state) {
    MemoryPreferences preferences;
    Document<SettingsModel> document(preferences, "bench");
    SettingsModel settings;
    for (auto _ : state) {
        ++settings.dailyGoalBreaks;
        document.save(settings);
    }
}
BENCHMARK(documentSave);

void documentLoad(benchmark::State& state) {
    MemoryPreferences preferences;
    Document<SettingsModel> document(preferences, "bench");
    document.save(SettingsModel{});
    for (auto _ : state) {
        benchmark::DoNotOptimize(document.load());
    }
}
BENCHMARK(documentLoad);

// Per-day records ask for the day with each look at them.
void calendarStartOfDay(benchmark::State& state) {
    const ZonedCalendar calendar([] { return std::string("Europe/Berlin"); });
    WallTime time{wallSec(0)};
    for (auto _ : state) {
        time += wallSec(3600);
        benchmark::DoNotOptimize(calendar.startOfDay(time));
    }
}
BENCHMARK(calendarStartOfDay);

}  // namespace
}  // namespace ostrel
