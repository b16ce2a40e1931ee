#pragma once

#include <QCheckBox>

namespace ostrel {

// A check box drawn as a switch. Without a text of its own: the row that it stands in names it.
class Switch : public QCheckBox {
  public:
    explicit Switch(QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    [[nodiscard]] bool hitButton(const QPoint& position) const override;
};

}  // namespace ostrel
