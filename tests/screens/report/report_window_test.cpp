#include "screens/report/report_window.h"

#include <QAccessible>
#include <QAction>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "records/break_log.h"
#include "records/break_log_export.h"
#include "records/daily_counter.h"
#include "records/presence_tally.h"
#include "records/streak_tracker.h"
#include "screens/gui.h"
#include "screens/overflow.h"
#include "screens/report/day_bar.h"
#include "screens/report/day_chart.h"
#include "screens/texts/texts.h"
#include "support/records_bench.h"

namespace ostrel {
namespace {

using Outcome = BreakLogEntry::Outcome;

// A window over records of its own; it is a Monday.
struct ReportWindowTest : ::testing::Test, RecordsBench {
    ReportWindowTest() : RecordsBench("2026-03-09T15:00:00") { Texts::setLanguage("en"); }
    ~ReportWindowTest() override {
        delete window;
        QApplication::setLayoutDirection(Qt::LeftToRight);
        Texts::setLanguage("en");
    }

    void add(std::int64_t daysAgo, int count, BreakKind kind, Outcome outcome = Outcome::completed,
             std::int64_t penaltySec = 0) {
        for (int i = 0; i < count; ++i) {
            log.append(entry(*calendar.addDays(now(), -daysAgo), kind, outcome, penaltySec));
        }
    }
    void open() {
        window =
            new ReportWindow({summary, log, tally, streak, counter, settings, calendar, clock(),
                              [this](QWidget& /*asking*/, const SaveQuestion& question) {
                                  return answer(question);
                              }});
        window->present();
        ASSERT_TRUE(runUntil([this] { return window->isActiveWindow(); }));
    }

    template <class Widget>
    std::vector<Widget*> all(const char* name = nullptr) {
        std::vector<Widget*> found;
        for (Widget* widget : window->findChildren<Widget*>()) {
            if (widget->isVisible() && (!name || widget->objectName() == QLatin1String(name))) {
                found.push_back(widget);
            }
        }
        return found;
    }
    // What a screen reader says of it: "name: value".
    std::string figure(const char* name) {
        const QString start = QString::fromUtf8(name) + QStringLiteral(": ");
        for (const QLabel* label : all<QLabel>()) {
            if (label->accessibleName().startsWith(start)) {
                return label->accessibleName().mid(start.size()).toStdString();
            }
        }
        return "nothing";
    }
    bool isRead(const char* text) {
        return std::ranges::any_of(all<QLabel>(), [text](const QLabel* label) {
            return label->text() == QString::fromUtf8(text);
        });
    }
    std::ptrdiff_t failuresTold() {
        return std::ranges::count_if(all<QLabel>(), [](const QLabel* label) {
            return label->text().contains(QStringLiteral("could not be written"));
        });
    }
    std::vector<DayBar*> bars() { return all<DayBar>(); }
    void choose(int daysShown) {
        for (QRadioButton* button : all<QRadioButton>()) {
            if (button->text().startsWith(QString::number(daysShown) + u' ')) {
                button->click();
            }
        }
    }
    QString wordsBelow() {
        return window->findChild<QLabel*>(QStringLiteral("ostrel.report.ofDay"))->text();
    }
    std::size_t focused() {
        const auto list = bars();
        return static_cast<std::size_t>(
            std::ranges::find_if(list, [](const DayBar* bar) { return bar->hasFocus(); }) -
            list.begin());
    }
    // Asks for the file as the menu does; "" when it was not asked for or not written.
    void exportAs(const char* suffix) {
        auto* button = window->findChild<QPushButton*>(QStringLiteral("ostrel.report.export"));
        for (QAction* action : button->menu()->actions()) {
            if (action->text().contains(QString::fromUtf8(suffix).toUpper())) {
                action->trigger();
            }
        }
        QCoreApplication::processEvents();
    }
    static std::string contentOf(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "missing";
    }

