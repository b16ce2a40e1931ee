#pragma once

#include <QColor>
#include <QPalette>
#include <QString>

namespace ostrel {

// How our windows look: calm cards on the palette's paper, one accent colour. `style names` of
// widgets are Qt properties named "look": "title", "heading", "hint", "card", "row", "link",
// "primary", "danger".
namespace WindowLook {

// For the style sheet of a window whose lines run in this direction.
[[nodiscard]] QString styleSheet(const QPalette& palette, Qt::LayoutDirection direction);

[[nodiscard]] QColor accent(const QPalette& palette);

}  // namespace WindowLook
}  // namespace ostrel
