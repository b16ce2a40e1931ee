#include "screens/figure_parts.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ostrel::FigureParts {
namespace {

constexpr double kGroundY = 191.0;
constexpr double kHeadLength = 8.0;
constexpr double kHeadHalfAngle = 38.0;

void addHead(FigureScene& scene, QPointF tip, double direction, double ink) {
    QPainterPath head;
    for (const double side : {1.0, -1.0}) {
        const double angle = (direction + 180.0 + side * kHeadHalfAngle) * std::numbers::pi / 180.0;
        head.moveTo(tip);
        head.lineTo(tip + QPointF(std::cos(angle), -std::sin(angle)) * kHeadLength / scene.zoom());
    }
    addThin(scene, head, ink);
}

}  // namespace

void addThin(FigureScene& scene, const QPainterPath& path, double ink) {
    scene.line(path, kThin / scene.zoom(), ink);
}

double eased(double share) {
    const double t = std::clamp(share, 0.0, 1.0);
    return t * t * (3.0 - 2.0 * t);
}

double between(double from, double to, double start, double end, double phase) {
    return from + (to - from) * eased((phase - start) / (end - start));
}

double wave(double phase, double turns) {
    return std::sin(2 * std::numbers::pi * phase * turns);
}

QPainterPath polyline(std::initializer_list<QPointF> points) {
    QPainterPath path(*points.begin());
    for (const QPointF& point : points) {
        path.lineTo(point);
    }
    return path;
}

QPainterPath disc(QPointF middle, double radius) {
    QPainterPath path;
    path.addEllipse(middle, radius, radius);
    return path;
}

QPainterPath arc(QPointF middle, double radiusX, double radiusY, double start, double span) {
    const QRectF around(middle.x() - radiusX, middle.y() - radiusY, 2 * radiusX, 2 * radiusY);
    QPainterPath path;
    path.arcMoveTo(around, start);
    path.arcTo(around, start, span);
    return path;
}

void addArrow(FigureScene& scene, const QPainterPath& path, double ink, Heads heads) {
    addThin(scene, path, ink);
    addHead(scene, path.pointAtPercent(1), path.angleAtPercent(0.995), ink);
    if (heads == Heads::atBoth) {
        addHead(scene, path.pointAtPercent(0), path.angleAtPercent(0.005) + 180.0, ink);
    }
}

void addGround(FigureScene& scene, double left, double right) {
    addThin(scene, polyline({{left, kGroundY}, {right, kGroundY}}), FigureScene::Ink::kFaint);
}

}  // namespace ostrel::FigureParts
