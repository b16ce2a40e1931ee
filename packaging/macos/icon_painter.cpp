// icon_painter SVG FOLDER: the picture in the sizes of a Mac's icon, one PNG each.
#include <QCoreApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>

namespace {

// The system leaves this much of an icon's side free on each edge.
constexpr double kMargin = 100.0 / 1024.0;

bool paint(QSvgRenderer& picture, int side, const QString& file) {
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const double margin = side * kMargin;
    QPainter painter(&image);
    picture.render(&painter, QRectF(margin, margin, side - 2 * margin, side - 2 * margin));
    painter.end();
    return image.save(file);
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    QSvgRenderer picture;
    if (words.size() != 3 || !picture.load(words[1])) {
        std::fputs("usage: icon_painter SVG FOLDER\n", stderr);
        return 2;
    }
    for (const int points : {16, 32, 128, 256, 512}) {
        const QString name = QStringLiteral("%1/icon_%2x%2").arg(words[2]).arg(points);
        if (!paint(picture, points, name + QStringLiteral(".png")) ||
            !paint(picture, 2 * points, name + QStringLiteral("@2x.png"))) {
            std::fputs("icon_painter: the folder cannot be written to\n", stderr);
            return 1;
        }
    }
    return 0;
}
