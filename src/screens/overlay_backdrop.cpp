#include "screens/overlay_backdrop.h"

#include <QPainter>
#include <QRadialGradient>
#include <algorithm>

namespace ostrel {
namespace {

// Of a white desktop this much has to be gone in the middle.
constexpr double kLeastCentreDimming = 0.88;

// How far the shade reaches, in half widths and half heights of the display: the actions at its
// foot are still within.
constexpr double kReachAcross = 1.06;
constexpr double kReachDown = 1.9;

// Up to this share of its reach the shade is even.
constexpr double kEven = 0.34;

// What has to be laid over `dim` to come to `wanted`.
double coverBeyond(double dim, double wanted) {
    return dim >= wanted ? 0.0 : 1.0 - (1.0 - wanted) / (1.0 - dim);
}

double smoothStep(double share) {
    return share * share * (3.0 - 2.0 * share);
}

}  // namespace

void OverlayBackdrop::setPicture(const QPixmap& picture) {
    picture_ = picture;
    kept_.clear();
}

void OverlayBackdrop::setTint(const QColor& tint, double dimOpacity) {
    tint_ = tint;
    dimOpacity_ = std::clamp(dimOpacity, 0.0, 1.0);
    kept_.clear();
}

void OverlayBackdrop::keep(std::span<const QRect> areas, QSize surface, double pixelRatio) {
    const auto isKept = [](const Kept& kept, const QRect& area) { return kept.area == area; };
    if (keptFor_ == surface &&
        std::equal(kept_.begin(), kept_.end(), areas.begin(), areas.end(), isKept)) {
        return;
    }
    keptFor_ = surface;
    kept_.clear();
    for (const QRect& area : areas) {
        QPixmap picture(area.size() * pixelRatio);
        picture.setDevicePixelRatio(pixelRatio);
        if (picture_.isNull()) {
            picture.fill(Qt::transparent);
        }
        QPainter painter(&picture);
        painter.translate(-area.topLeft());
        paintAnew(painter, area, surface);
        painter.end();
        kept_.push_back({area, picture});
    }
}

void OverlayBackdrop::paint(QPainter& painter, const QRect& area, QSize surface) const {
    const auto kept = std::find_if(kept_.begin(), kept_.end(),
                                   [&](const Kept& one) { return one.area.contains(area); });
    if (kept == kept_.end() || surface != keptFor_) {
        paintAnew(painter, area, surface);
        return;
    }
    const double ratio = kept->picture.devicePixelRatio();
    const QRect part = area.translated(-kept->area.topLeft());
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawPixmap(
        QRectF(area), kept->picture,
        QRectF(part.x() * ratio, part.y() * ratio, part.width() * ratio, part.height() * ratio));
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

void OverlayBackdrop::paintAnew(QPainter& painter, const QRect& area, QSize surface) const {
    paintDesktop(painter, area);
    QColor tint = tint_;
    tint.setAlphaF(static_cast<float>(dimOpacity_));
    painter.fillRect(area, tint);
    paintShade(painter, area, surface);
}

// Black, whatever the tint: a dark colour at low opacity has too few shades and shows as bands.
void OverlayBackdrop::paintShade(QPainter& painter, const QRect& area, QSize surface) const {
    const double shade = coverBeyond(dimOpacity_, kLeastCentreDimming);
    if (shade <= 0.0) {
        return;
    }
    QRadialGradient gradient(QPointF(), 1.0);
    constexpr int kStops = 16;
    for (int i = 0; i <= kStops; ++i) {
        const double at = static_cast<double>(i) / kStops;
        const double fallen = smoothStep(std::max(at - kEven, 0.0) / (1.0 - kEven));
        gradient.setColorAt(at,
                            QColor::fromRgbF(0, 0, 0, static_cast<float>(shade * (1.0 - fallen))));
    }
    QBrush brush(gradient);
    const QPointF centre = QRectF(QPointF(), QSizeF(surface)).center();
    brush.setTransform(
        QTransform::fromTranslate(centre.x(), centre.y())
            .scale(surface.width() / 2.0 * kReachAcross, surface.height() / 2.0 * kReachDown));
    painter.fillRect(area, brush);
}

void OverlayBackdrop::paintDesktop(QPainter& painter, const QRect& area) const {
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    if (picture_.isNull()) {
        painter.fillRect(area, Qt::transparent);
    } else {
        const double ratio = picture_.devicePixelRatio();
        painter.drawPixmap(QRectF(area), picture_,
                           QRectF(area.x() * ratio, area.y() * ratio, area.width() * ratio,
                                  area.height() * ratio));
    }
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

}  // namespace ostrel
