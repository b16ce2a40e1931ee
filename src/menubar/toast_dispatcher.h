#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/published.h"
#include "base/signal.h"
#include "core/engine/engine_ports.h"
#include "menubar/toast.h"
#include "overlay/overlay_ports.h"
#include "platform/api/run_loop.h"

namespace ostrel {

// Shows toasts one at a time, each for its own time; what comes meanwhile waits in line, the newest
// kMostWaiting of them.
//
// A gentle card goes before all of these, and only whoever put it up takes it down.
class ToastDispatcher : public EngineToasts, public GentleCardPresenting {
  public:
    static constexpr std::size_t kMostWaiting = 5;

    struct PendingToast {
        Toast toast;
        double duration = 0;  // seconds
        // The first argument of the message counts down once a second.
        enum class Counting { no, yes } counting = Counting::no;
    };

    // `runLoop` outlives the dispatcher.
    explicit ToastDispatcher(RunLoop& runLoop);

    [[nodiscard]] const Published<std::optional<Toast>>& currentToast() const {
        return currentToast_;
    }
    [[nodiscard]] const std::deque<PendingToast>& pendingQueue() const { return pendingQueue_; }
    [[nodiscard]] bool isCard(const Toast& toast) const { return toast.id == cardID_; }

    // The toast gets a fresh identifier.
    void show(PendingToast pending);

    // Takes the current toast off and puts up the next; a card stays.
    void dismiss() override;
    void dismissCounting() override;

    // Presses a button of the current toast, which goes then; false when it has no such button.
    bool press(std::string_view actionID);

    [[nodiscard]] bool isToastOnScreen() const override { return currentToast_->has_value(); }
    void show(Message message, std::optional<std::int64_t> argument,
              const Handlers& handlers) override;

    std::string showCard(const GentleCard& card,
                         std::function<void(OverlayAction)> onPress) override;
    void updateCard(const std::string& cardID, const GentleCard& card) override;
    void dismissCard(const std::string& cardID) override;

    // For those who only tell what happens; cards are not told of.
    Signal<const PendingToast&> didShow;
    Signal<const Toast&> didQueue;
    Signal<const Toast&> didDrop;
    Signal<const Toast&> didDismiss;

  private:
    [[nodiscard]] std::string freshID();
    [[nodiscard]] Toast cardToast(const GentleCard& card) const;
    void present(const PendingToast& pending);
    void presentNext();
    void takeOff();
    void countDown();

    RunLoop& runLoop_;
    std::uint64_t lastID_ = 0;
    Published<std::optional<Toast>> currentToast_;
    std::deque<PendingToast> pendingQueue_;
    std::optional<std::string> cardID_;
    std::function<void(OverlayAction)> onCardPress_;
    Timer clearTimer_;
    Timer countdownTimer_;
};

}  // namespace ostrel
