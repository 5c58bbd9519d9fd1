#pragma once

#include <QImage>

class QGraphicsView;

/// What a view shows, drawn at twice its size on the screen, or at the device pixel ratio where that is more.
QImage pictureOf(QGraphicsView& view);

/// Whether a file name has an ending that writePicture knows, .png or .svg.
bool isPictureName(const QString& path);

/// Writes what a view shows as SVG where the name ends so, with a title and the view's accessible
/// description, else as PNG. False if the file cannot be written; what stood there before then stays.
bool writePicture(const QString& path, const QString& title, QGraphicsView& view);
