#pragma once

#include <span>

#include "screens/guide_figure.h"

namespace ostrel {

// The figures of the moves of a body break.
[[nodiscard]] std::span<const GuideFigure> bodyFigures();

}  // namespace ostrel
