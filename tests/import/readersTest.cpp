#include "import/importSource.h"
#include "import/readHere.h"
#include "import/sampleFile.h"
#include "import/textReader.h"
#include "recordset/textDate.h"
#include "recordset/textNumber.h"
#include "support/printQt.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtEndian>

#include <gtest/gtest.h>

namespace {

QStringList samples() {
    QStringList names;
    const QDir folder(QStringLiteral(SAMPLES "/import/expected"));
    for (const QString& prefix : {QString(), QStringLiteral("edge/")})
        for (const QString& name :
             QDir(folder.filePath(prefix)).entryList({QStringLiteral("*.json")}, QDir::Files))
            if (name != u"after_import.json")
                names << prefix + name.chopped(5);
    return names;
}

/// Whether a cell is what the expectation says of a column of that type.
bool isSame(const QString& cell, const QJsonValue& expected, const QString& type) {
    const QString wanted = expected.toString();
    if (cell == wanted)
        return true;
    if (type == u"number" && isNumeric(wanted) && isNumeric(cell))
        return std::abs(val(cell) - val(wanted)) < 1e-6;
    if (type == u"date")
        return isDate(cell) && isDate(wanted) && parseDate(cell) == parseDate(wanted);
    return false;
}

void expectTable(const SourceRows& rows, const QJsonObject& table, const std::string& name) {
    const QJsonArray columns = table[QStringLiteral("columns")].toArray();
    const QJsonArray wanted = table[QStringLiteral("rows")].toArray();
    if (wanted.isEmpty() && rows.columns.isEmpty())
        return;
    ASSERT_EQ(rows.columns.size(), columns.size()) << name;
    for (int i = 0; i < columns.size(); ++i)
        EXPECT_EQ(rows.columns[i], columns[i].toObject()[QStringLiteral("name")].toString()) << name;
    ASSERT_EQ(rows.rowCount(), wanted.size()) << name;
    int wrong = 0;
    for (int row = 0; row < wanted.size() && wrong < 5; ++row)
        for (int i = 0; i < columns.size(); ++i) {
            const QJsonValue expected = wanted[row].toArray()[i];
            if (isSame(rows.cell(row, i), expected, columns[i].toObject()[QStringLiteral("type")].toString()))
                continue;
            ++wrong;
            ADD_FAILURE() << name << " row " << row << " column " << rows.columns[i].toStdString() << ": \""
                          << rows.cell(row, i).toStdString() << "\" for \""
                          << expected.toString().toStdString() << '"';
        }
}

void expectTables(ImportSource& source, const SampleFile& sample) {
    const std::string name = sample.name.toStdString();
    QStringList listed = source.tables();
    for (const QJsonValue& each : sample.tables()) {
        const QJsonObject table = each.toObject();
        const QString tableName = table[QStringLiteral("name")].toString();
        EXPECT_EQ(listed.removeAll(tableName), 1) << name << ": " << tableName.toStdString();
        expectTable(source.read(tableName), table, name + "/" + tableName.toStdString());
    }
    // A text file has its one table, whatever is in it.
    EXPECT_TRUE(listed.isEmpty() || sample.tables().isEmpty())
        << name << " lists more: " << listed.join(u' ').toStdString();
}

TEST(ImportReaders, EverySampleIsReadToItsExpectedRows) {
    int read = 0;
    for (const QString& name : samples()) {
        const SampleFile sample = sampleFile(name);
        const QString outcome = sample.outcome();
        if (outcome.startsWith(u"unreadable") || outcome == u"refused_name")
            continue;
        ++read;
        try {
            const auto source = openImportSource(sample.kind(), sample.path());
            expectTables(*source, sample);
        } catch (const ImportError& error) {
            if (outcome != u"no_rows")
                ADD_FAILURE() << name.toStdString() << ": " << error.what();
        }
    }
    EXPECT_GT(read, 25);
}

TEST(ImportReaders, ADamagedSampleIsRefusedOrGivesTrueRowsAlone) {
    for (const QString& name : samples()) {
        const SampleFile sample = sampleFile(name);
        if (!sample.outcome().startsWith(u"unreadable"))
            continue;
        try {
            const auto source = openImportSource(sample.kind(), sample.path());
            for (const QString& table : source->tables()) {
                const SourceRows rows = source->read(table);
                const int count = rows.rowCount();
                const int most =
                    sample.outcome() == u"unreadable" ? 0 : sample.expected["max_rows"].toInt(count);
                EXPECT_LE(count, most) << name.toStdString();
                EXPECT_TRUE(sample.outcome() != u"unreadable_or_import" || count == 5) << name.toStdString();
            }
        } catch (const ImportError&) {
        }
    }
}

SourceRows textOf(const QByteArray& bytes) {
    return readTable(*textReader(SourceFile(bytes)));
}

TEST(ImportReaders, ATextSourceWithoutColumnsOrRowsIsEmpty) {
    EXPECT_EQ(textOf("").rowCount(), 0);
    EXPECT_EQ(textOf("a,b\r\n").columns, (QStringList{"a", "b"}));
    EXPECT_EQ(textOf("a,b\r\n\r\n\r\n").rowCount(), 0);
}

TEST(ImportReaders, QuotesCommasAndLineEndsInsideAFieldBelongToIt) {
    const SourceRows rows = textOf("a,b\n\"x,\"\"y\"\"\r\nz\",2\n\n3\n\"open");
    EXPECT_EQ(rows.rowCount(), 3);
    EXPECT_EQ(rows.cell(0, 0), u"x,\"y\"\r\nz");
    EXPECT_EQ(rows.cell(0, 1), u"2");
    EXPECT_EQ(rows.cell(1, 0), u"3");
    EXPECT_TRUE(rows.cell(1, 1).isNull()) << "a line that ends early";
    EXPECT_EQ(rows.cell(2, 0), u"open");
}

/// The bytes of a small workbook with the cells of its sheet further down and to the right.
QByteArray movedCells(QByteArray book, int down, int right) {
    const auto number = [&book](qsizetype at) { return qFromLittleEndian<quint16>(book.constData() + at); };
    constexpr int labelSst = 0xFD;
    constexpr int numberCell = 0x203;
    constexpr int eof = 0x0A;
    qsizetype at = book.indexOf(QByteArray::fromHex("0908100000061000"));
    for (; number(at) != eof; at += 4 + number(at + 2)) {
        if (number(at) != labelSst && number(at) != numberCell)
            continue;
        qToLittleEndian(quint16(number(at + 4) + down), book.data() + at + 4);
        qToLittleEndian(quint16(number(at + 6) + right), book.data() + at + 6);
    }
    return book;
}

TEST(ImportReaders, ASheetBeginsAtItsFirstCellWhereverThatStands) {
    const SourceFile book = bytesOf(QStringLiteral(SAMPLES "/import/edge/builtin_dates.xls"));
    const auto plain = xlsReader(book);
    const SourceRows rows = readTable(*plain, plain->tables().first());
    const auto moved = xlsReader(SourceFile(movedCells(book.bytes(), 2, 3)));
    const SourceRows same = readTable(*moved, moved->tables().first());
    ASSERT_GT(rows.rowCount(), 0);
    EXPECT_EQ(same.columns, rows.columns);
    EXPECT_EQ(cellsOf(same), cellsOf(rows));
}

TEST(ImportReaders, TheDelimiterIsTheOneMostOftenInTheHeaderOutsideQuotes) {
    EXPECT_EQ(delimiterOf("a,b\tc\td\n,,,,,"), '\t');
    EXPECT_EQ(delimiterOf("a;b;c,d"), ';');
    EXPECT_EQ(delimiterOf("a;b,c"), ',') << "comma on a tie";
    EXPECT_EQ(delimiterOf("a;b\tc"), '\t') << "a tab before a semicolon";
    EXPECT_EQ(delimiterOf("\"a;b;c\",d"), ',');
    EXPECT_EQ(delimiterOf("a"), ',');
}

TEST(ImportReaders, TextIsUtf8ByItsMarkOrStrictlyAndElseOfWindows) {
    for (const char* bytes : {"\xEF\xBB\xBF"
                              "\xE7\xBA\xB8",
                              "\xE7\xBA\xB8", "\xFF\xFE\xB8\x7E"})
        EXPECT_EQ(textOf(bytes).columns, QStringList{"纸"});
    EXPECT_EQ(textOf("\xB4\xF2\xD3\xA1\xD6\xBD").columns, QStringList{"打印纸"});
}

/// A text of many pieces: a field that is one sign up to sixty times, and the number of its row.
QByteArray longText(const QByteArray& sign, int rows, const QByteArray& end) {
    QByteArray text("a,b\r\n");
    for (int row = 0; row < rows; ++row)
        text += sign.repeated(row % 61) + ',' + QByteArray::number(row) + (row % 3 == 0 ? "\n" : "\r\n");
    return text + end;
}

TEST(ImportReaders, ATextIsTheSameWhereverItIsCutIntoPieces) {
    constexpr int count = 60000; // nearly 4 MB of two bytes a sign
    for (const QByteArray& sign :
         {QByteArray("\xB4\xF2"), QByteArray("\xE7\xBA\xB8"), QByteArray("\x81\x30\x81\x30")}) {
        const QString decoded =
            QByteArrayView(sign).isValidUtf8() ? QString::fromUtf8(sign) : decodeGbk(sign);
        const SourceRows rows = textOf(longText(sign, count, "\"open \"\"x\"\"\r\n,\" y,z\n\nlast,1,2\n3"));
        ASSERT_EQ(rows.rowCount(), count + 3);
        int wrong = 0;
        for (int row = 0; row < count; ++row)
            wrong +=
                rows.cell(row, 0) != decoded.repeated(row % 61) || rows.cell(row, 1) != QString::number(row);
        EXPECT_EQ(wrong, 0);
        EXPECT_EQ(rows.cell(count, 0), u"open \"x\"\r\n, y");
        EXPECT_EQ(rows.cell(count, 1), u"z");
        EXPECT_EQ(rows.cell(count + 1, 1), u"1") << "what is beyond the header's columns is left";
        EXPECT_TRUE(rows.cell(count + 2, 1).isNull());
    }
}

TEST(ImportReaders, OneByteThatIsNoUtf8FarInATextMakesItOneOfWindows) {
    const SourceRows rows = textOf(longText("\xE7\xBA\xB8", 60000, "\xB4\xF2\xD3\xA1\xD6\xBD,1\n"));
    EXPECT_EQ(rows.cell(60000, 0), u"打印纸");
    EXPECT_NE(rows.cell(1, 0), u"纸");
}

/// A text that comes in pieces of one byte.
SourceRows byteByByte(std::string_view text) {
    SourceRows rows;
    DelimitedParser parser(delimiterOf(text), rows);
    for (std::size_t i = 0; i < text.size(); ++i)
        parser.take(text.substr(i, 1));
    parser.finish();
    return rows;
}

TEST(ImportReaders, ATextThatComesByteByByteHasTheSameCells) {
    for (const char* text :
         {"a,b\n\"x,\"\"y\"\"\r\nz\",2\n\n3\n\"open", "a;b\r\r\n;\r\"\";\"q\"r\"s;t\r",
          "\n\n\"a\"\t\tb\"\n\t\"\"\"\"", "\"a\nb\",c\n1,\"\"2\"\"", ",\n,", "a", "\"", "a,b\n,\""}) {
        const SourceRows whole = textOf(text);
        const SourceRows pieces = byteByByte(text);
        EXPECT_EQ(pieces.columns, whole.columns) << text;
        EXPECT_EQ(cellsOf(pieces), cellsOf(whole)) << text;
    }
    EXPECT_EQ(cellsOf(textOf("a;b\r\r\n;\r\"\";\"q\"r\"s;t\r")), (std::vector<QString>{"", "", "", "qr\"s"}));
}

TEST(ImportReaders, RowsOfLongTextsComeHoweverMuchTheyAreTogether) {
    // More in one block of rows than a reader may send at once.
    constexpr int count = 1400;
    const QByteArray row(50'000, 'x');
    const QTemporaryDir folder;
    QFile file(folder.filePath("long.txt"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("k,v\n") > 0);
    for (int i = 0; i < count; ++i)
        ASSERT_GT(file.write(QByteArray::number(i) + ',' + row + '\n'), row.size());
    file.close();
    const SourceRows rows = openImportSource(SourceKind::Txt, file.fileName())->read("long");
    ASSERT_EQ(rows.rowCount(), count);
    EXPECT_EQ(rows.cell(count - 1, 0), u"1399");
    EXPECT_EQ(rows.cell(count - 1, 1).size(), row.size());
}

} // namespace
