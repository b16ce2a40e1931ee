#include "screens/overlay_text.h"

#include <QPainter>

#include "screens/wrapped_lines.h"

namespace ostrel {

OverlayText::OverlayText(const OverlayLook& look, const Type& type, QWidget* parent)
    : QLabel(parent), look_(look), type_(type) {
    setTextFormat(Qt::PlainText);
    adopt();
}

void OverlayText::adopt() {
    QFont font = look_.font(type_.size, type_.weight);
    font.setLetterSpacing(QFont::PercentageSpacing, type_.letterSpacingPercent);
    setFont(font);
    update();
}

int OverlayText::heightForWidth(int width) const {
    return static_cast<int>(lines(width).size()) * fontMetrics().lineSpacing();
}

int OverlayText::fullWidth() const {
    // Breaking lines rounds: a width cut too close would wrap.
    return fontMetrics().horizontalAdvance(text()) + 2;
}

QStringList OverlayText::lines(int width) const {
    return wrappedLines(text(), font(), width, type_.mostLines);
}

void OverlayText::paintEvent(QPaintEvent*) {
    if (look_.opacity <= 0.0) {
        return;
    }
    QPainter painter(this);
    painter.setOpacity(look_.opacity);
    painter.setPen(look_.*type_.colour);
    QRect row(0, 0, width(), fontMetrics().lineSpacing());
    for (const QString& line : lines(width())) {
        painter.drawText(row, Qt::AlignHCenter | Qt::AlignVCenter | Qt::TextSingleLine, line);
        row.translate(0, row.height());
    }
}

}  // namespace ostrel
