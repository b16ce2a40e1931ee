#include "screens/status_menu.h"

#include <QDateTime>
#include <QLocale>
#include <cmath>
#include <utility>

#include "core/engine/timer_engine.h"
#include "core/settings/settings_store.h"
#include "menubar/menu_bar_formatter.h"
#include "overlay/overlay_manager.h"
#include "screens/texts.h"

namespace ostrel {
namespace {

QString countdown(std::int64_t seconds) {
    return QString::fromStdString(MenuBarFormatter::countdownText(seconds));
}

QString timeOfDay(WallTime time) {
    const auto sinceReference =
        static_cast<std::int64_t>(std::llround(secondsSinceReference(time)));
    const QDateTime local =
        QDateTime::fromSecsSinceEpoch(sinceReference + WallClock::kUnixOffsetSec);
    // Some locales have seconds even in the short form.
    const QString format = QLocale().timeFormat(QLocale::ShortFormat).remove(QStringLiteral(":ss"));
    return QLocale().toString(local.time(), format);
}

}  // namespace

StatusMenu::StatusMenu(Services services)
    : services_(std::move(services)), firstLine_(addLine()), secondLine_(addLine()) {
    addSeparator();
    addBreaks();
    addSeparator();
    addPauses();
    addSeparator();
    addAction(Texts::of("menubar.action.quit"), this, [this] { services_.quit(); });
    connect(this, &QMenu::aboutToShow, this, [this] { refresh(); });
    refresh();
}

QAction* StatusMenu::addLine() {
    QAction* line = addAction(QString());
    line->setEnabled(false);
    return line;
}

void StatusMenu::addBreaks() {
    startEye_ = addAction(Texts::of("menubar.action.start_eye"), this,
                          [this] { services_.timerEngine.startNow(BreakKind::eye); });
    startBody_ = addAction(Texts::of("menubar.action.start_body"), this,
                           [this] { services_.timerEngine.startNow(BreakKind::body); });
}

void StatusMenu::addPauses() {
    pauses_ = addMenu(Texts::of("menubar.action.pause"));
    const std::pair<std::string_view, PauseDuration> choices[] = {
        {"menubar.action.pause_30_minutes", PauseDuration::forMinutes(30)},
        {"menubar.action.pause_1_hour", PauseDuration::forMinutes(60)},
        {"menubar.action.pause_2_hours", PauseDuration::forMinutes(120)},
        {"menubar.action.pause_until_morning", PauseDuration::untilNextMorning()},
        {"menubar.action.pause_indefinitely", PauseDuration::indefinite()},
    };
    for (const auto& [key, duration] : choices) {
        pauses_->addAction(Texts::of(key), this, [this, length = duration] {
            services_.timerEngine.pauseByUser(length);
        });
    }
    resume_ = addAction(Texts::of("menubar.action.resume"), this,
                        [this] { services_.timerEngine.endAllPauses(); });
}

void StatusMenu::refresh() {
    const TimerState& state = *services_.timerEngine.state();
    const QString stateLine = stateText(services_);
    const QString eyeLine =
        Texts::of("menubar.status.next_eye %@", {countdown(state.eye.remainingSec)});
    const QString bodyLine =
        Texts::of("menubar.status.next_body %@", {countdown(state.body.remainingSec)});
    firstLine_->setText(stateLine.isEmpty() ? eyeLine : stateLine);
    secondLine_->setText(bodyLine);
    secondLine_->setVisible(stateLine.isEmpty());

    const bool isBreakOnScreen = services_.overlayManager.activeSession()->has_value();
    startEye_->setEnabled(!isBreakOnScreen);
    startBody_->setEnabled(!isBreakOnScreen);
    const bool isPaused = services_.sessionStateStore.isPaused();
    const bool isEnabled = services_.settingsStore.settings()->ostrelEnabled;
    pauses_->menuAction()->setVisible(isEnabled && !isPaused);
    resume_->setVisible(isPaused);
}

QString StatusMenu::stateText(const Services& services) {
    const TimerState& state = *services.timerEngine.state();
    if (services.overlayManager.activeSession()->has_value()) {
        return Texts::of("menubar.status.on_screen");
    }
    if (!services.settingsStore.settings()->ostrelEnabled) {
        return Texts::of("menubar.status.off");
    }
    if (services.sessionStateStore.isPaused()) {
        return pauseText(*services.sessionStateStore.current());
    }
    if (services.timerEngine.isDeferring()) {
        return Texts::of("menubar.status.held");
    }
    return state.eye.isAway || state.body.isAway ? Texts::of("menubar.status.away") : QString();
}

// The user's own pause is the one to tell of: it is what "resume" is about.
QString StatusMenu::pauseText(const SessionStateModel& sessionState) {
    const auto& reasons = sessionState.pauseReasons;
    if (reasons.contains(PauseReason::user)) {
        return sessionState.userPauseUntil
                   ? Texts::of("menubar.pause.until %@", {timeOfDay(*sessionState.userPauseUntil)})
                   : Texts::of("menubar.pause.indefinite_state");
    }
    if (reasons.contains(PauseReason::focus)) {
        return Texts::of("menubar.pause.focus");
    }
    return Texts::of(reasons.contains(PauseReason::schedule) ? "menubar.pause.schedule"
                                                             : "state.paused");
}

}  // namespace ostrel
