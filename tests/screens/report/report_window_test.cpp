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
#include "screens/report/day_bar.h"
#include "screens/report/day_chart.h"
#include "screens/report/report_words.h"
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
    std::vector<DayBar*> bars() { return all<DayBar>(); }
    std::string daysWithBreaks() {
        std::string days;
        for (const DayBar* bar : bars()) {
            if (!bar->accessibleName().endsWith(QStringLiteral("no breaks"))) {
                days += bar->accessibleName().toStdString() + "\n";
            }
        }
        return days;
    }
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
    static QByteArray contentOf(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
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
    jumpTo("2026-02-20T15:00:00");
    tally.countHeld();
    jumpTo("2026-03-09T15:00:00");
    tally.countHeld();
    open();
    const struct {
        int days;
        const char* eye;
        const char* body;
        const char* faded;
        const char* skipped;
        const char* penalty;
        const char* postponed;
        const char* held;
        const char* dropped;
        const char* credited;
    } cases[] = {
        {7, "2", "1", "1", "0%", "30 s", "0", "1", "0", "0"},
        {30, "2", "1", "1", "20%", "35 s", "0", "2", "2", "0"},
        {60, "2", "4", "1", "11%", "35 s", "1", "2", "2", "1"},
    };
    for (const auto& expected : cases) {
        SCOPED_TRACE(expected.days);
        choose(expected.days);
        EXPECT_EQ(bars().size(), static_cast<std::size_t>(expected.days));
        EXPECT_EQ(figure("Eye breaks ended with Done"), expected.eye);
        EXPECT_EQ(figure("Body breaks ended with Done"), expected.body);
        EXPECT_EQ(figure("Ended by themselves"), expected.faded);
        EXPECT_EQ(figure("Skipped"), expected.skipped);
        EXPECT_EQ(figure("Extra time for skips"), expected.penalty);
        EXPECT_EQ(figure("Postponed"), expected.postponed);
        EXPECT_EQ(figure("Held back"), expected.held);
        EXPECT_EQ(figure("Held back and dropped"), expected.dropped);
        EXPECT_EQ(figure("Counted while away"), expected.credited);
    }
    EXPECT_EQ(daysWithBreaks(),
              "Saturday, February 7: 3 body breaks\n"
              "Tuesday, March 3: 2 eye breaks and 1 that ended by itself\n"
              "Today, Monday, March 9: 1 body break\n");
}

TEST_F(ReportWindowTest, AScreenReaderFindsTheDaysAndTheSpans) {
    add(1, 5, BreakKind::eye);
    add(1, 2, BreakKind::body);
    open();
    auto* chart = QAccessible::queryAccessibleInterface(all<DayChart>().front());
    EXPECT_EQ(chart->role(), QAccessible::List);
    EXPECT_EQ(chart->text(QAccessible::Name), "Breaks taken on each day");
    ASSERT_EQ(chart->childCount(), 7);
    EXPECT_EQ(chart->child(5)->role(), QAccessible::ListItem);
    EXPECT_EQ(chart->child(5)->text(QAccessible::Name),
              "Sunday, March 8: 5 eye breaks and 2 body breaks");
    EXPECT_TRUE(chart->child(5)->state().focusable);
    EXPECT_EQ(chart->child(6)->text(QAccessible::Name), "Today, Monday, March 9: no breaks");

    auto* spans = QAccessible::queryAccessibleInterface(
        window->findChild<QWidget*>(QStringLiteral("ostrel.report.range")));
    EXPECT_EQ(spans->text(QAccessible::Name), "Days shown");
    ASSERT_EQ(spans->childCount(), 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(spans->child(i)->role(), QAccessible::RadioButton);
        EXPECT_EQ(spans->child(i)->state().checked, i == 0);
    }
}

