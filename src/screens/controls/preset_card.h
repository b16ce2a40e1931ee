#pragma once

#include <QAbstractButton>

#include "core/settings/preset_catalog.h"

namespace ostrel {

// A preset to choose: its name and its four figures in words. Cards in one parent are a choice of
// one, which the arrow keys move, as with radio buttons.
class PresetCard : public QAbstractButton {
  public:
    explicit PresetCard(const PresetDefinition& preset, QWidget* parent = nullptr);

    [[nodiscard]] const PresetDefinition& preset() const { return preset_; }

  protected:
    void focusInEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    [[nodiscard]] QRectF mark() const;

    const PresetDefinition preset_;
};

}  // namespace ostrel
