#pragma once

#include <QFont>
#include <QString>
#include <QStringList>

namespace ostrel {

// `text` in lines of at most `width`, cut with an ellipsis after `mostLines`. Words that are wider
// are broken. No text has no lines.
[[nodiscard]] QStringList wrappedLines(const QString& text, const QFont& font, int width,
                                       int mostLines);

}  // namespace ostrel
