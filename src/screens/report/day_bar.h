#pragma once

#include <QWidget>
#include <cstdint>

#include "screens/report/report_data.h"

namespace ostrel {

// One day of the chart, as high as the chart's plot: a stack of the day's breaks, with the goal as
// a line across. It can hold the keyboard focus; for a screen reader it is an item of a list, named
// by the day's figures in words.
class DayBar : public QWidget {
    Q_OBJECT

  public:
    // What all bars of a chart have in common: how many breaks its height stands for, and the goal.
    struct Scale {
        std::int64_t top = 1;
        std::int64_t goal = 1;

        bool operator==(const Scale&) const = default;
    };

    explicit DayBar(QWidget* chart);

    void show(const ReportDay& day, const Scale& scale, const QString& words);

    // The one that Tab goes to, and whose figures stand below the chart.
    enum class Choice { no, chosen };
    void setChoice(Choice choice);

    // Of `count` breaks, counted from the foot, as a distance from the top of a plot.
    [[nodiscard]] static double heightOf(std::int64_t count, const Scale& scale, double plotHeight);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void paintGround(QPainter& painter) const;
    void paintStack(QPainter& painter) const;

    ReportDay day_;
    Scale scale_;
    Choice choice_ = Choice::no;
};

}  // namespace ostrel
