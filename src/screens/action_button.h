#pragma once

#include <QPushButton>

#include "overlay/active_overlay_session.h"
#include "screens/overlay_look.h"

namespace ostrel {

// One of the overlay's actions as a pill, with its key written small.
class ActionButton : public QPushButton {
  public:
    // `look` outlives the button.
    ActionButton(const OverlayLook& look, OverlayAction action, QWidget* parent);

    [[nodiscard]] OverlayAction action() const { return action_; }

    // A button that is not revealed is not drawn and takes no click; keys and screen readers reach
    // it.
    void setRevealed(bool isRevealed);

    // The look has changed.
    void adopt();

    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void paintPill(QPainter& painter, const QRectF& pill) const;
    void paintLabels(QPainter& painter) const;
    [[nodiscard]] bool isProminent() const { return action_ == OverlayAction::done && isEnabled(); }
    [[nodiscard]] int keyWidth() const;

    const OverlayLook& look_;
    const OverlayAction action_;
    bool isRevealed_ = true;
    QFont keyFont_;
    QString key_;
};

}  // namespace ostrel
