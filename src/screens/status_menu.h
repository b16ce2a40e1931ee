#pragma once

#include <QMenu>
#include <functional>

class QAction;

namespace ostrel {

class OverlayManager;
class SessionStateStore;
class SettingsStore;
class TimerEngine;
struct SessionStateModel;

// The status item's menu. What it says is worked out when it is about to show.
class StatusMenu : public QMenu {
  public:
    // What the menu reads and acts on. All of it outlives the menu.
    struct Services {
        TimerEngine& timerEngine;
        const SessionStateStore& sessionStateStore;
        const SettingsStore& settingsStore;
        const OverlayManager& overlayManager;
        std::function<void()> quit;
    };

    explicit StatusMenu(Services services);

    // Brings the entries up to date.
    void refresh();

    // What the schedule is doing, unless it just counts down.
    [[nodiscard]] static QString stateText(const Services& services);
    [[nodiscard]] static QString pauseText(const SessionStateModel& sessionState);

  private:
    QAction* addLine();
    void addBreaks();
    void addPauses();

    Services services_;
    QAction* firstLine_ = nullptr;
    QAction* secondLine_ = nullptr;
    QAction* startEye_ = nullptr;
    QAction* startBody_ = nullptr;
    QMenu* pauses_ = nullptr;
    QAction* resume_ = nullptr;
};

}  // namespace ostrel
