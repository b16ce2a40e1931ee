#pragma once

#include <QIcon>
#include <QPixmap>
#include <QString>
#include <cstdint>

#include "menubar/menu_bar_formatter.h"

// The picture of the status item: a ring that empties toward the next break, around the time left.
//
// It stands on a dark disc of its own, since a program cannot learn what colour a panel has.
namespace ostrel::StatusIcon {

// All that the picture depends on. Two equal faces are the same picture.
struct Face {
    static constexpr int kRingSteps = 24;

    MenuBarFormatter::Status status = MenuBarFormatter::Status::running;
    QString label;  // minutes, or seconds in the last one; empty where it is shown elsewhere
    bool isLastMinute = false;
    int ringSteps = 0;  // of kRingSteps
    bool penaltyPending = false;

    bool operator==(const Face&) const = default;
};

// What the number is made of.
struct Remaining {
    std::int64_t nearestSec = 0;  // until the nearest break
    std::int64_t penaltySec = 0;  // that is added to it
};

// The ring moves when the number does, so that there is one picture a minute.
[[nodiscard]] Face faceOf(const MenuBarFormatter::Output& output, const Remaining& remaining);

// Of a positive number of seconds, the least whole minutes that hold them, in seconds.
[[nodiscard]] std::int64_t wholeMinutesUp(std::int64_t seconds);

[[nodiscard]] QPixmap draw(const Face& face, int side);

// Without the disc, for a panel that takes the opacity alone and brings its own colours.
[[nodiscard]] QPixmap drawStencil(const Face& face, int side);

// In all sizes that panels use, up to high resolutions.
[[nodiscard]] QIcon icon(const Face& face);

}  // namespace ostrel::StatusIcon
