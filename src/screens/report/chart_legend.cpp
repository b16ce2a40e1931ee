#include "screens/report/chart_legend.h"

#include <QApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <optional>
#include <vector>

#include "screens/controls/page.h"
#include "screens/report/chart_look.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

using Sample = std::optional<ChartLook::Part>;  // absent: the line

constexpr int kSampleSide = 12;
constexpr int kRoom = 540;  // for all of it side by side

class Swatch : public QWidget {
  public:
    explicit Swatch(Sample sample) : sample_(sample) { setFixedSize(kSampleSide, kSampleSide); }

  protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        if (sample_) {
            ChartLook::paintPart(painter, rect(), *sample_, QApplication::palette());
        } else {
            ChartLook::paintGoalLine(painter, 0, width(), height() / 2.0, QApplication::palette());
        }
    }

  private:
    Sample sample_;
};

QWidget* entryOf(Sample sample, QLabel* words) {
    words->setWordWrap(false);
    auto* entry = new QWidget;
    auto* layout = new QHBoxLayout(entry);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(7);
    layout->addWidget(new Swatch(sample));
    layout->addWidget(words);
    layout->addStretch();
    return entry;
}

}  // namespace

ChartLegend::ChartLegend(QWidget* parent) : QWidget(parent), goal_(makeLabel({}, "hint")) {
    using ChartLook::Part;
    // As wide as a goal of two digits makes it.
    show(99);
    const std::vector<QWidget*> entries = {
        entryOf(Part::eye, makeLabel(Texts::of("report.legend.eye"), "hint")),
        entryOf(Part::body, makeLabel(Texts::of("report.legend.body"), "hint")),
        entryOf(Part::faded, makeLabel(Texts::of("report.legend.faded"), "hint")),
        entryOf(std::nullopt, goal_),
    };
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(20);
    grid->setVerticalSpacing(4);
    int wide = 0;
    for (QWidget* entry : entries) {
        wide += entry->sizeHint().width() + grid->horizontalSpacing();
    }
    const int columns = wide <= kRoom ? 4 : 2;
    for (int i = 0; i < 4; ++i) {
        grid->addWidget(entries[static_cast<std::size_t>(i)], i / columns, i % columns);
    }
    grid->setColumnStretch(columns, 1);
}

void ChartLegend::show(std::int64_t goal) {
    goal_->setText(Texts::of("report.legend.goal %lld", {goal}));
}

}  // namespace ostrel
