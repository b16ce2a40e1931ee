#include "screens/settings/settings_window.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QTimeEdit>
#include <algorithm>
#include <set>

#include "screens/gui.h"
#include "screens/overflow.h"
#include "screens/settings/chord_recorder.h"
#include "screens/settings/settings_bench.h"
#include "screens/texts/languages.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

struct SettingsWindowTest : ::testing::Test, SettingsBench {
    SettingsWindow* window = nullptr;

    SettingsWindowTest() {
        window = new SettingsWindow(services());
        window->present();
    }
    ~SettingsWindowTest() override {
        delete window;
        Texts::setLanguage("en");
        QApplication::setLayoutDirection(Qt::LeftToRight);
    }

    void open(int page) {
        window->findChild<QListWidget*>(QStringLiteral("ostrel.sidebar"))->setCurrentRow(page);
    }
    template <class Control = QAbstractButton>
    Control* find(const char* name) {
        auto* control =
            window->findChild<Control*>(QStringLiteral("ostrel.settings.") + QLatin1String(name));
        EXPECT_NE(control, nullptr) << name;
        return control;
    }
    void click(const char* name) { find(name)->click(); }
    static void sendTo(QWidget& control, int key, const char* text = "") {
        for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, key, Qt::NoModifier, QString::fromLatin1(text));
            QCoreApplication::sendEvent(&control, &event);
        }
    }
    // Half a second off the ticks.
    void run(int seconds) {
        platform.runLoop.runUpTo(platform.runLoop.now() +
                                 std::chrono::milliseconds(seconds * 1000 + 500));
    }
    TimerEngine& engine() { return environment.timerEngine(); }
};

constexpr int kTiming = 0;
constexpr int kBreaks = 1;
constexpr int kWorkHours = 3;
constexpr int kPresence = 2;
constexpr int kShortcuts = 5;
constexpr int kGeneral = 6;
constexpr int kPages = 7;

TEST_F(SettingsWindowTest, EveryChoiceOfTheRecordHasAControl) {
    for (int page = 0; page < kPages; ++page) {
        open(page);
    }
    // What the program keeps for itself.
    const std::set<std::string_view> own{"hasOnboarded", "remindersMigrated", "notifyBreakSoon",
                                         "presetDurationsNormalized"};
    forEachField<SettingsModel>([&](const auto& field) {
        const QString name = QStringLiteral("ostrel.settings.") +
                             QString::fromUtf8(field.key.data(), std::ssize(field.key));
        const bool isThere = window->findChild<QWidget*>(name) != nullptr ||
                             field.key == "activePresetID" ||
                             window->findChild<QWidget*>(name + QStringLiteral(".1")) != nullptr;
        EXPECT_NE(isThere, own.contains(field.key)) << field.key;
    });
}

TEST_F(SettingsWindowTest, AnotherPresetIsAskedAboutWhileABreakIsNear) {
    open(kTiming);
    click("timing.preset.light");
    EXPECT_EQ(settings().activePresetID, "light") << "none is near";
    run(1740);
    ASSERT_EQ(engine().state()->eye.remainingSec, 60);
    click("timing.preset.strict");
    EXPECT_EQ(settings().activePresetID, "light");
    click("timing.cancel");
    click("timing.preset.strict");
    click("timing.switch");
    EXPECT_EQ(settings().activePresetID, "strict");
    EXPECT_EQ(engine().state()->eye.remainingSec, 900);
}

TEST_F(SettingsWindowTest, TheUsersOwnTimingIsPlannedWhileASliderMoves) {
    open(kTiming);
    run(0);
    auto* slider = find<QSlider>("eyeBreakIntervalSec");
    const int height = slider->mapTo(window, QPoint()).y();
    slider->setSliderDown(true);
    slider->setValue(660);
    EXPECT_TRUE(runUntil([this] { return planned.back().eyeIntervalSec == 660; }));
    EXPECT_EQ(settings().activePresetID, "standard");
    slider->setSliderDown(false);
    EXPECT_EQ(settings().activePresetID, "custom");
    runFor(std::chrono::milliseconds(200));
    EXPECT_EQ(slider->mapTo(window, QPoint()).y(), height) << "it stays under the pointer";
    EXPECT_TRUE(find("timing.preset.custom")->isChecked());

    const std::size_t seen = planned.size();
    open(kGeneral);
    store().update([](SettingsModel& s) { s.strictMode = true; });
    runFor(std::chrono::milliseconds(200));
    EXPECT_EQ(planned.size(), seen) << "no day for nobody";
}

TEST_F(SettingsWindowTest, WhatIsTypedCountsWhenItIsWhole) {
    open(kGeneral);
    auto* goal = find<QSpinBox>("dailyGoalBreaks");
    goal->selectAll();
    sendTo(*goal, Qt::Key_1, "1");
    sendTo(*goal, Qt::Key_2, "2");
    EXPECT_EQ(settings().dailyGoalBreaks, 6);
    sendTo(*goal, Qt::Key_Return);
    EXPECT_EQ(settings().dailyGoalBreaks, 12);

    store().update([](SettingsModel& s) { s.workHoursEnabled = true; });
    open(kWorkHours);
    auto* until = find<QTimeEdit>("workHoursEndMinute");
    until->setCurrentSection(QDateTimeEdit::HourSection);
    until->setSelectedSection(QDateTimeEdit::HourSection);
    sendTo(*until, Qt::Key_1, "1");
    EXPECT_EQ(settings().workHoursEndMinute, 1080);

    open(kBreaks);
    auto* messages = find<QPlainTextEdit>("customBreakMessages");
    messages->setPlainText("Breathe");
    store().update([](SettingsModel& s) { s.strictMode = true; });
    EXPECT_EQ(messages->toPlainText(), "Breathe") << "not yet stored, and not taken away";
    EXPECT_TRUE(runUntil([this] { return settings().customBreakMessages.size() == 1; }));
    messages->setPlainText("Breathe\nLook up");
    find<QSlider>("overlayDimOpacity")->setValue(50);
    delete std::exchange(window, nullptr);
    EXPECT_EQ(settings().customBreakMessages.size(), 2U) << "closed at once";
    EXPECT_EQ(settings().overlayDimOpacity, 0.5);
}

