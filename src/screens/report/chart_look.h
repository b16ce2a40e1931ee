#pragma once

#include <QRectF>

class QPainter;
class QPalette;

// How the chart's bars are drawn, which the legend repeats: told apart by filling and outline as
// well as by colour.
namespace ostrel::ChartLook {

enum class Part { eye, body, faded };

void paintPart(QPainter& painter, const QRectF& box, Part part, const QPalette& palette);

void paintGoalLine(QPainter& painter, double left, double right, double y, const QPalette& palette);

}  // namespace ostrel::ChartLook
