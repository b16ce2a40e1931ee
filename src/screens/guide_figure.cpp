#include "screens/guide_figure.h"

#include <cmath>

#include "screens/guide_body_figures.h"
#include "screens/guide_eye_figures.h"

namespace ostrel {

const GuideFigure* GuideFigure::of(std::string_view id) {
    for (const auto figures : {bodyFigures(), eyeFigures()}) {
        for (const GuideFigure& figure : figures) {
            if (figure.id == id) {
                return &figure;
            }
        }
    }
    return nullptr;
}

FigureScene GuideFigure::at(double seconds) const {
    const double periods = seconds / periodSec;
    return draw(periods - std::floor(periods));
}

}  // namespace ostrel
