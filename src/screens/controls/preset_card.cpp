#include "screens/controls/preset_card.h"

#include <QApplication>
#include <QFocusEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <string_view>

#include "screens/colours.h"
#include "screens/controls/page.h"
#include "screens/controls/window_look.h"
#include "screens/texts/texts.h"

namespace ostrel {
namespace {

constexpr std::int64_t kMinute = 60;
constexpr int kPadding = 14;
constexpr int kMark = 18;
constexpr double kCorner = 10;

bool isWholeMinutes(std::int64_t seconds) {
    return seconds >= kMinute && seconds % kMinute == 0;
}

QString every(std::int64_t seconds) {
    return isWholeMinutes(seconds)
               ? Texts::of("welcome.preset.every_minutes %lld", {seconds / kMinute})
               : Texts::of("welcome.preset.every_seconds %lld", {seconds});
}

QString lasting(std::int64_t seconds) {
    return isWholeMinutes(seconds)
               ? Texts::of("welcome.preset.for_minutes %lld", {seconds / kMinute})
               : Texts::of("welcome.preset.for_seconds %lld", {seconds});
}

QString nameOf(const PresetDefinition& preset) {
    return Texts::of(PresetCatalog::nameKey(preset).value_or("preset.name.custom"));
}

QLabel* seenOnly(QLabel* label) {
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    return label;
}

}  // namespace

PresetCard::PresetCard(const PresetDefinition& preset, QWidget* parent)
    : QAbstractButton(parent), preset_(preset) {
    setCheckable(true);
    setAutoExclusive(true);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    makePieces();
    adopt(preset);
}

void PresetCard::makePieces() {
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(kPadding, kPadding, kPadding, kPadding);
    layout->setHorizontalSpacing(kPadding);
    layout->setVerticalSpacing(3);
    layout->setColumnMinimumWidth(0, kMark + kPadding);
    name_ = seenOnly(makeLabel({}, "strong"));
    layout->addWidget(name_, 0, 1, 1, 3);
    hint_ = seenOnly(makeLabel({}, "hint"));
    layout->addWidget(hint_, 1, 1, 2, 3, Qt::AlignTop);
    const std::string_view kinds[] = {"overlay.kind.eye", "overlay.kind.body"};
    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column < 3; ++column) {
            QLabel*& figure = figures_[row][column];
            figure =
                seenOnly(column == 0 ? makeLabel(Texts::of(kinds[row]), "hint") : makeLabel({}));
            QSizePolicy policy = figure->sizePolicy();
            policy.setRetainSizeWhenHidden(true);
            figure->setSizePolicy(policy);
            layout->addWidget(figure, row + 1, column + 1);
        }
    }
    for (int column = 1; column <= 3; ++column) {
        layout->setColumnStretch(column, 1);
    }
}

void PresetCard::adopt(const PresetDefinition& preset) {
    preset_ = preset;
    setText(nameOf(preset));
    name_->setText(text());
    const QString figures[2][2] = {
        {every(preset.eyeIntervalSec), lasting(preset.eyeDurationSec)},
        {every(preset.bodyIntervalSec), lasting(preset.bodyDurationSec)}};
    for (int row = 0; row < 2; ++row) {
        figures_[row][1]->setText(figures[row][0]);
        figures_[row][2]->setText(figures[row][1]);
        for (QLabel* figure : figures_[row]) {
            figure->setVisible(true);
        }
    }
    hint_->setVisible(false);
    setAccessibleDescription(
        Texts::of("welcome.preset.spoken %@ %@ %@ %@",
                  {figures[0][0], figures[0][1], figures[1][0], figures[1][1]}));
}

void PresetCard::showHint(const QString& hint) {
    hint_->setText(hint);
    hint_->setVisible(true);
    for (auto& row : figures_) {
        for (QLabel* figure : row) {
            figure->setVisible(false);
        }
    }
    setAccessibleDescription(hint);
}

QRectF PresetCard::mark() const {
    const QRectF place(kPadding, kPadding - 1, kMark, kMark);
    return isRightToLeft() ? place.translated(width() - 2 * kPadding - kMark, 0) : place;
}

// Tab leads to the one that is chosen, as with radio buttons.
void PresetCard::focusInEvent(QFocusEvent* event) {
    const bool isByTab =
        event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    if (isByTab && !isChecked() && parentWidget()) {
        for (auto* card : parentWidget()->findChildren<QAbstractButton*>(
                 QString(), Qt::FindDirectChildrenOnly)) {
            if (card->autoExclusive() && card->isChecked()) {
                card->setFocus(Qt::OtherFocusReason);
                return;
            }
        }
    }
    QAbstractButton::focusInEvent(event);
}

void PresetCard::paintEvent(QPaintEvent* /*event*/) {
    const QPalette colours = QApplication::palette();
    const QColor paper = colours.color(QPalette::Active, QPalette::Base);
    const QColor ink = colours.color(QPalette::Active, QPalette::WindowText);
    const QColor accent = WindowLook::accent(colours);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);

    const double stroke = isChecked() || hasFocus() ? 2.0 : 1.0;
    const QRectF card = QRectF(rect()).adjusted(stroke / 2, stroke / 2, -stroke / 2, -stroke / 2);
    const bool isTouched = (underMouse() && !isChecked()) || isDown();
    painter.setBrush(isTouched ? Colours::between(paper, ink, 0.04) : paper);
    painter.setPen(QPen(stroke > 1.0 ? accent : Colours::between(paper, ink, 0.14), stroke));
    painter.drawRoundedRect(card, kCorner, kCorner);
    if (hasFocus() && isChecked()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(Colours::between(paper, accent, 0.45), 1.0));
        painter.drawRoundedRect(card.adjusted(3, 3, -3, -3), kCorner - 3, kCorner - 3);
    }

    painter.setBrush(isChecked() ? accent : QColor(Qt::transparent));
    const double strength = isEnabled() ? 0.45 : 0.2;
    painter.setPen(QPen(isChecked() ? accent : Colours::between(paper, ink, strength), 1.5));
    painter.drawEllipse(mark().adjusted(1, 1, -1, -1));
    if (isChecked()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(colours.color(QPalette::Active, QPalette::HighlightedText));
        painter.drawEllipse(mark().center(), kMark / 6.0, kMark / 6.0);
    }
}

}  // namespace ostrel
