#include "screens/colours.h"

namespace ostrel::Colours {

QColor between(const QColor& one, const QColor& other, double share) {
    const auto mixed = [share](int a, int b) { return static_cast<int>(a + (b - a) * share); };
    return {mixed(one.red(), other.red()), mixed(one.green(), other.green()),
            mixed(one.blue(), other.blue())};
}

}  // namespace ostrel::Colours
