#include "controls/csvFile.h"

#include <QAbstractItemModel>
#include <QSaveFile>
#include <QStringList>

namespace {

QString csvCell(const QString& text) {
    if (!text.contains(u',') && !text.contains(u'"') && !text.contains(u'\n') && !text.contains(u'\r'))
        return text;
    QString doubled = text;
    return u'"' + doubled.replace(u'"', QStringLiteral("\"\"")) + u'"';
}

} // namespace

bool writeCsv(const QString& path, const QAbstractItemModel& model, const std::vector<int>& columns) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    const auto writeLine = [&](auto&& textOf) {
        QStringList cells;
        for (const int column : columns)
            cells << csvCell(textOf(column));
        file.write(cells.join(u',').toUtf8() + "\r\n");
    };
    // The byte order mark tells spreadsheets that the text is UTF-8.
    file.write("\xEF\xBB\xBF");
    writeLine([&](int column) { return model.headerData(column, Qt::Horizontal).toString(); });
    for (int row = 0; row < model.rowCount(); ++row)
        writeLine([&](int column) { return model.index(row, column).data(Qt::EditRole).toString(); });
    // What is still held back reaches the disk here, and commit() does not hear when that fails.
    return file.flush() && file.commit();
}
