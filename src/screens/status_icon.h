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
    QString label;  // minutes, or seconds in the last one
    bool isLastMinute = false;
    int ringSteps = 0;  // of kRingSteps
    bool penaltyPending = false;

    bool operator==(const Face&) const = default;
};

// `shownSec`: seconds until the nearest break, its penalty included.
[[nodiscard]] Face faceOf(const MenuBarFormatter::Output& output, std::int64_t shownSec);

[[nodiscard]] QPixmap draw(const Face& face, int side);

// In all sizes that panels use, up to high resolutions.
[[nodiscard]] QIcon icon(const Face& face);

}  // namespace ostrel::StatusIcon
