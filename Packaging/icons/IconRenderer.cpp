// Draws the program's icon at one size: IconRenderer DRAWING.svg PIXELS FILE.png
// The build runs it, so that the drawing is all there is to keep.

#include <QImage>
#include <QPainter>
#include <QString>
#include <QSvgRenderer>

#include <iostream>

int main(int argc, char* argv[]) {
    const int pixels = argc == 4 ? QString::fromLocal8Bit(argv[2]).toInt() : 0;
    if (pixels <= 0) {
        std::cerr << "IconRenderer DRAWING.svg PIXELS FILE.png\n";
        return 2;
    }
    QSvgRenderer drawing(QString::fromLocal8Bit(argv[1]));
    if (!drawing.isValid()) {
        std::cerr << argv[1] << ": no drawing\n";
        return 1;
    }
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    drawing.render(&painter);
    painter.end();
    if (!image.save(QString::fromLocal8Bit(argv[3]), "PNG")) {
        std::cerr << argv[3] << ": cannot be written\n";
        return 1;
    }
    return 0;
}
