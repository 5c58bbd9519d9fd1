#pragma once

#include <QByteArray>
#include <QString>

/// The bytes of a stream in a compound file, in which old office programs keep their documents. Every chain
/// is followed with its length checked, so that a damaged file ends in an error and never in a loop. Layout:
/// [MS-CFB], published by its maker. Throws ImportError.
QByteArray compoundStream(const QByteArray& file, const QString& name);
