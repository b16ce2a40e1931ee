#pragma once

#include <QWidget>

namespace ostrel {

class SettingsStore;

// A break on a small desktop, as the settings would have it: tint, darkness and style.
class OverlayPreview : public QWidget {
  public:
    explicit OverlayPreview(const SettingsStore& store);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void paintDesktop(QPainter& painter, const QRectF& screen) const;
    void paintBreak(QPainter& painter, const QRectF& screen) const;

    const SettingsStore& store_;
};

}  // namespace ostrel