    BreakLog log{preferences, calendar, clock()};
    PresenceTally tally{preferences, calendar, clock()};
    DailyCounter counter{{preferences, calendar, runLoop, systemEvents, clock()}};
    StreakTracker streak{{preferences, settings, log, counter, calendar, clock()}};
    ReportSummaryView summary{log, calendar, clock()};
    std::function<QString(const SaveQuestion&)> answer = [](const SaveQuestion&) {
        return QString();
    };
    QPointer<ReportWindow> window;
};

TEST_F(ReportWindowTest, EveryTextHasRoomInEveryLanguage) {
    add(1, 5, BreakKind::eye);
    add(3, 2, BreakKind::body);
    open();
    const auto spans = all<QRadioButton>().size();
    expectRoomInEveryLanguage(*window, static_cast<int>(spans), [this](int span) {
        all<QRadioButton>()[static_cast<std::size_t>(span)]->click();
    });
}

}  // namespace

TEST_F(ReportWindowTest, FiguresAndBarsAreThoseOfTheRecordsInEachSpan) {
    add(59, 1, BreakKind::body, Outcome::postponed);
    add(30, 3, BreakKind::body);
    add(29, 1, BreakKind::eye, Outcome::skipped, 45);
    add(7, 2, BreakKind::eye, Outcome::deferred);
    add(6, 2, BreakKind::eye, Outcome::completed, 30);
    add(6, 1, BreakKind::body, Outcome::autoFadeOut);
    add(0, 1, BreakKind::body);
    jumpTo("2026-01-20T15:00:00");
    tally.countCredited();
    jumpTo("2026-03-09T15:00:00");
    tally.countHeld();
    open();
    const std::pair<int, std::vector<std::string>> cases[] = {
        {7, {"2", "1", "1", "0%", "30 s", "0", "1", "0", "0"}},
        {30, {"2", "1", "1", "20%", "35 s", "0", "1", "2", "0"}},
        {60, {"2", "4", "1", "11%", "35 s", "1", "1", "2", "1"}},
    };
    for (const auto& [days, figures] : cases) {
        choose(days);
        EXPECT_EQ(bars().size(), static_cast<std::size_t>(days));
        EXPECT_EQ(figures,
                  (std::vector{figure("Eye breaks ended with Done"),
                               figure("Body breaks ended with Done"), figure("Ended by themselves"),
                               figure("Skipped"), figure("Extra time for skips"),
                               figure("Postponed"), figure("Held back"),
                               figure("Held back and dropped"), figure("Counted while away")}))
            << days;
    }
    EXPECT_EQ(bars()[53]->accessibleName(),
              "Tuesday, March 3: 2 eye breaks and 1 that ended by itself");
}

TEST_F(ReportWindowTest, TheChartIsOneTabStopAndArrowsGoFromDayToDayAsPeopleWrite) {
    add(1, 5, BreakKind::eye);
    open();
    auto* chart = QAccessible::queryAccessibleInterface(all<DayChart>().front());
    EXPECT_EQ(chart->child(5)->text(QAccessible::Name), "Sunday, March 8: 5 eye breaks");
    const std::tuple<Qt::LayoutDirection, int, int> cases[] = {
        {Qt::LeftToRight, Qt::Key_Left, Qt::Key_Right},
        {Qt::RightToLeft, Qt::Key_Right, Qt::Key_Left}};
    for (const auto& [direction, earlier, later] : cases) {
        QApplication::setLayoutDirection(direction);
        const auto todayIsLast = [this] {
            const bool isToTheRight = bars().back()->x() > bars().front()->x();
            return isToTheRight == QApplication::isLeftToRight();
        };
        ASSERT_TRUE(runUntil(todayIsLast));
        bars().back()->setFocus();
        const std::pair<int, std::size_t> steps[] = {{later, 6},        {earlier, 5},
                                                     {earlier, 4},      {later, 5},
                                                     {Qt::Key_Home, 0}, {Qt::Key_End, 6}};
        for (const auto& [key, day] : steps) {
            sendKey(*window, key);
            EXPECT_EQ(focused(), day);
            EXPECT_EQ(wordsBelow(), bars()[day]->accessibleName());
            EXPECT_EQ(std::ranges::count_if(
                          bars(), [](auto* bar) { return bar->focusPolicy() & Qt::TabFocus; }),
                      1);
        }
    }
}

TEST_F(ReportWindowTest, AFirstDayIsAKindWordAndAQuietWeekPointsToTheDaysBefore) {
    open();
    EXPECT_TRUE(isRead("No breaks to show yet"));
    EXPECT_TRUE(all<QAbstractButton>().empty());
    add(20, 1, BreakKind::eye);
    ASSERT_TRUE(runUntil([this] { return isRead("No breaks in the last 7 days"); }));
    EXPECT_FALSE(all<QPushButton>("ostrel.report.export").front()->isEnabled());
    choose(30);
    EXPECT_TRUE(all<QPushButton>("ostrel.report.export").front()->isEnabled());
}

TEST_F(ReportWindowTest, FollowsTheRecordsAndStaysWithTheDayThatIsLookedAt) {
    setUp([](SettingsModel& model) { model.dailyGoalBreaks = 2; });
    add(1, 1, BreakKind::eye);
    open();
    EXPECT_EQ(figure("Breaks today, of your goal"), "0 of 2");
    bars()[5]->setFocus();
    for (int i = 0; i < 2; ++i) {
        counter.recordEyeCompleted();
        add(0, 1, BreakKind::eye, Outcome::autoFadeOut);
    }
    ASSERT_TRUE(runUntil([this] { return figure("Ended by themselves") == "2"; }));
    EXPECT_EQ(figure("Breaks today, of your goal"), "2 of 2");
    EXPECT_EQ(figure("Current streak"), "1 day");
    EXPECT_EQ(focused(), 5U);
    tally.countCredited();
    ASSERT_TRUE(runUntil([this] { return figure("Counted while away") == "1"; }));
    setUp([](SettingsModel& model) { model.dailyGoalBreaks = 3; });
    ASSERT_TRUE(runUntil([this] { return isRead("Goal: 3 a day"); }));

    jumpTo("2026-03-10T09:00:00");
    systemEvents.dayChanged.send();
    ASSERT_TRUE(runUntil([this] { return figure("Breaks today, of your goal") == "0 of 3"; }));
    EXPECT_EQ(bars().back()->accessibleName(), "Today, Tuesday, March 10: no breaks");
}

TEST_F(ReportWindowTest, ExportsTheChosenSpanInEachFormat) {
    add(8, 1, BreakKind::body);
    add(0, 2, BreakKind::eye);
    open();
    const QTemporaryDir folder;
    std::vector<QString> suggested;
    answer = [&](const SaveQuestion& question) {
        suggested.push_back(question.suggestedName);
        return folder.filePath(question.suggestedName);
    };
    for (const char* format : {"csv", "json", "png"}) {
        exportAs(format);
    }
    EXPECT_EQ(suggested,
              (std::vector<QString>{QStringLiteral("ostrel_2026-03-03_2026-03-09.csv"),
                                    QStringLiteral("ostrel_2026-03-03_2026-03-09.json"),
                                    QStringLiteral("ostrel_2026-03-03_2026-03-09.png")}));
    EXPECT_TRUE(isRead("Saved as ostrel_2026-03-03_2026-03-09.png."));
    const auto span = log.entriesOf(7);
    ASSERT_EQ(span.size(), 2U);
    EXPECT_EQ(contentOf(folder.filePath(suggested[0])), exportCsv(span, calendar));
    EXPECT_EQ(contentOf(folder.filePath(suggested[1])), exportJson(span, calendar));
    EXPECT_FALSE(QImage(folder.filePath(suggested[2])).isNull());
}

TEST_F(ReportWindowTest, AFileThatCannotBeWrittenIsToldOfAndLosesNothing) {
    add(0, 1, BreakKind::eye);
    open();
    const QTemporaryDir folder;
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("taken.csv")));
    for (const char* name : {"missing/report.csv", "taken.csv"}) {
        QString path = folder.filePath(QString::fromUtf8(name));
        answer = [&](const SaveQuestion&) { return path; };
        exportAs("csv");
        EXPECT_EQ(failuresTold(), 1) << name;
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList(QStringLiteral("taken.csv")));

    answer = [&](const SaveQuestion&) { return folder.filePath(QStringLiteral("good.csv")); };
    exportAs("csv");
    EXPECT_TRUE(isRead("Saved as good.csv."));
    EXPECT_EQ(failuresTold(), 0);
}

}  // namespace ostrel
