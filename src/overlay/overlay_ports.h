#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "overlay/active_overlay_session.h"
#include "records/break_records.h"

namespace ostrel {

class ChimePlaying {
  public:
    virtual ~ChimePlaying() = default;
    virtual void playStart() = 0;
    virtual void playEnd() = 0;
};

// A break as a small card beside the work that goes on.
struct GentleCard {
    // Counting down; asking whether the user rested; gone in a moment, for the user did.
    enum class Stage { counting, asking, rested };

    BreakLogEntry::Kind kind = BreakLogEntry::Kind::eye;
    Stage stage = Stage::counting;
    std::int64_t remainingSec = 0;
    std::int64_t totalSec = 0;
    std::int64_t skipCostSec = 0;        // what skipping adds to the next break
    std::optional<std::string> message;  // the user's own
    std::vector<OverlayAction> actions;  // what it offers

    bool operator==(const GentleCard&) const = default;
};

class GentleCardPresenting {
  public:
    virtual ~GentleCardPresenting() = default;
    // Takes the place of whatever is shown; returns the card's identifier. `onPress` is called with
    // an action that the card offers.
    virtual std::string showCard(const GentleCard& card,
                                 std::function<void(OverlayAction)> onPress) = 0;
    virtual void updateCard(const std::string& cardID, const GentleCard& card) = 0;
    virtual void dismissCard(const std::string& cardID) = 0;
};

// The manager's optional collaborators; an absent one costs only its own part. Without gentle cards
// every break covers the displays.
struct OverlayRecords {
    BreakLogging* breakLog = nullptr;
    DailyCounting* dailyCounter = nullptr;
    SkipPenalties* penaltyEngine = nullptr;
    PostponeRation* postponeService = nullptr;
    ChimePlaying* chimes = nullptr;
    GentleCardPresenting* gentleCards = nullptr;
};

}  // namespace ostrel
