// What the program writes into a file is read back by its own readers as it stood in the table.
#include "export/csvFile.h"
#include "export/xlsxFile.h"
#include "import/readHere.h"
#include "support/commaLocale.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

CellValue moment(int year, int month, int day, int second = 0) {
    return Moment::fromDate({year, month, day}, second);
}

/// A column for each kind of value, with what a table of a shop can hold at its ends.
const std::vector<std::pair<QString, std::vector<CellValue>>>& columns() {
    const auto texts = [](std::initializer_list<const char16_t*> each) {
        std::vector<CellValue> cells;
        for (const char16_t* text : each)
            cells.emplace_back(QString::fromUtf16(text));
        return cells;
    };
    static const std::vector<std::pair<QString, std::vector<CellValue>>> all{
        {QStringLiteral("客户编号"), texts({u"0012", u"13800138000", u"1e5", u"-7", u"2004-1-5", u"12:30"})},
        {QStringLiteral("单位名称"),
         texts({u"<红木> & \"家具\", 厂", u"两\n行", u" 前后有空 ", u"=1+1", u"_x0041_", u"𠮷野；'"})},
        {QStringLiteral("单价"), {12.5, -0.1, 1e-7, 123456789.25, 0.1 + 0.2, 0.0}},
        {QStringLiteral("实付"), {1e15, 99999999999.99, -1234.5, 1.0 / 3, 2e-5, 882.825}},
        {QStringLiteral("数量"),
         {qint32(0), qint32(-5), qint32(2147483647), qint32(-2147483647 - 1), qint32(1), CellValue()}},
        {QStringLiteral("日期"),
         {moment(2004, 1, 5), moment(1900, 3, 1), moment(1899, 12, 31), moment(9999, 12, 31),
          moment(2004, 2, 29, 3723), CellValue()}}};
    return all;
}

ExportTable everyKind() {
    ExportTable table;
    for (const auto& [name, cells] : columns())
        table.columns.push_back({name, 12});
    table.rows = int(columns().front().second.size());
    table.cell = [](int row, int column) { return columns()[std::size_t(column)].second[std::size_t(row)]; };
    return table;
}

void expectEveryCellOf(const ExportTable& table, const SourceRows& read) {
    QStringList names;
    for (const ExportColumn& column : table.columns)
        names << column.caption;
    EXPECT_EQ(read.columns, names);
    ASSERT_EQ(read.rowCount(), table.rows);
    for (int row = 0; row < table.rows; ++row)
        for (int column = 0; column < names.size(); ++column)
            EXPECT_EQ(read.cell(row, column), fieldText(table.cell(row, column)))
                << names[column].toStdString() << " of row " << row;
}

void expectBackFromWorkbook(const ExportTable& table) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("own.xlsx"));
    ASSERT_EQ(writeXlsx(path, table), ExportEnd::Whole);
    const auto reader = xlsxReader(bytesOf(path));
    EXPECT_EQ(reader->tables(), QStringList{QStringLiteral("数据")});
    expectEveryCellOf(table, readTable(*reader, QStringLiteral("数据")));
}

void expectBackFromTextFile(const ExportTable& table) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("own.csv"));
    ASSERT_EQ(writeCsv(path, table), ExportEnd::Whole);
    const auto reader = textReader(bytesOf(path));
    expectEveryCellOf(table, readTable(*reader));
}

TEST(OwnExport, AWorkbookComesBackCellForCell) {
    expectBackFromWorkbook(everyKind());
}

TEST(OwnExport, ATextFileComesBackCellForCell) {
    expectBackFromTextFile(everyKind());
}

TEST(OwnExport, ACountryWhoseNumbersHaveACommaChangesNeither) {
    const CommaLocale comma;
    ASSERT_TRUE(comma.isOn());
    expectBackFromWorkbook(everyKind());
    expectBackFromTextFile(everyKind());
}

} // namespace