TEST_F(ReportWindowTest, TheChartIsOneTabStopAndArrowsGoFromDayToDay) {
    add(1, 5, BreakKind::eye);
    open();
    EXPECT_EQ(wordsBelow(), "Today, Monday, March 9: no breaks");
    const struct {
        Qt::LayoutDirection direction;
        int earlier;
        int later;
    } cases[] = {{Qt::LeftToRight, Qt::Key_Left, Qt::Key_Right},
                 {Qt::RightToLeft, Qt::Key_Right, Qt::Key_Left}};
    for (const auto& [direction, earlier, later] : cases) {
        QApplication::setLayoutDirection(direction);
        bars().back()->setFocus();
        const struct {
            int key;
            std::size_t day;
        } steps[] = {{later, 6},        {earlier, 5}, {earlier, 4}, {later, 5},
                     {Qt::Key_Home, 0}, {earlier, 0}, {later, 1},   {Qt::Key_End, 6}};
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

TEST_F(ReportWindowTest, DaysRunFromRightToLeftWhereTheLanguageDoes) {
    add(0, 1, BreakKind::eye);
    open();
    const auto isAscending = [this] {
        return std::ranges::is_sorted(bars(), {}, [](const DayBar* bar) { return bar->x(); });
    };
    EXPECT_TRUE(isAscending());
    EXPECT_EQ(bars().back()->geometry().right(), all<DayChart>().front()->width() - 1);
    QApplication::setLayoutDirection(Qt::RightToLeft);
    ASSERT_TRUE(runUntil([&] { return !isAscending(); }));
    EXPECT_EQ(bars().back()->x(), 0);
}

TEST_F(ReportWindowTest, ThePointerReadsADayWithoutChoosingIt) {
    add(1, 5, BreakKind::eye);
    open();
    for (const auto& [type, day] : {std::pair(QEvent::HoverEnter, 5), {QEvent::HoverLeave, 6}}) {
        QHoverEvent hover(type, QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
        QCoreApplication::sendEvent(bars()[5], &hover);
        EXPECT_EQ(wordsBelow(), bars()[static_cast<std::size_t>(day)]->accessibleName());
    }
}

TEST_F(ReportWindowTest, ArrowKeysChangeTheSpanAndTheFocusGoesAlong) {
    add(0, 1, BreakKind::eye);
    open();
    all<QRadioButton>().front()->setFocus();
    sendKey(*window, Qt::Key_Right);
    EXPECT_EQ(bars().size(), 30U);
    sendKey(*window, Qt::Key_Right);
    EXPECT_EQ(bars().size(), 60U);
    EXPECT_TRUE(all<QRadioButton>().back()->hasFocus());
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
    EXPECT_EQ(figure("In a row with the goal reached"), "1 day");
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

TEST_F(ReportWindowTest, AFirstDayIsAKindWordAndAQuietWeekPointsToTheDaysBefore) {
    open();
    EXPECT_TRUE(isRead("No breaks to show yet"));
    EXPECT_TRUE(bars().empty());
    EXPECT_EQ(figure("Skipped"), "nothing");
    EXPECT_TRUE(all<QAbstractButton>().empty());

    add(20, 1, BreakKind::eye);
    ASSERT_TRUE(runUntil([this] { return isRead("No breaks in the last 7 days"); }));
    EXPECT_TRUE(bars().empty());
    EXPECT_FALSE(all<QPushButton>("ostrel.report.export").front()->isEnabled());
    choose(30);
    EXPECT_EQ(figure("Eye breaks ended with Done"), "1");
    EXPECT_TRUE(all<QPushButton>("ostrel.report.export").front()->isEnabled());
}

TEST_F(ReportWindowTest, AStackIsAsHighAsItsBreaksAndTheGoalIsALineAtItsHeight) {
    setUp([](SettingsModel& model) { model.dailyGoalBreaks = 6; });
    add(0, 4, BreakKind::eye);
    add(1, 8, BreakKind::eye);
    open();
    const QColor accent = QApplication::palette().color(QPalette::Active, QPalette::Highlight);
    const auto accentRows = [&](DayBar& bar) {
        const QImage image = bar.grab().toImage();
        int rows = 0;
        for (int y = 0; y < image.height(); ++y) {
            rows += image.pixelColor(image.width() / 2, y) == accent;
        }
        return rows;
    };
    const auto list = bars();
    EXPECT_NEAR(2.0 * accentRows(*list[6]), accentRows(*list[5]), 6);
    EXPECT_EQ(accentRows(*list[4]), 0);

    // The line stands where six breaks end: the bar of eight is cut by it there.
    const QImage eight = list[5]->grab().toImage();
    const int goalRow = eight.height() - eight.height() * 6 / 8;
    int crossings = 0;
    for (int y = goalRow - 2; y <= goalRow + 2; ++y) {
        crossings += eight.pixelColor(eight.width() / 2, y) != accent;
    }
    EXPECT_EQ(crossings, 1);
    EXPECT_NE(eight.pixelColor(1, goalRow), eight.pixelColor(1, goalRow + 5));
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
    EXPECT_EQ(contentOf(folder.filePath(suggested[0])).toStdString(), exportCsv(span, calendar));
    EXPECT_EQ(contentOf(folder.filePath(suggested[1])).toStdString(), exportJson(span, calendar));

    const QImage picture(folder.filePath(suggested[2]));
    const auto* sheet = all<QWidget>("ostrel.report.sheet").front();
    EXPECT_GT(picture.width(), sheet->width() * 2);
    EXPECT_GT(picture.height(), sheet->height() * 2);
    const DayBar& today = *bars().back();
    const QPoint foot = today.mapTo(sheet, QPoint(today.width() / 2, today.height() - 10));
    const int margin = (picture.width() / 2 - sheet->width()) / 2;
    EXPECT_EQ(picture.pixelColor((foot + QPoint(margin, margin)) * 2),
              QApplication::palette().color(QPalette::Active, QPalette::Highlight));
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
        const auto told = all<QLabel>();
        EXPECT_TRUE(std::ranges::any_of(told, [&](const QLabel* label) {
            return label->text().startsWith(path.section(u'/', -1) +
                                            QStringLiteral(" could not be written"));
        })) << name;
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList(QStringLiteral("taken.csv")));

    answer = [&](const SaveQuestion&) { return folder.filePath(QStringLiteral("good.csv")); };
    exportAs("csv");
    EXPECT_TRUE(isRead("Saved as good.csv."));
    EXPECT_EQ(std::ranges::count_if(all<QLabel>(),
                                    [](const QLabel* label) {
                                        return label->text().contains(QStringLiteral("could not"));
                                    }),
              0);
}

TEST_F(ReportWindowTest, ClosingItWhileItAsksForAFileWritesNothing) {
    add(0, 1, BreakKind::eye);
    open();
    const QTemporaryDir folder;
    answer = [&](const SaveQuestion& question) {
        delete window;
        return folder.filePath(question.suggestedName);
    };
    exportAs("png");
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

TEST_F(ReportWindowTest, DayAndMonthStandAsTheLanguageOrdersThem) {
    const std::pair<const char*, const char*> cases[] = {
        {"en_US", "March 9|Mar 9"}, {"en_GB", "9 March|9 Mar"},    {"de", "9. März|9. März"},
        {"fr", "9 mars|9 mars"},    {"es", "9 de marzo|9 de mar"}, {"ja", "3月9日|3月9日"},
        {"ko", "3월 9일|3월 9일"},  {"zh", "3月9日|3月9日"},       {"ru", "9 марта|9 мар."},
        {"pl", "9 marca|9 mar"},
    };
    for (const auto& [locale, expected] : cases) {
        QLocale::setDefault(QLocale(QString::fromUtf8(locale)));
        const CalendarDay day{2026, 3, 9};
        EXPECT_EQ(ReportWords::dayAndMonth(day, ReportWords::Month::inFull) + u'|' +
                      ReportWords::dayAndMonth(day, ReportWords::Month::abbreviated),
                  QString::fromUtf8(expected))
            << locale;
    }
}

TEST_F(ReportWindowTest, AnotherLanguageKeepsTheSpanAndTheDay) {
    add(0, 1, BreakKind::eye);
    open();
    choose(30);
    bars()[3]->setFocus();
    Texts::setLanguage("en-XA");
    QEvent changed(QEvent::LanguageChange);
    QCoreApplication::sendEvent(window, &changed);
    EXPECT_EQ(bars().size(), 30U);
    EXPECT_EQ(focused(), 3U);
    EXPECT_EQ(window->windowTitle(), Texts::of("report.title"));
    EXPECT_FALSE(isRead("Goal: 6 a day"));
}

}  // namespace ostrel
