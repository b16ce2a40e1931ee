#include "screens/guide_view.h"

#include <QPaintEvent>
#include <QPainter>
#include <QStyle>
#include <QWindow>
#include <algorithm>
#include <chrono>
#include <utility>

#include "overlay/guided_moves.h"
#include "platform/api/motion_settings.h"
#include "screens/guide_figure.h"
#include "screens/identifier.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

constexpr std::chrono::milliseconds kFrame{66};
constexpr double kMsPerSecond = 1000.0;
constexpr double kMostAbove = 32;  // left free above the figure
// The share of a change in which the old move goes.
constexpr double kGone = 0.5;

}  // namespace

GuideView::GuideView(const OverlayLook& look, const MotionSettings& motion, QWidget* parent)
    : QLabel(parent), look_(look), motion_(motion) {
    identify(this, QStringLiteral("ostrel.overlay.guide"));
    frames_.setInterval(kFrame);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    frames_.callOnTimeout([this] {
        if (isExposed()) {
            drawFigure();
        }
    });
}

void GuideView::setMove(const GuidedMove& move) {
    const GuidedMove* before = std::exchange(move_, &move);
    if (before == move_) {
        return;
    }
    setAccessibleName(Texts::of(move.title));
    setAccessibleDescription(Texts::of(move.instruction));
    if (!before || !isVisible() || motion_.reduceMotion()) {
        change_.stop();
        presence_ = 1.0;
        begin(move);
        return;
    }
    change_.run(kChangeSec, [this, isOld = true](double share) mutable {
        if (share >= kGone && std::exchange(isOld, false)) {
            begin(*move_);
        }
        presence_ = share < kGone ? 1.0 - share / kGone : (share - kGone) / (1.0 - kGone);
        update();
    });
}

void GuideView::begin(const GuidedMove& move) {
    words_ = {Texts::of(move.title), Texts::of(move.instruction)};
    figure_ = GuideFigure::of(move.id);
    sinceMove_.start();
    arrange();
}

void GuideView::setActivity(Activity activity) {
    activity_ = activity;
    startOrStop();
}

void GuideView::adopt() {
    arrange();
}

int GuideView::goodHeight(int width) const {
    return GuideLayout::goodHeight(width, look_, words_);
}

void GuideView::arrange() {
    layout_ = GuideLayout::in(size(), look_, words_);
    const QSize sheet = layout_.figure.size() * devicePixelRatioF();
    if (sheet != sheet_.size()) {
        sheet_ = QImage(sheet, QImage::Format_ARGB32_Premultiplied);
        sheet_.setDevicePixelRatio(devicePixelRatioF());
    }
    scene_ = FigureScene();
    sheet_.fill(Qt::transparent);
    drawFigure();
    startOrStop();
    update();
}

void GuideView::startOrStop() {
    if (mayMove() == frames_.isActive()) {
        return;
    }
    if (frames_.isActive()) {
        frames_.stop();
        drawFigure();
    } else {
        frames_.start();
    }
}

bool GuideView::mayMove() const {
    return activity_ == Activity::moving && isVisible() && figure_ && !sheet_.isNull() &&
           !motion_.reduceMotion();
}

void GuideView::drawFigure() {
    if (!figure_ || sheet_.isNull()) {
        return;
    }
    const bool standsStill = motion_.reduceMotion();
    if (standsStill) {
        frames_.stop();
    }
    const double seconds = static_cast<double>(sinceMove_.elapsed()) / kMsPerSecond;
    FigureScene scene = standsStill ? figure_->still() : figure_->at(seconds);
    const QRect change = onSheet(scene.changeSince(scene_));
    // Where a figure rests for a moment there is nothing to draw.
    if (!change.isEmpty()) {
        scene_ = std::move(scene);
        const double unit = FigureScene::kSide / layout_.figure.width();
        scene_.paint(sheet_, look_.accent,
                     QRectF(QPointF(change.topLeft()) * unit, QSizeF(change.size()) * unit));
        update(change.translated(placed(layout_.figure).topLeft()));
    }
}

// Whole pixels of the widget around `part` of the scene.
QRect GuideView::onSheet(const QRectF& part) const {
    if (part.isEmpty()) {
        return {};
    }
    const QRect whole(QPoint(), layout_.figure.size());
    const double scale = whole.width() / FigureScene::kSide;
    const QRectF scaled(part.topLeft() * scale, part.size() * scale);
    return scaled.toAlignedRect().adjusted(-1, -1, 1, 1) & whole;
}

void GuideView::resizeEvent(QResizeEvent*) {
    arrange();
}

void GuideView::showEvent(QShowEvent*) {
    startOrStop();
}

void GuideView::hideEvent(QHideEvent*) {
    startOrStop();
}

bool GuideView::isExposed() const {
    const QWindow* onScreen = window()->windowHandle();
    return onScreen && onScreen->isExposed();
}

QRect GuideView::placed(const QRect& inLayout) const {
    const int free = std::max(height() - layout_.size.height(), 0);
    const QPoint corner((width() - layout_.size.width()) / 2,
                        std::min(free / 2, look_.px(kMostAbove)));
    return QStyle::visualRect(layoutDirection(), rect(), inLayout.translated(corner));
}

std::array<QRect, 3> GuideView::places() const {
    if (layout_.size.isEmpty()) {
        return {};
    }
    return {placed(layout_.figure), placed(layout_.title.place), placed(layout_.instruction.place)};
}

void GuideView::paintEvent(QPaintEvent* event) {
    if (look_.opacity <= 0.0 || layout_.size.isEmpty()) {
        return;
    }
    QPainter painter(this);
    painter.setOpacity(look_.opacity * presence_);
    const QRect figure = placed(layout_.figure);
    if (event->rect().intersects(figure)) {
        painter.drawImage(figure, sheet_);
    }
    if (!figure.contains(event->rect())) {
        paintText(painter, layout_.title, look_.text);
        paintText(painter, layout_.instruction, look_.quiet);
    }
}

void GuideView::paintText(QPainter& painter, const GuideLayout::Text& text,
                          const QColor& colour) const {
    painter.setFont(text.font);
    painter.setPen(colour);
    const auto alignment = QStyle::visualAlignment(layoutDirection(), layout_.alignment) |
                           Qt::AlignAbsolute | Qt::AlignVCenter;
    QRect line = placed(text.place);
    line.setHeight(text.lineHeight);
    for (const QString& words : text.lines) {
        painter.drawText(line, static_cast<int>(alignment) | Qt::TextSingleLine, words);
        line.translate(0, text.lineHeight);
    }
}

}  // namespace ostrel
