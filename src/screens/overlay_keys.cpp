#include "screens/overlay_keys.h"

#include <QChar>
#include <QKeyEvent>

namespace ostrel::OverlayKeys {
namespace {

constexpr int kFirstSpecialKey = 0x01000000;

bool isLetterOfAnotherScript(int key) {
    if (key <= 0 || key >= kFirstSpecialKey) {
        return false;
    }
    const auto character = static_cast<char32_t>(key);
    return QChar::isLetter(character) && QChar::script(character) != QChar::Script_Latin;
}

// Whatever the layout has it type.
bool isAtPlaceOfP(const QKeyEvent& event) {
#ifdef Q_OS_MACOS
    return event.nativeVirtualKey() == kP;
#else
    constexpr quint32 kScanCode = 33;  // X11 and Wayland
    return event.nativeScanCode() == kScanCode;
#endif
}

}  // namespace

std::optional<std::uint32_t> virtualKeyCode(const QKeyEvent& event) {
    // Part of a chord, maybe of one that belongs to another program: no answer to the break.
    if ((event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0) {
        return std::nullopt;
    }
    switch (event.key()) {
        case Qt::Key_Escape:
            return kEscape;
        case Qt::Key_Return:
            return kReturn;
        case Qt::Key_Enter:
            return kEnter;
        case Qt::Key_Space:
            return kSpace;
        case Qt::Key_P:
            return kP;
        default:
            break;
    }
    if (isAtPlaceOfP(event) && isLetterOfAnotherScript(event.key())) {
        return kP;
    }
    return std::nullopt;
}

}  // namespace ostrel::OverlayKeys
