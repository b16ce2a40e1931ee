#include "screens/settings/overlay_preview.h"

#include <QPainter>
#include <QPainterPath>

#include "screens/countdown_label.h"
#include "screens/overlay_look.h"
#include "screens/settings/bound_controls.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

constexpr std::int64_t kShownSec = 80;
constexpr int kHeight = 190;
constexpr double kProportion = 16.0 / 9.0;
constexpr double kRadius = 8;

}  // namespace

OverlayPreview::OverlayPreview(const SettingsStore& store) : store_(store) {
    setFixedHeight(kHeight);
    setAccessibleName(Texts::of("settings.breaks.preview"));
    Bound::setName(this, "preview");
    Bound::follow(this, store, [this](const SettingsModel&) { update(); });
}

void OverlayPreview::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QRectF screen(0, 0, kHeight * kProportion, kHeight);
    screen.moveCenter(QRectF(rect()).center());
    QPainterPath outline;
    outline.addRoundedRect(screen, kRadius, kRadius);
    painter.setClipPath(outline);
    paintDesktop(painter, screen);
    paintBreak(painter, screen);
}

// A window with some lines over a wallpaper.
void OverlayPreview::paintDesktop(QPainter& painter, const QRectF& screen) const {
    QLinearGradient wallpaper(screen.topLeft(), screen.bottomRight());
    wallpaper.setColorAt(0, QColor(0x9F, 0xC3, 0xD9));
    wallpaper.setColorAt(1, QColor(0xE8, 0xC9, 0xA8));
    painter.fillRect(screen, wallpaper);
    const QRectF window(screen.left() + 46, screen.top() + 26, screen.width() - 120,
                        screen.height() - 60);
    painter.fillRect(window, Qt::white);
    painter.fillRect(QRectF(window.topLeft(), QSizeF(window.width(), 14)),
                     QColor(0xD5, 0xD9, 0xE0));
    constexpr int kLines = 7;
    for (int line = 0; line < kLines; ++line) {
        const double width = window.width() * (line % 3 == 2 ? 0.5 : 0.82);
        painter.fillRect(QRectF(window.left() + 14, window.top() + 26 + line * 13, width, 5),
                         QColor(0x8A, 0x93, 0xA1));
    }
}

void OverlayPreview::paintBreak(QPainter& painter, const QRectF& screen) const {
    constexpr int kFullCircle = 360 * 16;
    const SettingsModel& settings = *store_.settings();
    const OverlayLook look = OverlayLook::of(settings.overlayTint, screen.size().toSize());
    QColor tint = look.tint;
    tint.setAlphaF(static_cast<float>(std::clamp(settings.overlayDimOpacity, 0.0, 1.0)));
    painter.fillRect(screen, tint);
    const bool isGuided = settings.overlayStyle == OverlayStyle::guided;
    const QPointF middle = screen.center() - QPointF(0, isGuided ? 18 : 0);
    const QRectF ring(middle - QPointF(32, 32), QSizeF(64, 64));
    QColor faint = look.text;
    faint.setAlphaF(0.16F);
    painter.setPen(QPen(faint, 4));
    painter.drawEllipse(ring);
    painter.setPen(QPen(look.accent, 4, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(ring, kFullCircle / 4, -kFullCircle * 2 / 3);
    QFont font = painter.font();
    font.setPixelSize(17);
    painter.setFont(font);
    painter.setPen(look.text);
    painter.drawText(ring, Qt::AlignCenter, countdownLabel(kShownSec));
    if (isGuided) {
        font.setPixelSize(10);
        painter.setFont(font);
        painter.drawText(QRectF(screen.left(), ring.bottom() + 14, screen.width(), 16),
                         Qt::AlignCenter, Texts::of("overlay.title.eye"));
        painter.setPen(look.quiet);
        painter.drawText(QRectF(screen.left(), ring.bottom() + 30, screen.width(), 16),
                         Qt::AlignCenter, Texts::of("guide.eye.far_focus.title"));
    }
}

}  // namespace ostrel
