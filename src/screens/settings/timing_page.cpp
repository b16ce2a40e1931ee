#include <QButtonGroup>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>
#include <vector>

#include "core/engine/timer_engine.h"
#include "overlay/overlay_manager.h"
#include "screens/controls/preset_card.h"
#include "screens/settings/bound_controls.h"
#include "screens/settings/day_strip.h"
#include "screens/settings/pages.h"
#include "screens/settings/timing_sliders.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

// A break is on the screen, waits, or is at most a minute away: choosing another rhythm now takes
// something away that the user may be waiting for.
bool isBreakNear(const SettingsServices& services) {
    constexpr std::int64_t kNearSec = 60;
    const TimerState& timers = *services.timerEngine.state();
    const bool isSoon = services.settingsStore.settings()->ostrelEnabled && timers.eye.isRunning &&
                        std::min(timers.eye.remainingSec, timers.body.remainingSec) <= kNearSec;
    return isSoon || services.timerEngine.isDeferring() ||
           services.overlayManager.activeSession()->has_value();
}

// The presets as cards, the user's own values as one more, and the question whether to switch.
class PresetChoice : public QWidget {
  public:
    explicit PresetChoice(const SettingsServices& services);

  private:
    PresetCard* addCard(const PresetDefinition& preset, const char* name);
    void showOwn(const PresetDefinition& active);
    void choose(const PresetDefinition& preset);
    void show(const SettingsModel& settings);
    void answer(bool isSwitching);

    const SettingsServices& services_;
    QVBoxLayout* cardsLayout_;
    QButtonGroup* group_;
    std::vector<PresetCard*> cards_;  // of the catalogue
    PresetCard* own_ = nullptr;
    QWidget* question_;
    PresetDefinition pending_;
};

PresetChoice::PresetChoice(const SettingsServices& services)
    : services_(services),
      cardsLayout_(new QVBoxLayout),
      group_(new QButtonGroup(this)),
      question_(new QWidget) {
    setAccessibleName(Texts::of("settings.timing.presets"));
    auto* down = new QVBoxLayout(this);
    down->setContentsMargins(0, 0, 0, 0);
    cardsLayout_->setSpacing(8);
    for (const PresetDefinition& preset : PresetCatalog::all()) {
        PresetCard* card = addCard(preset, preset.id.c_str());
        cards_.push_back(card);
        // A screen reader checks it without a click.
        connect(card, &QAbstractButton::toggled, this, [this, preset](bool isChosen) {
            if (isChosen) {
                choose(preset);
            }
        });
    }
    PresetDefinition own = PresetCatalog::all().front();
    own.id = PresetCatalog::kOwnID;
    own_ = addCard(own, "custom");
    down->addLayout(cardsLayout_);

    auto* asking = new QHBoxLayout(question_);
    asking->setContentsMargins(0, 4, 0, 0);
    asking->addWidget(makeLabel(Texts::of("settings.timing.preset_switch_warning"), "warning"), 1);
    for (const bool isSwitching : {false, true}) {
        auto* button = new QPushButton(Texts::of(isSwitching ? "action.switch" : "action.cancel"));
        Bound::setName(button, isSwitching ? "timing.switch" : "timing.cancel");
        connect(button, &QPushButton::clicked, this, [this, isSwitching] { answer(isSwitching); });
        asking->addWidget(button);
    }
    question_->setVisible(false);
    down->addWidget(question_);
    Bound::follow(this, services.settingsStore,
                  [this](const SettingsModel& settings) { show(settings); });
}

PresetCard* PresetChoice::addCard(const PresetDefinition& preset, const char* name) {
    auto* card = new PresetCard(preset);
    card->setObjectName(QStringLiteral("ostrel.settings.timing.preset.") + QLatin1String(name));
    group_->addButton(card);
    cardsLayout_->addWidget(card);
    return card;
}

void PresetChoice::choose(const PresetDefinition& preset) {
    if (preset.id == services_.settingsStore.settings()->activePresetID) {
        answer(false);
        return;
    }
    pending_ = preset;
    if (isBreakNear(services_)) {
        question_->setVisible(true);
    } else {
        answer(true);
    }
}

void PresetChoice::answer(bool isSwitching) {
    question_->setVisible(false);
    if (isSwitching) {
        services_.timerEngine.applyPreset(pending_);
    }
    show(*services_.settingsStore.settings());
}

void PresetChoice::show(const SettingsModel& settings) {
    const PresetDefinition active = PresetCatalog::active(settings);
    showOwn(active);
    for (PresetCard* card : cards_) {
        if (card->preset().id == active.id) {
            card->setChecked(true);
        }
    }
}

// What is not in the catalogue cannot be chosen by its card: the sliders choose it.
void PresetChoice::showOwn(const PresetDefinition& active) {
    const bool isActive = !PresetCatalog::find(active.id);
    own_->setEnabled(isActive);
    if (isActive) {
        own_->adopt(active);
        own_->setChecked(true);
        question_->setVisible(false);
    } else {
        own_->showHint(Texts::of("settings.timing.own.hint"));
    }
}

}  // namespace

Page* makeTimingPage(const SettingsServices& services) {
    SettingsStore& store = services.settingsStore;
    auto* page = new Page(Texts::of("settings.page.timing"));
    Card* presets = page->addCard(Texts::of("settings.timing.presets"));
    presets->addWide(new PresetChoice(services));
    Card* own = page->addCard(Texts::of("settings.timing.own"));
    auto* strip = new DayStrip;
    auto* sliders = new TimingSliders(services, *own, page);
    Card* merge = page->addCard({});
    merge->addRow(Texts::of("settings.timing.merge"), Texts::of("settings.timing.merge.hint"),
                  Bound::makeSwitch(store, &SettingsModel::mergeNearbyBreaks, "mergeNearbyBreaks"));
    Card* day = page->addCard(Texts::of("settings.timing.day"));
    day->addWide(strip);
    sliders->onChange([strip, &services](const SettingsModel& settings) {
        strip->plan([&services, settings] { return services.planDay(settings); });
    });
    return page;
}

}  // namespace ostrel
