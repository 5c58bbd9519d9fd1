#include "export/csvFile.h"

#include <QSaveFile>

namespace {

QString csvCell(const QString& text) {
    if (!text.contains(u',') && !text.contains(u'"') && !text.contains(u'\n') && !text.contains(u'\r'))
        return text;
    QString doubled = text;
    return u'"' + doubled.replace(u'"', QStringLiteral("\"\"")) + u'"';
}

} // namespace

ExportEnd writeCsv(const QString& path, const ExportTable& table, const ExportSteps& steps) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return ExportEnd::Failed;
    const auto writeLine = [&](auto&& textOf) {
        QStringList cells;
        for (int column = 0; column < int(table.columns.size()); ++column)
            cells << csvCell(textOf(column));
        const QByteArray line = cells.join(u',').toUtf8() + "\r\n";
        return file.write(line) == line.size();
    };
    // The byte order mark tells spreadsheets that the text is UTF-8.
    file.write("\xEF\xBB\xBF");
    if (!writeLine([&](int column) { return table.columns[std::size_t(column)].caption; }))
        return ExportEnd::Failed;
    for (int row = 0; row < table.rows; ++row) {
        if (!writeLine([&](int column) { return fieldText(table.cell(row, column)); }))
            return ExportEnd::Failed;
        if (steps && isStep(row) && !steps(row + 1))
            return ExportEnd::Stopped;
    }
    // What is still held back reaches the disk here, and commit() does not hear when that fails.
    return file.flush() && file.commit() ? ExportEnd::Whole : ExportEnd::Failed;
}
