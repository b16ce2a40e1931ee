#pragma once

#include <QLabel>

namespace ostrel {

// A dot for each step, the one at hand in the accent colour. A screen reader reads it as text.
class StepDots : public QLabel {
  public:
    explicit StepDots(int count, QWidget* parent = nullptr);

    // From 0.
    void setStep(int step);

    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    const int count_;
    int step_ = 0;
};

}  // namespace ostrel
