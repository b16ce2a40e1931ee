#pragma once

#include <QMenu>
#include <functional>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "base/clock.h"
#include "base/subscription.h"

class QAction;

namespace ostrel {

class DailyCounter;
class OverlayManager;
class SessionStateStore;
class SettingsStore;
class TimerEngine;
struct MenuBarSessionDerivedState;

// The status item's menu. What it says is worked out when it is about to show, and every second
// while our own window shows it.
class StatusMenu : public QMenu {
  public:
    // What the menu reads and acts on. All of it outlives the menu.
    struct Services {
        TimerEngine& timerEngine;
        const SessionStateStore& sessionStateStore;
        const SettingsStore& settingsStore;
        const OverlayManager& overlayManager;
        const DailyCounter& dailyCounter;
        std::function<std::optional<WallTime>()> workUntil;
        std::function<void()> openSettings;
        std::function<void()> openReport;
        std::function<void()> openAbout;
        std::function<void()> quit;
    };

    explicit StatusMenu(Services services);

    // Brings the entries up to date.
    void refresh();

    // What the schedule is doing, a line or two, unless it just counts down.
    [[nodiscard]] static QString stateText(const Services& services);

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void adoptPalette();
    QAction* addLine();
    QAction* addWords(QMenu& menu, std::string_view key, std::function<void()> act);
    void retranslate();
    void addBreaks();
    void addPauses();
    void addToday();
    void refreshCountdowns(const MenuBarSessionDerivedState& state);
    void refreshToday(const MenuBarSessionDerivedState& state);

    Services services_;
    std::vector<std::pair<QAction*, std::string_view>> words_;
    QAction* statusLine_ = nullptr;
    QAction* pauseDescription_ = nullptr;
    QAction* nextEye_ = nullptr;
    QAction* nextBody_ = nullptr;
    QAction* remark_ = nullptr;  // on the next break
    QAction* startEye_ = nullptr;
    QAction* startBody_ = nullptr;
    QMenu* pauses_ = nullptr;
    QAction* resume_ = nullptr;
    QAction* today_ = nullptr;
    QAction* skippedToday_ = nullptr;
    Subscription ticks_;
};

}  // namespace ostrel
