// The reader of Excel workbooks of today, in this process, on workbooks that are made here; the samples of
// other programs are read behind walls in readersTest.cpp.
#include "import/importSource.h"
#include "import/readHere.h"
#include "import/zipFile.h"
#include "import/zipParts.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class Xlsx : public testing::Test {
protected:
    QString write(const ZipContent& content, int method = ZIP_CM_DEFLATE) {
        const QString path = m_folder.filePath("book.xlsx");
        EXPECT_TRUE(writeZip(path, content, method));
        return path;
    }
    SourceRows read(const ZipContent& content) {
        const auto reader = xlsxReader(bytesOf(write(content)));
        return readTable(*reader, "s");
    }
    SourceRows read(const XlsxParts& parts) { return read(parts.content()); }
    /// The rows below the names, cells parted by "|", rows by "/"; a cell without a value is "-".
    QString cells(const XlsxParts& parts) {
        const SourceRows rows = read(parts);
        QStringList lines;
        for (int row = 0; row < rows.rowCount(); ++row) {
            QStringList line;
            for (int column = 0; column < rows.columns.size(); ++column) {
                const QString cell = rows.cell(row, column);
                line << (cell.isNull() ? QStringLiteral("-") : cell);
            }
            lines << line.join(u'|');
        }
        return lines.join(u'/');
    }
    /// What is told of a workbook that is not read.
    QString refusal(const ZipContent& content) {
        try {
            read(content);
        } catch (const ImportError& error) {
            return error.text();
        }
        return {};
    }
    QTemporaryDir m_folder;
};

const QByteArray kNames = "<row r=\"1\"><c r=\"A1\"><v>1</v></c><c r=\"B1\"><v>2</v></c></row>";

TEST_F(Xlsx, CellsAreTheValuesThatAreShown) {
    EXPECT_EQ(
        cells({.rows = kNames +
                       "<row r=\"2\"><c r=\"A2\"><v>0.30000000000000004</v></c><c r=\"B2\" t=\"n\">"
                       "<v>1.5E3</v></c></row>"
                       "<row r=\"3\"><c r=\"A3\" t=\"b\"><v>1</v></c><c r=\"B3\" t=\"b\"><v>0</v></c></row>"
                       "<row r=\"4\"><c r=\"A4\" t=\"e\"><f>1/0</f><v>#DIV/0!</v></c>"
                       "<c r=\"B4\" t=\"str\"><f>A1</f><v> x </v></c></row>"
                       "<row r=\"5\"><c r=\"A5\"/><c r=\"B5\"><f>A1+1</f><v>13800138000</v></c></row>"}),
        u"0.3|1500/True|False/-| x /-|13800138000");
}

TEST_F(Xlsx, TextsAreSharedOrInTheirCellsPlainOrInRunsWithoutTheirReadings) {
    EXPECT_EQ(
        cells({.rows = kNames +
                       "<row><c t=\"s\"><v>0</v></c><c t=\"s\"><v>1</v></c></row>"
                       "<row><c t=\"inlineStr\"><is><t xml:space=\"preserve\"> a </t></is></c>"
                       "<c t=\"inlineStr\"><is><r><t>b</t></r><r><rPr><b/></rPr><t>c</t></r></is></c></row>"
                       "<row><c t=\"s\"><v>2</v></c><c t=\"s\"><v>9</v></c></row>",
               .strings =
                   "<si><t>&#32440;&amp;<![CDATA[<b>]]></t></si>"
                   "<si><r><rPr/><t>上</t></r><rPh sb=\"0\" eb=\"1\"><t>shang</t></rPh><r><t>海</t></r>"
                   "<phoneticPr fontId=\"1\"/></si><si><t/></si>"}),
        u"纸&<b>|上海/ a |bc/|-")
        << "an empty text is a text, and a number without a text no cell";
}

TEST_F(Xlsx, ASignThatXmlCannotHoldStandsByItsNumber) {
    EXPECT_EQ(cells({.rows = kNames + "<row><c t=\"s\"><v>0</v></c></row>",
                     .strings = "<si><t>a_x000D_b_x005F_x000D__x00_xyzw__</t></si>"}),
              u"a\rb_x000D__x00_xyzw__|-");
}

