// Reads worksheets of Excel 97 workbooks: cells as their shown values, formulas as the results stored with
// them.
#include "import/biffFormats.h"
#include "import/biffRecords.h"
#include "import/compoundFile.h"
#include "import/sheetCells.h"
#include "import/tableReader.h"

#include "recordset/textNumber.h"

#include <QHash>

#include <vector>

namespace {

constexpr SheetCells::Bounds kBounds{65536, 256};
constexpr quint16 kBiff8 = 0x0600;
constexpr int kRecordsPerSign = 20000; // from one sign of life to the next

struct Sheet {
    QString name;
    qsizetype start = 0;
};

/// What all sheets of a workbook share.
struct Workbook {
    QByteArray stream;
    std::vector<Sheet> sheets;
    TextHeap strings;
    std::vector<int> formats;  // of the cell styles
    QHash<int, QString> codes; // of own formats
    bool from1904 = false;

    QString numberText(double number, int style) const {
        if (style >= 0 && style < int(formats.size())) {
            const int format = formats[std::size_t(style)];
            if (isDateFormat(format, codes.value(format)))
                return serialText(number, from1904);
        }
        return plainNumber(number);
    }
};

double rkNumber(quint32 rk) {
    double value;
    if (rk & 2) {
        value = qint32(rk) >> 2;
    } else {
        const quint64 bits = quint64(rk & 0xFFFFFFFC) << 32;
        std::memcpy(&value, &bits, sizeof value);
    }
    return rk & 1 ? value / 100 : value;
}

class WorkbookReader {
public:
    explicit WorkbookReader(Workbook& book)
        : m_book(book)
        , m_records(book.stream, 0) {}

    void read() {
        if (!m_records.next() || m_records.type() != Biff::Bof || u16(0) != kBiff8)
            throw ImportError(QStringLiteral("不是 Excel 97 或更高版本的 .xls 文件。"));
        while (m_records.next() && m_records.type() != Biff::Eof)
            take();
    }

private:
    quint16 u16(qsizetype at) const { return ByteReader(m_records.data()).u16(at); }

    void take() {
        switch (m_records.type()) {
        case Biff::FilePass:
            throw ImportError(QStringLiteral("工作簿有密码，不能读取。"));
        case Biff::DateMode:
            m_book.from1904 = u16(0) == 1;
            return;
        case Biff::Format:
            if (const auto code = StringReader({m_records.data().mid(2)}).string())
                m_book.codes[u16(0)] = *code;
            return;
        case Biff::Xf:
            m_book.formats.push_back(u16(2));
            return;
        case Biff::BoundSheet:
            return takeSheet();
        case Biff::Sst:
            return takeStrings();
        default:
            return;
        }
    }

    void takeSheet() {
        const ByteReader data(m_records.data());
        // Only worksheets; charts and macros have no rows.
        if (data.u8(5) != 0)
            return;
        if (const auto name = StringReader({m_records.data().mid(6)}).string(1))
            m_book.sheets.push_back({*name, qsizetype(data.u32(0))});
    }

    void takeStrings() {
        const quint32 count = ByteReader(m_records.data()).u32(4);
        StringReader reader(m_records.withContinuations());
        reader.skip(8);
        for (quint32 i = 0; i < count && !reader.atEnd(); ++i) {
            const auto text = reader.string();
            if (!text)
                throw ImportError(QStringLiteral("工作簿的文字表已损坏。"));
            m_book.strings.add(text->toStdString());
        }
    }

    Workbook& m_book;
    RecordReader m_records;
};

/// Reads the cells of one sheet.
class SheetReader {
public:
    SheetReader(const Workbook& book, qsizetype start)
        : m_book(book)
        , m_records(book.stream, start)
        , m_cells(book.strings, kBounds) {}

    void read(RowSink& sink) {
        if (!m_records.next() || m_records.type() != Biff::Bof)
            throw ImportError(QStringLiteral("工作表已损坏。"));
        bool ended = false;
        while (!ended && m_records.next()) {
            ended = m_records.type() == Biff::Eof;
            take();
            if (++m_taken % kRecordsPerSign == 0)
                sink.alive();
        }
        if (!ended)
            throw ImportError(QStringLiteral("工作表不完整。"));
        m_cells.table(sink);
    }

private:
    ByteReader data() const { return ByteReader(m_records.data()); }

    void put(int row, int column, const QString& text) { m_cells.put(row, column, text.toStdString()); }
    void putHere(const QString& text) { put(data().u16(0), data().u16(2), text); }
    QString number(double value) const { return m_book.numberText(value, data().u16(4)); }

    void take() {
        switch (m_records.type()) {
        case Biff::LabelSst:
            return m_cells.putShared(data().u16(0), data().u16(2), data().u32(6));
        case Biff::Label:
        case Biff::RString:
            if (const auto text = StringReader({m_records.data().mid(6)}).string())
                putHere(*text);
            return;
        case Biff::Number:
            return putHere(number(data().f64(6)));
        case Biff::Rk:
            return putHere(number(rkNumber(data().u32(6))));
        case Biff::MulRk:
            return takeRow();
        case Biff::BoolErr:
            if (data().u8(7) == 0)
                putHere(data().u8(6) ? QStringLiteral("True") : QStringLiteral("False"));
            return;
        case Biff::Formula:
            return takeFormula();
        case Biff::String:
            if (const auto text = StringReader(m_records.withContinuations()).string(); text && m_awaited)
                put(m_awaitedRow, m_awaitedColumn, *text);
            m_awaited = false;
            return;
        default:
            return;
        }
    }

    void takeRow() {
        const ByteReader row = data();
        int column = row.u16(2);
        for (qsizetype at = 4; at + 8 <= row.size(); at += 6, ++column)
            put(row.u16(0), column, m_book.numberText(rkNumber(row.u32(at + 2)), row.u16(at)));
    }

    void takeFormula() {
        const ByteReader cell = data();
        if (cell.u16(12) != 0xFFFF)
            return putHere(number(cell.f64(6)));
        switch (cell.u8(6)) {
        case 0: // a text, in the STRING record that follows
            m_awaited = true;
            m_awaitedRow = cell.u16(0);
            m_awaitedColumn = cell.u16(2);
            return;
        case 1:
            return putHere(cell.u8(8) ? QStringLiteral("True") : QStringLiteral("False"));
        case 3:
            return putHere(QLatin1String(""));
        default: // an error
            return;
        }
    }

    const Workbook& m_book;
    RecordReader m_records;
    SheetCells m_cells;
    int m_taken = 0;
    bool m_awaited = false;
    int m_awaitedRow = 0;
    int m_awaitedColumn = 0;
};

class XlsReader : public TableReader {
public:
    explicit XlsReader(const SourceFile& file)
        : m_file(file) {
        m_book.stream = compoundStream(m_file.bytes(), QStringLiteral("Workbook"));
        WorkbookReader(m_book).read();
    }

    QStringList tables() override {
        QStringList names;
        for (const Sheet& sheet : m_book.sheets)
            names << sheet.name;
        return names;
    }
    void read(const QString& table, RowSink& sink) override {
        for (const Sheet& sheet : m_book.sheets)
            if (sheet.name == table)
                return SheetReader(m_book, sheet.start).read(sink);
        throw ImportError(QStringLiteral("没有这个工作表：%1").arg(table));
    }

private:
    SourceFile m_file;
    Workbook m_book;
};

} // namespace

std::unique_ptr<TableReader> xlsReader(const SourceFile& file) {
    return std::make_unique<XlsReader>(file);
}
