#pragma once

#include <QPainterPath>
#include <initializer_list>

#include "screens/figure_scene.h"

// What several figures are put together from. Angles are in degrees, 0 to the right, counted
// against the clock.
namespace ostrel::FigureParts {

// The line of everything that is not the body itself, equally thin however close one looks.
inline constexpr double kThin = 3.6;
void addThin(FigureScene& scene, const QPainterPath& path, double ink);

// 0 to 1 and slow at both ends; what is beyond stays there.
[[nodiscard]] double eased(double share);
// `from` while phase is 0 to `start`, `to` from `end` on.
[[nodiscard]] double between(double from, double to, double start, double end, double phase);
// -1 to 1 and back, `turns` times while the phase goes from 0 to 1.
[[nodiscard]] double wave(double phase, double turns = 1.0);

[[nodiscard]] QPainterPath polyline(std::initializer_list<QPointF> points);
[[nodiscard]] QPainterPath disc(QPointF middle, double radius);
[[nodiscard]] QPainterPath arc(QPointF middle, double radiusX, double radiusY, double start,
                               double span);

// A line with a head at its end, and one at its beginning if `heads` is 2.
enum class Heads { atEnd, atBoth };
void addArrow(FigureScene& scene, const QPainterPath& path, double ink, Heads heads = Heads::atEnd);

void addGround(FigureScene& scene, double left, double right);

}  // namespace ostrel::FigureParts
