#include "screens/status_menu.h"

#include <QApplication>
#include <QDateTime>
#include <QEvent>
#include <cmath>
#include <utility>

#include "base/checked_seconds.h"
#include "core/engine/timer_engine.h"
#include "core/settings/settings_store.h"
#include "menubar/menu_bar_context.h"
#include "menubar/menu_bar_session.h"
#include "overlay/overlay_manager.h"
#include "screens/colours.h"
#include "screens/countdown_label.h"
#include "screens/texts/texts.h"
#include "screens/texts/time_format.h"

namespace ostrel {
namespace {

using CardMode = MenuBarSessionDerivedState::CardMode;

QString timeOfDay(WallTime time) {
    const auto sinceReference =
        static_cast<std::int64_t>(std::llround(secondsSinceReference(time)));
    const QDateTime local =
        QDateTime::fromSecsSinceEpoch(sinceReference + WallClock::kUnixOffsetSec);
    return Texts::timeOfDay(local.time());
}

// The toolkit's own menus are cramped, and what only tells something cannot be read in them.
QString styleSheetFor(const QPalette& palette) {
    constexpr double kQuiet = 0.72;
    constexpr double kFaint = 0.16;
    const QColor paper = palette.color(QPalette::Active, QPalette::Base);
    const QColor ink = palette.color(QPalette::Active, QPalette::WindowText);
    return QStringLiteral(
               "QMenu { background: %1; border: 1px solid %2; padding: 6px 0; }"
               "QMenu::item { color: %3; padding: 6px 30px 6px 18px; background: transparent; }"
               "QMenu::item:disabled { color: %4; }"
               "QMenu::item:selected:enabled { background: %5; color: %6; }"
               "QMenu::separator { height: 1px; background: %2; margin: 6px 0; }")
        .arg(paper.name(), Colours::between(paper, ink, kFaint).name(), ink.name(),
             Colours::between(paper, ink, kQuiet).name(),
             palette.color(QPalette::Active, QPalette::Highlight).name(),
             palette.color(QPalette::Active, QPalette::HighlightedText).name());
}

MenuBarSession sessionOf(const StatusMenu::Services& services) {
    return {
        menuBarContext(services.timerEngine, services.sessionStateStore, services.settingsStore),
        *services.sessionStateStore.current(),
        *services.dailyCounter.model(),
        services.timerEngine.eyeJoinsBody(),
        services.timerEngine.isDeferring(),
        services.overlayManager.activeSession()->has_value(),
        services.workUntil()};
}

MenuBarSessionDerivedState stateOf(const StatusMenu::Services& services) {
    return derive(sessionOf(services), [](WallTime time) { return timeOfDay(time).toStdString(); });
}

}  // namespace

StatusMenu::StatusMenu(Services services)
    : services_(std::move(services)),
      statusLine_(addLine()),
      pauseDescription_(addLine()),
      nextEye_(addLine()),
      nextBody_(addLine()),
      remark_(addLine()) {
    addSeparator();
    addBreaks();
    addSeparator();
    addPauses();
    addSeparator();
    addToday();
    addSeparator();
    addWords(*this, "menubar.action.report", [this] { services_.openReport(); });
    addWords(*this, "menubar.action.settings", [this] { services_.openSettings(); });
    addWords(*this, "menubar.action.about", [this] { services_.openAbout(); });
    addSeparator();
    addWords(*this, "menubar.action.quit", [this] { services_.quit(); });
    retranslate();
    adoptPalette();
    connect(this, &QMenu::aboutToShow, this, [this] { refresh(); });
    ticks_ = services_.timerEngine.state().onChange([this](const auto&) {
        if (isVisible()) {
            refresh();
        }
    });
    refresh();
}

void StatusMenu::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange) {
        adoptPalette();
    } else if (event->type() == QEvent::LanguageChange) {
        retranslate();
        refresh();
    }
    QMenu::changeEvent(event);
}

// A style sheet changes the palette of its widget: the one to follow is the application's.
void StatusMenu::adoptPalette() {
    const QString sheet = styleSheetFor(QApplication::palette());
    if (sheet != styleSheet()) {
        setStyleSheet(sheet);
    }
}

QAction* StatusMenu::addLine() {
    QAction* line = addAction(QString());
    line->setEnabled(false);
    return line;
}

// One whose words depend on the language alone.
QAction* StatusMenu::addWords(QMenu& menu, std::string_view key, std::function<void()> act) {
    QAction* action = menu.addAction(QString(), this, std::move(act));
    words_.emplace_back(action, key);
    return action;
}

