#include "export/csvFile.h"
#include "export/wholeBook.h"
#include "export/xlsxFile.h"
#include "support/commaLocale.h"
#include "support/smallDisk.h"
#include "support/workbook.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

CellValue text(const char* utf8) {
    return QString::fromUtf8(utf8);
}

CellValue moment(int year, int month, int day, int second = 0) {
    return Moment::fromDate({year, month, day}, second);
}

class TableExport : public testing::Test {
protected:
    /// A table of one column with these cells.
    static ExportTable column(const std::vector<CellValue>& cells) {
        ExportTable table;
        table.columns = {{"甲", 12}};
        table.rows = int(cells.size());
        table.cell = [cells](int row, int) { return cells[std::size_t(row)]; };
        return table;
    }
    /// So many rows of two columns, a text and a number.
    static ExportTable many(int rows) {
        ExportTable table;
        table.columns = {{"品名", 20}, {"数量", 8}};
        table.rows = rows;
        table.cell = [](int row, int column) {
            return column == 0 ? CellValue(QStringLiteral("产品%1").arg(row)) : CellValue(row * 0.5);
        };
        return table;
    }
    QString path(const char* name = "a.xlsx") const { return folder.filePath(QString::fromUtf8(name)); }
    Workbook written(const ExportTable& table) {
        EXPECT_EQ(writeXlsx(path(), table), ExportEnd::Whole);
        return Workbook(path());
    }
    void writeBefore(const QString& name) {
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("before") == 6);
    }
    static QByteArray bytesOf(const QString& name) {
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    QStringList files() const {
        return QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    QTemporaryDir folder;
};

TEST_F(TableExport, NumbersAreNumbersTextsAreTextsAndNullIsNoCell) {
    const auto sheet =
        written(column({12.5, qint32(7), -0.1, 1e-7, text("0012"), text("3.5"), CellValue()})).sheet();
    for (const auto& [place, number] : {std::pair("A2", 12.5), {"A3", 7.0}, {"A4", -0.1}, {"A5", 1e-7}}) {
        EXPECT_EQ(sheet.at(place).type, u"number") << place;
        EXPECT_EQ(sheet.at(place).text.toDouble(), number) << place;
    }
    for (const auto& [place, said] : {std::pair("A6", "0012"), {"A7", "3.5"}}) {
        EXPECT_EQ(sheet.at(place).type, u"text") << place;
        EXPECT_EQ(sheet.at(place).text, QString::fromLatin1(said));
    }
    EXPECT_FALSE(sheet.count("A8"));
}

TEST_F(TableExport, DatesAreDatesInTheFormOfTheGrids) {
    const auto sheet = written(column({moment(2004, 1, 5), moment(2004, 11, 21, 3723), moment(1900, 3, 1),
                                       moment(9999, 12, 31), moment(1899, 12, 30, 3661)}))
                           .sheet();
    const std::pair<const char*, const char*> dates[] = {{"A2", "2004-1-5"},
                                                         {"A3", "2004-11-21 1:02:03"},
                                                         {"A4", "1900-3-1"},
                                                         {"A5", "9999-12-31"},
                                                         {"A6", "1:01:01"}};
    for (const auto& [place, date] : dates) {
        EXPECT_EQ(sheet.at(place).type, u"date") << place;
        EXPECT_EQ(sheet.at(place).text, QString::fromLatin1(date));
    }
}

TEST_F(TableExport, TheSerialOfADateIsTheOneThatSpreadsheetsCount) {
    const QByteArray sheet = written(column({moment(2004, 1, 5)})).part("xl/worksheets/sheet1.xml");
    EXPECT_TRUE(sheet.contains("<v>37991</v>")) << sheet.toStdString();
}

TEST_F(TableExport, ADayThatSpreadsheetsCountOtherwiseStaysItsText) {
    const auto sheet = written(column({moment(1900, 2, 28), moment(1850, 6, 1)})).sheet();
    EXPECT_EQ(sheet.at("A2").type, u"text");
    EXPECT_EQ(sheet.at("A2").text, u"1900-2-28");
    EXPECT_EQ(sheet.at("A3").text, u"1850-6-1");
}

TEST_F(TableExport, NoTextBecomesAFormula) {
    const std::vector<CellValue> cells{text("=1+1"), text("+1"),     text("-1"),
                                       text("@A1"),  text("{=1+1}"), text("http://a.b")};
    const Workbook book = written(column(cells));
    const auto sheet = book.sheet();
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const auto cell = sheet.at(QStringLiteral("A%1").arg(i + 2));
        EXPECT_EQ(cell.type, u"text");
        EXPECT_EQ(cell.text, toText(cells[i]));
    }
    EXPECT_FALSE(book.part("xl/worksheets/sheet1.xml").contains("hyperlink"));
}

