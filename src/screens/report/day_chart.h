#pragma once

#include <QWidget>
#include <functional>
#include <optional>
#include <vector>

#include "screens/report/day_bar.h"
#include "screens/report/report_data.h"

namespace ostrel {

// One bar for each day, from the oldest to today, with the dates below: from right to left where
// the language runs so.
//
// The chart is one stop of the Tab key; the arrow keys, Home and End go from day to day. For a
// screen reader it is a list of days.
class DayChart : public QWidget {
    Q_OBJECT

  public:
    // `tell` is handed the figures of one day in words: of the one under the pointer, else of the
    // chosen one. That is today, until another is chosen by key or by a click.
    DayChart(std::function<void(const QString&)> tell, QWidget* parent);

    void show(const ReportData& report);

    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void makeBars(std::size_t count);
    void layOut();
    void choose(std::size_t index);
    [[nodiscard]] std::optional<std::size_t> dayReachedBy(int key) const;
    [[nodiscard]] QRect plot() const;
    [[nodiscard]] double slotWidth() const;
    [[nodiscard]] double centreOf(std::size_t index) const;
    void paintAxis(QPainter& painter) const;
    void paintDates(QPainter& painter) const;
    [[nodiscard]] QString dateLabel(std::size_t index) const;
    [[nodiscard]] std::size_t daysBetweenDates() const;

    std::function<void(const QString&)> tell_;
    std::vector<ReportDay> days_;
    DayBar::Scale scale_;
    std::int64_t step_ = 1;  // breaks between two lines of the axis
    std::vector<DayBar*> bars_;
    std::size_t chosen_ = 0;
};

}  // namespace ostrel