TEST_F(Xlsx, NumbersUnderADateFormatAreDatesInTheSystemOfTheBook) {
    const QByteArray styles =
        "<numFmts count=\"3\"><numFmt numFmtId=\"164\" formatCode=\"yyyy&quot;年&quot;m\"/>"
        "<numFmt numFmtId=\"165\" formatCode=\"0&quot;d&quot;\"/>"
        "<numFmt numFmtId=\"166\" formatCode=\"[$-804]m&quot;月&quot;d\"/></numFmts>"
        "<cellStyleXfs><xf numFmtId=\"14\"/></cellStyleXfs><cellXfs><xf numFmtId=\"0\"/>"
        "<xf numFmtId=\"14\"/><xf numFmtId=\"164\"/><xf numFmtId=\"165\"/><xf numFmtId=\"166\"/>"
        "<xf numFmtId=\"31\"/></cellXfs>";
    QByteArray rows = kNames;
    for (int style = 0; style < 7; ++style)
        rows += "<row><c s=\"" + QByteArray::number(style) + "\"><v>45356.25</v></c></row>";
    EXPECT_EQ(cells({.rows = rows, .styles = styles}),
              u"45356.25|-/2024-3-5 6:00:00|-/2024-3-5 6:00:00|-/45356.25|-/2024-3-5 6:00:00|-/"
              u"2024-3-5 6:00:00|-/45356.25|-")
        << "one that is not there has no format";
    const QByteArray one = kNames + "<row><c s=\"1\"><v>43894</v></c></row>";
    EXPECT_EQ(cells({.rows = one, .styles = styles, .properties = "date1904=\"1\""}), u"2024-3-5|-");
    EXPECT_EQ(cells({.rows = one, .styles = styles, .properties = "date1904=\"true\""}), u"2024-3-5|-");
    EXPECT_EQ(cells({.rows = one, .styles = styles, .properties = "date1904=\"0\""}), u"2020-3-4|-");
    EXPECT_EQ(
        cells({.rows = kNames + "<row><c t=\"d\"><v>2024-03-05T06:00:00</v></c><c t=\"d\"><v>2024-03-05</v>"
                                "</c></row>"}),
        u"2024-3-5 6:00:00|2024-3-5");
}

TEST_F(Xlsx, TheTableBeginsAtTheFirstCellAndItsFirstRowNamesTheColumns) {
    const SourceRows rows =
        read({.rows = "<row r=\"3\"><c r=\"C3\" t=\"inlineStr\"><is><t> 甲 </t></is></c>"
                      "<c r=\"E3\"><v>7</v></c></row>"
                      "<row r=\"5\"><c r=\"D5\"><v>1</v></c><c r=\"F5\"><v>2</v></c></row>"});
    EXPECT_EQ(rows.columns, (QStringList{"甲", "F2", "7", "F4"}));
    ASSERT_EQ(rows.rowCount(), 2);
    EXPECT_TRUE(rows.cell(0, 1).isNull()) << "a row that is left out";
    EXPECT_EQ(rows.cell(1, 1) + rows.cell(1, 3), u"12");
}

TEST_F(Xlsx, CellsAndRowsWithoutAPlaceFollowTheOnesBefore) {
    EXPECT_EQ(cells({.rows = kNames +
                             "<row><c><v>3</v></c><c><v>4</v></c></row><row r=\"4\"><c r=\"B4\"><v>5</v></c>"
                             "</row><row><c/><c><v>6</v></c></row>"}),
              u"3|4/-|-/-|5/-|6");
}

TEST_F(Xlsx, CellsOutOfTheirOrderAreSortedAndOfTwoInOnePlaceTheLaterCounts) {
    EXPECT_EQ(cells({.rows = "<row r=\"3\"><c r=\"B3\"><v>5</v></c><c r=\"A3\"><v>4</v></c></row>" + kNames +
                             "<row r=\"2\"><c r=\"A2\"><v>3</v></c><c r=\"A2\"><v>7</v></c></row>"}),
              u"7|-/4|5");
}

