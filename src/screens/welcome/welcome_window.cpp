#include "screens/welcome/welcome_window.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <utility>

#include "core/settings/settings_store.h"
#include "screens/controls/page.h"
#include "screens/controls/switch.h"
#include "screens/identifier.h"
#include "screens/texts/texts.h"
#include "screens/welcome/step_dots.h"

namespace ostrel {
namespace {

constexpr QSize kSize(640, 580);
constexpr int kFootMargin = 20;

}  // namespace

WelcomeWindow::WelcomeWindow(Services services)
    : StyledWindow(kSize),
      services_(std::move(services)),
      callPrograms_(services_.settingsStore.settings()->deferAppBundleIDs) {
    if (callPrograms_.empty()) {
        callPrograms_ = PresenceDefaults::deferAppBundleIDs();
    }
    settingsChanges_ =
        services_.settingsStore.settings().onChange([this](const auto&) { refresh(); });
    services_.findCapabilities([window = QPointer(this)](std::vector<Capability> found) {
        if (window) {
            window->capabilities_ = std::move(found);
            window->showCapabilities();
        }
    });
}

QWidget* WelcomeWindow::makeContent() {
    setWindowTitle(Texts::of("welcome.title"));
    refreshers_.clear();
    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    pages_ = new QStackedWidget;
    for (Page* page : {makeWhatPage(), makeRhythmPage(), makePresencePage(), makeReadyPage()}) {
        pages_->addWidget(page);
    }
    layout->addWidget(pages_, 1);
    layout->addWidget(makeFoot());
    showCapabilities();
    refresh();
    goTo(step_);
    return content;
}

QWidget* WelcomeWindow::makeFoot() {
    auto* foot = new QWidget;
    auto* thirds = new QGridLayout(foot);
    thirds->setContentsMargins(kFootMargin, kFootMargin / 2, kFootMargin, kFootMargin);
    thirds->setColumnStretch(0, 1);
    thirds->setColumnStretch(2, 1);
    skip_ = makeButton("welcome.skip", QStringLiteral("ostrel.welcome.skip"));
    connect(skip_, &QPushButton::clicked, this, &QWidget::close);
    dots_ = new StepDots(pages_->count());
    back_ = makeButton("welcome.back", QStringLiteral("ostrel.welcome.back"));
    connect(back_, &QPushButton::clicked, this, [this] { goTo(step_ - 1); });
    next_ = makeButton("welcome.continue", QStringLiteral("ostrel.welcome.continue"));
    next_->setProperty("look", QStringLiteral("primary"));
    connect(next_, &QPushButton::clicked, this, [this] { goTo(step_ + 1); });
    auto* steps = new QHBoxLayout;
    steps->addStretch();
    steps->addWidget(back_);
    steps->addWidget(next_);
    thirds->addWidget(skip_, 0, 0, Qt::AlignLeading | Qt::AlignVCenter);
    thirds->addWidget(dots_, 0, 1, Qt::AlignCenter);
    thirds->addLayout(steps, 0, 2);
    return foot;
}

void WelcomeWindow::goTo(int step) {
    if (step >= pages_->count()) {
        close();
        return;
    }
    step_ = step;
    const bool isLast = step == pages_->count() - 1;
    pages_->setCurrentIndex(step);
    dots_->setStep(step);
    next_->setText(Texts::of(isLast ? "welcome.finish" : "welcome.continue"));
    // A screen reader hears of the page with the button that led to it.
    next_->setAccessibleDescription(pages_->currentWidget()->accessibleName());
    next_->setFocus();
    back_->setVisible(step > 0);
    skip_->setVisible(!isLast);
}

// Return is Continue, wherever the focus is, but on another button.
void WelcomeWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        StyledWindow::keyPressEvent(event);
        return;
    }
    auto* focused = qobject_cast<QPushButton*>(focusWidget());
    (focused != nullptr ? focused : next_.data())->click();
}

// The toolkit would begin with the first control of the page.
void WelcomeWindow::showEvent(QShowEvent* event) {
    next_->setFocus();
    StyledWindow::showEvent(event);
}

void WelcomeWindow::closeEvent(QCloseEvent* event) {
    services_.settingsStore.update([](SettingsModel& settings) { settings.hasOnboarded = true; });
    StyledWindow::closeEvent(event);
}

Switch* WelcomeWindow::makeSwitch(const char* name, IsOn isOn,
                                  std::function<void(bool isOn)> choose) {
    auto* made = new Switch;
    identify(made, QString::fromLatin1(name));
    // A screen reader switches it without a click.
    connect(made, &QCheckBox::toggled, this, std::move(choose));
    refreshers_.emplace_back([made, isOn = std::move(isOn)](const SettingsModel& settings) {
        const QSignalBlocker quiet(made);
        made->setChecked(isOn(settings));
    });
    return made;
}

std::function<void(bool)> WelcomeWindow::chooser(bool SettingsModel::*field) {
    return [this, field](bool isOn) {
        services_.settingsStore.update([=](SettingsModel& settings) { settings.*field = isOn; });
    };
}

void WelcomeWindow::refresh() {
    for (const auto& refresher : refreshers_) {
        refresher(*services_.settingsStore.settings());
    }
}

void WelcomeWindow::holdBreaksInCalls(bool isHeld) {
    services_.settingsStore.update([this, isHeld](SettingsModel& settings) {
        settings.deferAppBundleIDs = isHeld ? callPrograms_ : std::vector<std::string>();
    });
}

void WelcomeWindow::startAtLogin(bool isEnabled) {
    loginFailed_->setVisible(!services_.setLaunchAtLogin(isEnabled));
    refresh();
}

}  // namespace ostrel
