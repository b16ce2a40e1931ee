#pragma once

#include <QObject>
#include <QTimer>
#include <memory>

#include "base/subscription.h"
#include "overlay/overlay_window.h"
#include "screens/keyboard_grab.h"

class QKeyEvent;

namespace ostrel {

class OverlaySurface;

// An OverlayWindow of Qt widgets, as the WindowSystem at hand has it.
class QtOverlayWindow : public QObject, public OverlayWindow {
  public:
    // A window that outlives its break by this long takes itself down.
    static constexpr int kWatchdogMs = 1000;

    // On the screen when made. `manager` outlives it.
    QtOverlayWindow(OverlayManager& manager, BreakLogEntry::Kind kind, const ScreenSnapshot& screen,
                    Role role);
    ~QtOverlayWindow() override;

    [[nodiscard]] std::uint32_t displayID() const override { return screen_.displayID; }
    [[nodiscard]] Role role() const override { return role_; }
    void cover(const ScreenSnapshot& screen, Role role) override;
    void takeKeyboard() override;
    void releaseKeyboard() override;
    void fadeOut(double seconds) override;

    [[nodiscard]] OverlaySurface& surface() const { return *surface_; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    [[nodiscard]] bool takesKey(const QKeyEvent& event);

    OverlayManager& manager_;
    ScreenSnapshot screen_;
    Role role_;
    bool isFading_ = false;

    // Destroyed in the next turn of the loop: the action that ends the window may come from a
    // button in it.
    struct Retire {
        void operator()(OverlaySurface* surface) const;
    };
    std::unique_ptr<OverlaySurface, Retire> surface_;

    KeyboardGrab keyboard_;
    QTimer watchdog_;
    Subscription sessionChanges_;
};

}  // namespace ostrel
