#pragma once

#include <QWidget>
#include <functional>

#include "records/report_summary.h"

namespace ostrel {

// The three spans of the report side by side, of which one is chosen: for keys and for a screen
// reader a group of radio buttons.
class RangeChoice : public QWidget {
    Q_OBJECT

  public:
    using Range = ReportSummaryView::Range;

    RangeChoice(Range chosen, const std::function<void(Range)>& onChoice);

  protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace ostrel
