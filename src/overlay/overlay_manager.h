#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "base/clock.h"
#include "base/published.h"
#include "base/signal.h"
#include "base/uuid.h"
#include "overlay/active_overlay_session.h"
#include "overlay/guided_rotation_store.h"
#include "overlay/overlay_ports.h"
#include "overlay/overlay_window.h"
#include "platform/api/displays.h"
#include "platform/api/haptics.h"
#include "platform/api/input_idle.h"
#include "platform/api/motion_settings.h"
#include "platform/api/run_loop.h"
#include "platform/api/system_events.h"

namespace ostrel {

class SettingsStore;
class TimerEngine;

// Puts due breaks on the screen, one at a time: counts the break down, keeps one window per
// display, turns keys and buttons into actions and ends the break with exactly one CloseReason.
//
// A gentle break is a card that blocks nothing. At its end it is judged by the time without input
// whether the user stepped away; if not, the card asks.
//
// The break is over at the close; its windows may still be fading out. An overlay must never lock
// anybody out: no window takes the keyboard before it has painted, and a break that nothing was
// painted of within kFirstPaintLimitSec is taken down. While the session is locked or another user
// has the seat there are no windows, and the break goes on.
class OverlayManager : public OverlayWindowListener {
  public:
    static constexpr double kFirstPaintLimitSec = 3.0;
    static constexpr double kAnswerLimitSec = 60.0;

    // Seconds; tickInterval counts down by its whole part.
    struct Timing {
        double tickInterval = 1.0;
        double autoFadeDelaySec = 1.5;
        double fadeOutDurationSec = 0.6;
    };

    // What the manager works with. All of it outlives the manager.
    struct Services {
        PreferencesStore& preferences;
        const SettingsStore& settingsStore;
        TimerEngine& timerEngine;
        OverlayWindowMaker& windows;
        Displays& displays;
        SystemEvents& systemEvents;
        const MotionSettings& motion;
        Haptics& haptics;
        const InputIdle& inputIdle;
        RunLoop& runLoop;
        NowFunction now;
        MakeUuid makeUuid;
        OverlayRecords records;
    };

    explicit OverlayManager(Services services) : OverlayManager(std::move(services), Timing{}) {}
    OverlayManager(Services services, Timing timing);
    OverlayManager(const OverlayManager&) = delete;
    OverlayManager& operator=(const OverlayManager&) = delete;
    ~OverlayManager() override;

    [[nodiscard]] const Published<std::optional<ActiveOverlaySession>>& activeSession() const {
        return activeSession_;
    }
    [[nodiscard]] const Published<bool>& bannerDismissed() const { return bannerDismissed_; }
    [[nodiscard]] const Published<std::int64_t>& recentSkipCount() const {
        return recentSkipCount_;
    }
    [[nodiscard]] const Published<std::optional<std::uint32_t>>& primaryDisplayID() const {
        return primaryDisplayID_;
    }
    // Whether the break that is active is a card.
    [[nodiscard]] bool isGentle() const { return gentleCardID_.has_value(); }
    [[nodiscard]] const std::vector<std::unique_ptr<OverlayWindow>>& openWindows() const {
        return openWindows_;
    }
    [[nodiscard]] const SettingsStore& settingsStore() const { return services_.settingsStore; }
    [[nodiscard]] const MotionSettings& motion() const { return services_.motion; }

    // Starts a break of baseDurationSec + penaltySec seconds. Ignored while one is active.
    void present(BreakLogEntry::Kind kind, std::int64_t baseDurationSec, std::int64_t penaltySec);

    // Ends the active break; without one does nothing.
    void close(CloseReason reason);

    // An action is offered when its button is there, enabled when the button can be pressed.
    [[nodiscard]] bool offers(OverlayAction action) const;
    [[nodiscard]] bool enables(OverlayAction action) const;

    // Seconds that skipping the active break would add to the next one of its kind.
    [[nodiscard]] std::int64_t skipCostSec() const;

    // Performs the action if it is enabled; false when it is not.
    bool press(OverlayAction action);

    void dismissBanner() { bannerDismissed_.set(true); }

    KeyOutcome handleKey(std::uint32_t virtualKeyCode) override;
    void didPaint(OverlayWindow& window) override;

    // Seconds of skip penalty, when a break that carries one starts.
    Signal<std::int64_t> penaltyAppliedPublisher;

    // For those who only tell what happens: their observers must not close the break. didPresent
    // comes when the windows are open.
    Signal<> didPresent;
    Signal<> didRebuildWindows;
    Signal<std::uint32_t> didPaintWindow;  // by display, once a window
    Signal<BreakLogEntry::Kind> didReachZero;
    Signal<BreakLogEntry::Kind> didAsk;  // whether the user rested
    Signal<BreakLogEntry::Kind, CloseReason> didClose;

  private:
    [[nodiscard]] ActiveOverlaySession makeSession(BreakLogEntry::Kind kind,
                                                   std::int64_t baseDurationSec,
                                                   std::int64_t penaltySec);
    [[nodiscard]] bool canPostpone() const;
    void tick();
    void reachZero();
    void judgeRest();
    void closeAfterFade();
    void showCard();
    void updateCard();
    [[nodiscard]] GentleCard card() const;
    void applyEffects(const ActiveOverlaySession& session, CloseReason reason, WallTime now);
    void complete(const ActiveOverlaySession& session, BreakLogEntry::Outcome outcome,
                  WallTime now);
    void log(const ActiveOverlaySession& session, BreakLogEntry::Kind kind,
             BreakLogEntry::Outcome outcome, std::int64_t penaltySec, WallTime now);
    [[nodiscard]] std::vector<ScreenSnapshot> takeSnapshots();
    void rebuildWindows();
    void syncWindows();
    void awaitFirstPaint();
    [[nodiscard]] bool hasPainted(std::optional<std::uint32_t> displayID) const;
    void giveKeyboardToPrimary();
    void closeWindows();

    Services services_;
    const Timing timing_;
    std::int64_t tickSec_ = 0;  // what a tick takes off
    Published<std::optional<ActiveOverlaySession>> activeSession_;
    Published<bool> bannerDismissed_;
    Published<std::int64_t> recentSkipCount_;
    Published<std::optional<std::uint32_t>> primaryDisplayID_;
    GuidedRotationStore rotation_;
    std::optional<std::string> gentleCardID_;
    GentleCard::Stage gentleStage_ = GentleCard::Stage::counting;
    bool didFireAutoFade_ = false;
    bool isClosing_ = false;
    std::vector<std::uint32_t> paintedDisplayIDs_;
    std::optional<std::uint32_t> keyboardDisplayID_;
    std::vector<std::unique_ptr<OverlayWindow>> openWindows_;
    std::vector<std::unique_ptr<OverlayWindow>> fadingWindows_;

    Timer countdownTimer_;
    Timer autoFadeTimer_;
    Timer firstPaintTimer_;
    Timer fadeOutTimer_;
    std::vector<Subscription> subscriptions_;
};

}  // namespace ostrel
