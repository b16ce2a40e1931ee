#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "core/engine/timer_engine.h"
#include "core/settings/preset_catalog.h"
#include "core/settings/settings_store.h"
#include "screens/capability_words.h"
#include "screens/controls/icon_label.h"
#include "screens/controls/page.h"
#include "screens/controls/preset_card.h"
#include "screens/controls/switch.h"
#include "screens/identifier.h"
#include "screens/texts/texts.h"
#include "screens/texts/time_format.h"
#include "screens/welcome/figure_picture.h"
#include "screens/welcome/welcome_window.h"

namespace ostrel {
namespace {

constexpr int kFigureSide = 72;
constexpr int kIconSide = 48;
constexpr int kGapBelowText = 6;

// A picture with words beside it.
QWidget* makeScene(QWidget* picture, const QString& title, const QString& text) {
    auto* scene = new QWidget;
    auto* row = new QHBoxLayout(scene);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(18);
    row->addWidget(picture, 0, Qt::AlignVCenter);
    auto* words = new QVBoxLayout;
    words->setSpacing(3);
    words->addStretch();
    words->addWidget(makeLabel(title, "strong"));
    words->addWidget(makeLabel(text));
    words->addStretch();
    row->addLayout(words, 1);
    return scene;
}

Page* makePage(const char* titleKey, const char* textKey) {
    auto* page = new Page(Texts::of(titleKey));
    page->addText(Texts::of(textKey));
    auto* gap = new QWidget;
    gap->setFixedHeight(kGapBelowText);
    page->addWidget(gap);
    return page;
}

// As it looks in the panel.
QLabel* makeIcon() {
    StatusIcon::Face face;
    face.label = QLocale().toString(12);
    face.ringSteps = StatusIcon::Face::kRingSteps * 3 / 5;
    return makeIconLabel(face, kIconSide);
}

void addCapability(Card& card, const Capability& capability) {
    QLabel* state = makeLabel(CapabilityWords::state(capability),
                              capability.state == Capability::State::works ? "hint" : "warning");
    state->setWordWrap(false);
    state->setAccessibleName(state->text());
    card.addRow(CapabilityWords::topic(capability), CapabilityWords::reason(capability), state);
}

}  // namespace

Page* WelcomeWindow::makeWhatPage() {
    Page* page = makePage("welcome.title", "welcome.what.text");
    Card* card = page->addCard({});
    const auto figure = [](std::string_view move) { return new FigurePicture(move, kFigureSide); };
    card->addWide(makeScene(figure("far_focus"), Texts::of("overlay.kind.eye"),
                            Texts::of("welcome.what.eye")));
    card->addWide(makeScene(figure("side_stretch"), Texts::of("overlay.kind.body"),
                            Texts::of("welcome.what.body")));
    auto* choice = new QWidget;
    auto* words = new QVBoxLayout(choice);
    words->setContentsMargins(0, 0, 0, 0);
    words->setSpacing(3);
    words->addWidget(makeLabel(Texts::of("welcome.what.choice"), "strong"));
    words->addWidget(makeLabel(Texts::of("welcome.what.choice.hint")));
    card->addWide(choice);

    auto* sample = new QPushButton(Texts::of("welcome.sample.show"));
    identify(sample, QStringLiteral("ostrel.welcome.sample"));
    connect(sample, &QPushButton::clicked, this, [this] { services_.showSampleBreak(); });
    auto* row = new QWidget;
    auto* across = new QHBoxLayout(row);
    across->setContentsMargins(0, 8, 0, 0);
    across->setSpacing(14);
    across->addWidget(sample);
    across->addWidget(makeLabel(Texts::of("welcome.sample.hint"), "hint"), 1);
    sample->setAccessibleDescription(Texts::of("welcome.sample.hint"));
    page->addWidget(row);
    return page;
}

Page* WelcomeWindow::makeRhythmPage() {
    Page* page = makePage("welcome.rhythm.title", "welcome.rhythm.text");
    auto* cards = new QWidget;
    auto* column = new QVBoxLayout(cards);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(10);
    for (const PresetDefinition& preset : PresetCatalog::all()) {
        auto* card = new PresetCard(preset);
        identify(card,
                 QStringLiteral("ostrel.welcome.preset.") + QString::fromStdString(preset.id));
        connect(card, &QAbstractButton::toggled, this, [this, card](bool isChosen) {
            const auto& active = services_.settingsStore.settings()->activePresetID;
            if (isChosen && active != card->preset().id) {
                services_.timerEngine.applyPreset(card->preset());
            }
        });
        refreshers_.emplace_back([card](const SettingsModel& settings) {
            // The user's own timing is none of them.
            card->setAutoExclusive(false);
            card->setChecked(settings.activePresetID == card->preset().id);
            card->setAutoExclusive(true);
        });
        column->addWidget(card);
    }
    page->addWidget(cards);
    return page;
}

Page* WelcomeWindow::makePresencePage() {
    Page* page = makePage("welcome.presence.title", "welcome.presence.text");
    Card* card = page->addCard({});
    card->addRow(
        Texts::of("welcome.presence.calls"), Texts::of("welcome.presence.calls.hint"),
        makeSwitch(
            "ostrel.welcome.calls",
            [](const SettingsModel& settings) { return !settings.deferAppBundleIDs.empty(); },
            [this](bool isOn) { holdBreaksInCalls(isOn); }));
    card->addRow(
        Texts::of("welcome.presence.films"), {},
        makeSwitch(
            "ostrel.welcome.films",
            [](const SettingsModel& settings) { return settings.delayBreakOnFullscreenVideo; },
            chooser(&SettingsModel::delayBreakOnFullscreenVideo)));
    card->addRow(Texts::of("welcome.presence.focus"), {},
                 makeSwitch(
                     "ostrel.welcome.focus",
                     [](const SettingsModel& settings) { return settings.pauseDuringDND; },
                     chooser(&SettingsModel::pauseDuringDND)));
    desktop_ = page->addCard(Texts::of("welcome.presence.desktop"));
    asking_ = desktop_->addWide(makeLabel(Texts::of("welcome.presence.asking"), "hint"));
    return page;
}

Page* WelcomeWindow::makeReadyPage() {
    Page* page = makePage("welcome.ready.title", "welcome.ready.text");
    Card* card = page->addCard({});
    const SettingsModel& settings = *services_.settingsStore.settings();
    card->addRow(Texts::of("welcome.ready.work_hours"),
                 Texts::of("welcome.ready.work_hours.hint %@ %@",
                           {Texts::timeOfMinute(settings.workHoursStartMinute),
                            Texts::timeOfMinute(settings.workHoursEndMinute)}),
                 makeSwitch(
                     "ostrel.welcome.work_hours",
                     [](const SettingsModel& current) { return current.workHoursEnabled; },
                     chooser(&SettingsModel::workHoursEnabled)));
    card->addRow(Texts::of("welcome.ready.login"), {},
                 makeSwitch(
                     "ostrel.welcome.login",
                     [](const SettingsModel& current) { return current.launchAtLogin; },
                     [this](bool isOn) { startAtLogin(isOn); }));
    loginFailed_ = makeLabel(Texts::of("welcome.ready.login.failed"), "warning");
    loginFailed_->hide();
    page->addWidget(loginFailed_);

    QWidget* scene = makeScene(makeIcon(), Texts::of("welcome.ready.where"),
                               Texts::of("welcome.ready.where.panel"));
    where_ = scene->findChildren<QLabel*>().last();
    page->addCard({})->addWide(scene);
    return page;
}

void WelcomeWindow::showCapabilities() {
    if (!capabilities_ || !desktop_) {
        return;
    }
    delete asking_;
    for (const Capability& capability : *capabilities_) {
        addCapability(*desktop_, capability);
        if (capability.topic == Capability::Topic::statusItem &&
            capability.state == Capability::State::missing) {
            where_->setText(Texts::of("welcome.ready.where.again"));
        }
    }
}

}  // namespace ostrel
