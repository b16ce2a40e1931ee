#include "screens/penalty_banner.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <algorithm>
#include <utility>

#include "screens/identifier.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

constexpr double kTextSize = 16;
constexpr double kSidePadding = 24;
constexpr double kEdgePadding = 12;
constexpr double kCloseSize = 28;
constexpr double kGap = 12;

constexpr OverlayText::Type kBannerText{kTextSize, QFont::Normal, &OverlayLook::text, 3};

QColor faint(QColor colour, int alpha) {
    colour.setAlpha(alpha);
    return colour;
}

class CloseButton : public QAbstractButton {
  public:
    CloseButton(const OverlayLook& look, QWidget* parent) : QAbstractButton(parent), look_(look) {
        identify(this, QStringLiteral("ostrel.overlay.banner.close"));
        setAccessibleName(Texts::of("overlay.banner.close"));
        setFocusPolicy(Qt::TabFocus);
        setAttribute(Qt::WA_Hover);
    }

  protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
            click();
        } else {
            QAbstractButton::keyPressEvent(event);
        }
    }

    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setOpacity(look_.opacity);
        const QRectF circle = QRectF(rect()).adjusted(1, 1, -1, -1);
        if (underMouse()) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(faint(look_.text, isDown() ? 70 : 40));
            painter.drawEllipse(circle);
        }
        if (hasFocus()) {
            painter.setBrush(Qt::NoBrush);
            painter.setPen(QPen(look_.text, look_.px(2)));
            painter.drawEllipse(circle);
        }
        const double arm = width() * 0.17;
        const QPointF centre = QRectF(rect()).center();
        painter.setPen(QPen(look_.quiet, look_.px(1.6), Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(centre - QPointF(arm, arm), centre + QPointF(arm, arm));
        painter.drawLine(centre - QPointF(arm, -arm), centre + QPointF(arm, -arm));
    }

  private:
    const OverlayLook& look_;
};

}  // namespace

PenaltyBanner::PenaltyBanner(const OverlayLook& look, std::function<void()> onClose,
                             QWidget* parent)
    : QWidget(parent),
      look_(look),
      text_(new OverlayText(look, kBannerText, this)),
      close_(new CloseButton(look, this)) {
    identify(this, QStringLiteral("ostrel.overlay.banner"));
    QObject::connect(close_, &QAbstractButton::clicked, this, std::move(onClose));
}

void PenaltyBanner::setPenalty(std::int64_t penaltySec, std::int64_t recentSkipCount) {
    text_->setText(Texts::of("overlay.banner.penalty %lld %lld",
                             {std::max<std::int64_t>(recentSkipCount, 1), penaltySec}));
    setAccessibleName(text_->text());
}

void PenaltyBanner::adopt() {
    text_->adopt();
    close_->update();
    update();
}

int PenaltyBanner::closeSize() const {
    return look_.px(kCloseSize);
}

QSize PenaltyBanner::sizeFor(int width) const {
    const int around =
        look_.px(kSidePadding) + look_.px(kGap) + closeSize() + look_.px(kEdgePadding);
    const int textWidth = std::min(text_->fullWidth(), width - around);
    const int textHeight = text_->heightForWidth(textWidth);
    return {textWidth + around, std::max(textHeight, closeSize()) + 2 * look_.px(kEdgePadding)};
}

void PenaltyBanner::resizeEvent(QResizeEvent*) {
    const int close = closeSize();
    const int edge = look_.px(kEdgePadding);
    const int textWidth = width() - look_.px(kSidePadding) - look_.px(kGap) - close - edge;
    const int textHeight = text_->heightForWidth(textWidth);
    const QRect text(look_.px(kSidePadding), (height() - textHeight) / 2, textWidth, textHeight);
    const QRect button(width() - edge - close, (height() - close) / 2, close, close);
    text_->setGeometry(QStyle::visualRect(layoutDirection(), rect(), text));
    close_->setGeometry(QStyle::visualRect(layoutDirection(), rect(), button));
}

void PenaltyBanner::paintEvent(QPaintEvent*) {
    constexpr int kGround = 110;
    constexpr int kFill = 22;
    constexpr int kEdge = 90;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(look_.opacity);
    const QRectF pill = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    const double radius = std::min(pill.height() / 2, static_cast<double>(look_.px(26)));
    painter.setPen(Qt::NoPen);
    painter.setBrush(faint(look_.tint, kGround));
    painter.drawRoundedRect(pill, radius, radius);
    painter.setBrush(faint(look_.accent, kFill));
    painter.setPen(QPen(faint(look_.accent, kEdge), 1.0));
    painter.drawRoundedRect(pill, radius, radius);
}

}  // namespace ostrel
