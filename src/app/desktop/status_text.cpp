#include "app/desktop/status_text.h"

#include <QDateTime>
#include <QStringList>
#include <cmath>

#include "app/control/control_report.h"
#include "app/control/control_status.h"
#include "base/checked_seconds.h"
#include "screens/countdown_label.h"
#include "screens/texts/texts.h"
#include "screens/texts/time_format.h"

namespace ostrel::StatusText {
namespace {

using State = ControlStatus::State;

QString timeOfDay(const std::string& isoTime) {
    const QDateTime time =
        QDateTime::fromString(QString::fromStdString(isoTime), Qt::ISODateWithMs).toLocalTime();
    return Texts::timeOfDay(time.time());
}

QString breakText(const ControlStatus::OnScreen& session) {
    const QString left = countdownLabel(session.remainingSec);
    return session.kind == BreakKind::eye ? Texts::of("cli.status.break.eye %@", {left})
                                          : Texts::of("cli.status.break.body %@", {left});
}

QString heldText(BreakKind kind) {
    return Texts::of(kind == BreakKind::eye ? "cli.status.held.eye" : "cli.status.held.body");
}

QString stateText(const ControlStatus& status) {
    if (status.breakOnScreen) {
        return breakText(*status.breakOnScreen);
    }
    switch (status.state) {
        case State::off:
            return Texts::of("menubar.status.disabled");
        case State::paused:
            return Texts::of("state.paused");
        case State::away:
        case State::running:
            break;
    }
    if (status.heldBreak) {
        return heldText(*status.heldBreak);
    }
    if (status.state == State::away) {
        return Texts::of("menubar.status.away");
    }
    return Texts::of(status.strictMode ? "menubar.status.strict_active" : "menubar.tooltip.on");
}

QString pauseText(const ControlStatus& status) {
    if (status.pauseReasons.contains(PauseReason::user)) {
        return status.pausedUntil
                   ? Texts::of("menubar.pause.until %@", {timeOfDay(*status.pausedUntil)})
                   : Texts::of("menubar.pause.indefinite_state");
    }
    const bool isFocus = status.pauseReasons.contains(PauseReason::focus);
    return Texts::of(isFocus ? "menubar.pause.focus" : "menubar.pause.schedule");
}

QString nextEye(const ControlStatus& status) {
    return Texts::of("menubar.status.next_eye %@", {countdownLabel(status.eye.remainingSec)});
}

QString nextBody(const ControlStatus& status) {
    return Texts::of("menubar.status.next_body %@", {countdownLabel(status.body.remainingSec)});
}

void addCountdowns(const ControlStatus& status, QStringList& all) {
    all << (status.eyeJoinsBody ? Texts::of("menubar.status.eye_joins_body") : nextEye(status))
        << nextBody(status);
    if (status.penaltySec > 0) {
        all << Texts::of("cli.status.penalty %lld", {status.penaltySec});
    }
    all << Texts::of(status.canPostpone ? "cli.status.postpone_left" : "toast.postpone.none_left");
}

void addToday(const ControlStatus& status, QStringList& all) {
    const std::int64_t taken =
        addSec(status.today.eyeBreaksCompleted, status.today.bodyBreaksCompleted);
    all << (taken == 0
                ? Texts::of("menubar.today.none")
                : Texts::of("menubar.today.completed %lld %lld", {taken, status.dailyGoalBreaks}));
    if (status.today.skips > 0) {
        all << Texts::of("menubar.today.skipped %lld", {status.today.skips});
    }
    if (status.streakDays > 0) {
        all << Texts::of("cli.status.streak %lld", {status.streakDays});
    }
}

std::string joined(const QStringList& all) {
    return all.join(QLatin1Char('\n')).toStdString() + '\n';
}

bool isCounting(const ControlStatus& status) {
    return status.state == State::running || status.state == State::away;
}

}  // namespace

std::string lines(const ControlStatus& status) {
    QStringList all{stateText(status)};
    if (status.state == State::paused) {
        // A break can be started in a pause; the first line is its own then.
        if (status.breakOnScreen) {
            all << Texts::of("state.paused");
        }
        all << pauseText(status);
    } else if (isCounting(status)) {
        addCountdowns(status, all);
    }
    addToday(status, all);
    return joined(all);
}

std::string line(const ControlStatus& status) {
    const bool isOrdinary =
        status.state == State::running && !status.breakOnScreen && !status.heldBreak;
    if (!isOrdinary) {
        return stateText(status).toStdString();
    }
    return (status.next == BreakKind::eye ? nextEye(status) : nextBody(status)).toStdString();
}

std::string compact(const ControlStatus& status) {
    if (status.breakOnScreen) {
        return Texts::of("cli.compact.break %@",
                         {countdownLabel(status.breakOnScreen->remainingSec)})
            .toStdString();
    }
    switch (status.state) {
        case State::off:
            return Texts::of("cli.compact.off").toStdString();
        case State::paused:
            return Texts::of("cli.compact.paused").toStdString();
        case State::away:
        case State::running:
            break;
    }
    if (status.heldBreak) {
        return Texts::of("cli.compact.held").toStdString();
    }
    if (status.state == State::away) {
        return Texts::of("cli.compact.away").toStdString();
    }
    const std::int64_t nearestSec = std::min(status.eye.remainingSec, status.body.remainingSec);
    return countdownLabel(addSec(nearestSec, status.penaltySec)).toStdString();
}

std::string lines(const ControlReport& report) {
    constexpr double kPercent = 100;
    const auto title = [range = report.range] {
        switch (range) {
            case ReportSummaryView::Range::weekly:
                return Texts::of("cli.report.weekly");
            case ReportSummaryView::Range::monthly:
                return Texts::of("cli.report.monthly");
            case ReportSummaryView::Range::full:
                break;
        }
        return Texts::of("cli.report.full");
    };
    return joined(
        {title(),
         Texts::of("cli.report.eye %lld", {addSec(report.eyeCompleted, report.eyeFadedOut)}),
         Texts::of("cli.report.body %lld", {addSec(report.bodyCompleted, report.bodyFadedOut)}),
         Texts::of("cli.report.skip_rate %lld",
                   {std::int64_t{std::llround(report.skipRate * kPercent)}}),
         Texts::of("cli.report.postponed %lld", {report.postponements}),
         Texts::of("cli.report.held %lld", {report.held}),
         Texts::of("cli.report.dropped %lld", {report.dropped}),
         Texts::of("cli.report.credited %lld", {report.credited}),
         Texts::of("cli.report.penalty %lld", {report.avgPenaltySec})});
}

}  // namespace ostrel::StatusText
