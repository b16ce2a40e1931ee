#pragma once

#include <QLabel>
#include <cstdint>

#include "screens/overlay_look.h"

namespace ostrel {

// A thin ring that empties with the time, and the time in its middle.
//
// For a screen reader it is a label whose name says how much is left, in steps coarse enough that
// it does not talk all the time.
class CountdownRing : public QLabel {
  public:
    enum class Face { ring, timeOnly };

    // `look` outlives the ring.
    CountdownRing(const OverlayLook& look, QWidget* parent);

    void setFace(Face face);
    void setTime(std::int64_t remainingSec, std::int64_t totalSec);

    // What the name says of `remainingSec`.
    [[nodiscard]] static QString spokenTime(std::int64_t remainingSec);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void paintRing(QPainter& painter) const;
    void paintTime(QPainter& painter) const;

    const OverlayLook& look_;
    Face face_ = Face::ring;
    std::int64_t remainingSec_ = 0;
    std::int64_t totalSec_ = 0;
};

}  // namespace ostrel
