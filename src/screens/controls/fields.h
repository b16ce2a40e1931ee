#pragma once

#include <QComboBox>
#include <QSpinBox>
#include <QTimeEdit>

// Fields with arrows, in the look of the windows. A style sheet can take an arrow from a picture
// only, which would be of one colour and one size, so they draw their own.
namespace ostrel {

// A list that unfolds.
class Choice : public QComboBox {
  public:
    explicit Choice(QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;
};

// A whole number. What is being typed counts when it is whole: the 1 of a 12 is no answer.
class NumberField : public QSpinBox {
  public:
    NumberField() { setKeyboardTracking(false); }

  protected:
    void paintEvent(QPaintEvent* event) override;
};

// A time of day; likewise.
class TimeField : public QTimeEdit {
  public:
    TimeField() { setKeyboardTracking(false); }

  protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace ostrel
