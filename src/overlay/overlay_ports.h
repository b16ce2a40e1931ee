#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "overlay/active_overlay_session.h"
#include "records/break_records.h"

namespace ostrel {

// Where in the guided moves and in the user's messages a break begins. Without one every break
// begins at the first.
class GuideRotation {
  public:
    virtual ~GuideRotation() = default;
    [[nodiscard]] virtual std::int64_t startIndex(BreakLogEntry::Kind kind) = 0;
    // Advances the message counter and returns the one of this break, 0 or more.
    virtual std::int64_t nextMessageIndex() = 0;
    // Moves on by what the finished break covered.
    virtual void advancePast(const ActiveOverlaySession& session) = 0;
};

class ChimePlaying {
  public:
    virtual ~ChimePlaying() = default;
    virtual void playStart() = 0;
    virtual void playEnd() = 0;
};

// The manager's optional collaborators; an absent one costs only its own part.
struct OverlayRecords {
    BreakLogging* breakLog = nullptr;
    DailyCounting* dailyCounter = nullptr;
    SkipPenalties* penaltyEngine = nullptr;
    PostponeRation* postponeService = nullptr;
    GuideRotation* rotation = nullptr;
    ChimePlaying* chimes = nullptr;
};

}  // namespace ostrel
