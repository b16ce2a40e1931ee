#pragma once

#include <span>

#include "screens/guide_figure.h"

namespace ostrel {

// The figures of the moves of an eye break.
[[nodiscard]] std::span<const GuideFigure> eyeFigures();

}  // namespace ostrel
