#include "screens/controls/icon_label.h"

#include <QGuiApplication>
#include <QLabel>
#include <QPixmap>

namespace ostrel {

QLabel* makeIconLabel(const StatusIcon::Face& face, int side) {
    const double scale = qGuiApp->devicePixelRatio();
    QPixmap picture = StatusIcon::draw(face, static_cast<int>(side * scale));
    picture.setDevicePixelRatio(scale);
    auto* label = new QLabel;
    label->setPixmap(picture);
    label->setFixedSize(side, side);
    return label;
}

}  // namespace ostrel
