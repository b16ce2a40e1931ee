#include "screens/report/day_chart.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLocale>
#include <QPainter>
#include <QStyle>
#include <algorithm>
#include <cmath>

#include "screens/colours.h"
#include "screens/controls/window_look.h"
#include "screens/identifier.h"
#include "screens/report/accessible_chart.h"
#include "screens/report/report_words.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

constexpr int kHeight = 208;
constexpr int kAxis = 30;   // for the numbers, at the leading side
constexpr int kDates = 26;  // below
constexpr int kTop = 8;
constexpr int kTextSize = 11;
constexpr int kLines = 4;  // of the axis, at most
constexpr std::size_t kWeek = 7;

// 1, 2, 5, 10, 20, 50 and so on.
std::int64_t stepFor(std::int64_t highest) {
    std::int64_t step = 1;
    for (int i = 0; highest > step * kLines && i < 50; ++i) {
        step = i % 3 == 1 ? step / 2 * 5 : step * 2;
    }
    return step;
}

QColor quiet(double share) {
    const QPalette colours = QApplication::palette();
    return Colours::between(colours.color(QPalette::Active, QPalette::Base),
                            colours.color(QPalette::Active, QPalette::WindowText), share);
}

QFont small(QFont font, QFont::Weight weight = QFont::Normal) {
    font.setPixelSize(kTextSize);
    font.setWeight(weight);
    return font;
}

}  // namespace

DayChart::DayChart(std::function<void(const QString&)> tell, QWidget* parent)
    : QWidget(parent), tell_(std::move(tell)) {
    installAccessibleChart();
    identify(this, QStringLiteral("ostrel.report.chart"));
    setAccessibleName(Texts::of("report.chart.name"));
    setAccessibleDescription(Texts::of("report.chart.hint"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize DayChart::sizeHint() const {
    return {kHeight * 2, kHeight};
}

void DayChart::show(const ReportData& report) {
    // Whoever has gone to a day stays there while its figures change.
    const bool isAsLong = days_.size() == report.days.size();
    const bool isChoiceKept =
        isAsLong && (days_.front().day == report.days.front().day || bars_[chosen_]->hasFocus());
    days_ = report.days;
    const auto highest =
        std::ranges::max(days_, {}, [](const ReportDay& day) { return day.total(); }).total();
    const std::int64_t most = std::max(highest, report.goal);
    step_ = stepFor(most);
    scale_ = {(most + step_ - 1) / step_ * step_, report.goal};
    makeBars(days_.size());
    for (std::size_t i = 0; i < days_.size(); ++i) {
        bars_[i]->show(days_[i], scale_, ReportWords::ofDay(days_[i], days_.back().day));
    }
    choose(isChoiceKept ? chosen_ : days_.size() - 1);
    layOut();
    update();
}

void DayChart::makeBars(std::size_t count) {
    chosen_ = std::min(chosen_, count - 1);
    while (bars_.size() > count) {
        DayBar* spare = bars_.back();
        bars_.pop_back();
        delete spare;
    }
    while (bars_.size() < count) {
        bars_.push_back(new DayBar(this));
        identify(bars_.back(), QStringLiteral("ostrel.report.day.%1").arg(bars_.size()));
        bars_.back()->installEventFilter(this);
        bars_.back()->setVisible(true);
    }
}

void DayChart::choose(std::size_t index) {
    chosen_ = index;
    for (std::size_t i = 0; i < bars_.size(); ++i) {
        bars_[i]->setChoice(i == index ? DayBar::Choice::chosen : DayBar::Choice::no);
    }
    tell_(bars_[index]->accessibleName());
}

bool DayChart::eventFilter(QObject* watched, QEvent* event) {
    const auto found = std::ranges::find(bars_, watched);
    if (found != bars_.end()) {
        if (event->type() == QEvent::FocusIn) {
            choose(static_cast<std::size_t>(found - bars_.begin()));
        } else if (event->type() == QEvent::HoverEnter) {
            tell_((*found)->accessibleName());
        } else if (event->type() == QEvent::HoverLeave) {
            tell_(bars_[chosen_]->accessibleName());
        }
    }
    return QWidget::eventFilter(watched, event);
}

void DayChart::keyPressEvent(QKeyEvent* event) {
    if (const auto next = dayReachedBy(event->key())) {
        choose(*next);
        bars_[*next]->setFocus(Qt::OtherFocusReason);
    } else {
        QWidget::keyPressEvent(event);
    }
}

std::optional<std::size_t> DayChart::dayReachedBy(int key) const {
    const std::size_t last = bars_.size() - 1;
    switch (key) {
        case Qt::Key_Left:
        case Qt::Key_Right: {
            const bool isLater = (key == Qt::Key_Right) != isRightToLeft();
            return isLater ? std::min(chosen_ + 1, last) : std::max<std::size_t>(chosen_, 1) - 1;
        }
        case Qt::Key_Home:
            return 0;
        case Qt::Key_End:
            return last;
        default:
            return std::nullopt;
    }
}

void DayChart::resizeEvent(QResizeEvent* /*event*/) {
    layOut();
}

void DayChart::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LayoutDirectionChange) {
        layOut();
    }
    QWidget::changeEvent(event);
}

QRect DayChart::plot() const {
    const QRect leftToRight = rect().adjusted(kAxis, kTop, 0, -kDates);
    return QStyle::visualRect(layoutDirection(), rect(), leftToRight);
}

double DayChart::slotWidth() const {
    return static_cast<double>(plot().width()) / static_cast<double>(bars_.size());
}

double DayChart::centreOf(std::size_t index) const {
    const double along = slotWidth() * (static_cast<double>(index) + 0.5);
    const QRectF area = plot();
    return isRightToLeft() ? area.right() - along : area.left() + along;
}

void DayChart::layOut() {
    const QRect area = plot();
    for (std::size_t i = 0; i < bars_.size(); ++i) {
        const double left = centreOf(i) - slotWidth() / 2;
        const int from = static_cast<int>(std::lround(left));
        const int to = static_cast<int>(std::lround(left + slotWidth()));
        bars_[i]->setGeometry(from, area.top(), to - from, area.height());
    }
}

void DayChart::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    paintAxis(painter);
    paintDates(painter);
}

