#include <QDesktopServices>
#include <QFile>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QSaveFile>
#include <QUrl>
#include <algorithm>

#include "core/engine/timer_engine.h"
#include "core/settings/document.h"
#include "screens/controls/page.h"
#include "screens/controls/path_label.h"
#include "screens/settings/bound_controls.h"
#include "screens/settings/pages.h"
#include "screens/texts/languages.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

constexpr auto kGoal = SettingsRanges::kDailyGoalBreaks;

NumberField* makeGoal(SettingsStore& store) {
    auto* control = new NumberField;
    Bound::setName(control, "dailyGoalBreaks");
    Bound::ignoreWheel(control);
    control->setRange(static_cast<int>(kGoal.least), static_cast<int>(kGoal.most));
    Bound::follow(control, store, [control](const SettingsModel& settings) {
        const QSignalBlocker quiet(control);
        control->setValue(
            static_cast<int>(std::clamp(settings.dailyGoalBreaks, kGoal.least, kGoal.most)));
    });
    QObject::connect(control, &QSpinBox::valueChanged, control, [&store](int goal) {
        store.update([goal](SettingsModel& settings) { settings.dailyGoalBreaks = goal; });
    });
    return control;
}

Choice* makeLanguages(SettingsStore& store) {
    std::vector<std::pair<std::string, QString>> choices = {
        {"system", Texts::of("settings.general.language.system")}};
    for (const Texts::Language& language : Texts::languages()) {
        choices.emplace_back(language.code, QString::fromUtf8(language.name.data()));
    }
    const auto& longest = *std::ranges::max_element(
        choices, {}, [](const auto& choice) { return choice.second.size(); });
    const int letters = static_cast<int>(longest.second.size());
    Choice* control =
        Bound::makeChoice(store, &SettingsModel::languageRaw, std::move(choices), "languageRaw");
    // Measuring the names would load a font for each of their scripts, and keep it.
    control->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    control->setMinimumContentsLength(letters);
    return control;
}

Card* addProgram(Page& page, SettingsStore& store) {
    using S = SettingsModel;
    using A = SettingsModel::Appearance;
    Card* program = page.addCard(Texts::of("settings.general.program"));
    Switch* atLogin = Bound::makeSwitch(store, &S::launchAtLogin, "launchAtLogin");
    program->addRow(Texts::of("settings.general.launch_at_login"), {}, atLogin);
    QLabel* problem = makeLabel(Texts::of("welcome.ready.login.failed"), "warning");
    problem->setVisible(false);
    page.addWidget(problem);
    // Whoever could not arrange it has taken it back by now.
    QObject::connect(atLogin, &QCheckBox::toggled, problem, [&store, problem](bool isOn) {
        problem->setVisible(store.settings()->launchAtLogin != isOn);
    });
    program->addRow(Texts::of("settings.general.appearance"), {},
                    Bound::makeChoice(store, &S::appearance,
                                      {{A::system, Texts::of("settings.general.appearance.system")},
                                       {A::light, Texts::of("settings.general.appearance.light")},
                                       {A::dark, Texts::of("settings.general.appearance.dark")}},
                                      "appearance"));
    program->addRow(Texts::of("settings.general.language"), {}, makeLanguages(store));
    return program;
}

// Of an answer that was refused. The page may be gone by then: while the desktop asks for a file
// the language can change.
void tell(const QPointer<QLabel>& problem, bool isRefused, std::string_view key) {
    if (problem) {
        problem->setVisible(isRefused);
        problem->setText(Texts::of(key));
    }
}

void exportTo(const QString& path, const SettingsModel& settings, const QPointer<QLabel>& problem) {
    QSaveFile file(path);
    const QByteArray text = QByteArray::fromStdString(printJson(settings).text.value_or("") + "\n");
    const bool isWritten =
        file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit();
    tell(problem, !isWritten, "settings.general.export_failed");
}

void importFrom(const QString& path, const SettingsModel& before, TimerEngine& engine,
                const QPointer<QLabel>& problem) {
    QFile file(path);
    const bool isOpen = file.open(QIODevice::ReadOnly);
    const auto settings = isOpen ? SettingsStore::merged(before, file.readAll().toStdString())
                                 : std::optional<SettingsModel>();
    tell(problem, !settings, "settings.general.import_failed");
    if (settings) {
        engine.applySettings(*settings);
    }
}

