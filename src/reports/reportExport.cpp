#include "reports/reportExport.h"

namespace {

constexpr double kDigit = 1.85; // millimetres of a digit in a workbook

/// The head's items by the columns above which they stand on paper, no two above one.
QStringList headByColumns(const ReportDrawing& drawing) {
    const auto columns = drawing.report.columns;
    QStringList head;
    for (std::size_t i = 0; i < drawing.report.head.size(); ++i) {
        qsizetype column = 0;
        while (column + 1 < qsizetype(columns.size()) &&
               columns[std::size_t(column)].separator <= drawing.report.head[i].base)
            ++column;
        while (head.size() < column)
            head << QString();
        head << drawing.head.value(qsizetype(i));
    }
    return head;
}

} // namespace

ExportTable exportedReport(const ReportDrawing& drawing) {
    ExportTable table;
    table.title = drawing.layout.reportTitle;
    table.head = headByColumns(drawing);
    const auto columns = drawing.report.columns;
    std::vector<int> fields;
    double left = 0;
    for (std::size_t k = 0; k < columns.size(); ++k) {
        const double right = k + 1 < columns.size() ? columns[k].separator + drawing.layout.boxShift[k + 1]
                                                    : drawing.layout.tableWidth;
        table.columns.push_back(
            {QString::fromUtf16(columns[k].label), std::max(1.0, (right - left) / kDigit)});
        left = right;
        fields.push_back(*columns[k].field ? drawing.rows->fieldIndex(QString::fromUtf16(columns[k].field))
                                           : -1);
    }
    const RecordsetPtr rows = drawing.rows;
    table.rows = rows->RecordCount();
    table.cell = [rows, fields](int row, int column) {
        const int field = fields[std::size_t(column)];
        return field < 0 || row >= rows->RecordCount()
                   ? CellValue()
                   : exportedValue(rows->fieldInfo(field), rows->valueAt(row, field));
    };
    return table;
}
