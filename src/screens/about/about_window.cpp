#include "screens/about/about_window.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "screens/controls/icon_label.h"
#include "screens/controls/page.h"
#include "screens/controls/path_label.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

constexpr QSize kSize(560, 640);
constexpr int kIconSide = 64;

QLabel* makeIcon() {
    StatusIcon::Face face;
    face.ringSteps = StatusIcon::Face::kRingSteps * 3 / 4;
    return makeIconLabel(face, kIconSide);
}

QLabel* makeNotice() {
    QLabel* notice = makeLabel({}, "warning");
    notice->hide();
    return notice;
}

}  // namespace

AboutWindow::AboutWindow(Services services) : StyledWindow(kSize), services_(std::move(services)) {}

QWidget* AboutWindow::makeContent() {
    setWindowTitle(Texts::of("about.title"));
    auto* page = new Page(Texts::of("about.title"));
    addTop(*page);
    addPrivacy(*page);
    page->addCard(Texts::of("about.updates.heading"))
        ->addWide(makeLabel(Texts::of("about.updates.text")));
    addCrashReports(*page);
    addParts(*page);
    return page;
}

void AboutWindow::addTop(Page& page) {
    auto* top = new QWidget;
    auto* row = new QHBoxLayout(top);
    row->setContentsMargins(0, 6, 0, 6);
    row->setSpacing(18);
    row->addWidget(makeIcon());
    auto* words = new QVBoxLayout;
    words->setSpacing(2);
    words->addStretch();
    words->addWidget(makeLabel(Texts::of("about.text")));
    words->addWidget(makeLabel(Texts::of("about.version %@", {services_.version}), "hint"));
    words->addStretch();
    row->addLayout(words, 1);
    page.addWidget(top);
}

void AboutWindow::addPrivacy(Page& page) {
    Card* card = page.addCard(Texts::of("about.privacy.heading"));
    card->addWide(makeLabel(Texts::of("about.privacy.text")));
    auto* place = new QWidget;
    auto* column = new QVBoxLayout(place);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(makeLabel(Texts::of("about.privacy.folder")));
    column->addWidget(makePathLabel(services_.documentsFolder));
    auto* button = makeButton("about.privacy.open", QStringLiteral("ostrel.about.open_folder"));
    QLabel* notice = makeNotice();
    connect(button, &QPushButton::clicked, this,
            [this, notice = QPointer(notice)] { open(services_.documentsFolder, notice); });
    column->addWidget(button, 0, Qt::AlignLeading);
    column->addWidget(notice);
    card->addWide(place);
}

void AboutWindow::addCrashReports(Page& page) {
    Card* card = page.addCard(Texts::of("crash.heading"));
    card->addWide(makeLabel(Texts::of("crash.text")));
    const auto& report = services_.newestReport;
    auto* place = new QWidget;
    auto* column = new QVBoxLayout(place);
    column->setContentsMargins(0, 0, 0, 0);
    if (!report) {
        column->addWidget(makeLabel(Texts::of("crash.none"), "hint"));
        card->addWide(place);
        return;
    }
    column->addWidget(makeLabel(Texts::of(
        "crash.newest %@", {QLocale().toString(report->writtenAt, QLocale::ShortFormat)})));
    column->addWidget(makePathLabel(report->file));
    auto* button = makeButton("crash.open", QStringLiteral("ostrel.about.open_report"));
    QLabel* notice = makeNotice();
    connect(button, &QPushButton::clicked, this,
            [this, notice = QPointer(notice)] { open(services_.newestReport->file, notice); });
    column->addWidget(button, 0, Qt::AlignLeading);
    column->addWidget(notice);
    card->addWide(place);
}

void AboutWindow::addParts(Page& page) {
    Card* card = page.addCard(Texts::of("about.parts.heading"));
    for (const Part& part : services_.parts) {
        auto* words = new QWidget;
        auto* column = new QVBoxLayout(words);
        column->setContentsMargins(0, 0, 0, 0);
        column->setSpacing(2);
        column->addWidget(makeNameLabel(part.name));
        column->addWidget(makeLabel(Texts::of(part.purposeKey), "hint"));
        card->addWide(words);
    }
}

void AboutWindow::open(const QString& path, const QPointer<QLabel>& notice) {
    const bool isOpened = services_.open(path);
    if (notice) {
        // In marks that keep a path whole in a text from right to left.
        const QString isolated = QChar(0x2066) + path + QChar(0x2069);
        notice->setText(Texts::of("about.not_opened %@", {isolated}));
        notice->setVisible(!isOpened);
    }
}

}  // namespace ostrel
