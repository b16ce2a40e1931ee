#include "screens/settings/day_strip.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "screens/colours.h"
#include "screens/controls/page.h"
#include "screens/controls/window_look.h"
#include "screens/settings/bound_controls.h"
#include "screens/texts/texts.h"
#include "screens/texts/time_format.h"

namespace ostrel {
namespace {

constexpr std::int64_t kHourSec = 3600;
constexpr int kMinuteSec = 60;

}  // namespace

class DayStrip::Line : public QWidget {
  public:
    Line() { setFixedHeight(kHeight); }

    void show(DayPlan plan) {
        plan_ = std::move(plan);
        update();
    }

  protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QPalette colours = QApplication::palette();
        const QColor paper = colours.color(QPalette::Active, QPalette::Base);
        const QColor ink = colours.color(QPalette::Active, QPalette::WindowText);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Colours::between(paper, ink, 0.10));
        painter.drawRoundedRect(QRectF(0, 0, width(), kBar), 5, 5);
        if (plan_.lengthSec == 0) {
            return;
        }
        const QColor accent = WindowLook::accent(colours);
        for (const DayPlan::Break& pause : plan_.breaks) {
            const bool isBody = pause.kind == BreakKind::body;
            painter.setBrush(isBody ? accent : Colours::between(paper, accent, 0.55));
            painter.drawRoundedRect(placeOf(pause), 2, 2);
        }
        paintHours(painter, Colours::between(paper, ink, 0.66));
    }

  private:
    static constexpr int kBar = 34;
    static constexpr int kHeight = 56;

    [[nodiscard]] double across(std::int64_t seconds) const {
        const double share =
            static_cast<double>(seconds) / static_cast<double>(plan_.lengthSec) * width();
        return isRightToLeft() ? width() - share : share;
    }

    // Body breaks stand taller; what is too short to be seen gets a width that can be.
    [[nodiscard]] QRectF placeOf(const DayPlan::Break& pause) const {
        constexpr double kLeastWidth = 3;
        const double inset = pause.kind == BreakKind::body ? 3 : 9;
        const double from = across(pause.atSec);
        const double to = across(pause.atSec + pause.durationSec);
        const double width = std::max(std::abs(to - from), kLeastWidth);
        return {std::min(from, to), inset, width, kBar - 2 * inset};
    }

    [[nodiscard]] std::int64_t hoursBetweenLabels() const {
        constexpr std::int64_t kLongDaySec = 10 * kHourSec;
        return plan_.lengthSec > kLongDaySec ? 4 : 2;
    }

    void paintHours(QPainter& painter, const QColor& colour) const {
        QFont small = font();
        small.setPixelSize(11);
        painter.setFont(small);
        painter.setPen(colour);
        for (std::int64_t at = 0; at <= plan_.lengthSec; at += hoursBetweenLabels() * kHourSec) {
            const QString text = Texts::timeOfMinute(plan_.startMinute + at / kMinuteSec);
            const int room = painter.fontMetrics().horizontalAdvance(text) + 2;
            const double left =
                std::clamp(across(at) - room / 2.0, 0.0, static_cast<double>(width() - room));
            painter.drawText(QRectF(left, kBar + 4, room, kHeight - kBar - 4), Qt::AlignCenter,
                             text);
        }
    }

    DayPlan plan_;
};

DayStrip::DayStrip()
    : line_(new Line),
      eye_(makeLabel({}, "hint")),
      body_(makeLabel({}, "hint")),
      rest_(makeLabel({}, "hint")) {
    Bound::setName(this, "day");
    setAccessibleName(Texts::of("settings.timing.day"));
    auto* down = new QVBoxLayout(this);
    down->setContentsMargins(0, 0, 0, 0);
    down->addWidget(line_);
    auto* sums = new QHBoxLayout;
    for (QLabel* label : {eye_, body_, rest_}) {
        label->setWordWrap(false);
        sums->addWidget(label);
    }
    sums->addStretch();
    down->addLayout(sums);
}

void DayStrip::plan(std::function<DayPlan()> plan) {
    plan_ = std::move(plan);
    work();
}

void DayStrip::showEvent(QShowEvent* /*event*/) {
    work();
}

void DayStrip::work() {
    if (plan_ && isVisible()) {
        show(std::exchange(plan_, nullptr)());
    }
}

void DayStrip::show(DayPlan plan) {
    std::int64_t restSec = 0;
    std::int64_t bodyBreaks = 0;
    for (const DayPlan::Break& pause : plan.breaks) {
        restSec += pause.durationSec;
        bodyBreaks += pause.kind == BreakKind::body ? 1 : 0;
    }
    eye_->setText(
        Texts::of("settings.timing.day.eye %lld", {std::ssize(plan.breaks) - bodyBreaks}));
    body_->setText(Texts::of("settings.timing.day.body %lld", {bodyBreaks}));
    rest_->setText(Texts::of("settings.timing.day.rest %lld", {restSec / kMinuteSec}));
    line_->show(std::move(plan));
}

}  // namespace ostrel
