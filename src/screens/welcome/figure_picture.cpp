#include "screens/welcome/figure_picture.h"

#include <QApplication>
#include <QImage>
#include <QPainter>

#include "screens/controls/window_look.h"
#include "screens/guide_figure.h"

namespace ostrel {

FigurePicture::FigurePicture(std::string_view move, int side, QWidget* parent)
    : QWidget(parent), move_(move) {
    setFixedSize(side, side);
}

void FigurePicture::paintEvent(QPaintEvent* /*event*/) {
    const GuideFigure* figure = GuideFigure::of(move_);
    if (figure == nullptr) {
        return;
    }
    QImage sheet(size() * devicePixelRatioF(), QImage::Format_ARGB32_Premultiplied);
    figure->still().paint(sheet, WindowLook::accent(QApplication::palette()));
    sheet.setDevicePixelRatio(devicePixelRatioF());
    QPainter(this).drawImage(QPoint(), sheet);
}

}  // namespace ostrel
