#pragma once

#include "core/engine/timer_engine.h"
#include "core/settings/preset_catalog.h"
#include "core/settings/session_state_store.h"
#include "platform/virtual/virtual_devices.h"
#include "support/records_bench.h"

namespace ostrel {

// A schedule that does not tick by itself, for the services that hold and pause it.
struct PresenceBench : RecordsBench {
    explicit PresenceBench(const char* start = "2026-03-09T09:00:00", std::string timeZone = "UTC")
        : RecordsBench(start, std::move(timeZone)) {
        engine.configure(PresetCatalog::standard());
    }

    [[nodiscard]] bool isHeldBy(PauseReason reason) const { return session.holds(reason); }

    SessionStateStore session{preferences, now()};
    TimerEngine engine{{settings, session, calendar, runLoop, clock(), seededUuids(1), {}},
                       TimerEngine::Ticking::manual};
};

}  // namespace ostrel
