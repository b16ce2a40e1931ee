#include "screens/controls/fields.h"

#include <QApplication>
#include <QListView>
#include <QPainter>
#include <QStyleOptionComboBox>
#include <QStyleOptionSpinBox>
#include <QStyledItemDelegate>

namespace ostrel {
namespace {

enum class Towards { up, down };

void drawArrow(QWidget& field, const QRectF& area, Towards towards, bool isUsable) {
    constexpr double kHalfWidth = 4;
    constexpr double kHalfHeight = 2;
    QPainter painter(&field);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(isUsable ? 0.75 : 0.3);
    const QColor ink = QApplication::palette().color(QPalette::Active, QPalette::WindowText);
    painter.setPen(QPen(ink, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const double tip = towards == Towards::down ? kHalfHeight : -kHalfHeight;
    const QPointF middle = area.center();
    painter.drawPolyline(QPolygonF{middle + QPointF(-kHalfWidth, -tip), middle + QPointF(0, tip),
                                   middle + QPointF(kHalfWidth, -tip)});
}

void drawArrows(QAbstractSpinBox& field, const QStyleOptionSpinBox& option) {
    const auto area = [&](QStyle::SubControl button) {
        return field.style()->subControlRect(QStyle::CC_SpinBox, &option, button, &field);
    };
    drawArrow(field, area(QStyle::SC_SpinBoxUp), Towards::up,
              option.stepEnabled.testFlag(QAbstractSpinBox::StepUpEnabled));
    drawArrow(field, area(QStyle::SC_SpinBoxDown), Towards::down,
              option.stepEnabled.testFlag(QAbstractSpinBox::StepDownEnabled));
}

}  // namespace

Choice::Choice(QWidget* parent) : QComboBox(parent) {
    // The delegate of its own knows nothing of a style sheet's rows.
    view()->setItemDelegate(new QStyledItemDelegate(view()));
    // Measuring each row would load, and keep, a font for each script in the list of languages.
    if (auto* list = qobject_cast<QListView*>(view())) {
        list->setUniformItemSizes(true);
    }
}

void Choice::paintEvent(QPaintEvent* event) {
    QComboBox::paintEvent(event);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    drawArrow(*this,
              style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, this),
              Towards::down, isEnabled());
}

void NumberField::paintEvent(QPaintEvent* event) {
    QSpinBox::paintEvent(event);
    QStyleOptionSpinBox option;
    initStyleOption(&option);
    drawArrows(*this, option);
}

void TimeField::paintEvent(QPaintEvent* event) {
    QTimeEdit::paintEvent(event);
    QStyleOptionSpinBox option;
    initStyleOption(&option);
    drawArrows(*this, option);
}

}  // namespace ostrel
