#include "core/engine/pause_forgotten_reminder.h"

namespace ostrel {

PauseForgottenReminder::PauseForgottenReminder(SessionStateStore& session, RunLoop& runLoop,
                                               BreakNotifying* center)
    : session_(session), runLoop_(runLoop), center_(center) {}

void PauseForgottenReminder::schedule(WallTime now) {
    const auto fireAt = session_.current()->pendingPauseForgottenFireAt;
    if (!fireAt) {
        return;
    }
    arm(*fireAt);
    if (center_ && *fireAt > now) {
        center_->schedulePauseForgotten(*fireAt);
    }
}

void PauseForgottenReminder::restore() {
    const auto fireAt = session_.current()->pendingPauseForgottenFireAt;
    if (!fireAt) {
        return;
    }
    arm(*fireAt);
    if (center_) {
        center_->restorePauseForgotten(*fireAt);
    }
}

void PauseForgottenReminder::arm(WallTime fireAt) {
    timer_ = runLoop_.callAt(fireAt, [this] {
        if (!session_.holds(PauseReason::user)) {
            withdraw();
        }
    });
}

void PauseForgottenReminder::withdraw() {
    if (center_) {
        center_->cancelPauseForgotten();
    }
}

void PauseForgottenReminder::forget() {
    timer_.cancel();
    withdraw();
    if (session_.current()->pendingPauseForgottenFireAt) {
        session_.setPendingPauseForgottenFireAt(std::nullopt);
    }
}

}  // namespace ostrel
