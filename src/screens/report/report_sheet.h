#pragma once

#include <QImage>
#include <QWidget>
#include <functional>
#include <vector>

#include "screens/report/report_data.h"

class QLabel;

namespace ostrel {

class Card;
class ChartLegend;
class DayChart;

// The report proper, as it is shown and as it is saved as a picture: chart, figures, goal and
// streak.
class ReportSheet : public QWidget {
  public:
    ReportSheet();

    void show(const ReportData& report);

    // All of it, also what is scrolled out of sight, so many pixels to a logical one.
    [[nodiscard]] QImage picture(int scale);

  private:
    using Value = std::function<QString(const ReportData&)>;

    [[nodiscard]] Card* makeChart();
    [[nodiscard]] Card* makeFigures();
    [[nodiscard]] Card* makeGoal();
    QWidget* makeTile(const QString& name, const Value& value);
    void addRow(Card& card, const QString& name, const QString& hint, const Value& value);

    QLabel* span_;
    DayChart* chart_ = nullptr;
    ChartLegend* legend_ = nullptr;
    std::vector<std::function<void(const ReportData&)>> figures_;
};

}  // namespace ostrel
