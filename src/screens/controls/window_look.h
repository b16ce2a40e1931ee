#pragma once

#include <QColor>
#include <QPalette>
#include <QString>

namespace ostrel {

// How our windows look: calm cards on the palette's paper, one accent colour. `style names` of
// widgets are Qt properties named "look": "title", "heading", "hint", "card", "row", "link",
// "primary", "danger".
namespace WindowLook {

// For the style sheet of a window.
[[nodiscard]] QString styleSheet(const QPalette& palette);

// A colour that lies between the two; share 0 is `one`, 1 is `other`.
[[nodiscard]] QColor between(const QColor& one, const QColor& other, double share);

[[nodiscard]] QColor accent(const QPalette& palette);

}  // namespace WindowLook
}  // namespace ostrel