TEST_F(Xlsx, PlacesThatNoSheetHasAreNoCells) {
    EXPECT_EQ(
        cells({.rows = kNames +
                       "<row r=\"2\"><c r=\"A2\"><v>3</v></c></row>"
                       "<row r=\"1048577\"><c><v>1</v></c></row><row r=\"2147483647\"><c><v>1</v></c></row>"
                       "<row><c><v>1</v></c></row><row r=\"-2147483648\"><c><v>1</v></c></row>"
                       "<row r=\"3\"><c r=\"XFE3\"><v>1</v></c><c r=\"ZZZ3\"><v>1</v></c></row>"}),
        u"3|-");
}

TEST_F(Xlsx, NamesOfElementsCountWhateverTheirNameSpaceOrPrefix) {
    ZipContent content = XlsxParts{.rows = {}}.content();
    content.back().second =
        "<x:worksheet xmlns:x=\"http://purl.oclc.org/ooxml/spreadsheetml/main\"><x:sheetData>"
        "<x:row r=\"1\"><x:c r=\"A1\"><x:v>1</x:v></x:c></x:row><x:row r=\"2\"><x:c r=\"A2\"><x:v>"
        "2</x:v></x:c></x:row></x:sheetData><x:extLst><x:ext><x:row/></x:ext></x:extLst>"
        "</x:worksheet>";
    const SourceRows rows = read(content);
    EXPECT_EQ(rows.columns, QStringList{"1"});
    EXPECT_EQ(rows.cell(0, 0), u"2");
}

TEST_F(Xlsx, AWorkbookWithAnEmptySheetOrWithoutTextsAndStylesIsRead) {
    EXPECT_TRUE(read(XlsxParts{.rows = ""}).columns.isEmpty());
    ZipContent content =
        XlsxParts{.rows = kNames + "<row><c s=\"1\"><v>3</v></c><c t=\"s\"><v>0</v></c></row>"}.content();
    content.erase(content.begin() + 3, content.begin() + 5);
    EXPECT_EQ(read(content).cell(0, 0), u"3");
}

TEST_F(Xlsx, OnlyWorksheetsInsideTheFileAreListed) {
    ZipContent content = XlsxParts{.rows = kNames}.content();
    content[1].second.replace("</sheets>",
                              "<sheet name=\"chart\" sheetId=\"2\" r:id=\"r8\"/><sheet name=\"outside\" "
                              "sheetId=\"3\" r:id=\"r9\"/><sheet name=\"none\" sheetId=\"4\"/></sheets>");
    content[2].second.replace(
        "</Relationships>",
        "<Relationship Id=\"r8\" Type=\"x/chartsheet\" Target=\"c.xml\"/><Relationship "
        "Id=\"r9\" Type=\"x/worksheet\" TargetMode=\"External\" Target=\"file:///etc/passwd\"/>"
        "</Relationships>");
    EXPECT_EQ(xlsxReader(bytesOf(write(content)))->tables(), QStringList{"s"});
}

TEST_F(Xlsx, ATargetThatLeadsOutOfTheArchiveLeadsNowhere) {
    EXPECT_EQ(refusal(XlsxParts{.rows = kNames, .sheetTarget = "../../../../etc/passwd"}.content()),
              u"文件已损坏，或者不是 Excel 的 .xlsx 文件。");
}

TEST_F(Xlsx, ABombIsRefusedBeforeAndWhileItIsUnpacked) {
    const QString told = QStringLiteral("文件解开以后太大，不能读取。");
    const QByteArray filler = ("<!--" + QByteArray(1 << 20, 'x') + "-->").repeated(80);
    ZipContent bomb = XlsxParts{.rows = filler}.content();
    EXPECT_EQ(refusal(bomb), told);
    bomb = XlsxParts{.rows = kNames, .strings = filler}.content();
    EXPECT_EQ(refusal(bomb), told) << "in any part";
    // One that tells a small size: it is found out while it comes.
    QByteArray bytes = bytesOf(write(bomb)).bytes();
    const quint32 size = quint32(bomb[4].second.size());
    const QByteArray itself(reinterpret_cast<const char*>(&size), 4);
    ASSERT_GE(bytes.count(itself), 1);
    bytes.replace(itself, QByteArray("\x00\x10\x00\x00", 4));
    const auto lying = xlsxReader(SourceFile(bytes));
    try {
        readTable(*lying, "s");
        ADD_FAILURE();
    } catch (const ImportError& error) {
        EXPECT_EQ(error.text(), told);
    }
}

