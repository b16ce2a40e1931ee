#pragma once

#include <QPointer>
#include <functional>
#include <optional>
#include <vector>

#include "base/subscription.h"
#include "core/settings/settings_model.h"
#include "platform/api/capability.h"
#include "screens/controls/styled_window.h"

class QLabel;
class QPushButton;
class QStackedWidget;

namespace ostrel {

class Card;
class Page;
class SettingsStore;
class StepDots;
class Switch;
class TimerEngine;

// What someone sees who starts the program for the first time: what it does, the rhythm, what it
// pays heed to, ready. What is chosen holds at once; leaving early changes nothing but that the
// welcome was seen.
class WelcomeWindow : public StyledWindow {
  public:
    struct Services {
        SettingsStore& settingsStore;
        TimerEngine& timerEngine;
        std::function<void()> showSampleBreak;
        // Calls back once, perhaps later, perhaps when the window is gone.
        std::function<void(std::function<void(std::vector<Capability>)> tell)> findCapabilities;
        // Answers whether it could be done.
        std::function<bool(bool isEnabled)> setLaunchAtLogin;
    };

    // `settingsStore` and `timerEngine` outlive the window.
    explicit WelcomeWindow(Services services);

  protected:
    QWidget* makeContent() override;
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    using IsOn = std::function<bool(const SettingsModel&)>;

    [[nodiscard]] Page* makeWhatPage();
    [[nodiscard]] Page* makeRhythmPage();
    [[nodiscard]] Page* makePresencePage();
    [[nodiscard]] Page* makeReadyPage();
    [[nodiscard]] QWidget* makeFoot();
    [[nodiscard]] Switch* makeSwitch(const char* name, IsOn isOn,
                                     std::function<void(bool isOn)> choose);
    [[nodiscard]] std::function<void(bool)> chooser(bool SettingsModel::*field);

    void goTo(int step);
    void refresh();
    void showCapabilities();
    void holdBreaksInCalls(bool isHeld);
    void startAtLogin(bool isEnabled);

    Services services_;
    int step_ = 0;
    std::optional<std::vector<Capability>> capabilities_;
    std::vector<std::string> callPrograms_;  // for when calls are paid heed to again

    // Of the content that is shown; none before the first.
    QPointer<QStackedWidget> pages_;
    QPointer<StepDots> dots_;
    QPointer<QPushButton> back_;
    QPointer<QPushButton> skip_;
    QPointer<QPushButton> next_;
    QPointer<Card> desktop_;
    QPointer<QWidget> asking_;
    QPointer<QLabel> where_;
    QPointer<QLabel> loginFailed_;
    std::vector<std::function<void(const SettingsModel&)>> refreshers_;

    Subscription settingsChanges_;
};

}  // namespace ostrel
