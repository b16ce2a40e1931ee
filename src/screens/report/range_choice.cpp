#include "screens/report/range_choice.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QPainter>
#include <QRadioButton>

#include "screens/colours.h"
#include "screens/controls/window_look.h"
#include "screens/identifier.h"
#include "screens/report/accessible_chart.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

constexpr int kHeight = 28;
constexpr int kSide = 16;  // left and right of the words
constexpr int kInset = 3;  // of a segment in the track
constexpr double kCorner = 6;

QColor mixed(double share) {
    const QPalette colours = QApplication::palette();
    return Colours::between(colours.color(QPalette::Active, QPalette::Base),
                            colours.color(QPalette::Active, QPalette::WindowText), share);
}

// A radio button that is drawn as a segment of a track.
class Segment : public QRadioButton {
  public:
    explicit Segment(const QString& text) : QRadioButton(text) {
        setCursor(Qt::PointingHandCursor);
        setAttribute(Qt::WA_Hover);
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    }

    [[nodiscard]] QSize sizeHint() const override {
        return {fontMetrics().horizontalAdvance(text()) + 2 * kSide, kHeight + 2 * kInset};
    }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    [[nodiscard]] bool hitButton(const QPoint& position) const override {
        return rect().contains(position);
    }

    void paintEvent(QPaintEvent* /*event*/) override {
        const QPalette colours = QApplication::palette();
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QRectF box = QRectF(rect()).adjusted(kInset, kInset, -kInset, -kInset);
        painter.setPen(Qt::NoPen);
        if (isChecked()) {
            painter.setBrush(WindowLook::accent(colours));
            painter.drawRoundedRect(box, kCorner - 1, kCorner - 1);
        } else if (underMouse()) {
            painter.setBrush(mixed(0.12));
            painter.drawRoundedRect(box, kCorner - 1, kCorner - 1);
        }
        const QColor ink =
            isChecked() ? colours.color(QPalette::Active, QPalette::HighlightedText) : mixed(0.85);
        if (hasFocus()) {
            painter.setBrush(Qt::NoBrush);
            painter.setPen(QPen(ink, 1.5));
            painter.drawRoundedRect(box.adjusted(2.5, 2.5, -2.5, -2.5), kCorner - 2, kCorner - 2);
        }
        painter.setPen(ink);
        painter.drawText(box, Qt::AlignCenter, text());
    }
};

}  // namespace

RangeChoice::RangeChoice(Range chosen, const std::function<void(Range)>& onChoice) {
    installAccessibleChart();
    identify(this, QStringLiteral("ostrel.report.range"));
    setAccessibleName(Texts::of("report.range.name"));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    for (const Range range : {Range::weekly, Range::monthly, Range::full}) {
        auto* segment =
            new Segment(Texts::of("report.range.days %lld", {ReportSummaryView::days(range)}));
        identify(segment,
                 QStringLiteral("ostrel.report.range.%1").arg(ReportSummaryView::days(range)));
        segment->setChecked(range == chosen);
        layout->addWidget(segment);
        connect(segment, &QRadioButton::toggled, this, [range, onChoice](bool isChosen) {
            if (isChosen) {
                onChoice(range);
            }
        });
    }
}

void RangeChoice::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(mixed(0.14), 1));
    painter.setBrush(mixed(0.05));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kCorner + 1,
                            kCorner + 1);
}

}  // namespace ostrel
