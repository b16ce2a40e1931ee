#pragma once

#include <QLabel>

#include "screens/overlay_look.h"

namespace ostrel {

// A centred line of text, wrapped where it is too long and cut with an ellipsis after a few lines.
// It is plain text, whatever is in it.
class OverlayText : public QLabel {
  public:
    struct Type {
        double size = 1.0;  // in the look's units
        QFont::Weight weight = QFont::Normal;
        QColor OverlayLook::*colour = nullptr;
        int mostLines = 1;
        double letterSpacingPercent = 100.0;
    };

    // `look` outlives the text.
    OverlayText(const OverlayLook& look, const Type& type, QWidget* parent);

    // The look has changed.
    void adopt();

    [[nodiscard]] int heightForWidth(int width) const override;
    // The width of the text in one line.
    [[nodiscard]] int fullWidth() const;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    [[nodiscard]] QStringList lines(int width) const;

    const OverlayLook& look_;
    const Type type_;
};

}  // namespace ostrel
