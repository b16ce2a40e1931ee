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

// A whole number.
class NumberField : public QSpinBox {
  protected:
    void paintEvent(QPaintEvent* event) override;
};

// A time of day.
class TimeField : public QTimeEdit {
  protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace ostrel
