#pragma once

#include <QObject>
#include <QPointer>
#include <QRect>
#include <functional>
#include <optional>
#include <string>

#include "base/subscription.h"
#include "menubar/toast.h"
#include "screens/toast_card.h"

class QPropertyAnimation;

namespace ostrel {

class MotionSettings;
class ToastDispatcher;

// Shows the dispatcher's toast at the top right of the display with the pointer, clear of panels
// and above other windows. It never takes the keyboard; there is no window without a toast.
class ToastSurface : public QObject {
  public:
    // Both outlive the surface. `shade` is asked for each toast.
    ToastSurface(ToastDispatcher& toasts, const MotionSettings& motion,
                 std::function<ToastCard::Shade()> shade);
    ~ToastSurface() override;

    // While something covers the screen, such as a lock, there is no window; the toast's time goes
    // on.
    void setCovered(bool isCovered);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void follow(const std::optional<Toast>& toast);
    void enter(const Toast& toast);
    void leave();
    void place();
    void announce(const Toast& toast);
    QPropertyAnimation* fade(QWidget& window, double to);

    ToastDispatcher& toasts_;
    const MotionSettings& motion_;
    std::function<ToastCard::Shade()> shade_;
    bool isCovered_ = false;
    std::string shownID_;
    std::string spokenKey_;  // of the words that were announced
    QRect area_;             // of the display that the toast came up on
    QPointer<QWidget> window_;
    QPointer<ToastCard> card_;
    Subscription toastChanges_;
};

}  // namespace ostrel
