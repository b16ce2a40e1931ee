#pragma once

#include <QWidget>
#include <string_view>

namespace ostrel {

// The figure of a guided move, still, in the accent colour. Only to look at: a screen reader has
// the words beside it.
class FigurePicture : public QWidget {
  public:
    // The identifier of the move; side in logical pixels.
    FigurePicture(std::string_view move, int side, QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    const std::string_view move_;
};

}  // namespace ostrel
