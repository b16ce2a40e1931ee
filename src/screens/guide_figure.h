#pragma once

#include <string_view>

#include "screens/figure_scene.h"

namespace ostrel {

// The drawing of one guided move, which repeats itself.
struct GuideFigure {
    std::string_view id;  // the move's
    double periodSec = 0;
    double stillPhase = 0;                        // what shows the move best when nothing may move
    FigureScene (*draw)(double phase) = nullptr;  // 0 to 1

    // The figure of the move `id`; null when there is none.
    [[nodiscard]] static const GuideFigure* of(std::string_view id);

    [[nodiscard]] FigureScene at(double seconds) const;
    [[nodiscard]] FigureScene still() const { return draw(stillPhase); }
};

}  // namespace ostrel
