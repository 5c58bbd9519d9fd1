#pragma once

#include <QString>

#include <vector>

class QAbstractItemModel;

/// Writes these columns and all rows of a model as CSV in UTF-8, their headings first. False if the file
/// cannot be written; what stood there before then stays.
bool writeCsv(const QString& path, const QAbstractItemModel& model, const std::vector<int>& columns);
