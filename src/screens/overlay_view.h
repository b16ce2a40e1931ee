#pragma once

#include <QWidget>
#include <vector>

#include "base/subscription.h"
#include "overlay/active_overlay_session.h"
#include "overlay/overlay_window.h"
#include "screens/overlay_look.h"

namespace ostrel {

class ActionButton;
class CountdownRing;
class GuideView;
class OverlayText;
class PenaltyBanner;

// What a break shows on one display, without what lies behind it: kind, time, guided move, actions,
// banner. It follows the manager's session and calls its actions.
//
// In the `minimal` style the actions come into view when the pointer moves or one of them has the
// focus.
class OverlayView : public QWidget {
  public:
    // `manager` outlives the view's subscriptions.
    OverlayView(OverlayManager& manager, BreakLogEntry::Kind kind, Role role, QWidget* parent);
    ~OverlayView() override;

    void setRole(Role role);
    [[nodiscard]] const OverlayLook& look() const { return look_; }
    // 0 invisible to 1.
    void setContentOpacity(double opacity);

    // Where something is drawn all the time.
    [[nodiscard]] std::vector<QRect> busyPlaces() const;

    // Hears of the manager no more.
    void detach();

  protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void makePieces();
    void makePiecesAnew();
    void refresh();
    void refreshTitle(const ActiveOverlaySession& session);
    void refreshGuide(const ActiveOverlaySession& session);
    void refreshActions();
    void refreshSkipCost();
    void dropFocusFrom(const QWidget& piece);
    void revealActions();
    void adoptLook();

    void arrange();
    [[nodiscard]] int arrangeBanner();
    [[nodiscard]] int arrangeActions();
    void arrangeMiddle(int top, int bottom);
    [[nodiscard]] int titleHeight(int width) const;
    [[nodiscard]] int ringSide(int room, int guide) const;
    void placeTitle(int bottom, int width);

    OverlayManager& manager_;
    const BreakLogEntry::Kind kind_;
    Role role_;
    OverlayLook look_;
    PenaltyBanner* banner_ = nullptr;
    OverlayText* overline_ = nullptr;
    OverlayText* title_ = nullptr;
    OverlayText* message_ = nullptr;
    CountdownRing* ring_ = nullptr;
    GuideView* guide_ = nullptr;  // of the whole view in the `guided` style alone
    std::vector<ActionButton*> actions_;
    OverlayText* skipCost_ = nullptr;
    bool areActionsRevealed_ = true;
    QPointF firstPointerPosition_;
    bool hasPointerPosition_ = false;
    std::vector<Subscription> subscriptions_;
};

}  // namespace ostrel
