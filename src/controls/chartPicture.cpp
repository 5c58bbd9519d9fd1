#include "controls/chartPicture.h"

#include "export/wholeFile.h"

#include <QBuffer>
#include <QGraphicsView>
#include <QPainter>
#include <QSvgGenerator>

#include <algorithm>

namespace {

constexpr QStringView kPng = u".png";
constexpr QStringView kSvg = u".svg";
constexpr double kMetresPerInch = 0.0254;

void draw(QGraphicsView& view, QPaintDevice& device) {
    const QRectF whole = view.viewport()->rect();
    QPainter painter(&device);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(whole, view.backgroundBrush());
    view.scene()->render(&painter, whole, whole);
}

QByteArray pngOf(QGraphicsView& view) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    pictureOf(view).save(&buffer, "PNG");
    return buffer.data();
}

QByteArray svgOf(const QString& title, QGraphicsView& view) {
    QBuffer buffer;
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setSize(view.viewport()->size());
    generator.setViewBox(view.viewport()->rect());
    generator.setResolution(view.logicalDpiX());
    generator.setTitle(title);
    generator.setDescription(view.accessibleDescription());
    draw(view, generator);
    return buffer.data();
}

} // namespace

QImage pictureOf(QGraphicsView& view) {
    const double scale = std::max(2.0, view.devicePixelRatioF());
    QImage image((QSizeF(view.viewport()->size()) * scale).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    draw(view, image);
    // Other programs show it in its size on the screen. Set last: texts would be drawn larger on finer paper.
    image.setDevicePixelRatio(1);
    const int dots = qRound(view.logicalDpiX() * scale / kMetresPerInch);
    image.setDotsPerMeterX(dots);
    image.setDotsPerMeterY(dots);
    return image;
}

bool isPictureName(const QString& path) {
    return path.endsWith(kPng, Qt::CaseInsensitive) || path.endsWith(kSvg, Qt::CaseInsensitive);
}

bool writePicture(const QString& path, const QString& title, QGraphicsView& view) {
    const QByteArray bytes = path.endsWith(kSvg, Qt::CaseInsensitive) ? svgOf(title, view) : pngOf(view);
    return writeWholeFile(path, bytes);
}
