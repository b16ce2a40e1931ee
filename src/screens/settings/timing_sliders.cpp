#include "screens/settings/timing_sliders.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>
#include <algorithm>
#include <utility>

#include "core/engine/timer_engine.h"
#include "screens/controls/page.h"
#include "screens/settings/bound_controls.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

using S = SettingsModel;

struct Kind {
    const char* name;
    std::string_view label;
    std::int64_t S::*field;
    TimingRanges::Range range;
    int stepSec;
};
constexpr std::array kKinds{
    Kind{"eyeBreakIntervalSec", "settings.timing.eye_interval", &S::eyeBreakIntervalSec,
         TimingRanges::kEyeIntervalSec, 60},
    Kind{"eyeBreakDurationSec", "settings.timing.eye_duration", &S::eyeBreakDurationSec,
         TimingRanges::kEyeDurationSec, 5},
    Kind{"bodyBreakIntervalSec", "settings.timing.body_interval", &S::bodyBreakIntervalSec,
         TimingRanges::kBodyIntervalSec, 60},
    Kind{"bodyBreakDurationSec", "settings.timing.body_duration", &S::bodyBreakDurationSec,
         TimingRanges::kBodyDurationSec, 15},
};

}  // namespace

TimingSliders::TimingSliders(const SettingsServices& services, Card& card, QObject* parent)
    : QObject(parent), services_(services) {
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        addRow(card, i);
    }
    constexpr int kSoonMs = 80;
    telling_.setSingleShot(true);
    telling_.setInterval(kSoonMs);
    connect(&telling_, &QTimer::timeout, this, [this] { tell_(asTheyStand()); });
    Bound::follow(this, services.settingsStore,
                  [this](const SettingsModel& settings) { show(settings); });
}

void TimingSliders::addRow(Card& card, std::size_t index) {
    constexpr int kSliderWidth = 240;
    constexpr int kLabelWidth = 84;
    const Kind& kind = kKinds[index];
    Row& row = rows_[index];
    row.slider = new QSlider(Qt::Horizontal);
    Bound::setName(row.slider, kind.name);
    Bound::ignoreWheel(row.slider);
    row.slider->setRange(static_cast<int>(kind.range.least), static_cast<int>(kind.range.most));
    row.slider->setSingleStep(kind.stepSec);
    row.slider->setPageStep(kind.stepSec * 5);
    row.slider->setFixedWidth(kSliderWidth);
    row.slider->setAccessibleName(Texts::of(kind.label));
    row.label = makeLabel({});
    row.label->setFixedWidth(kLabelWidth);
    row.label->setWordWrap(false);
    row.label->setAlignment(Qt::AlignTrailing | Qt::AlignVCenter);
    auto* control = new QWidget;
    auto* across = new QHBoxLayout(control);
    across->setContentsMargins(0, 0, 0, 0);
    across->addWidget(row.slider);
    across->addWidget(row.label);
    card.addRow(Texts::of(kind.label), {}, control);
    connect(row.slider, &QSlider::valueChanged, this,
            [this, index](int position) { move(index, position); });
    connect(row.slider, &QSlider::sliderReleased, this, [this] { letGo(); });
}

// Dragging only shows what would be; a key or a screen reader means it at once.
void TimingSliders::move(std::size_t index, int position) {
    const Kind& kind = kKinds[index];
    const std::int64_t stepped =
        std::int64_t{position + kind.stepSec / 2} / kind.stepSec * kind.stepSec;
    Row& row = rows_[index];
    row.valueSec = std::clamp(stepped, kind.range.least, kind.range.most);
    row.label->setText(Bound::secondsText(row.valueSec));
    telling_.start();
    if (!row.slider->isSliderDown()) {
        letGo();
    }
}

void TimingSliders::letGo() {
    if (asTheyStand() != *services_.settingsStore.settings()) {
        services_.timerEngine.applyOwnTiming(
            {{}, {}, rows_[0].valueSec, rows_[1].valueSec, rows_[2].valueSec, rows_[3].valueSec});
    }
}

void TimingSliders::setValue(Row& row, std::int64_t valueSec) {
    const QSignalBlocker quiet(row.slider);
    row.valueSec = valueSec;
    row.slider->setValue(static_cast<int>(
        std::clamp<std::int64_t>(valueSec, row.slider->minimum(), row.slider->maximum())));
    row.label->setText(Bound::secondsText(valueSec));
}

// The intervals as the engine counts them: a preset's are the catalogue's, whatever is stored.
void TimingSliders::show(const SettingsModel& settings) {
    const PresetDefinition active = PresetCatalog::active(settings);
    setValue(rows_[0], active.eyeIntervalSec);
    setValue(rows_[1], settings.eyeBreakDurationSec);
    setValue(rows_[2], active.bodyIntervalSec);
    setValue(rows_[3], settings.bodyBreakDurationSec);
    if (tell_) {
        telling_.start();
    }
}

SettingsModel TimingSliders::asTheyStand() const {
    SettingsModel settings = *services_.settingsStore.settings();
    const PresetDefinition active = PresetCatalog::active(settings);
    if (rows_[0].valueSec != active.eyeIntervalSec || rows_[2].valueSec != active.bodyIntervalSec) {
        settings.activePresetID = PresetCatalog::kOwnID;
    }
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        settings.*kKinds[i].field = rows_[i].valueSec;
    }
    return settings;
}

void TimingSliders::onChange(std::function<void(const SettingsModel&)> tell) {
    tell_ = std::move(tell);
    tell_(asTheyStand());
}

}  // namespace ostrel
