#pragma once

#include <QWidget>

namespace ostrel {

// A window of ours that people work in: settings, report, about, the welcome. It has our look,
// follows the palette and the language, closes on Escape and on the standard key for closing, and
// is gone when it is closed.
class StyledWindow : public QWidget {
  public:
    // Brings it to the front, wherever it was.
    void present();

  protected:
    explicit StyledWindow(QSize size);

    // Makes the whole content anew, in the current language: its title and one child that fills it.
    // Called after the construction, and whenever the language changes.
    [[nodiscard]] virtual QWidget* makeContent() = 0;

    // Takes the content away, while all that it works with is still there.
    void clear();

    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void rebuild();
    void adoptLook();

    QWidget* content_ = nullptr;
};

}  // namespace ostrel