TEST_F(TableExport, SignsThatXmlCannotHoldCostNothingBeside) {
    const std::vector<CellValue> cells{text("<a> & \"b\" 'c'"),
                                       text("行\n行"),
                                       text("_x0041_"),
                                       QString(QStringLiteral("a") + QChar(0) + u'b'),
                                       QString(QStringLiteral("a") + QChar(0xFFFF) + u'b'),
                                       QString(QStringLiteral("a") + QChar(0xD800) + u'b'),
                                       text("𠮷野"),
                                       text("\x01_x0041_")};
    const auto sheet = written(column(cells)).sheet();
    EXPECT_EQ(sheet.at("A2").text, u"<a> & \"b\" 'c'");
    EXPECT_EQ(sheet.at("A3").text, u"行\n行");
    EXPECT_EQ(sheet.at("A4").text, u"_x005F_x0041_") << "the text, and not the sign that it would name";
    for (const char* place : {"A5", "A6", "A7"}) {
        EXPECT_TRUE(sheet.at(place).text.startsWith(u'a')) << place;
        EXPECT_TRUE(sheet.at(place).text.endsWith(u'b')) << place;
    }
    EXPECT_EQ(sheet.at("A8").text, u"𠮷野");
    EXPECT_EQ(sheet.at("A9").text, u"_x0001__x005F_x0041_");
}

TEST_F(TableExport, ATextBeyondTheLargestCellEndsWithAMark) {
    const auto sheet = written(column({QString(40000, u'长')})).sheet();
    EXPECT_EQ(sheet.at("A2").text.size(), 32767);
    EXPECT_TRUE(sheet.at("A2").text.endsWith(u"长…"));
}

TEST_F(TableExport, TitleHeadAndCaptionsStandAboveTheRows) {
    ExportTable table = many(2);
    table.title = "已 销 售 产 品 统 计";
    table.head = {"时间：2004-1-5/2004-2-1", "营业额：120"};
    const Workbook book = written(table);
    const auto sheet = book.sheet();
    EXPECT_EQ(sheet.at("A1").text, table.title);
    EXPECT_EQ(sheet.at("A2").text, table.head[0]);
    EXPECT_EQ(sheet.at("B2").text, table.head[1]);
    EXPECT_EQ(sheet.at("A3").text, u"品名");
    EXPECT_EQ(sheet.at("B3").text, u"数量");
    EXPECT_EQ(sheet.at("A4").text, u"产品0");
    EXPECT_EQ(sheet.at("B5").text, u"0.5");
    const QByteArray xml = book.part("xl/worksheets/sheet1.xml");
    EXPECT_TRUE(xml.contains("<pane ySplit=\"3\"")) << "the captions stay in sight";
    EXPECT_TRUE(xml.contains("<autoFilter ref=\"A3:B5\"/>"));
}

TEST_F(TableExport, ColumnsAreAsWideAsTheTablesOwn) {
    const QList<double> widths = written(many(1)).widths();
    ASSERT_EQ(widths.size(), 2);
    EXPECT_NEAR(widths[0], 20, 1);
    EXPECT_NEAR(widths[1], 8, 1);
}

TEST_F(TableExport, ATableWithoutRowsIsItsCaptions) {
    const auto sheet = written(many(0)).sheet();
    EXPECT_EQ(sheet.size(), 2u);
    EXPECT_EQ(sheet.at("B1").text, u"数量");
}

TEST_F(TableExport, WhatASheetHasNoRoomForGoesOnInTheNextOne) {
    ASSERT_EQ(writeXlsx(path(), many(7), {}, 4), ExportEnd::Whole);
    const Workbook book(path());
    EXPECT_EQ(book.sheet(1).at("A4").text, u"产品2");
    EXPECT_FALSE(book.sheet(1).count("A5"));
    EXPECT_EQ(book.sheet(2).at("A1").text, u"品名");
    EXPECT_EQ(book.sheet(2).at("A2").text, u"产品3");
    EXPECT_EQ(book.sheet(3).at("A2").text, u"产品6");
    EXPECT_TRUE(book.part("xl/worksheets/sheet4.xml").isEmpty());
    EXPECT_EQ(book.widths(3).size(), 2);
}

TEST_F(TableExport, ALongTableIsWhole) {
    constexpr int kRows = 20000;
    const auto sheet = written(many(kRows)).sheet();
    EXPECT_EQ(sheet.size(), 2u * (kRows + 1));
    EXPECT_EQ(sheet.at(QStringLiteral("A%1").arg(kRows + 1)).text, u"产品19999");
    EXPECT_EQ(files(), QStringList{"a.xlsx"}) << "nothing is left beside it";
}

