#include "screens/action_button.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <algorithm>
#include <string>

#include "base/enum_names.h"
#include "screens/identifier.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

constexpr double kTextSize = 18;
constexpr double kKeySize = 13;
constexpr double kHeight = 54;
constexpr double kSidePadding = 28;
constexpr double kKeyGap = 14;
constexpr double kKeyPadding = 7;
constexpr double kKeyHeight = 24;
constexpr double kFocusGap = 4;
constexpr double kFocusStroke = 2;
constexpr double kDisabledOpacity = 0.5;

struct Words {
    std::string_view label;
    std::string_view hint;
    std::string_view key;
};

Words wordsOf(OverlayAction action) {
    switch (action) {
        case OverlayAction::done:
        case OverlayAction::gentleDone:  // the answers have their place on the card
        case OverlayAction::gentleSkip:
            break;
        case OverlayAction::skip:
            return {"action.skip", "action.skip.hint", "key.escape"};
        case OverlayAction::postpone:
            return {"action.postpone_5", "action.postpone_5.hint", "key.p"};
    }
    return {"action.done", "action.done.hint", "key.return"};
}

QColor faint(QColor colour, int alpha) {
    colour.setAlpha(alpha);
    return colour;
}

}  // namespace

ActionButton::ActionButton(const OverlayLook& look, OverlayAction action, QWidget* parent)
    : QPushButton(parent), look_(look), action_(action) {
    const Words words = wordsOf(action);
    identify(this, QString::fromStdString("ostrel.overlay.action." + std::string(nameOf(action))));
    setText(Texts::of(words.label));
    setAccessibleName(text());
    setAccessibleDescription(Texts::of(words.hint));
    key_ = Texts::of(words.key);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    adopt();
}

void ActionButton::setRevealed(bool isRevealed) {
    if (isRevealed != isRevealed_) {
        isRevealed_ = isRevealed;
        setAttribute(Qt::WA_TransparentForMouseEvents, !isRevealed);
        update();
    }
}

void ActionButton::adopt() {
    setFont(look_.font(kTextSize, QFont::Medium));
    keyFont_ = look_.font(kKeySize);
    updateGeometry();
    update();
}

int ActionButton::keyWidth() const {
    return std::max(QFontMetrics(keyFont_).horizontalAdvance(key_) + 2 * look_.px(kKeyPadding),
                    look_.px(kKeyHeight));
}

QSize ActionButton::sizeHint() const {
    const int around = 2 * look_.px(kFocusGap);
    const int width = fontMetrics().horizontalAdvance(text()) + look_.px(kKeyGap) + keyWidth() +
                      2 * look_.px(kSidePadding);
    return {width + around, look_.px(kHeight) + around};
}

// Return presses a focused button as Space does, whatever the desktop's habit.
void ActionButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
    } else {
        QPushButton::keyPressEvent(event);
    }
}

void ActionButton::paintEvent(QPaintEvent*) {
    if (look_.opacity <= 0.0 || !isRevealed_) {
        return;
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(look_.opacity * (isEnabled() ? 1.0 : kDisabledOpacity));
    const double gap = look_.px(kFocusGap);
    paintPill(painter, QRectF(rect()).adjusted(gap, gap, -gap, -gap));
    paintLabels(painter);
}

void ActionButton::paintPill(QPainter& painter, const QRectF& pill) const {
    constexpr int kGround = 110;
    constexpr int kFill = 38;
    constexpr int kHoverFill = 64;
    constexpr int kDownFill = 84;
    constexpr int kEdge = 72;
    const double radius = pill.height() / 2;
    const int fill = isDown() ? kDownFill : underMouse() && isEnabled() ? kHoverFill : kFill;
    painter.setPen(Qt::NoPen);
    if (isProminent()) {
        painter.setBrush(isDown()       ? look_.accent.darker(115)
                         : underMouse() ? look_.accent.lighter(108)
                                        : look_.accent);
        painter.drawRoundedRect(pill, radius, radius);
    } else {
        painter.setBrush(faint(look_.tint, kGround));
        painter.drawRoundedRect(pill, radius, radius);
        painter.setBrush(faint(look_.text, fill));
        painter.setPen(QPen(faint(look_.text, kEdge), 1.0));
        painter.drawRoundedRect(pill.adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    }
    if (hasFocus()) {
        const double stroke = look_.px(kFocusStroke);
        const QRectF around =
            QRectF(rect()).adjusted(stroke / 2, stroke / 2, -stroke / 2, -stroke / 2);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(look_.text, stroke));
        painter.drawRoundedRect(around, around.height() / 2, around.height() / 2);
    }
}

void ActionButton::paintLabels(QPainter& painter) const {
    const QColor ink = isProminent() ? look_.tint : look_.text;
    const int side = look_.px(kFocusGap) + look_.px(kSidePadding);
    QRect label = rect().adjusted(side, 0, -side, 0);
    QRect cap(label.right() + 1 - keyWidth(), (height() - look_.px(kKeyHeight)) / 2, keyWidth(),
              look_.px(kKeyHeight));
    label.setRight(cap.left() - look_.px(kKeyGap));
    if (isRightToLeft()) {
        label = QStyle::visualRect(layoutDirection(), rect(), label);
        cap = QStyle::visualRect(layoutDirection(), rect(), cap);
    }
    painter.setFont(font());
    painter.setPen(ink);
    painter.drawText(label, Qt::AlignCenter,
                     fontMetrics().elidedText(text(), Qt::ElideRight, label.width() + 1));

    constexpr int kCapEdge = 110;
    constexpr int kCapInk = 200;
    const double corner = look_.px(kKeyHeight) / 4.0;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(faint(ink, kCapEdge), 1.0));
    painter.drawRoundedRect(QRectF(cap).adjusted(0.5, 0.5, -0.5, -0.5), corner, corner);
    painter.setFont(keyFont_);
    painter.setPen(faint(ink, kCapInk));
    painter.drawText(cap, Qt::AlignCenter, key_);
}

}  // namespace ostrel
