#pragma once

#include <QAbstractButton>

#include "core/settings/preset_catalog.h"

class QLabel;

namespace ostrel {

// A preset to choose: its name and its four figures in words. Cards in one parent are a choice of
// one, which the arrow keys move, as with radio buttons.
class PresetCard : public QAbstractButton {
  public:
    explicit PresetCard(const PresetDefinition& preset, QWidget* parent = nullptr);

    [[nodiscard]] const PresetDefinition& preset() const { return preset_; }

    // Another one on the same card.
    void adopt(const PresetDefinition& preset);
    // In place of the figures, which the card keeps the room for.
    void showHint(const QString& hint);

  protected:
    void focusInEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void makePieces();
    [[nodiscard]] QRectF mark() const;

    PresetDefinition preset_;
    QLabel* name_ = nullptr;
    QLabel* hint_ = nullptr;
    QLabel* figures_[2][3] = {};
};

}  // namespace ostrel
