#include "screens/guide_layout.h"

#include <QFontMetrics>
#include <algorithm>
#include <cmath>
#include <optional>

#include "screens/wrapped_lines.h"

namespace ostrel {
namespace {

constexpr double kTitleSize = 25;
constexpr double kInstructionSize = 19;
constexpr double kLeastInstructionSize = 16;
constexpr int kTitleLines = 2;
constexpr int kInstructionLines = 5;
constexpr double kLeading = 1.18;  // of the instruction
constexpr double kTextGap = 8;

constexpr double kFigureAbove = 300;
constexpr double kFigureBeside = 216;
constexpr double kLeastFigure = 84;
constexpr double kGapBelowFigure = 20;
constexpr double kGapBesideFigure = 36;
constexpr double kWidthBelowFigure = 620;
constexpr double kWidthBesideFigure = 430;
constexpr double kLeastWidthBesideFigure = 250;

GuideLayout::Text wrappedText(const QString& words, const QFont& font, double leading, int width,
                              int mostLines) {
    const double lineHeight = QFontMetricsF(font).lineSpacing() * leading;
    return {font,
            wrappedLines(words, font, width, mostLines),
            static_cast<int>(std::lround(lineHeight)),
            {}};
}

// One room, and ways to fill it; a way that does not fit has no layout.
class Room {
  public:
    Room(QSize size, const OverlayLook& look, const GuideLayout::Words& words)
        : size_(size), look_(look), words_(words) {}

    // The side of the figure's square is `most` where there is room for it, but not below `least`.
    [[nodiscard]] std::optional<GuideLayout> beside(double most, double least,
                                                    double instruction) const {
        const int side = std::min(look_.px(most), size_.height());
        const int left = side + look_.px(kGapBesideFigure);
        const int width = std::min(size_.width() - left, look_.px(kWidthBesideFigure));
        if (side < look_.px(least) || width < look_.px(kLeastWidthBesideFigure)) {
            return std::nullopt;
        }
        GuideLayout layout = withWords(width, instruction);
        const int textHeight = heightOfWords(layout);
        layout.size = QSize(left + width, std::max(side, textHeight));
        layout.figure = QRect(0, (layout.size.height() - side) / 2, side, side);
        placeWords(layout, QPoint(left, (layout.size.height() - textHeight) / 2), width);
        return ifItFits(layout);
    }

    [[nodiscard]] std::optional<GuideLayout> below(double most, double least,
                                                   double instruction) const {
        const int width = std::min(size_.width(), look_.px(kWidthBelowFigure));
        GuideLayout layout = withWords(width, instruction);
        const int textHeight = heightOfWords(layout) + look_.px(kGapBelowFigure);
        const int side = std::min({look_.px(most), width, size_.height() - textHeight});
        if (side < look_.px(least)) {
            return std::nullopt;
        }
        layout.size = QSize(width, side + textHeight);
        layout.figure = QRect((width - side) / 2, 0, side, side);
        layout.alignment = Qt::AlignHCenter;
        placeWords(layout, QPoint(0, side + look_.px(kGapBelowFigure)), width);
        return layout;
    }

    [[nodiscard]] std::optional<GuideLayout> wordsAlone() const {
        const int width = std::min(size_.width(), look_.px(kWidthBelowFigure));
        GuideLayout layout = withWords(width, kLeastInstructionSize);
        layout.size = QSize(width, heightOfWords(layout));
        layout.alignment = Qt::AlignHCenter;
        placeWords(layout, QPoint(), width);
        return ifItFits(layout);
    }

  private:
    [[nodiscard]] GuideLayout withWords(int width, double instruction) const {
        GuideLayout layout;
        layout.title = wrappedText(words_.title, look_.font(kTitleSize), 1.0, width, kTitleLines);
        layout.instruction = wrappedText(words_.instruction, look_.font(instruction), kLeading,
                                         width, kInstructionLines);
        return layout;
    }
    [[nodiscard]] int heightOfWords(const GuideLayout& layout) const {
        return layout.title.height() + look_.px(kTextGap) + layout.instruction.height();
    }
    void placeWords(GuideLayout& layout, QPoint at, int width) const {
        const int titleHeight = layout.title.height();
        layout.title.place = QRect(at, QSize(width, titleHeight));
        layout.instruction.place = QRect(at + QPoint(0, titleHeight + look_.px(kTextGap)),
                                         QSize(width, layout.instruction.height()));
    }
    [[nodiscard]] std::optional<GuideLayout> ifItFits(const GuideLayout& layout) const {
        const bool fits =
            layout.size.width() <= size_.width() && layout.size.height() <= size_.height();
        return fits ? std::optional(layout) : std::nullopt;
    }

    const QSize size_;
    const OverlayLook& look_;
    const GuideLayout::Words& words_;
};

}  // namespace

GuideLayout GuideLayout::in(QSize room, const OverlayLook& look, const Words& words) {
    const Room fill(room, look, words);
    if (const auto layout = fill.below(kFigureAbove, kFigureAbove, kInstructionSize)) {
        return *layout;
    }
    if (const auto layout = fill.beside(kFigureBeside, kFigureBeside, kInstructionSize)) {
        return *layout;
    }
    if (const auto layout = fill.beside(kFigureBeside, kLeastFigure, kLeastInstructionSize)) {
        return *layout;
    }
    if (const auto layout = fill.below(kFigureAbove, kLeastFigure, kLeastInstructionSize)) {
        return *layout;
    }
    return fill.wordsAlone().value_or(GuideLayout());
}

int GuideLayout::goodHeight(int width, const OverlayLook& look, const Words& words) {
    constexpr int kUnlimited = 1 << 20;
    const Room fill({width, kUnlimited}, look, words);
    if (const auto layout = fill.beside(kFigureBeside, kFigureBeside, kLeastInstructionSize)) {
        return layout->size.height();
    }
    const auto layout = fill.below(kFigureBeside, kLeastFigure, kLeastInstructionSize);
    return layout ? layout->size.height() : 0;
}

}  // namespace ostrel
