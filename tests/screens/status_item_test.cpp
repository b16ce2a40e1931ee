#include "screens/status_item.h"

#include <QAction>

#include "screens/gui.h"
#include "support/overlay_bench.h"

namespace ostrel {

using MenuBarFormatter::Output;
using MenuBarFormatter::Status;

TEST(StatusIcon, ShowsMinutesThenSecondsAndNoTimeWhileNothingRuns) {
    const struct {
        Status status;
        std::int64_t seconds;
        const char* label;
    } cases[] = {
        {Status::running, 1199, "20"}, {Status::running, 60, "1"},  {Status::running, 59, "59"},
        {Status::running, 5, "05"},    {Status::running, -3, "00"}, {Status::running, 5940, "99"},
        {Status::running, 7200, "2h"}, {Status::paused, 1200, ""},
    };
    for (const auto& [status, seconds, label] : cases) {
        Output output;
        output.status = status;
        EXPECT_EQ(StatusIcon::faceOf(output, {seconds, 0}).label.toStdString(), label)
            << nameOf(status) << " " << seconds;
    }
}

struct StatusItemTest : ::testing::Test {
    StatusItemTest() {
        bench.engine().setIsOverlayPresented(
            [this] { return bench.overlay().activeSession()->has_value(); });
    }
    static std::string lines(const QMenu& menu) {
        std::string text;
        for (const QAction* action : menu.actions()) {
            if (action->isVisible() && !action->isSeparator()) {
                text += (text.empty() ? "" : "|") + (action->isEnabled() ? "" : std::string("-")) +
                        action->text().toStdString();
            }
        }
        return text;
    }
    static QAction* entry(const QMenu& menu, const char* text) {
        for (QAction* action : menu.actions()) {
            if (action->text() == QString::fromUtf8(text)) {
                return action;
            }
            if (action->menu()) {
                if (QAction* found = entry(*action->menu(), text)) {
                    return found;
                }
            }
        }
        return nullptr;
    }

    OverlayBench bench;
    DailyCounter counter{bench.counterServices()};
    std::optional<WallTime> workUntil;
    StatusMenu::Services services{bench.engine(),
                                  bench.session(),
                                  bench.settings(),
                                  bench.overlay(),
                                  counter,
                                  [this] { return workUntil; },
                                  [] {},
                                  [] {},
                                  [] {},
                                  [] {}};
};

TEST_F(StatusItemTest, TheMenuSaysWhatTheScheduleIsDoing) {
    StatusMenu menu(services);
    EXPECT_EQ(lines(menu),
              "-Ostrel is on|-Next eye break in 20:00|-Next body break in 50:00|"
              "Start an eye break|Start a body break|Pause|-No break yet "
              "today|Report|Settings|About Ostrel|Quit Ostrel");
    menu.popup({0, 0});
    bench.engine().tick();
    EXPECT_NE(lines(menu).find("eye break in 19:59"), std::string::npos) << "open, it counts";
    menu.close();

    const auto firstLine = [&] {
        menu.refresh();
        return menu.actions().front()->text().toStdString();
    };
    workUntil = bench.now() + std::chrono::hours(8);
    EXPECT_EQ(firstLine(), "On until 17:50");
    bench.engine().pause(PauseReason::schedule);
    EXPECT_EQ(firstLine(), "Off for now");
    bench.engine().pause(PauseReason::focus);
    EXPECT_EQ(firstLine(), "Paused");
    bench.engine().pauseByUser(PauseDuration::indefinite());
    menu.refresh();
    EXPECT_EQ(lines(menu),
              "-Paused|-Until you resume|-No break until then|Start an eye break|"
              "Start a body break|Resume|-No break yet today|Report|Settings|About Ostrel|"
              "Quit Ostrel");
    bench.engine().endAllPauses();
    bench.engine().markUserIdle();
    EXPECT_EQ(firstLine(), "Away: the countdown waits for you");
    bench.overlay().present(BreakKind::eye, 20, 0);
    EXPECT_EQ(firstLine(), "A break is on the screen");
    EXPECT_FALSE(entry(menu, "Start an eye break")->isEnabled());
    bench.overlay().close(CloseReason::skipped);
    bench.setUp([](SettingsModel& model) { model.ostrelEnabled = false; });
    EXPECT_EQ(firstLine(), "Breaks are switched off");
    counter.recordEyeCompleted();
    menu.refresh();
    EXPECT_NE(lines(menu).find("Today: 1 break taken, the goal is 6"), std::string::npos);
}

TEST_F(StatusItemTest, TheToolTipTellsWhatTheMenuDoes) {
    const StatusItem item(services);
    EXPECT_EQ(item.toolTip().toStdString(),
              "Ostrel\nNext eye break in 20:00\nNext body break in 50:00");
    bench.engine().pause(PauseReason::focus);
    EXPECT_EQ(item.toolTip().toStdString(),
              "Ostrel is on\nPaused\nWhile notifications are silenced");
    bench.setUp([](SettingsModel& model) { model.ostrelEnabled = false; });
    EXPECT_EQ(item.toolTip().toStdString(), "Ostrel is off");
}

}  // namespace ostrel
