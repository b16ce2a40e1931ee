#pragma once

#include <QPixmap>
#include <QWidget>
#include <functional>

#include "overlay/overlay_window.h"
#include "screens/fade.h"
#include "screens/overlay_backdrop.h"

namespace ostrel {

class OverlayView;

// The widget that covers a display: the view over its backdrop, and both fading.
class OverlaySurface : public QWidget {
  public:
    static constexpr double kFadeInSec = 0.4;

    // Called once, when the first picture is on the screen.
    using OnFirstPaint = std::function<void()>;

    OverlaySurface(OverlayManager& manager, BreakLogEntry::Kind kind, Role role,
                   OnFirstPaint onFirstPaint);

    // Shows it over `frame`, in the desktop's logical pixels.
    void appear(const QRect& frame);
    void moveTo(const QRect& frame);
    void setRole(Role role);

    // Everything but the desktop fades out; then the surface is hidden. It takes no input.
    void fadeOut(double seconds);

    // Off the screen at once; hears of the manager no more.
    void retire();

    [[nodiscard]] OverlayView& view() const { return *view_; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void beginFadeIn();

    OverlayManager& manager_;
    OverlayView* view_;
    OverlayBackdrop backdrop_;
    OnFirstPaint onFirstPaint_;
    bool hasPainted_ = false;
    QPixmap lastPicture_;  // of the whole surface, while it fades out
    double lastOpacity_ = 1.0;
    Fade fade_;
};

}  // namespace ostrel
