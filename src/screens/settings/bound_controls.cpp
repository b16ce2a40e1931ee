#include "screens/settings/bound_controls.h"

#include <QEvent>
#include <QObject>
#include <QSignalBlocker>
#include <memory>

#include "screens/identifier.h"
#include "screens/texts/texts.h"

namespace ostrel::Bound {
namespace {

// A subscription that ends with its owner.
class Following : public QObject {
  public:
    Following(QObject* owner, Subscription subscription)
        : QObject(owner), subscription_(std::move(subscription)) {}

  private:
    Subscription subscription_;
};

class WheelIgnorer : public QObject {
  public:
    using QObject::QObject;

    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        if (event->type() != QEvent::Wheel) {
            return false;
        }
        event->ignore();
        return true;
    }
};

constexpr std::int64_t kMinuteSec = 60;

QString choiceText(std::int64_t seconds) {
    return seconds == 0 ? Texts::of("settings.value.never") : secondsText(seconds);
}

}  // namespace

void follow(QObject* owner, const SettingsStore& store,
            std::function<void(const SettingsModel&)> show) {
    show(*store.settings());
    new Following(owner, store.settings().onChange(std::move(show)));
}

void setName(QWidget* control, const char* field) {
    identify(control, QStringLiteral("ostrel.settings.") + QLatin1String(field));
}

void ignoreWheel(QWidget* control) {
    control->setFocusPolicy(Qt::StrongFocus);
    control->installEventFilter(new WheelIgnorer(control));
}

QString secondsText(std::int64_t seconds) {
    if (seconds < kMinuteSec) {
        return Texts::of("settings.value.seconds %lld", {seconds});
    }
    const std::int64_t minutes = seconds / kMinuteSec;
    const std::int64_t rest = seconds % kMinuteSec;
    return rest == 0 ? Texts::of("settings.value.minutes %lld", {minutes})
                     : Texts::of("settings.value.minutes_seconds %lld %lld", {minutes, rest});
}

Soon::Soon(QObject* parent) : QObject(parent) {
    constexpr int kBetweenMs = 250;
    timer_.setSingleShot(true);
    timer_.setInterval(kBetweenMs);
    connect(&timer_, &QTimer::timeout, this, [this] { work(); });
}

// What follows the settings for the same control shows nothing any more: that is half gone.
Soon::~Soon() {
    qDeleteAll(children());
    work();
}

void Soon::run(std::function<void()> act) {
    act_ = std::move(act);
    if (!timer_.isActive()) {
        timer_.start();
    }
}

void Soon::work() {
    if (const auto act = std::exchange(act_, nullptr)) {
        act();
    }
}

Switch* makeSwitch(SettingsStore& store, bool SettingsModel::*field, const char* name,
                   Sense sense) {
    auto* control = new Switch;
    setName(control, name);
    const bool isInverted = sense == Sense::inverted;
    follow(control, store, [control, field, isInverted](const SettingsModel& settings) {
        const QSignalBlocker quiet(control);
        control->setChecked(settings.*field != isInverted);
    });
    QObject::connect(control, &QCheckBox::toggled, control, [&store, field, isInverted](bool isOn) {
        store.update([&](SettingsModel& settings) { settings.*field = isOn != isInverted; });
    });
    return control;
}

Choice* makeList(SettingsStore& store, const QStringList& labels,
                 std::function<int(const SettingsModel&)> shown,
                 std::function<void(SettingsModel&, int)> choose, const char* name) {
    auto* control = new Choice;
    setName(control, name);
    ignoreWheel(control);
    control->addItems(labels);
    follow(control, store, [control, isShown = std::move(shown)](const SettingsModel& settings) {
        const QSignalBlocker quiet(control);
        control->setCurrentIndex(isShown(settings));
    });
    QObject::connect(control, &QComboBox::currentIndexChanged, control,
                     [&store, isChosen = std::move(choose)](int index) {
                         store.update([&](SettingsModel& settings) { isChosen(settings, index); });
                     });
    return control;
}

Choice* makeSecondsChoice(SettingsStore& store, std::int64_t SettingsModel::*field,
                          std::span<const std::int64_t> choices, const char* name) {
    auto* control = new Choice;
    setName(control, name);
    ignoreWheel(control);
    for (const std::int64_t seconds : choices) {
        control->addItem(choiceText(seconds), static_cast<qlonglong>(seconds));
    }
    follow(control, store,
           [control, field, offered = static_cast<int>(choices.size())](const SettingsModel& now) {
               const QSignalBlocker quiet(control);
               const auto value = static_cast<qlonglong>(now.*field);
               int index = control->findData(value);
               if (index < 0) {
                   control->removeItem(offered);
                   control->addItem(choiceText(value), value);
                   index = offered;
               }
               control->setCurrentIndex(index);
           });
    QObject::connect(control, &QComboBox::currentIndexChanged, control,
                     [&store, control, field](int index) {
                         const std::int64_t seconds = control->itemData(index).toLongLong();
                         store.update([&](SettingsModel& settings) { settings.*field = seconds; });
                     });
    return control;
}

}  // namespace ostrel::Bound
