#include "screens/settings/settings_window.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <array>
#include <utility>

#include "screens/identifier.h"
#include "screens/settings/pages.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

constexpr QSize kSize{880, 660};
constexpr int kSidebarWidth = 190;
constexpr int kSideMargin = 12;

struct Entry {
    std::string_view key;
    Page* (*make)(const SettingsServices&);
};
constexpr std::array kPages{
    Entry{"settings.page.timing", makeTimingPage},
    Entry{"settings.page.breaks", makeBreaksPage},
    Entry{"settings.page.presence", makePresencePage},
    Entry{"settings.page.work_hours", makeWorkHoursPage},
    Entry{"settings.page.reminders", makeRemindersPage},
    Entry{"settings.page.shortcuts", makeShortcutsPage},
    Entry{"settings.page.general", makeGeneralPage},
};

}  // namespace

SettingsWindow::SettingsWindow(SettingsServices services)
    : StyledWindow(kSize), services_(std::move(services)) {}

// What was changed last is stored on the way.
SettingsWindow::~SettingsWindow() {
    clear();
}

QWidget* SettingsWindow::makeContent() {
    setWindowTitle(Texts::of("settings.title"));
    auto* content = new QWidget;
    auto* across = new QHBoxLayout(content);
    across->setContentsMargins(0, 0, 0, 0);
    across->setSpacing(0);
    auto* sidebar = new QListWidget;
    identify(sidebar, QStringLiteral("ostrel.sidebar"));
    sidebar->setAccessibleName(Texts::of("settings.pages"));
    sidebar->setFixedWidth(kSidebarWidth);
    auto* pages = new QStackedWidget;
    for (const Entry& entry : kPages) {
        sidebar->addItem(Texts::of(entry.key));
        pages->addWidget(new QWidget);
    }
    // Where there is no status area, this is the way to its menu.
    auto* menu = new QPushButton(Texts::of("settings.menu"));
    identify(menu, QStringLiteral("ostrel.settings.menu"));
    connect(menu, &QPushButton::clicked, this, [this] { services_.popUpMenu(); });
    auto* side = new QVBoxLayout;
    side->setContentsMargins(0, 0, 0, kSideMargin);
    side->addWidget(sidebar, 1);
    side->addWidget(menu, 0, Qt::AlignHCenter);
    across->addLayout(side);
    across->addWidget(pages, 1);
    // A screen reader selects without making it the current one.
    connect(sidebar, &QListWidget::itemSelectionChanged, content, [this, sidebar, pages] {
        if (sidebar->selectedItems().isEmpty()) {
            return;
        }
        const int row = sidebar->row(sidebar->selectedItems().front());
        page_ = row;
        if (qobject_cast<QScrollArea*>(pages->widget(row)) == nullptr) {
            QWidget* place = pages->widget(row);
            pages->insertWidget(row, kPages[static_cast<std::size_t>(row)].make(services_));
            delete place;
        }
        pages->setCurrentIndex(row);
    });
    sidebar->setCurrentRow(page_);
    return content;
}

}  // namespace ostrel
