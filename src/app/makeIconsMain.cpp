// make_icons SVG NAME-SIZE.png...: draws the picture in the sizes that the names end with.
#include <QCoreApplication>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

namespace {

bool draw(QSvgRenderer& picture, const QString& path) {
    const int size = QFileInfo(path).completeBaseName().section(u'-', -1).toInt();
    if (size <= 0)
        return false;
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    picture.render(&painter);
    painter.end();
    return image.save(path);
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList words = app.arguments();
    QSvgRenderer picture(words.value(1));
    bool drawn = words.size() > 2 && picture.isValid();
    for (qsizetype i = 2; drawn && i < words.size(); ++i)
        drawn = draw(picture, words[i]);
    return drawn ? 0 : 1;
}
