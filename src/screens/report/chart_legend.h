#pragma once

#include <QWidget>
#include <cstdint>

class QLabel;

namespace ostrel {

// What the parts of the chart's bars mean, and its line.
class ChartLegend : public QWidget {
  public:
    explicit ChartLegend(QWidget* parent = nullptr);

    void show(std::int64_t goal);

  private:
    QLabel* goal_;
};

}  // namespace ostrel
