#pragma once

#include <QWidget>
#include <functional>

#include "screens/settings/day_plan.h"

class QLabel;

namespace ostrel {

// The breaks of a working day along a line of hours, and their sums in words beneath.
class DayStrip : public QWidget {
  public:
    DayStrip();

    // Shows the day that `plan` makes, which it asks for when somebody can see it.
    void plan(std::function<DayPlan()> plan);

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    class Line;
    void show(DayPlan plan);
    void work();

    std::function<DayPlan()> plan_;  // still to be made
    Line* line_;
    QLabel* eye_;
    QLabel* body_;
    QLabel* rest_;
};

}  // namespace ostrel
