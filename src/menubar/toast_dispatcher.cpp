#include "menubar/toast_dispatcher.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <utility>

namespace ostrel {
namespace {

using Counting = ToastDispatcher::PendingToast::Counting;

// How each message of the engine is shown.
struct Form {
    std::string_view key;
    Toast::Kind kind = Toast::Kind::info;
    double duration = 0;  // 0: as many seconds as the argument says, counted down
};

constexpr Form formOf(EngineToasts::Message message) {
    using Message = EngineToasts::Message;
    using Kind = Toast::Kind;
    switch (message) {
        case Message::merged:
            return {"toast.merged %lld", Kind::info, 6};
        case Message::preBreakEye:
            return {"toast.pre_break.eye %lld", Kind::info, 0};
        case Message::preBreakBody:
            return {"toast.pre_break.body %lld", Kind::info, 0};
        case Message::pauseEnded:
            return {"toast.pause_ended", Kind::info, 5};
        case Message::postponeNoneLeft:
            return {"toast.postpone.none_left", Kind::warning, 5};
        case Message::breakHeld:
            return {"toast.break_held", Kind::info, 6};
        case Message::breakDropped:
            return {"toast.break_dropped", Kind::warning, 6};
        case Message::awayCreditBoth:
            return {"toast.away_credit.both %lld", Kind::info, 6};
        case Message::awayCreditEye:
            return {"toast.away_credit.eye %lld", Kind::info, 6};
        case Message::awayCreditBody:
            break;
    }
    return {"toast.away_credit.body %lld", Kind::info, 6};
}

LocalizedText titleOf(OverlayAction action, const GentleCard& card) {
    switch (action) {
        case OverlayAction::done:
            return {"action.done", {}};
        case OverlayAction::skip:
            return card.skipCostSec > 0
                       ? LocalizedText{"action.skip.cost %lld", {std::to_string(card.skipCostSec)}}
                       : LocalizedText{"action.skip", {}};
        case OverlayAction::postpone:
            return {"action.postpone_5", {}};
        case OverlayAction::gentleDone:
            return {"gentle.answer.done", {}};
        case OverlayAction::gentleSkip:
            break;
    }
    return {"gentle.answer.skip", {}};
}

std::string_view keyOf(const GentleCard& card) {
    if (card.stage == GentleCard::Stage::asking) {
        return "gentle.card.ended";
    }
    if (card.stage == GentleCard::Stage::rested) {
        return "gentle.card.rested";
    }
    return card.kind == BreakKind::eye ? "gentle.card.eye" : "gentle.card.body";
}

}  // namespace

ToastDispatcher::ToastDispatcher(RunLoop& runLoop) : runLoop_(runLoop) {}

std::string ToastDispatcher::freshID() {
    return std::to_string(++lastID_);
}

void ToastDispatcher::show(PendingToast pending) {
    pending.toast.id = freshID();
    if (!isToastOnScreen()) {
        present(pending);
        return;
    }
    if (pendingQueue_.size() >= kMostWaiting) {
        const Toast lost = std::move(pendingQueue_.front().toast);
        pendingQueue_.pop_front();
        didDrop.send(lost);
    }
    pendingQueue_.push_back(std::move(pending));
    didQueue.send(pendingQueue_.back().toast);
}

void ToastDispatcher::present(const PendingToast& pending) {
    clearTimer_ = runLoop_.callAfter(runLoopSec(pending.duration), [this] { dismiss(); });
    countdownTimer_.cancel();
    if (pending.counting == Counting::yes) {
        countdownTimer_ = runLoop_.repeat(std::chrono::seconds(1), std::chrono::seconds(1),
                                          [this] { countDown(); });
    }
    currentToast_.set(pending.toast);
    didShow.send(pending);
}

void ToastDispatcher::countDown() {
    Toast next = **currentToast_;
    std::string& argument = next.message.args.front();
    std::int64_t seconds = 0;
    std::from_chars(argument.data(), argument.data() + argument.size(), seconds);
    argument = std::to_string(std::max<std::int64_t>(seconds - 1, 0));
    currentToast_.set(std::move(next));
}

void ToastDispatcher::dismiss() {
    if (isToastOnScreen() && !isCard(**currentToast_)) {
        takeOff();
        presentNext();
    }
}

void ToastDispatcher::dismissCounting() {
    if (countdownTimer_) {
        dismiss();
    }
}

void ToastDispatcher::takeOff() {
    clearTimer_.cancel();
    countdownTimer_.cancel();
    const std::optional<Toast> gone = *currentToast_;
    currentToast_.set(std::nullopt);
    if (gone && !isCard(*gone)) {
        didDismiss.send(*gone);
    }
}

void ToastDispatcher::presentNext() {
    if (!isToastOnScreen() && !pendingQueue_.empty()) {
        const PendingToast next = std::move(pendingQueue_.front());
        pendingQueue_.pop_front();
        present(next);
    }
}

bool ToastDispatcher::press(std::string_view actionID) {
    if (!isToastOnScreen()) {
        return false;
    }
    const auto& actions = (*currentToast_)->actions;
    const auto found = std::ranges::find(actions, actionID, &Toast::Action::id);
    if (found == actions.end()) {
        return false;
    }
    const std::function<void()> handler = found->handler;
    const std::string id = (*currentToast_)->id;
    // While it is still there nothing that is raised meanwhile comes up just to be taken off.
    handler();
    if (isToastOnScreen() && (*currentToast_)->id == id) {
        dismiss();
    }
    return true;
}

void ToastDispatcher::show(Message message, std::optional<std::int64_t> argument,
                           const Handlers& handlers) {
    const Form form = formOf(message);
    PendingToast pending;
    pending.toast.message.key = form.key;
    pending.toast.kind = form.kind;
    pending.duration = form.duration;
    if (argument) {
        pending.toast.message.args = {std::to_string(*argument)};
    }
    if (form.duration == 0) {
        pending.duration = static_cast<double>(argument.value_or(0));
        pending.counting = Counting::yes;
    }
    if (handlers.startNow) {
        pending.toast.actions.push_back({"start_now",
                                         {"toast.action.start_now", {}},
                                         Toast::ActionRole::primary,
                                         handlers.startNow});
    }
    if (handlers.later) {
        pending.toast.actions.push_back(
            {"later", {"toast.action.later", {}}, Toast::ActionRole::secondary, handlers.later});
    }
    show(std::move(pending));
}

std::string ToastDispatcher::showCard(const GentleCard& card,
                                      std::function<void(OverlayAction)> onPress) {
    takeOff();
    cardID_ = freshID();
    onCardPress_ = std::move(onPress);
    currentToast_.set(cardToast(card));
    return *cardID_;
}

Toast ToastDispatcher::cardToast(const GentleCard& card) const {
    Toast toast;
    toast.id = cardID_.value_or("");
    toast.message.key = keyOf(card);
    if (card.message) {
        toast.secondaryLine = LocalizedText{"%@", {*card.message}};
    }
    if (card.stage == GentleCard::Stage::counting) {
        toast.progress = Toast::Progress{card.remainingSec, card.totalSec};
    }
    for (const OverlayAction action : card.actions) {
        const bool isMain = action == OverlayAction::gentleDone;
        toast.actions.push_back({std::string(nameOf(action)), titleOf(action, card),
                                 isMain ? Toast::ActionRole::primary : Toast::ActionRole::secondary,
                                 [onPress = onCardPress_, action] { onPress(action); }});
    }
    return toast;
}

void ToastDispatcher::updateCard(const std::string& cardID, const GentleCard& card) {
    if (cardID == cardID_) {
        currentToast_.set(cardToast(card));
    }
}

void ToastDispatcher::dismissCard(const std::string& cardID) {
    if (cardID == cardID_) {
        takeOff();
        cardID_.reset();
        onCardPress_ = nullptr;
        presentNext();
    }
}

}  // namespace ostrel
