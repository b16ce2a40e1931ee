#include "screens/wrapped_lines.h"

#include <QFontMetrics>
#include <QTextLayout>

namespace ostrel {

QStringList wrappedLines(const QString& text, const QFont& font, int width, int mostLines) {
    const QString whole = text.simplified();
    if (whole.isEmpty()) {
        return {};
    }
    QTextLayout layout(whole, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    QStringList found;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        const QString rest = whole.mid(line.textStart());
        const bool isLast = found.size() + 1 == mostLines;
        found += isLast ? QFontMetrics(font).elidedText(rest, Qt::ElideRight, width)
                        : rest.left(line.textLength()).trimmed();
        if (isLast) {
            break;
        }
    }
    layout.endLayout();
    return found;
}

}  // namespace ostrel
