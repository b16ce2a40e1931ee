#include "screens/overlay_backdrop.h"

#include <QPainter>
#include <QRadialGradient>
#include <algorithm>

namespace ostrel {
namespace {

// The least share of the tint where the content is.
constexpr double kLeastCentreOpacity = 0.88;
constexpr double kCentreReach = 0.62;  // of the shorter side

QColor withOpacity(QColor colour, double opacity) {
    colour.setAlphaF(static_cast<float>(opacity));
    return colour;
}

// What has to be laid over `dim` to come to `wanted`.
double coverBeyond(double dim, double wanted) {
    return dim >= wanted ? 0.0 : 1.0 - (1.0 - wanted) / (1.0 - dim);
}

void copy(QPainter& painter, const QPixmap& from, const QRect& area) {
    const double ratio = from.devicePixelRatio();
    painter.drawPixmap(
        QRectF(area), from,
        QRectF(area.x() * ratio, area.y() * ratio, area.width() * ratio, area.height() * ratio));
}

}  // namespace

void OverlayBackdrop::prepare(QSize size, double devicePixelRatio, const OverlayLook& look,
                              double dimOpacity) {
    const double dim = std::clamp(dimOpacity, 0.0, 1.0);
    tinted_ = QPixmap(size * devicePixelRatio);
    tinted_.setDevicePixelRatio(devicePixelRatio);
    const QRect whole(QPoint(), size);
    if (picture_.isNull()) {
        tinted_.fill(Qt::transparent);
    }
    QPainter painter(&tinted_);
    if (!picture_.isNull()) {
        painter.drawPixmap(whole, picture_);
    }
    painter.fillRect(whole, withOpacity(look.tint, dim));

    const double more = coverBeyond(dim, kLeastCentreOpacity);
    if (more <= 0.0) {
        return;
    }
    const double reach = kCentreReach * std::min(size.width(), size.height());
    QRadialGradient shade(QRectF(whole).center(), reach);
    // Smooth at both ends: no edge can be seen.
    for (const auto& [at, share] :
         {std::pair{0.0, 1.0}, {0.5, 0.92}, {0.7, 0.66}, {0.85, 0.28}, {0.94, 0.07}, {1.0, 0.0}}) {
        shade.setColorAt(at, withOpacity(look.tint, more * share));
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(shade);
    painter.drawEllipse(QRectF(whole).center(), reach, reach);
}

void OverlayBackdrop::paint(QPainter& painter, const QRect& area) const {
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    copy(painter, tinted_, area);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

void OverlayBackdrop::paintDesktop(QPainter& painter, const QRect& area) const {
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    if (picture_.isNull()) {
        painter.fillRect(area, Qt::transparent);
    } else {
        copy(painter, picture_, area);
    }
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

}  // namespace ostrel
