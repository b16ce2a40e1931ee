#include "menubar/ostrel_notification_center.h"

#include <gtest/gtest.h>

#include <tuple>

#include "menubar/notification_ids.h"
#include "platform/virtual/virtual_notifications.h"
#include "support/events.h"
#include "support/records_bench.h"

namespace ostrel {
namespace {

class NotificationTest : public ::testing::Test, public RecordsBench {
  protected:
    NotificationTest() { launch(); }

    // A second call is a relaunch.
    void launch() {
        center = std::make_unique<OstrelNotificationCenter>(
            OstrelNotificationCenter::Services{system, settings, clock()});
        const auto note = [this](const std::string& what) { events.push_back(what); };
        center->start({[note](BreakKind kind) { note("start " + std::string(nameOf(kind))); },
                       [note](BreakKind kind) { note("postpone " + std::string(nameOf(kind))); },
                       [note] { note("resume"); }, [note] { note("report"); },
                       [note] { note("app"); }});
    }
    Events take() { return std::exchange(events, {}); }

    VirtualNotifications system{runLoop, calendar, systemEvents, clock()};
    std::unique_ptr<OstrelNotificationCenter> center;
    Events events;
    std::vector<NotificationRequest> posted;
    Subscription posts = system.posted.subscribe(
        [this](const NotificationRequest& request) { posted.push_back(request); });
    Subscription deliveries = system.wasDelivered.subscribe(
        [this](const std::string& id) { events.push_back("delivered " + id.substr(28)); });
    Subscription removals = system.removed.subscribe(
        [this](const std::string& id) { events.push_back("removed " + id.substr(28)); });
};

}  // namespace

TEST_F(NotificationTest, BreakSoonSaysHowSoonAndWhetherItCanWait) {
    for (const auto& [leadSec, key, argument] :
         {std::tuple{59, "notification.break_soon.seconds %lld", "59"},
          std::tuple{60, "notification.break_soon.minutes %lld", "1"},
          std::tuple{90, "notification.break_soon.minutes %lld", "2"}}) {
        center->postBreakSoon(BreakKind::body, leadSec, true);
        EXPECT_EQ(posted.back().body, (LocalizedText{key, {argument}})) << leadSec;
    }
    EXPECT_EQ(posted.back().category, NotificationCategoryID::kBreakSoon);
    center->postBreakSoon(BreakKind::eye, 30, false);
    EXPECT_EQ(posted.back().category, NotificationCategoryID::kBreakSoonNoPostpone);
    EXPECT_EQ(system.delivered(),
              (std::vector<std::string>{"ostrel.notification.request.breakSoon"}))
        << "one at a time";
    take();
    center->cancelBreakSoon();
    EXPECT_EQ(take(), (Events{"removed breakSoon"}));
}

TEST_F(NotificationTest, PauseForgottenComesWhenDueUnlessItIsSwitchedOff) {
    center->schedulePauseForgotten(now() + wallSec(100));
    run(99.9);
    EXPECT_EQ(take(), Events{});
    run(0.1);
    EXPECT_EQ(take(), (Events{"delivered pauseForgotten"}));
    center->schedulePauseForgotten(now() + wallSec(100));
    setUp([](SettingsModel& model) { model.notifyPauseForgotten = false; });
    EXPECT_EQ(take(), (Events{"removed pauseForgotten", "removed pauseForgotten"}));
}

TEST_F(NotificationTest, WeeklySummaryComesOnMondaysAtNine) {
    jumpTo("2026-03-10T12:00:00");
    launch();
    run(5 * 86'400 + 21 * 3600 - 1);
    EXPECT_EQ(take(), Events{});
    run(1);
    EXPECT_EQ(take(), (Events{"delivered weeklySummary"}));
    launch();
    setUp([](SettingsModel& model) { model.notifyWeeklySummary = false; });
    run(7 * 86'400);
    EXPECT_EQ(take(), (Events{"removed weeklySummary"}));
}

TEST_F(NotificationTest, EveryAnswerReachesItsPlace) {
    struct Case {
        std::optional<std::string> action;
        const char* category;
        const char* kind;
        Events done;
    };
    const std::string prefix = "ostrel.notification.action.";
    for (const auto& [action, category, kind, done] :
         {Case{prefix + "startNow", "", "eye", {"start eye"}},
          Case{prefix + "postpone", "", "body", {"postpone body"}},
          Case{prefix + "postpone", "", "leg", {}}, Case{prefix + "resume", "", "", {"resume"}},
          Case{prefix + "openReport", "", "", {"report"}},
          Case{prefix + "unheardOf", "", "eye", {}},
          Case{std::nullopt, "ostrel.notification.weeklySummary", "", {"report"}},
          Case{std::nullopt, "ostrel.notification.breakSoon", "eye", {"app"}},
          Case{std::nullopt, "ostrel.notification.pauseForgotten", "", {"app"}}}) {
        system.respond({action, category, {{"kind", kind}}});
        EXPECT_EQ(take(), done) << action.value_or(category);
    }
}

}  // namespace ostrel
