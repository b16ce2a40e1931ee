#include "screens/settings/program_list.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "screens/controls/page.h"
#include "screens/settings/bound_controls.h"
#include "screens/texts/texts.h"

namespace ostrel {
ProgramList::ProgramList(const SettingsServices& services)
    : services_(services), list_(new QListWidget), typed_(new QLineEdit) {
    constexpr int kListHeight = 150;
    Bound::setName(list_, "deferAppBundleIDs");
    list_->setAccessibleName(Texts::of("settings.presence.calls.list"));
    list_->setFixedHeight(kListHeight);
    Bound::setName(typed_, "deferAppBundleIDs.typed");
    typed_->setPlaceholderText(Texts::of("settings.presence.calls.typed"));
    typed_->setAccessibleName(Texts::of("settings.presence.calls.typed"));
    QPushButton* addTyped = makeButton("settings.presence.calls.add",
                                       QStringLiteral("ostrel.settings.deferAppBundleIDs.add"));
    QPushButton* running = makeButton("settings.presence.calls.pick",
                                      QStringLiteral("ostrel.settings.deferAppBundleIDs.pick"));
    QPushButton* remove = makeButton("settings.presence.calls.remove",
                                     QStringLiteral("ostrel.settings.deferAppBundleIDs.remove"));
    QPushButton* restore = makeButton("settings.presence.calls.restore",
                                      QStringLiteral("ostrel.settings.deferAppBundleIDs.restore"));
    auto* menu = new QMenu(running);
    menu->setToolTipsVisible(true);
    running->setMenu(menu);

    auto* down = new QVBoxLayout(this);
    down->setContentsMargins(0, 0, 0, 0);
    down->addWidget(list_);
    auto* typing = new QHBoxLayout;
    typing->addWidget(typed_, 1);
    typing->addWidget(addTyped);
    down->addLayout(typing);
    down->addWidget(running, 0, Qt::AlignLeading);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(remove);
    buttons->addWidget(restore);
    down->addLayout(buttons);

    connect(menu, &QMenu::aboutToShow, this, [this, menu] { offerRunning(*menu); });
    const auto addWhatIsTyped = [this] {
        add(typed_->text().trimmed().toStdString());
        typed_->clear();
    };
    connect(addTyped, &QPushButton::clicked, this, addWhatIsTyped);
    connect(typed_, &QLineEdit::returnPressed, this, addWhatIsTyped);
    connect(remove, &QPushButton::clicked, this, [this] { removeChosen(); });
    connect(restore, &QPushButton::clicked, this, [this] {
        services_.settingsStore.update([](SettingsModel& settings) {
            settings.deferAppBundleIDs = PresenceDefaults::deferAppBundleIDs();
        });
    });
    connect(list_, &QListWidget::itemSelectionChanged, remove,
            [this, remove] { remove->setEnabled(!list_->selectedItems().isEmpty()); });
    remove->setEnabled(false);
    Bound::follow(this, services.settingsStore,
                  [this](const SettingsModel& settings) { show(settings.deferAppBundleIDs); });
}

// What people call them; two of one name with their identifiers as well.
QStringList ProgramList::namesOf(const std::vector<std::string>& programs) const {
    QStringList names;
    for (const std::string& program : programs) {
        names << QString::fromStdString(services_.programName(program).value_or(program));
    }
    QStringList distinct = names;
    for (qsizetype i = 0; i < names.size(); ++i) {
        if (names.count(names[i]) > 1) {
            distinct[i] += QStringLiteral(" (%1)").arg(
                QString::fromStdString(programs[static_cast<std::size_t>(i)]));
        }
    }
    return distinct;
}

void ProgramList::show(const std::vector<std::string>& programs) {
    if (programs == shown_) {
        return;
    }
    shown_ = programs;
    list_->clear();
    list_->addItems(namesOf(programs));
    for (int row = 0; row < list_->count(); ++row) {
        const QString identifier = QString::fromStdString(programs[static_cast<std::size_t>(row)]);
        list_->item(row)->setToolTip(identifier);
        list_->item(row)->setData(Qt::AccessibleDescriptionRole, identifier);
    }
}

void ProgramList::offerRunning(QMenu& menu) {
    menu.clear();
    const auto& chosen = services_.settingsStore.settings()->deferAppBundleIDs;
    std::vector<std::string> programs = services_.runningPrograms();
    std::erase_if(programs, [&chosen](const std::string& program) {
        return std::ranges::find(chosen, program) != chosen.end();
    });
    if (programs.empty()) {
        menu.addAction(Texts::of("settings.presence.calls.none_running"))->setEnabled(false);
    }
    const QStringList names = namesOf(programs);
    for (std::size_t i = 0; i < programs.size(); ++i) {
        QString name = names[static_cast<qsizetype>(i)];
        name.replace(u'&', QStringLiteral("&&"));  // else it would mark a letter
        QAction* action =
            menu.addAction(name, this, [this, program = programs[i]] { add(program); });
        action->setToolTip(QString::fromStdString(programs[i]));
    }
}

void ProgramList::add(const std::string& program) {
    services_.settingsStore.update([&program](SettingsModel& settings) {
        auto& programs = settings.deferAppBundleIDs;
        if (!program.empty() && std::ranges::find(programs, program) == programs.end()) {
            programs.push_back(program);
        }
    });
}

void ProgramList::removeChosen() {
    // A screen reader selects without making it the current one.
    const auto chosen = list_->selectedItems();
    const int row = chosen.isEmpty() ? -1 : list_->row(chosen.front());
    services_.settingsStore.update([row](SettingsModel& settings) {
        if (row >= 0 && row < std::ssize(settings.deferAppBundleIDs)) {
            settings.deferAppBundleIDs.erase(settings.deferAppBundleIDs.begin() + row);
        }
    });
}

}  // namespace ostrel
