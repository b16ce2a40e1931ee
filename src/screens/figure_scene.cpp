#include "screens/figure_scene.h"

#include <QLinearGradient>
#include <QPainter>
#include <utility>

namespace ostrel {
namespace {

QColor inked(QColor colour, double ink) {
    colour.setAlphaF(static_cast<float>(ink));
    return colour;
}

QPen roundPen(const QColor& colour, double width) {
    return {colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

void draw(QPainter& painter, const QPainterPath& path, double width, const QColor& colour) {
    painter.setPen(width > 0 ? roundPen(colour, width) : QPen(Qt::NoPen));
    painter.setBrush(width > 0 ? QBrush(Qt::NoBrush) : QBrush(colour));
    painter.drawPath(path);
}

}  // namespace

void FigureScene::look(QPointF focus, double zoom) {
    zoom_ = zoom;
    view_ = QTransform::fromTranslate(-focus.x(), -focus.y()) * QTransform::fromScale(zoom, zoom) *
            QTransform::fromTranslate(kSide / 2, kSide / 2);
}

void FigureScene::fadeBelow(double y, double length) {
    fadeFrom_ = y;
    fadeLength_ = length;
}

void FigureScene::add(Shape shape) {
    shape.path = view_.map(shape.path);
    shape.window = view_.map(shape.window);
    shape.width *= zoom_;
    shapes_.push_back(std::move(shape));
}

void FigureScene::line(const QPainterPath& path, double width, double ink,
                       const QPainterPath& window) {
    add({path, window, width, ink});
}

void FigureScene::fill(const QPainterPath& path, double ink, const QPainterPath& window) {
    add({path, window, 0, ink});
}

QRectF FigureScene::Shape::extent() const {
    const double margin = width / 2;
    return path.controlPointRect().adjusted(-margin, -margin, margin, margin);
}

QRectF FigureScene::changeSince(const FigureScene& before) const {
    if (shapes_.size() != before.shapes_.size() || fadeFrom_ != before.fadeFrom_ ||
        fadeLength_ != before.fadeLength_) {
        return {0, 0, kSide, kSide};
    }
    QRectF change;
    for (std::size_t i = 0; i < shapes_.size(); ++i) {
        if (shapes_[i] != before.shapes_[i]) {
            change |= shapes_[i].extent() | before.shapes_[i].extent();
        }
    }
    return change;
}

void FigureScene::paint(QImage& sheet, const QColor& colour) const {
    paint(sheet, colour, QRectF(0, 0, kSide, kSide));
}

void FigureScene::paint(QImage& sheet, const QColor& colour, const QRectF& part) const {
    QPainter painter(&sheet);
    // Shades replace each other instead of adding up where two limbs meet.
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    const double scale = sheet.width() / sheet.devicePixelRatio() / kSide;
    painter.scale(scale, scale);
    painter.setClipRect(part);
    painter.fillRect(part, Qt::transparent);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const Shape& shape : shapes_) {
        if (!shape.extent().intersects(part)) {
            continue;
        }
        if (shape.window.isEmpty()) {
            draw(painter, shape.path, shape.width, inked(colour, shape.ink));
        } else {
            painter.save();
            painter.setClipPath(shape.window, Qt::IntersectClip);
            draw(painter, shape.path, shape.width, inked(colour, shape.ink));
            painter.restore();
        }
    }
    if (fadeFrom_ < part.bottom()) {
        QLinearGradient fade(0, fadeFrom_, 0, fadeFrom_ + fadeLength_);
        fade.setColorAt(0, Qt::black);
        fade.setColorAt(1, Qt::transparent);
        painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
        painter.fillRect(QRectF(0, fadeFrom_, kSide, kSide - fadeFrom_), fade);
    }
}

}  // namespace ostrel
