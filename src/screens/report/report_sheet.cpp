#include "screens/report/report_sheet.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <cmath>

#include "screens/controls/page.h"
#include "screens/identifier.h"
#include "screens/report/chart_legend.h"
#include "screens/report/day_chart.h"
#include "screens/report/figure_label.h"
#include "screens/report/report_words.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

constexpr int kPictureMargin = 24;

QWidget* sideBySide(const std::vector<QWidget*>& tiles) {
    auto* all = new QWidget;
    auto* layout = new QHBoxLayout(all);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(20);
    for (QWidget* tile : tiles) {
        layout->addWidget(tile, 1);
    }
    return all;
}

QString number(std::int64_t count) {
    return QLocale().toString(static_cast<qlonglong>(count));
}

QString days(std::int64_t count) {
    return Texts::of("report.value.days %lld", {count});
}

}  // namespace

ReportSheet::ReportSheet() : span_(makeLabel({}, "heading")) {
    identify(this, QStringLiteral("ostrel.report.sheet"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(span_);
    layout->addWidget(makeChart());
    layout->addSpacing(4);
    layout->addWidget(makeFigures());
    layout->addSpacing(10);
    layout->addWidget(makeLabel(Texts::of("report.goal.heading"), "heading"));
    layout->addWidget(makeGoal());
}

Card* ReportSheet::makeChart() {
    auto* ofDay = makeLabel({});
    identify(ofDay, QStringLiteral("ostrel.report.ofDay"));
    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(10);
    chart_ = new DayChart([ofDay](const QString& words) { ofDay->setText(words); }, content);
    legend_ = new ChartLegend;
    layout->addWidget(legend_);
    layout->addWidget(chart_);
    layout->addWidget(ofDay);
    auto* card = new Card;
    card->addWide(content);
    return card;
}

Card* ReportSheet::makeFigures() {
    auto* tiles = sideBySide(
        {makeTile(Texts::of("report.figure.eye"),
                  [](const ReportData& report) { return number(report.stats.eyeCompleted); }),
         makeTile(Texts::of("report.figure.body"),
                  [](const ReportData& report) { return number(report.stats.bodyCompleted); }),
         makeTile(Texts::of("report.figure.faded"),
                  [](const ReportData& report) { return number(report.fadedOut); })});
    auto* taken = new QWidget;
    auto* layout = new QVBoxLayout(taken);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(tiles);
    layout->addWidget(makeLabel(Texts::of("report.figure.faded.hint"), "hint"));
    auto* card = new Card;
    card->addWide(taken);
    addRow(*card, Texts::of("report.figure.skipped"), Texts::of("report.figure.skipped.hint"),
           [](const ReportData& report) {
               constexpr double kPercent = 100;
               return Texts::of("report.value.percent %lld",
                                {std::int64_t{std::llround(report.stats.skipRate * kPercent)}});
           });
    addRow(*card, Texts::of("report.figure.penalty"), Texts::of("report.figure.penalty.hint"),
           [](const ReportData& report) {
               const std::int64_t seconds = report.stats.avgPenaltySec;
               return seconds > 0 ? Texts::of("report.value.seconds %lld", {seconds})
                                  : Texts::of("report.value.none");
           });
    addRow(*card, Texts::of("report.figure.postponed"), Texts::of("report.figure.postponed.hint"),
           [](const ReportData& report) { return number(report.stats.postponements); });
    addRow(*card, Texts::of("report.figure.held"), Texts::of("report.figure.held.hint"),
           [](const ReportData& report) { return number(report.held); });
    addRow(*card, Texts::of("report.figure.dropped"), Texts::of("report.figure.dropped.hint"),
           [](const ReportData& report) { return number(report.dropped); });
    addRow(*card, Texts::of("report.figure.credited"), Texts::of("report.figure.credited.hint"),
           [](const ReportData& report) { return number(report.credited); });
    return card;
}

Card* ReportSheet::makeGoal() {
    auto* card = new Card;
    card->addWide(sideBySide(
        {makeTile(Texts::of("report.goal.today"),
                  [](const ReportData& report) {
                      return Texts::of("report.value.of_goal %lld %lld",
                                       {report.takenToday, report.goal});
                  }),
         makeTile(Texts::of("report.streak.current"),
                  [](const ReportData& report) { return days(report.streak.currentDays); }),
         makeTile(Texts::of("report.streak.longest"),
                  [](const ReportData& report) { return days(report.streak.longestDays); })}));
    return card;
}

QWidget* ReportSheet::makeTile(const QString& name, const Value& value) {
    auto* figure = new FigureLabel(name, FigureLabel::Form::tile);
    figures_.emplace_back(
        [figure, value](const ReportData& report) { figure->show(value(report)); });
    return figure;
}

void ReportSheet::addRow(Card& card, const QString& name, const QString& hint, const Value& value) {
    auto* figure = new FigureLabel(name, FigureLabel::Form::row);
    figures_.emplace_back(
        [figure, value](const ReportData& report) { figure->show(value(report)); });
    card.addRow(name, hint, figure);
}

void ReportSheet::show(const ReportData& report) {
    using ReportWords::Month;
    span_->setText(Texts::of("report.span %@ %@",
                             {ReportWords::dayAndMonth(report.days.front().day, Month::inFull),
                              ReportWords::dayAndMonth(report.days.back().day, Month::inFull)}));
    legend_->show(report.goal);
    chart_->show(report);
    for (const auto& showFigure : figures_) {
        showFigure(report);
    }
}

QImage ReportSheet::picture(int scale) {
    const QSize whole = size() + QSize(2 * kPictureMargin, 2 * kPictureMargin);
    QImage image(whole * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(QApplication::palette().color(QPalette::Active, QPalette::Window));
    render(&image, QPoint(kPictureMargin, kPictureMargin), QRegion(), QWidget::DrawChildren);
    return image;
}

}  // namespace ostrel
