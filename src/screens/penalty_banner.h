#pragma once

#include <QWidget>
#include <cstdint>
#include <functional>

#include "screens/overlay_look.h"
#include "screens/overlay_text.h"

class QAbstractButton;

namespace ostrel {

// Says that the break is longer for a skip before; can be closed.
class PenaltyBanner : public QWidget {
  public:
    // `look` outlives the banner.
    PenaltyBanner(const OverlayLook& look, std::function<void()> onClose, QWidget* parent);

    void setPenalty(std::int64_t penaltySec, std::int64_t recentSkipCount);

    // The look has changed.
    void adopt();

    // As wide as its text, at most `width`.
    [[nodiscard]] QSize sizeFor(int width) const;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    [[nodiscard]] int closeSize() const;

    const OverlayLook& look_;
    OverlayText* text_;
    QAbstractButton* close_;
};

}  // namespace ostrel
