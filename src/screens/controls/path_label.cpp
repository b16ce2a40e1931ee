#include "screens/controls/path_label.h"

#include <QGuiApplication>
#include <QLabel>

#include "screens/controls/page.h"

namespace ostrel {
namespace {

QLabel* leftToRight(QLabel* label) {
    label->setLayoutDirection(Qt::LeftToRight);
    label->setAlignment(Qt::AlignAbsolute |
                        (QGuiApplication::isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft));
    return label;
}

}  // namespace

QLabel* makeNameLabel(const QString& name) {
    return leftToRight(makeLabel(name));
}

QLabel* makePathLabel(const QString& path) {
    QLabel* label = leftToRight(makeLabel(path, "hint"));
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return label;
}

}  // namespace ostrel
