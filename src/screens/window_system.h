#pragma once

#include <QPixmap>
#include <QRect>
#include <Qt>

class QScreen;
class QWidget;

namespace ostrel {

// How windows of ours stand above the work of other programs, and which of them has the keyboard
// meanwhile: a matter of the system's windows that the toolkit says nothing of.
class WindowSystem {
  public:
    virtual ~WindowSystem() = default;

    // The one in use: at first the toolkit's own means. Needs a QGuiApplication.
    [[nodiscard]] static WindowSystem& current();
    // From now on this one, which outlives its use; null for the toolkit's own means.
    static void use(WindowSystem* system);

    // Whether one can see through windows.
    [[nodiscard]] virtual bool canBeTranslucent() const { return true; }

    // What is on the display at `frame` now, in the desktop's logical pixels, for windows that one
    // cannot see through; null where that cannot be had.
    [[nodiscard]] virtual QPixmap pictureOf(QScreen& screen, const QRect& frame) const;

    // What a window has besides being frameless and on top, set before it is made: one that covers
    // a display, and a card beside the work that goes on.
    [[nodiscard]] virtual Qt::WindowFlags coverFlags() const { return {}; }
    [[nodiscard]] virtual Qt::WindowFlags cardFlags() const { return {}; }

    // Shows a window over everything on the display; it has the display's geometry.
    virtual void showCover(QWidget& window) = 0;
    virtual void showCard(QWidget& window) = 0;

    // The keyboard for a window that is shown, or back to where it was; whether that worked.
    virtual bool setKeyboardTaken(QWidget& window, bool isTaken) = 0;
};

}  // namespace ostrel
