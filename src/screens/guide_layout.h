#pragma once

#include <QFont>
#include <QRect>
#include <QStringList>

#include "screens/overlay_look.h"

namespace ostrel {

// How figure, title and instruction of a guided move share the room there is: below each other
// where it is high enough for that, else with the texts beside the figure. Where room is scarce the
// instruction gets smaller, then the figure, then the figure goes, and at last everything.
struct GuideLayout {
    struct Words {
        QString title;
        QString instruction;

        bool operator==(const Words&) const = default;
    };
    struct Text {
        QFont font;
        QStringList lines;
        int lineHeight = 0;
        QRect place;

        [[nodiscard]] int height() const { return static_cast<int>(lines.size()) * lineHeight; }
    };

    QSize size;    // of it all; empty when there is no room for it
    QRect figure;  // empty when there is none
    Text title;
    Text instruction;
    Qt::Alignment alignment = Qt::AlignLeft;  // of the texts, where people write to the right

    // What fits into `room`. In a room of the size that it took it comes out the same.
    [[nodiscard]] static GuideLayout in(QSize room, const OverlayLook& look, const Words& words);

    // The height at which the figure keeps its size beside the texts.
    [[nodiscard]] static int goodHeight(int width, const OverlayLook& look, const Words& words);
};

}  // namespace ostrel
