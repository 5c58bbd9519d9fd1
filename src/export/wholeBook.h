#pragma once

#include <QByteArray>

#include <vector>

/// Whether each sheet of a workbook holds all of its rows: `rowBytes` says for each sheet how long its rows
/// are as they were written. The library that writes workbooks does not hear when a disk takes only a part.
bool isWholeBook(const QByteArray& path, const std::vector<qint64>& rowBytes);