void DayChart::paintAxis(QPainter& painter) const {
    const QRect area = plot();
    painter.setFont(small(font()));
    for (std::int64_t count = 0; count <= scale_.top; count += step_) {
        const int y = static_cast<int>(
            std::lround(area.bottom() + 1 - DayBar::heightOf(count, scale_, area.height())));
        painter.setPen(quiet(count == 0 ? 0.3 : 0.1));
        painter.drawLine(area.left(), y, area.right(), y);
        const QRect box = QStyle::visualRect(layoutDirection(), rect(),
                                             QRect(0, y - kTextSize, kAxis - 8, 2 * kTextSize));
        painter.setPen(quiet(0.66));
        painter.drawText(
            box,
            (isRightToLeft() ? int{Qt::AlignLeft} : int{Qt::AlignRight}) | int{Qt::AlignVCenter},
            QLocale().toString(static_cast<qlonglong>(count)));
    }
}

QString DayChart::dateLabel(std::size_t index) const {
    return days_.size() <= kWeek
               ? ReportWords::shortWeekday(days_[index].day)
               : ReportWords::dayAndMonth(days_[index].day, ReportWords::Month::abbreviated);
}

// Whole weeks, as many as the dates need not to touch.
std::size_t DayChart::daysBetweenDates() const {
    if (days_.size() <= kWeek) {
        return 1;
    }
    constexpr int kApart = 14;
    const QFontMetrics metrics(small(font(), QFont::DemiBold));
    int widest = 0;
    for (std::size_t i = 0; i < days_.size(); ++i) {
        widest = std::max(widest, metrics.horizontalAdvance(dateLabel(i)));
    }
    const double weekWidth = slotWidth() * static_cast<double>(kWeek);
    return kWeek *
           static_cast<std::size_t>(std::max(1.0, std::ceil((widest + kApart) / weekWidth)));
}

void DayChart::paintDates(QPainter& painter) const {
    const std::size_t apart = daysBetweenDates();
    const std::size_t today = days_.size() - 1;
    for (std::size_t age = 0; age < days_.size(); age += apart) {
        painter.setFont(small(font(), age == 0 ? QFont::Bold : QFont::Normal));
        painter.setPen(quiet(age == 0 ? 1.0 : 0.66));
        const QString label = dateLabel(today - age);
        const double wide = painter.fontMetrics().horizontalAdvance(label) + 2;
        const double left =
            std::clamp(centreOf(today - age) - wide / 2, 0.0, std::max(width() - wide, 0.0));
        painter.drawText(QRectF(left, height() - kDates, wide, kDates), Qt::AlignCenter, label);
    }
}

}  // namespace ostrel