TEST_F(SettingsWindowTest, ControlsFollowWhoeverChangesTheSettings) {
    for (int page = 0; page < kPages; ++page) {
        open(page);
    }
    store().update([](SettingsModel& s) {
        s.disableSkipPenalty = true;
        s.idleThresholdSec = 77;
        s.eyeBreakIntervalSec = 100;
        s.activePresetID = "mine";
        s.workDays = {1};
    });
    EXPECT_FALSE(find("disableSkipPenalty")->isChecked()) << "said the other way round";
    EXPECT_EQ(find<QComboBox>("idleThresholdSec")->currentText(), "1 min 17 s");
    EXPECT_EQ(find<QSlider>("eyeBreakIntervalSec")->value(), 600) << "the nearest it can show";
    EXPECT_EQ(settings().eyeBreakIntervalSec, 100) << "showing it changes nothing";
    EXPECT_TRUE(find("workDays.1")->isChecked());
    EXPECT_FALSE(find("workDays.2")->isChecked());
}

TEST_F(SettingsWindowTest, TheRecorderTakesOnlyWhatIsFreeAndHasTheKeysForItself) {
    open(kShortcuts);
    auto* recorder = find<ChordRecorder>("startBreakHotkey");
    const auto press = [&](std::uint32_t keyCode, int key, Qt::KeyboardModifiers modifiers) {
        QKeyEvent event(QEvent::KeyPress, key, modifiers, keyCode, 0, 0);
        QCoreApplication::sendEvent(recorder, &event);
    };
    click("startBreakHotkey");
    EXPECT_FALSE(environment.hotkeyRouter()->isActive());
    const HotkeyChord before = settings().startBreakHotkey;
    press(35, Qt::Key_P, Qt::ControlModifier | Qt::MetaModifier);
    EXPECT_EQ(recorder->remark()->text(), Texts::of("settings.shortcuts.equal"));
    press(49, Qt::Key_Space, Qt::MetaModifier);
    EXPECT_EQ(recorder->remark()->text(), "Conflicts with Spotlight");
    EXPECT_EQ(settings().startBreakHotkey, before);
    press(40, Qt::Key_K, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_EQ(settings().startBreakHotkey, (HotkeyChord{40, 4096 + 2048, "⌃⌥K"}));
    EXPECT_EQ(recorder->text(), "Ctrl+Alt+K");
    EXPECT_TRUE(environment.hotkeyRouter()->isActive());
}

TEST_F(SettingsWindowTest, ProgramsAreShownByNameAndOfferedOnce) {
    open(kPresence);
    store().update([](SettingsModel& settings) {
        settings.deferAppBundleIDs = {"org.example.Call", "com.other"};
    });
    const auto* list = find<QListWidget>("deferAppBundleIDs");
    EXPECT_EQ(list->item(0)->text(), "Call");
    EXPECT_EQ(list->item(1)->text(), "com.other") << "nobody knows its name";

    const auto offered = [this] {
        QMenu* menu = find<QPushButton>("deferAppBundleIDs.pick")->menu();
        Q_EMIT menu->aboutToShow();
        return menu->actions();
    };
    running = {"org.example.Call", "org.example.Pen & Ink"};
    ASSERT_EQ(offered().size(), 1);
    EXPECT_EQ(offered().front()->text(), "Pen && Ink");
    offered().front()->trigger();
    EXPECT_EQ(settings().deferAppBundleIDs.back(), "org.example.Pen & Ink");
    ASSERT_EQ(offered().size(), 1);
    EXPECT_FALSE(offered().front()->isEnabled()) << "no other one runs";
}

TEST_F(SettingsWindowTest, ResetAsksAndKeepsTheWelcomeAway) {
    open(kGeneral);
    engine().applyPreset(PresetCatalog::light());
    store().update([](SettingsModel& settings) { settings.hasOnboarded = true; });
    click("reset");
    click("reset.cancel");
    EXPECT_EQ(settings().activePresetID, "light");
    click("reset");
    click("reset.confirm");
    SettingsModel expected;
    expected.hasOnboarded = true;
    EXPECT_EQ(settings(), expected);
    EXPECT_EQ(engine().activeIntervalSec(BreakKind::eye), 1200);
}

TEST_F(SettingsWindowTest, WhatRunsAlongTheLinesTurnsWithThem) {
    inEveryLanguage([this](std::string_view language) {
        open(kBreaks);
        runFor(std::chrono::milliseconds(20));
        const QImage slider = find<QSlider>("overlayDimOpacity")->grab().toImage();
        const auto isFilled = [&slider](int x) {
            return slider.pixelColor(x, slider.height() / 2) ==
                   QApplication::palette().color(QPalette::Active, QPalette::Highlight);
        };
        constexpr int kInset = 4;
        const bool isRightToLeft = QGuiApplication::isRightToLeft();
        EXPECT_EQ(isFilled(kInset), !isRightToLeft) << language;
        EXPECT_EQ(isFilled(slider.width() - kInset), isRightToLeft) << language;
    });
}

TEST_F(SettingsWindowTest, EveryTextHasRoomInEveryLanguage) {
    expectRoomInEveryLanguage(*window, kPages, [this](int page) { open(page); });
}

}  // namespace
}  // namespace ostrel
