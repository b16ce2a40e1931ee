// OverlayManager: the gentle card, and the judgement whether its user rested.

#include <algorithm>

#include "base/checked_seconds.h"
#include "core/settings/settings_store.h"
#include "overlay/overlay_manager.h"

namespace ostrel {
namespace {

constexpr std::int64_t kToleranceSec = 5;

// Without input for so long the user was away from the screen for practically the whole break.
std::int64_t restThresholdSec(std::int64_t totalSec) {
    return std::max(subtractSec(totalSec, kToleranceSec), multiplySec(totalSec, 4) / 5);
}

}  // namespace

GentleCard OverlayManager::card() const {
    const ActiveOverlaySession& session = **activeSession_;
    GentleCard card{session.kind,
                    gentleStage_,
                    session.remainingSec,
                    session.totalSec(),
                    skipCostSec(),
                    session.message,
                    {}};
    for (const OverlayAction action : {OverlayAction::skip, OverlayAction::postpone,
                                       OverlayAction::gentleDone, OverlayAction::gentleSkip}) {
        if (offers(action)) {
            card.actions.push_back(action);
        }
    }
    return card;
}

void OverlayManager::showCard() {
    gentleCardID_.emplace();
    gentleCardID_ = services_.records.gentleCards->showCard(
        card(), [this](OverlayAction action) { press(action); });
}

void OverlayManager::updateCard() {
    if (activeSession_->has_value() && isGentle()) {
        services_.records.gentleCards->updateCard(*gentleCardID_, card());
    }
}

std::int64_t OverlayManager::skipCostSec() const {
    SkipPenalties* penalties = services_.records.penaltyEngine;
    return activeSession_->has_value() && penalties
               ? penalties->previewPenalty((*activeSession_)->kind)
               : 0;
}

// The card does not keep anybody from working on: whoever cannot be told counts as not rested.
void OverlayManager::judgeRest() {
    const ActiveOverlaySession& session = **activeSession_;
    const double idleSec = services_.inputIdle.secondsSinceLastInput().value_or(0);
    if (idleSec >= static_cast<double>(restThresholdSec(session.totalSec()))) {
        gentleStage_ = GentleCard::Stage::rested;
        if (services_.records.chimes) {
            services_.records.chimes->playEnd();
        }
        closeAfterFade();
        return;
    }
    gentleStage_ = GentleCard::Stage::asking;
    autoFadeTimer_ = services_.runLoop.callAfter(runLoopSec(kAnswerLimitSec), [this] {
        if (activeSession_->has_value() && gentleStage_ == GentleCard::Stage::asking) {
            close(CloseReason::skippedGently);
        }
    });
    didAsk.send(session.kind);
}

bool OverlayManager::offers(OverlayAction action) const {
    using Stage = GentleCard::Stage;
    const bool isCounting = !isGentle() || gentleStage_ == Stage::counting;
    switch (action) {
        case OverlayAction::done:
            return !isGentle();
        case OverlayAction::skip:
            return isCounting && !settingsStore().settings()->strictMode;
        case OverlayAction::postpone:
            return isCounting && canPostpone();
        case OverlayAction::gentleDone:
        case OverlayAction::gentleSkip:
            return isGentle() && gentleStage_ == Stage::asking;
    }
    return false;
}

}  // namespace ostrel
