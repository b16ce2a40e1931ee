#include "menubar/toast_dispatcher.h"

#include <gtest/gtest.h>

#include <chrono>

#include "platform/virtual/virtual_run_loop.h"
#include "support/events.h"

namespace ostrel {
namespace {

using Message = EngineToasts::Message;

// A dispatcher that writes down what is on the screen as "SECOND what".
class ToastTest : public ::testing::Test {
  protected:
    void show(const std::string& key, double duration) {
        ToastDispatcher::PendingToast pending;
        pending.toast.message.key = key;
        pending.duration = duration;
        toasts.show(pending);
    }
    void run(double seconds) { runLoop.runFor(runLoopSec(seconds)); }
    Events take() { return std::exchange(events, {}); }

    VirtualRunLoop runLoop{WallTime{}};
    ToastDispatcher toasts{runLoop};
    Events events;
    Subscription watching = toasts.currentToast().onChange([this](const auto& toast) {
        const auto second = std::chrono::duration<double>(runLoop.now().time_since_epoch()).count();
        events.push_back(std::to_string(second).substr(0, 4) + " " +
                         (toast ? toast->message.key : "-"));
    });
};

GentleCard card(GentleCard::Stage stage, std::vector<OverlayAction> actions) {
    return {BreakKind::eye, stage, 20, 120, 90, "rest", std::move(actions)};
}

}  // namespace

TEST_F(ToastTest, OneAtATimeEachForItsOwnTime) {
    show("a", 2);
    show("b", 1);
    run(10);
    EXPECT_EQ(take(), (Events{"0.00 a", "2.00 -", "2.00 b", "3.00 -"}));
    show("c", 5);
    run(1);
    toasts.dismiss();
    show("d", 5);
    run(4.5);
    EXPECT_EQ(take(), (Events{"10.0 c", "11.0 -", "11.0 d"})) << "the time of c is not d's";
    run(1);
    EXPECT_EQ(take(), (Events{"16.0 -"}));
    toasts.dismiss();
    EXPECT_EQ(take(), Events{});
}

TEST_F(ToastTest, OfABurstTheNewestFiveWait) {
    Events dropped;
    const Subscription drops =
        toasts.didDrop.subscribe([&](const Toast& toast) { dropped.push_back(toast.message.key); });
    for (const char* key : {"on screen", "1", "2", "3", "4", "5", "6", "7"}) {
        show(key, 60);
    }
    EXPECT_EQ(dropped, (Events{"1", "2"}));
    run(300);
    EXPECT_EQ(take(), (Events{"0.00 on screen", "60.0 -", "60.0 3", "120. -", "120. 4", "180. -",
                              "180. 5", "240. -", "240. 6", "300. -", "300. 7"}));
}

TEST_F(ToastTest, ButtonsRunTheirHandlerOnceAndTakeTheToastOff) {
    Events pressed;
    toasts.show(Message::preBreakBody, 10,
                {[&] {
                     pressed.emplace_back("now");
                     toasts.show(Message::breakHeld, std::nullopt, {});
                     toasts.dismiss();
                 },
                 [&] { pressed.emplace_back("later"); }});
    EXPECT_FALSE(toasts.press("skip"));
    EXPECT_TRUE(toasts.press("start_now"));
    EXPECT_FALSE(toasts.press("later"));
    EXPECT_EQ(pressed, (Events{"now"}));
    EXPECT_EQ((*toasts.currentToast())->message.key, "toast.break_held")
        << "what the press raised is there to be seen";
    EXPECT_TRUE((*toasts.currentToast())->actions.empty());
}

TEST_F(ToastTest, CardGoesBeforeAllOthersAndOnlyItsOwnerTakesItDown) {
    std::vector<OverlayAction> pressed;
    show("a", 60);
    show("b", 2);
    const std::string id =
        toasts.showCard(card(GentleCard::Stage::counting, {OverlayAction::skip}),
                        [&](OverlayAction action) { pressed.push_back(action); });
    toasts.dismiss();
    run(100);
    EXPECT_EQ(take(), (Events{"0.00 a", "0.00 -", "0.00 gentle.card.eye"}));

    toasts.updateCard(id, card(GentleCard::Stage::asking, {OverlayAction::gentleSkip}));
    EXPECT_FALSE(toasts.press("skip"));
    EXPECT_TRUE(toasts.press("gentle_skip"));
    EXPECT_EQ(pressed, (std::vector{OverlayAction::gentleSkip}));
    toasts.dismissCard("another");
    toasts.dismissCard(id);
    run(3);
    toasts.updateCard(id, card(GentleCard::Stage::rested, {}));
    EXPECT_EQ(take(), (Events{"100. gentle.card.ended", "100. -", "100. b", "102. -"}))
        << "a card that is gone is not brought back";
}

}  // namespace ostrel