QPushButton* makeExport(const SettingsServices& services, const QPointer<QLabel>& problem) {
    QPushButton* button =
        makeButton("settings.general.save", QStringLiteral("ostrel.settings.export"));
    QObject::connect(button, &QPushButton::clicked, button, [&services, button, problem] {
        const QString path = QFileDialog::getSaveFileName(
            button->window(), Texts::of("settings.general.export"),
            QStringLiteral("ostrel-settings.json"), QStringLiteral("JSON (*.json)"));
        if (!path.isEmpty()) {
            exportTo(path, *services.settingsStore.settings(), problem);
        }
    });
    return button;
}

QPushButton* makeImport(const SettingsServices& services, const QPointer<QLabel>& problem) {
    QPushButton* button =
        makeButton("settings.general.open", QStringLiteral("ostrel.settings.import"));
    QObject::connect(button, &QPushButton::clicked, button, [&services, button, problem] {
        const QString path =
            QFileDialog::getOpenFileName(button->window(), Texts::of("settings.general.import"), {},
                                         QStringLiteral("JSON (*.json)"));
        if (!path.isEmpty()) {
            importFrom(path, *services.settingsStore.settings(), services.timerEngine, problem);
        }
    });
    return button;
}

// Asks once more, in the place of the button.
QWidget* makeReset(const SettingsServices& services) {
    auto* place = new QWidget;
    auto* across = new QHBoxLayout(place);
    across->setContentsMargins(0, 0, 0, 0);
    QPushButton* ask =
        makeButton("settings.general.reset.action", QStringLiteral("ostrel.settings.reset"));
    ask->setProperty("look", QStringLiteral("danger"));
    QLabel* warning = makeLabel(Texts::of("settings.general.reset.warning"), "warning");
    QPushButton* confirm = makeButton("settings.general.reset.action",
                                      QStringLiteral("ostrel.settings.reset.confirm"));
    QPushButton* cancel =
        makeButton("action.cancel", QStringLiteral("ostrel.settings.reset.cancel"));
    const auto setAsking = [=](bool isAsking) {
        ask->setVisible(!isAsking);
        for (QWidget* widget : {static_cast<QWidget*>(warning), static_cast<QWidget*>(confirm),
                                static_cast<QWidget*>(cancel)}) {
            widget->setVisible(isAsking);
        }
        (isAsking ? cancel : ask)->setFocus();
    };
    for (QWidget* widget : {static_cast<QWidget*>(warning), static_cast<QWidget*>(cancel),
                            static_cast<QWidget*>(confirm), static_cast<QWidget*>(ask)}) {
        across->addWidget(widget);
    }
    setAsking(false);
    QObject::connect(ask, &QPushButton::clicked, place, [setAsking] { setAsking(true); });
    QObject::connect(cancel, &QPushButton::clicked, place, [setAsking] { setAsking(false); });
    QObject::connect(confirm, &QPushButton::clicked, place, [&services, setAsking] {
        setAsking(false);
        SettingsModel first;
        first.hasOnboarded = true;
        services.timerEngine.applySettings(first);
    });
    return place;
}

void addData(Page& page, const SettingsServices& services) {
    Card* data = page.addCard(Texts::of("settings.general.data"));
    const QString folder = QString::fromStdString(services.dataFolder);
    QPushButton* open =
        makeButton("settings.general.open_folder", QStringLiteral("ostrel.settings.open_folder"));
    QObject::connect(open, &QPushButton::clicked, open,
                     [folder] { QDesktopServices::openUrl(QUrl::fromLocalFile(folder)); });
    data->addRow(Texts::of("settings.general.folder"), makePathLabel(folder), open);
    QLabel* problem = makeLabel({}, "warning");
    problem->setVisible(false);
    data->addRow(Texts::of("settings.general.export"), {}, makeExport(services, problem));
    data->addRow(Texts::of("settings.general.import"), {}, makeImport(services, problem));
    data->addRow(Texts::of("settings.general.reset"), Texts::of("settings.general.reset.hint"),
                 makeReset(services));
    page.addWidget(problem);
}

}  // namespace

Page* makeGeneralPage(const SettingsServices& services) {
    SettingsStore& store = services.settingsStore;
    auto* page = new Page(Texts::of("settings.page.general"));
    Card* breaks = page->addCard(Texts::of("settings.general.breaks"));
    breaks->addRow(Texts::of("settings.general.enabled"), {},
                   Bound::makeSwitch(store, &SettingsModel::ostrelEnabled, "ostrelEnabled"));
    breaks->addRow(Texts::of("settings.general.goal"), {}, makeGoal(store));
    addProgram(*page, store);
    addData(*page, services);
    return page;
}

}  // namespace ostrel
