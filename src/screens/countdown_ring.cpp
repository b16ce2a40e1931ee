#include "screens/countdown_ring.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "screens/countdown_label.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

constexpr double kStroke = 0.014;  // of the ring's diameter
constexpr double kTimeHeight = 0.215;
constexpr double kLongTime = 0.17;  // of 100 minutes and more
constexpr double kGap = 0.05;       // left around the ring for its round ends
constexpr int kTrackAlpha = 34;
constexpr int kFullCircle = 360;

QColor faint(QColor colour, int alpha) {
    colour.setAlpha(alpha);
    return colour;
}

// Digits in cells of one width, so that the time does not shiver whatever font it is in.
void drawTabular(QPainter& painter, const QRectF& area, const QString& text) {
    const QFontMetricsF metrics(painter.font());
    double digitWidth = 0.0;
    for (char16_t digit = u'0'; digit <= u'9'; ++digit) {
        digitWidth = std::max(digitWidth, metrics.horizontalAdvance(QChar(digit)));
    }
    const auto cell = [&](QChar character) {
        return character.isDigit() ? digitWidth : metrics.horizontalAdvance(character);
    };
    double width = 0.0;
    for (const QChar character : text) {
        width += cell(character);
    }
    double x = area.center().x() - width / 2;
    const double baseline = area.center().y() + metrics.capHeight() / 2;
    for (const QChar character : text) {
        const double inset = (cell(character) - metrics.horizontalAdvance(character)) / 2;
        // The colon belongs at the middle of the figures, not on their line.
        const double lift =
            character.isDigit() ? 0.0 : (metrics.capHeight() - metrics.xHeight()) / 2;
        painter.drawText(QPointF(x + inset, baseline - lift), QString(character));
        x += cell(character);
    }
}

}  // namespace

CountdownRing::CountdownRing(const OverlayLook& look, QWidget* parent)
    : QLabel(parent), look_(look) {}

void CountdownRing::setFace(Face face) {
    if (face != face_) {
        face_ = face;
        update();
    }
}

void CountdownRing::setTime(std::int64_t remainingSec, std::int64_t totalSec) {
    if (remainingSec == remainingSec_ && totalSec == totalSec_) {
        return;
    }
    remainingSec_ = remainingSec;
    totalSec_ = totalSec;
    setAccessibleName(spokenTime(remainingSec));
    update();
}

QString CountdownRing::spokenTime(std::int64_t remainingSec) {
    constexpr std::int64_t kMinute = 60;
    constexpr std::int64_t kStep = 10;
    if (remainingSec <= 0) {
        return Texts::of("overlay.time.ended");
    }
    if (remainingSec > kMinute) {
        return Texts::of("overlay.time.minutes_left %lld", {(remainingSec - 1) / kMinute + 1});
    }
    if (remainingSec > kMinute - kStep) {
        return Texts::of("overlay.time.one_minute_left");
    }
    return Texts::of("overlay.time.seconds_left %lld", {((remainingSec - 1) / kStep + 1) * kStep});
}

void CountdownRing::paintEvent(QPaintEvent*) {
    if (look_.opacity <= 0.0) {
        return;
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(look_.opacity);
    if (face_ == Face::ring) {
        paintRing(painter);
    }
    paintTime(painter);
}

void CountdownRing::paintRing(QPainter& painter) const {
    const double diameter = std::min(width(), height());
    const double stroke = diameter * kStroke;
    const double inset = diameter * kGap / 2;
    const QRectF circle = QRectF(rect()).adjusted(inset, inset, -inset, -inset);

    const bool hasEnded = remainingSec_ <= 0;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(faint(look_.text, kTrackAlpha), stroke));
    painter.drawEllipse(circle);
    const double share =
        hasEnded || totalSec_ <= 0
            ? 1.0
            : std::min(static_cast<double>(remainingSec_) / static_cast<double>(totalSec_), 1.0);
    painter.setPen(QPen(look_.accent, stroke, Qt::SolidLine, Qt::RoundCap));
    if (share >= 1.0) {
        painter.drawEllipse(circle);
        return;
    }
    QPainterPath arc;
    arc.arcMoveTo(circle, kFullCircle / 4.0);
    arc.arcTo(circle, kFullCircle / 4.0, -share * kFullCircle);
    painter.drawPath(arc);
}

void CountdownRing::paintTime(QPainter& painter) const {
    const QString time = countdownLabel(remainingSec_);
    QFont font = look_.font(1.0, QFont::Light);
    const double height = time.size() > 5 ? kLongTime : kTimeHeight;
    font.setPixelSize(std::max(8, static_cast<int>(std::min(width(), this->height()) * height)));
    painter.setFont(font);
    painter.setPen(remainingSec_ <= 0 ? look_.accent : look_.text);
    drawTabular(painter, QRectF(rect()), time);
}

}  // namespace ostrel
