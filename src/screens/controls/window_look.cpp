#include "screens/controls/window_look.h"

#include "screens/colours.h"

namespace ostrel::WindowLook {
namespace {

constexpr const char* kSheet = R"(
QWidget#ostrel\.window { background: @window; }
QScrollArea, QScrollArea > QWidget > QWidget { background: transparent; border: none; }
QLabel { color: @ink; background: transparent; }
QLabel[look="title"] { font-size: 20px; font-weight: 600; }
QLabel[look="heading"] { font-size: 13px; font-weight: 600; color: @quiet; }
QLabel[look="strong"] { font-weight: 600; }
QLabel[look="hint"] { color: @quiet; font-size: 12px; }
QLabel[look="warning"] { color: @warning; font-size: 12px; }
QLabel[look="figure"] { font-size: 26px; font-weight: 600; }
QFrame[look="card"] { background: @paper; border: 1px solid @line; border-radius: 10px; }
QFrame[look="row"] { border: none; border-top: 1px solid @line; background: transparent; }
QFrame[look="first-row"] { border: none; background: transparent; }
QPushButton, QLineEdit, QPlainTextEdit, QListWidget, QComboBox, QAbstractSpinBox {
  color: @ink; background: @field; border: 1px solid @line; border-radius: 6px; padding: 5px 10px;
  selection-background-color: @accent; selection-color: @on-accent; }
QPushButton { padding: 6px 14px; }
QPushButton:hover, QComboBox:hover { background: @hover; }
QPushButton:pressed { background: @line; }
QPushButton:focus, QLineEdit:focus, QPlainTextEdit:focus, QListWidget:focus,
QComboBox:focus, QAbstractSpinBox:focus { border: 2px solid @accent; padding: 4px 9px; }
QPushButton:focus { padding: 5px 13px; }
QPushButton:disabled, QLineEdit:disabled, QComboBox:disabled, QAbstractSpinBox:disabled { color: @faint; }
QLabel:disabled { color: @faint; }
QPushButton[look="primary"] { background: @accent; color: @on-accent; border-color: @accent; }
QPushButton[look="primary"]:hover { background: @accent-hover; }
QPushButton[look="day"] { padding: 6px 4px; }
QPushButton[look="day"]:checked { background: @accent; color: @on-accent; border-color: @accent; }
QPushButton[look="day"]:checked:disabled { background: @faint; border-color: @faint; }
QPushButton[look="danger"] { color: @warning; }
QPushButton[look="link"] { border: none; background: transparent; color: @link; padding: 2px; }
QPushButton[look="link"]:focus { border: 2px solid @accent; padding: 0; }
QPushButton::menu-indicator { subcontrol-origin: padding; subcontrol-position: center right; right: 4px; }
QListWidget#ostrel\.sidebar { background: transparent; border: none; padding: 8px; outline: none; }
QListWidget#ostrel\.sidebar::item { padding: 7px 10px; min-height: 22px; border-radius: 6px;
  color: @ink; }
QListWidget#ostrel\.sidebar::item:hover { background: @hover; }
QListWidget#ostrel\.sidebar::item:selected { background: @accent; color: @on-accent; }
QComboBox::drop-down { subcontrol-origin: padding; subcontrol-position: center right; width: 18px; border: none; }
QComboBox::down-arrow, QAbstractSpinBox::up-arrow, QAbstractSpinBox::down-arrow { image: none; }
QComboBox QAbstractItemView { color: @ink; background: @paper; border: 1px solid @line; border-radius: 0;
  padding: 4px; outline: none; }
QComboBox QAbstractItemView::item { min-height: 28px; padding: 0 8px; border-radius: 4px; }
QComboBox QAbstractItemView::item:hover { background: @hover; }
QComboBox QAbstractItemView::item:selected { background: @accent; color: @on-accent; }
QAbstractSpinBox::up-button, QAbstractSpinBox::down-button { subcontrol-origin: padding; width: 18px; border: none; }
QAbstractSpinBox::up-button { subcontrol-position: top right; }
QAbstractSpinBox::down-button { subcontrol-position: bottom right; }
QSlider { min-height: 24px; }
QSlider::groove:horizontal { height: 4px; border-radius: 2px; background: @line; }
QSlider::@filled:horizontal { height: 4px; border-radius: 2px; background: @accent; }
QSlider::handle:horizontal { width: 16px; height: 16px; margin: -7px 0; border-radius: 8px;
  background: @knob; border: 1px solid @edge; }
QSlider::handle:horizontal:focus { border: 2px solid @accent; }
QScrollBar:vertical { width: 10px; background: transparent; }
QScrollBar::handle:vertical { background: @line; border-radius: 4px; min-height: 32px; margin: 1px; }
QScrollBar::add-line, QScrollBar::sub-line { height: 0; }
)";

}  // namespace

QColor accent(const QPalette& palette) {
    return palette.color(QPalette::Active, QPalette::Highlight);
}

QString styleSheet(const QPalette& palette, Qt::LayoutDirection direction) {
    const auto colour = [&palette](QPalette::ColorRole role) {
        return palette.color(QPalette::Active, role);
    };
    const QColor paper = colour(QPalette::Base);
    const QColor ink = colour(QPalette::WindowText);
    const bool isDark = paper.lightnessF() < 0.5F;
    // Longer names first: one may begin with another.
    const std::pair<const char*, QColor> colours[] = {
        {"@on-accent", colour(QPalette::HighlightedText)},
        {"@accent-hover", Colours::between(accent(palette), ink, 0.12)},
        {"@accent", accent(palette)},
        {"@warning", isDark ? QColor(0xFF, 0xA0, 0x8A) : QColor(0xB3, 0x26, 0x1E)},
        {"@window", colour(QPalette::Window)},
        {"@paper", paper},
        {"@field", isDark ? Colours::between(paper, ink, 0.06) : paper},
        {"@hover", Colours::between(colour(QPalette::Window), ink, 0.07)},
        {"@quiet", Colours::between(paper, ink, 0.66)},
        {"@faint", Colours::between(paper, ink, 0.42)},
        {"@line", Colours::between(paper, ink, 0.14)},
        {"@knob", isDark ? Colours::between(paper, ink, 0.85) : paper},
        {"@edge", Colours::between(paper, ink, 0.30)},
        {"@link", colour(QPalette::Link)},
        {"@ink", ink},
    };
    QString sheet = QString::fromLatin1(kSheet);
    for (const auto& [name, value] : colours) {
        sheet.replace(QLatin1String(name), value.name());
    }
    // Of the two parts of a slider's groove, "sub-page" is the one at the left.
    sheet.replace(QLatin1String("@filled"),
                  QLatin1String(direction == Qt::RightToLeft ? "add-page" : "sub-page"));
    return sheet;
}

}  // namespace ostrel::WindowLook
