#include "screens/report/report_window.h"

#include <QAccessible>
#include <QApplication>
#include <QBuffer>
#include <QEvent>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <utility>

#include "core/settings/settings_store.h"
#include "platform/api/calendar.h"
#include "records/break_log.h"
#include "records/break_log_export.h"
#include "records/daily_counter.h"
#include "records/presence_tally.h"
#include "records/streak_tracker.h"
#include "screens/controls/page.h"
#include "screens/identifier.h"
#include "screens/report/empty_note.h"
#include "screens/report/range_choice.h"
#include "screens/report/report_export.h"
#include "screens/report/report_sheet.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

constexpr QSize kSize(700, 740);
constexpr QSize kSmallest(640, 420);
constexpr int kPictureScale = 2;

}  // namespace

ReportWindow::ReportWindow(Services services)
    : StyledWindow(kSize), services_(std::move(services)) {
    setMinimumSize(kSmallest);
    refreshSoon_.setSingleShot(true);
    connect(&refreshSoon_, &QTimer::timeout, this, [this] { refresh(); });
    const auto follow = [this](const auto& published) {
        subscriptions_.push_back(
            published.onChange([this](const auto& /*now*/) { refreshSoon_.start(0); }));
    };
    follow(services_.breakLog.entries());
    follow(services_.presenceTally.days());
    follow(services_.streakTracker.streak());
    follow(services_.dailyCounter.model());
    follow(services_.settingsStore.settings());
}

QWidget* ReportWindow::makeContent() {
    setWindowTitle(Texts::of("report.title"));
    auto* page = new Page(Texts::of("report.title"));
    toolbar_ = makeToolbar();
    calmMessage_ = makeLabel({}, "hint");
    warning_ = makeLabel({}, "warning");
    note_ = new EmptyNote;
    sheet_ = new ReportSheet;
    for (QWidget* widget :
         std::initializer_list<QWidget*>{toolbar_, calmMessage_, warning_, note_, sheet_}) {
        page->addWidget(widget);
    }
    calmMessage_->hide();
    warning_->hide();
    refresh();
    return page;
}

QWidget* ReportWindow::makeToolbar() {
    auto* toolbar = new QWidget;
    auto* layout = new QHBoxLayout(toolbar);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new RangeChoice(range_, [this](ReportSummaryView::Range range) {
        range_ = range;
        calmMessage_->hide();
        warning_->hide();
        refresh();
    }));
    layout->addStretch();
    exportButton_ = makeExportButton();
    layout->addWidget(exportButton_);
    return toolbar;
}

QPushButton* ReportWindow::makeExportButton() {
    // Without a parent: a screen reader finds open menus that stand alone.
    exportMenu_ = std::make_unique<QMenu>();
    const std::pair<Format, QString> formats[] = {
        {Format::csv, Texts::of("report.export.csv")},
        {Format::json, Texts::of("report.export.json")},
        {Format::png, Texts::of("report.export.png")},
    };
    for (const auto& [format, text] : formats) {
        // Once the menu is closed: whoever is asked for a file may take a while.
        connect(
            exportMenu_->addAction(text), &QAction::triggered, this,
            [this, format = format] { exportAs(format); }, Qt::QueuedConnection);
    }
    auto* button = new QPushButton(Texts::of("report.export"));
    identify(button, QStringLiteral("ostrel.report.export"));
    button->setMenu(exportMenu_.get());
    button->setAutoDefault(true);  // Return opens the menu as Space does
    return button;
}

bool ReportWindow::event(QEvent* event) {
    // The zone may have changed, or the day, while nobody looked.
    if (event->type() == QEvent::WindowActivate && sheet_ != nullptr) {
        refreshSoon_.start(0);
    }
    return StyledWindow::event(event);
}

void ReportWindow::refresh() {
    if (sheet_ != nullptr) {
        showContent(readReport(services_, range_));
    }
}

void ReportWindow::showContent(const ReportData& report) {
    using Content = ReportData::Content;
    if (report.content == Content::none) {
        note_->show(Texts::of("report.empty.title"), Texts::of("report.empty.text"));
    } else if (report.content == Content::noneInRange) {
        note_->show(Texts::of("report.quiet.title %lld", {ReportSummaryView::days(range_)}),
                    Texts::of("report.quiet.text"));
    } else {
        sheet_->show(report);
    }
    toolbar_->setVisible(report.content != Content::none);
    exportButton_->setEnabled(report.content == Content::some);
    note_->setVisible(report.content != Content::some);
    sheet_->setVisible(report.content == Content::some);
}

void ReportWindow::exportAs(Format format) {
    static constexpr const char* kSuffixes[] = {"csv", "json", "png"};
    const QString suffix = QString::fromLatin1(kSuffixes[static_cast<std::size_t>(format)]);
    const QPointer<ReportWindow> self(this);
    const AskForFile ask = services_.askForFile;
    const QString path =
        ask(*this, {Texts::of("report.export.title"), suggestedName(suffix), suffix});
    if (!self || path.isEmpty()) {
        return;
    }
    const QString name = QFileInfo(path).fileName();
    switch (ReportExport::write(path, bytesOf(format))) {
        case ReportExport::Result::done:
            say(Texts::of("report.export.done %@", {name}), Tone::calm);
            break;
        case ReportExport::Result::full:
            say(Texts::of("report.export.full %@", {name}), Tone::warning);
            break;
        case ReportExport::Result::failed:
            say(Texts::of("report.export.failed %@", {name}), Tone::warning);
            break;
    }
}

QByteArray ReportWindow::bytesOf(Format format) {
    if (format == Format::png) {
        // What it shows is not older than what the other formats hold.
        refresh();
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        sheet_->picture(kPictureScale).save(&buffer, "PNG");
        return bytes;
    }
    const auto entries = services_.breakLog.entriesOf(ReportSummaryView::days(range_));
    return QByteArray::fromStdString(format == Format::csv
                                         ? exportCsv(entries, services_.calendar)
                                         : exportJson(entries, services_.calendar));
}

QString ReportWindow::suggestedName(const QString& suffix) const {
    const auto days = readReport(services_, range_).days;
    return QStringLiteral("ostrel_%1_%2.%3")
        .arg(QString::fromStdString(dayKey(days.front().day)),
             QString::fromStdString(dayKey(days.back().day)), suffix);
}

void ReportWindow::say(const QString& text, Tone tone) {
    QLabel* shown = tone == Tone::calm ? calmMessage_ : warning_;
    (tone == Tone::calm ? warning_ : calmMessage_)->hide();
    shown->setText(text);
    shown->show();
    QAccessibleEvent told(shown, QAccessible::Alert);
    QAccessible::updateAccessibility(&told);
}

}  // namespace ostrel
