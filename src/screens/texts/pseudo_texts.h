#pragma once

#include <QString>

// Languages that nobody speaks, to see what a translation will do to a screen before there is one.
namespace ostrel::PseudoTexts {

// Accents on every letter and 40 % more of them; placeholders stay as they are.
[[nodiscard]] QString lengthened(const QString& text);

// Marked as running from right to left, in the same letters.
[[nodiscard]] QString mirrored(const QString& text);

}  // namespace ostrel::PseudoTexts
