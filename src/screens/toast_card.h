#pragma once

#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "menubar/toast.h"
#include "screens/overlay_look.h"

class QHBoxLayout;
class QLabel;
class QPushButton;

namespace ostrel {

class CountdownRing;

// The rounded card of a toast: its symbol or countdown, its words, its buttons.
//
// For a screen reader it is an alert, named by whoever shows it.
class ToastCard : public QWidget {
    Q_OBJECT

  public:
    enum class Shade { light, dark };

    // `onPress` is called with the identifier of the button's action.
    ToastCard(const Toast& toast, Shade shade, std::function<void(const std::string&)> onPress,
              QWidget* parent);

    // Another state of the same toast.
    void show(const Toast& toast);

    // Left around the card for its shadow, in logical pixels; 0 where windows are not translucent.
    void setShadow(int margin);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void makePieces();
    void showActions(const std::vector<Toast::Action>& actions);
    [[nodiscard]] QString styleSheetOfButtons() const;

    const OverlayLook look_;
    std::function<void(const std::string&)> onPress_;
    std::vector<Toast::Action> actions_;
    QWidget* symbol_ = nullptr;
    CountdownRing* ring_ = nullptr;
    QLabel* message_ = nullptr;
    QLabel* secondaryLine_ = nullptr;
    QHBoxLayout* buttons_ = nullptr;
    int shadow_ = 0;
};

}  // namespace ostrel
