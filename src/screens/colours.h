#pragma once

#include <QColor>

namespace ostrel::Colours {

// One that lies between the two; share 0 is `one`, 1 is `other`.
[[nodiscard]] QColor between(const QColor& one, const QColor& other, double share);

}  // namespace ostrel::Colours