TEST_F(TableExport, AStopLeavesTheFileBeforeIt) {
    for (const char* name : {"a.xlsx", "a.csv"}) {
        writeBefore(path(name));
        int told = 0;
        const ExportSteps stop = [&told](int done) { return ++told < 3 && done > 0; };
        EXPECT_EQ(QString::fromUtf8(name).endsWith("csv") ? writeCsv(path(name), many(5000), stop)
                                                          : writeXlsx(path(name), many(5000), stop),
                  ExportEnd::Stopped);
        EXPECT_EQ(told, 3);
        EXPECT_EQ(bytesOf(path(name)), "before");
    }
    EXPECT_EQ(files(), (QStringList{"a.csv", "a.xlsx"}));
}

/// The rows pass through files much larger than the workbook, and the library hears of none of their
/// failures.
TEST_F(TableExport, ADiskThatTakesOnlyAPartLeavesTheFileBeforeIt) {
    ASSERT_EQ(writeXlsx(path("whole.xlsx"), many(3000)), ExportEnd::Whole);
    const qint64 book = bytesOf(path("whole.xlsx")).size();
    QFile::remove(path("whole.xlsx"));
    writeBefore(path());
    for (const qint64 limit : {qint64(100), qint64(5000), book / 2, book + 4096, 2 * book, 3 * book}) {
        const FileSizeLimit full{rlim_t(limit)};
        EXPECT_EQ(writeXlsx(path(), many(3000)), ExportEnd::Failed) << limit;
    }
    EXPECT_EQ(bytesOf(path()), "before");
    EXPECT_EQ(files(), QStringList{"a.xlsx"});
}

TEST_F(TableExport, ASheetThatLostRowsIsNoWholeBook) {
    ASSERT_EQ(writeXlsx(path(), many(300)), ExportEnd::Whole);
    const QByteArray xml = Workbook(path()).part("xl/worksheets/sheet1.xml");
    const qint64 rows =
        xml.indexOf("</sheetData>") - xml.indexOf("<sheetData>") - qint64(strlen("<sheetData>"));
    const QByteArray name = QFile::encodeName(path());
    EXPECT_TRUE(isWholeBook(name, {rows}));
    EXPECT_FALSE(isWholeBook(name, {rows + 1}));
    EXPECT_FALSE(isWholeBook(name, {rows, rows})) << "a sheet is missing";
    EXPECT_FALSE(isWholeBook("/nowhere/at/all.xlsx", {rows}));
}

TEST_F(TableExport, AFolderThatIsNotThereIsAFailure) {
    EXPECT_EQ(writeXlsx("/nowhere/at/all.xlsx", many(1)), ExportEnd::Failed);
    EXPECT_EQ(writeCsv("/nowhere/at/all.csv", many(1)), ExportEnd::Failed);
}

TEST_F(TableExport, CsvHasTheCaptionsFirstAndNoTitle) {
    ExportTable table = many(1);
    table.title = "清单";
    table.head = {"时间"};
    ASSERT_EQ(writeCsv(path("a.csv"), table), ExportEnd::Whole);
    EXPECT_EQ(bytesOf(path("a.csv")), "\xEF\xBB\xBF品名,数量\r\n产品0,0\r\n");
}

TEST_F(TableExport, ACountryWhoseNumbersHaveACommaGetsTheSameFiles) {
    ExportTable table = column({12.5, -0.1, moment(2004, 1, 5, 3723), text("1,5")});
    table.columns.front().width = 12.5;
    const auto bytes = [&](const QString& name) {
        EXPECT_EQ(writeCsv(path("a.csv"), table), ExportEnd::Whole);
        EXPECT_EQ(writeXlsx(path(), table), ExportEnd::Whole);
        return bytesOf(path("a.csv")) + Workbook(path()).part(name);
    };
    const QString sheet = QStringLiteral("xl/worksheets/sheet1.xml");
    const QByteArray plain = bytes(sheet);
    EXPECT_TRUE(plain.contains("<v>12.5</v>"));
    const CommaLocale comma;
    ASSERT_TRUE(comma.isOn());
    EXPECT_EQ(bytes(sheet), plain);
}

TEST_F(TableExport, ANumberKeptAsItsTextIsANumberAndAnyOtherTextStays) {
    const ColumnInfo discount{"折扣", "TEXT(50)", ColumnType::Text, 50};
    const ColumnInfo number{"客户编号", "TEXT(20)", ColumnType::Text, 20};
    EXPECT_EQ(exportedValue(discount, text("95")), CellValue(95.0));
    EXPECT_EQ(exportedValue(discount, text("12.5")), CellValue(12.5));
    for (const char* typed : {"", "095", "9折", "1,000", "&H10"})
        EXPECT_EQ(exportedValue(discount, text(typed)), text(typed)) << typed;
    EXPECT_EQ(exportedValue(number, text("1001")), text("1001"));
}

} // namespace
