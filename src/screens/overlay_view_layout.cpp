// Where the pieces of OverlayView stand. The ring has the middle of the display; it gives way to a
// long text above it and to the guided move below it before it gets smaller.

#include <QStyle>
#include <algorithm>

#include "screens/action_button.h"
#include "screens/countdown_ring.h"
#include "screens/guide_view.h"
#include "screens/overlay_text.h"
#include "screens/overlay_view.h"
#include "screens/penalty_banner.h"

namespace ostrel {
namespace {

constexpr double kMargin = 48;
constexpr double kFootMargin = 72;
constexpr double kGapAboveCost = 18;
constexpr double kColumnWidth = 920;
constexpr double kRingShare = 0.42;  // of the shorter side
constexpr double kRingShareOverGuide = 0.36;
constexpr double kSecondaryShare = 0.36;
constexpr double kLeastRing = 180;
constexpr double kGapAboveRing = 56;
constexpr double kGapBelowRing = 36;
constexpr double kGapBelowBanner = 28;
constexpr double kGapAboveTitle = 12;
constexpr double kGapAboveMessage = 16;
constexpr double kGapBetweenActions = 10;

}  // namespace

void OverlayView::arrange() {
    if (size().isEmpty()) {
        return;
    }
    if (role_ == Role::secondary) {
        const int side = static_cast<int>(std::min(width(), height()) * kSecondaryShare);
        ring_->setGeometry((width() - side) / 2, (height() - side) / 2, side, side);
        return;
    }
    const int top = arrangeBanner();
    const int bottom = arrangeActions();
    arrangeMiddle(top, bottom);
}

// Returns where the room below the banner begins.
int OverlayView::arrangeBanner() {
    const int margin = look_.px(kMargin);
    if (banner_->isHidden()) {
        return margin;
    }
    const QSize size = banner_->sizeFor(std::min(width() - 2 * margin, look_.px(kColumnWidth)));
    banner_->setGeometry(QRect(QPoint((width() - size.width()) / 2, margin), size));
    return margin + size.height() + look_.px(kGapBelowBanner);
}

// In a row, or below each other where the display is too narrow. Returns where the room above ends.
int OverlayView::arrangeActions() {
    const int gap = look_.px(kGapBetweenActions);
    const int room = width() - 2 * look_.px(kMargin);
    std::vector<ActionButton*> shown;
    int rowWidth = -gap;
    for (ActionButton* button : actions_) {
        if (!button->isHidden()) {
            shown.push_back(button);
            rowWidth += button->sizeHint().width() + gap;
        }
    }
    const int foot = height() - look_.px(kFootMargin);
    skipCost_->setGeometry((width() - room) / 2, foot + look_.px(kGapAboveCost), room,
                           skipCost_->heightForWidth(room));
    if (shown.empty()) {
        return foot;
    }
    const int step = shown.front()->sizeHint().height() + gap;
    if (rowWidth > room) {
        int y = foot - step * static_cast<int>(shown.size()) + gap;
        const int top = y;
        for (ActionButton* button : shown) {
            const int w = std::min(button->sizeHint().width(), room);
            button->setGeometry((width() - w) / 2, y, w, button->sizeHint().height());
            y += step;
        }
        return top;
    }
    int x = (width() - rowWidth) / 2;
    for (ActionButton* button : shown) {
        const QRect place(QPoint(x, foot - step + gap), button->sizeHint());
        button->setGeometry(QStyle::visualRect(layoutDirection(), rect(), place));
        x += place.width() + gap;
    }
    return foot - step + gap;
}

void OverlayView::arrangeMiddle(int top, int bottom) {
    const int textWidth = std::min(width() - 2 * look_.px(kMargin), look_.px(kColumnWidth));
    const int gapAbove = look_.px(kGapAboveRing);
    const int gapBelow = look_.px(kGapBelowRing);
    const int ringTop = top + (title_->isHidden() ? 0 : titleHeight(textWidth) + gapAbove);
    const bool isGuided = guide_ && !guide_->isHidden();
    const int guide = isGuided ? guide_->goodHeight(textWidth) + gapBelow : 0;
    const int ring = ringSide(bottom - gapBelow - ringTop, guide);

    const int lowest = bottom - gapBelow - guide - ring;
    const int y = std::max(std::min((height() - ring) / 2, lowest), ringTop);
    ring_->setGeometry((width() - ring) / 2, y, ring, ring);
    if (!title_->isHidden()) {
        placeTitle(y - gapAbove, textWidth);
    }
    if (isGuided) {
        const int guideTop = y + ring + gapBelow;
        guide_->setGeometry((width() - textWidth) / 2, guideTop, textWidth,
                            std::max(bottom - gapBelow - guideTop, 0));
    }
}

// `room` is the height that ring and guided move share.
int OverlayView::ringSide(int room, int guide) const {
    const bool isWide = width() > height();
    const double share = guide > 0 && isWide ? kRingShareOverGuide : kRingShare;
    const int wanted = static_cast<int>(std::min(width(), height()) * share);
    const int least = std::min({look_.px(kLeastRing), std::max(room, 0), wanted});
    return std::clamp(room - guide, least, wanted);
}

int OverlayView::titleHeight(int width) const {
    const int message = message_->heightForWidth(width);
    return overline_->heightForWidth(width) + look_.px(kGapAboveTitle) +
           title_->heightForWidth(width) + (message > 0 ? look_.px(kGapAboveMessage) + message : 0);
}

void OverlayView::placeTitle(int bottom, int textWidth) {
    const int x = (width() - textWidth) / 2;
    int y = bottom - titleHeight(textWidth);
    const auto place = [&](OverlayText* text, double gapAbove) {
        const int textHeight = text->heightForWidth(textWidth);
        y += textHeight > 0 && gapAbove > 0 ? look_.px(gapAbove) : 0;
        text->setGeometry(x, y, textWidth, textHeight);
        y += textHeight;
    };
    place(overline_, 0.0);
    place(title_, kGapAboveTitle);
    place(message_, kGapAboveMessage);
}

}  // namespace ostrel
