#pragma once

#include <QByteArray>
#include <QString>

/// Writes a file in one go: afterwards it holds these bytes, or what it held before. Whether they are there.
bool writeWholeFile(const QString& path, const QByteArray& bytes);