void StatusMenu::retranslate() {
    for (const auto& [action, key] : words_) {
        action->setText(Texts::of(key));
    }
    setAccessibleName(Texts::of("menubar.tooltip.default"));
}

void StatusMenu::addBreaks() {
    startEye_ = addWords(*this, "menubar.action.start_eye",
                         [this] { services_.timerEngine.startNow(BreakKind::eye); });
    startBody_ = addWords(*this, "menubar.action.start_body",
                          [this] { services_.timerEngine.startNow(BreakKind::body); });
}

void StatusMenu::addPauses() {
    pauses_ = addMenu(QString());
    words_.emplace_back(pauses_->menuAction(), "menubar.action.pause");
    const std::pair<std::string_view, PauseDuration> choices[] = {
        {"menubar.action.pause_30_minutes", PauseDuration::forMinutes(30)},
        {"menubar.action.pause_1_hour", PauseDuration::forMinutes(60)},
        {"menubar.action.pause_2_hours", PauseDuration::forMinutes(120)},
        {"menubar.action.pause_until_morning", PauseDuration::untilNextMorning()},
        {"menubar.action.pause_indefinitely", PauseDuration::indefinite()},
    };
    for (const auto& [key, duration] : choices) {
        addWords(*pauses_, key,
                 [this, length = duration] { services_.timerEngine.pauseByUser(length); });
    }
    resume_ =
        addWords(*this, "menubar.action.resume", [this] { services_.timerEngine.endAllPauses(); });
}

void StatusMenu::addToday() {
    today_ = addLine();
    skippedToday_ = addLine();
}

void StatusMenu::refresh() {
    const MenuBarSessionDerivedState state = stateOf(services_);
    statusLine_->setText(Texts::of(state.statusLine));
    pauseDescription_->setVisible(state.isPaused);
    pauseDescription_->setText(state.isPaused ? Texts::of(state.pauseDescription) : QString());
    refreshCountdowns(state);
    refreshToday(state);

    const bool isBreakOnScreen = services_.overlayManager.activeSession()->has_value();
    startEye_->setEnabled(!isBreakOnScreen);
    startBody_->setEnabled(!isBreakOnScreen);
    pauses_->menuAction()->setVisible(state.cardMode != CardMode::disabled && !state.isPaused);
    resume_->setVisible(state.isPaused);
}

void StatusMenu::refreshCountdowns(const MenuBarSessionDerivedState& state) {
    const TimerState& timers = *services_.timerEngine.state();
    const bool isCounting = state.cardMode == CardMode::running || state.cardMode == CardMode::away;
    nextEye_->setVisible(isCounting);
    nextEye_->setText(state.eyeJoinsBody ? Texts::of("menubar.status.eye_joins_body")
                                         : Texts::of("menubar.status.next_eye %@",
                                                     {countdownLabel(timers.eye.remainingSec)}));
    nextBody_->setVisible(isCounting);
    nextBody_->setText(
        Texts::of("menubar.status.next_body %@", {countdownLabel(timers.body.remainingSec)}));

    const bool isPaused = state.cardMode == CardMode::paused;
    const bool isLonger = isCounting && timers.eye.pendingPenaltySec > 0;
    remark_->setVisible(isPaused || isLonger);
    remark_->setText(
        Texts::of(isPaused ? "menubar.next.until_resume" : "menubar.next.penalty_reason"));
}

void StatusMenu::refreshToday(const MenuBarSessionDerivedState& state) {
    const DailyCounterModel& today = *services_.dailyCounter.model();
    const std::int64_t completed = addSec(today.eyeBreaksCompleted, today.bodyBreaksCompleted);
    today_->setText(
        state.emptyState
            ? Texts::of("menubar.today.none")
            : Texts::of("menubar.today.completed %lld %lld",
                        {completed, services_.settingsStore.settings()->dailyGoalBreaks}));
    skippedToday_->setVisible(today.skipsToday > 0);
    skippedToday_->setText(Texts::of("menubar.today.skipped %lld", {today.skipsToday}));
}

QString StatusMenu::stateText(const Services& services) {
    const MenuBarSession session = sessionOf(services);
    const MenuBarSessionDerivedState state = stateOf(services);
    if (state.cardMode == CardMode::running && !session.isHeld && !session.isOnScreen) {
        return {};
    }
    const QString line = Texts::of(state.statusLine);
    return state.isPaused && !session.isOnScreen
               ? line + QLatin1Char('\n') + Texts::of(state.pauseDescription)
               : line;
}

}  // namespace ostrel