TEST_F(Xlsx, TooManyPartsAreRefused) {
    ZipContent content = XlsxParts{.rows = kNames}.content();
    for (int i = 0; i <= ZipParts::kMostParts; ++i)
        content.emplace_back("x" + QByteArray::number(i), "");
    EXPECT_EQ(refusal(content), u"文件里的部件太多，不能读取。");
}

TEST_F(Xlsx, DocumentTypesAndTheirEntitiesAreRefusedAndNestingHasAnEnd) {
    const QString entities = QStringLiteral("工作簿里有不合规定的实体或文档类型，不能读取。");
    XlsxParts parts{.rows = "<row><c t=\"str\"><v>&e;</v></c></row>"};
    for (const char* type : {"<!DOCTYPE worksheet [<!ENTITY e SYSTEM \"file:///etc/passwd\">]>",
                             "<!DOCTYPE worksheet [<!ENTITY a \"xxxxxxxxxx\"><!ENTITY e \"&a;&a;&a;\">]>",
                             "<!DOCTYPE worksheet SYSTEM \"http://localhost/x.dtd\">"}) {
        parts.beforeSheet = type;
        EXPECT_EQ(refusal(parts.content()), entities) << type;
    }
    parts.beforeSheet.clear();
    EXPECT_EQ(refusal(parts.content()), entities) << "an entity of nobody";
    parts.rows = QByteArray("<a>").repeated(5000) + QByteArray("</a>").repeated(5000);
    EXPECT_EQ(refusal(parts.content()), u"工作簿的嵌套太深，不能读取。");
}

TEST_F(Xlsx, WhatIsNoWorkbookOrIsCutOrHasAPasswordIsToldSo) {
    const auto told = [](const QByteArray& bytes) {
        try {
            readTable(*xlsxReader(SourceFile(bytes)), "s");
        } catch (const ImportError& error) {
            return error.text();
        }
        return QString();
    };
    const QString damaged = QStringLiteral("文件已损坏，或者不是 Excel 的 .xlsx 文件。");
    const QByteArray whole = bytesOf(write(XlsxParts{.rows = kNames}.content())).bytes();
    EXPECT_EQ(told(whole), u"");
    EXPECT_EQ(told(""), damaged);
    EXPECT_EQ(told("编号,名称\r\n1,纸\r\n"), damaged);
    EXPECT_EQ(told(whole.chopped(100)), damaged);
    EXPECT_EQ(told(QByteArray::fromHex("D0CF11E0A1B11AE1") + whole),
              u"工作簿有密码，或者是 .xls 文件，不能读取。");
    EXPECT_EQ(told(bytesOf(write({{"a.txt", "x"}})).bytes()), damaged);
    EXPECT_EQ(told(bytesOf(write(XlsxParts{.rows = "<row><c>"}.content())).bytes()), u"工作簿已损坏。");
    QByteArray flipped = whole;
    const qsizetype at = flipped.indexOf("sheet1.xml") + 20;
    flipped[at] = char(flipped[at] ^ 0xFF);
    EXPECT_NE(told(flipped), u"") << "a part that is not what its sum says";
}

TEST_F(Xlsx, ARowBeyondAMillionOrAVeryWideSheetIsReadWithoutRoomForWhatIsEmpty) {
    const QByteArray far = kNames + "<row r=\"1048576\"><c r=\"B1048576\"><v>9</v></c></row>";
    const SourceRows rows = read({.rows = far});
    EXPECT_EQ(rows.rowCount(), 1048575);
    EXPECT_EQ(rows.cell(1048574, 1), u"9");
    const QString path = write(
        XlsxParts{.rows = kNames + "<row r=\"1048576\"><c r=\"XFD1048576\"><v>9</v></c></row>"}.content());
    const auto source = openImportSource(SourceKind::Xlsx, path);
    EXPECT_THROW(source->read("s"), ImportError) << "more columns than a table has";
}

} // namespace
