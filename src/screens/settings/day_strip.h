#pragma once

#include <QWidget>

#include "screens/settings/day_plan.h"

class QLabel;

namespace ostrel {

// The breaks of a working day along a line of hours, and their sums in words beneath.
class DayStrip : public QWidget {
  public:
    DayStrip();

    void show(DayPlan plan);

  private:
    class Line;

    Line* line_;
    QLabel* eye_;
    QLabel* body_;
    QLabel* rest_;
};

}  // namespace ostrel
