#include "screens/status_icon.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "base/checked_seconds.h"
#include "screens/texts/time_format.h"

namespace ostrel::StatusIcon {
namespace {

using MenuBarFormatter::Status;

constexpr std::int64_t kMinute = 60;
constexpr std::int64_t kHour = 60;  // minutes
constexpr int kFullCircle = 360;
constexpr int kSides[] = {16, 22, 24, 32, 44, 48, 64};

const QColor kDisc(24, 28, 37);
const QColor kRim(255, 255, 255, 60);
const QColor kInk(244, 246, 250);
const QColor kQuiet(244, 246, 250, 120);
const QColor kAccent(146, 183, 235);
const QColor kWarning(242, 190, 110);

QString labelOf(std::int64_t shownSec) {
    if (shownSec < kMinute) {
        return QStringLiteral("%1").arg(std::max<std::int64_t>(shownSec, 0), 2, 10,
                                        QLatin1Char('0'));
    }
    const std::int64_t minutes = wholeMinutesUp(shownSec) / kMinute;
    return minutes < 100 ? QString::number(minutes)
                         : QStringLiteral("%1h").arg((minutes + kHour / 2) / kHour);
}

// From 0 to 1: of the whole minutes that the number tells.
double ringFraction(const MenuBarFormatter::Output& output, const Remaining& remaining) {
    const double fraction =
        output.nearest == MenuBarFormatter::Channel::eye ? output.eyeFraction : output.bodyFraction;
    const std::int64_t shownSec = addSec(remaining.nearestSec, remaining.penaltySec);
    if (shownSec < kMinute || remaining.nearestSec <= 0) {
        return fraction;
    }
    const auto told = static_cast<double>(wholeMinutesUp(shownSec) - remaining.penaltySec);
    return std::min(fraction * told / static_cast<double>(remaining.nearestSec), 1.0);
}

// Without a number in it the ring may be bolder.
void drawRing(QPainter& painter, const Face& face, double side) {
    const bool isBare =
        face.label.isEmpty() && (face.status == Status::running || face.status == Status::away);
    const double stroke = side * (isBare ? 0.18 : 0.095);
    const double inset = stroke / 2 + side * 0.055;
    const QRectF circle = QRectF(0, 0, side, side).adjusted(inset, inset, -inset, -inset);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(255, 255, 255, 46), stroke));
    painter.drawEllipse(circle);
    if (face.status == Status::off || face.ringSteps == 0) {
        return;
    }
    const QColor colour = face.status != Status::running ? kQuiet
                          : face.isLastMinute            ? kWarning
                                                         : kAccent;
    QPainterPath arc;
    arc.arcMoveTo(circle, kFullCircle / 4.0);
    arc.arcTo(circle, kFullCircle / 4.0, -double{kFullCircle} * face.ringSteps / Face::kRingSteps);
    painter.setPen(QPen(colour, stroke, Qt::SolidLine, Qt::FlatCap));
    painter.drawPath(arc);
}

void drawLabel(QPainter& painter, const Face& face, double side) {
    QFont font;
    font.setFamilies({QStringLiteral("Inter"), QStringLiteral("Cantarell"),
                      QStringLiteral("Noto Sans"), QStringLiteral("DejaVu Sans Condensed"),
                      QStringLiteral("DejaVu Sans")});
    font.setStretch(QFont::SemiCondensed);
    font.setWeight(QFont::Bold);
    font.setPixelSize(std::max(7, static_cast<int>(std::lround(side * 0.47))));
    painter.setFont(font);
    painter.setPen(face.status == Status::away ? kQuiet : face.isLastMinute ? kWarning : kInk);
    const QFontMetricsF metrics(font);
    const QRectF ink = metrics.tightBoundingRect(face.label);
    painter.drawText(QPointF(side / 2 - ink.center().x(), side / 2 - ink.center().y()), face.label);
}

void drawPause(QPainter& painter, double side) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(kInk);
    const double bar = side * 0.12;
    const double height = side * 0.36;
    for (const double x : {side / 2 - bar * 1.5, side / 2 + bar * 0.5}) {
        painter.drawRoundedRect(QRectF(x, (side - height) / 2, bar, height), bar / 4, bar / 4);
    }
}

void drawPower(QPainter& painter, double side) {
    const double radius = side * 0.2;
    const QRectF circle(side / 2 - radius, side / 2 - radius + side * 0.02, 2 * radius, 2 * radius);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(kQuiet, side * 0.085, Qt::SolidLine, Qt::RoundCap));
    QPainterPath arc;
    arc.arcMoveTo(circle, 130);
    arc.arcTo(circle, 130, 280);
    painter.drawPath(arc);
    painter.drawLine(QPointF(side / 2, side * 0.27), QPointF(side / 2, side * 0.47));
}

void drawSigns(QPainter& painter, const Face& face, double side) {
    drawRing(painter, face, side);
    if (face.status == Status::paused) {
        drawPause(painter, side);
    } else if (face.status == Status::off) {
        drawPower(painter, side);
    } else if (!face.label.isEmpty()) {
        drawLabel(painter, face, side);
    }
}

}  // namespace

std::int64_t wholeMinutesUp(std::int64_t seconds) {
    return ((seconds - 1) / kMinute + 1) * kMinute;
}

Face faceOf(const MenuBarFormatter::Output& output, const Remaining& remaining) {
    Face face;
    face.status = output.status;
    if (output.status == Status::off) {
        return face;
    }
    face.ringSteps =
        static_cast<int>(std::lround(ringFraction(output, remaining) * Face::kRingSteps));
    if (output.status != Status::paused) {
        const std::int64_t shownSec = addSec(remaining.nearestSec, remaining.penaltySec);
        face.label = Texts::localDigits(labelOf(shownSec));
        face.isLastMinute = shownSec < kMinute;
        face.penaltyPending = output.penaltyPending;
    }
    return face;
}

QPixmap draw(const Face& face, int side) {
    QPixmap picture(side, side);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(kRim, std::max(1.0, side / 32.0)));
    painter.setBrush(kDisc);
    painter.drawEllipse(QRectF(0.5, 0.5, side - 1.0, side - 1.0));
    drawSigns(painter, face, side);
    if (face.penaltyPending) {
        const double dot = side * 0.24;
        painter.setPen(QPen(kDisc, std::max(1.0, side * 0.05)));
        painter.setBrush(kWarning);
        painter.drawEllipse(QRectF(side - dot - 0.5, 0.5, dot, dot));
    }
    return picture;
}

QPixmap drawStencil(const Face& face, int side) {
    QPixmap picture(side, side);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    drawSigns(painter, face, side);
    return picture;
}

QIcon icon(const Face& face) {
    QIcon icon;
    for (const int side : kSides) {
        icon.addPixmap(draw(face, side));
    }
    return icon;
}

}  // namespace ostrel::StatusIcon
