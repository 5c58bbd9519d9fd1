// Reads worksheets of Excel workbooks of today: cells as their shown values, formulas as the results stored
// with them.
#include "import/biffFormats.h"
#include "import/partReader.h"
#include "import/sheetCells.h"
#include "import/tableReader.h"
#include "import/zipParts.h"

#include "recordset/textNumber.h"

#include <QDate>
#include <QHash>
#include <QTime>

#include <algorithm>
#include <charconv>
#include <optional>
#include <vector>

namespace {

constexpr int kPerSign = 5000; // rows or shared texts from one sign of life to the next

struct Sheet {
    QString name;
    QString part;
};

/// What all sheets of a workbook share.
struct Workbook {
    std::vector<Sheet> sheets;
    TextHeap strings;
    std::vector<bool> isDate; // of the cell styles
    bool from1904 = false;
};

/// Where a target lies that a part names, from the archive's root.
QString partPath(const QString& folder, const QString& target) {
    QStringList path = target.startsWith(u'/') ? QStringList() : folder.split(u'/', Qt::SkipEmptyParts);
    for (const QString& step : target.split(u'/', Qt::SkipEmptyParts)) {
        if (step == u"..")
            path = path.mid(0, path.size() - 1);
        else if (step != u".")
            path << step;
    }
    return path.join(u'/');
}

QString folderOf(const QString& part) {
    return part.left(std::max<qsizetype>(0, part.lastIndexOf(u'/')));
}

/// What a part points to: the kind's last word and the other part, by id.
struct Relation {
    QString kind;
    QString part;
};
using Relations = QHash<QString, Relation>;

/// "" for the archive's own.
Relations relationsOf(ZipParts& parts, const QString& part) {
    const QString folder = folderOf(part);
    const QString file = part.mid(part.lastIndexOf(u'/') + 1);
    const QString path =
        (folder.isEmpty() ? QString() : folder + u'/') + QStringLiteral("_rels/%1.rels").arg(file);
    Relations found;
    if (!parts.has(path))
        return found;
    PartReader xml(parts.open(path));
    while (xml.child()) {
        const QString kind = xml.attribute("Type");
        if (xml.raw("TargetMode") != "External")
            found[xml.attribute("Id")] = {kind.mid(kind.lastIndexOf(u'/') + 1),
                                          partPath(folder, xml.attribute("Target"))};
        xml.skip();
    }
    return found;
}

/// The first part of a kind, "" without one.
QString partOfKind(const Relations& relations, QStringView kind) {
    for (const Relation& each : relations)
        if (each.kind == kind)
            return each.part;
    return {};
}

/// Signs that XML cannot hold stand as _x000D_ in texts.
void unescape(std::string& text) {
    if (text.find("_x") == std::string::npos)
        return;
    const QString escaped = QString::fromStdString(text);
    QString plain;
    for (qsizetype i = 0; i < escaped.size(); ++i) {
        bool ok = false;
        ushort sign = 0;
        if (escaped[i] == u'_' && i + 6 < escaped.size() && escaped[i + 1] == u'x' && escaped[i + 6] == u'_')
            sign = QStringView(escaped).mid(i + 2, 4).toUShort(&ok, 16);
        plain += ok ? QChar(sign) : escaped[i];
        i += ok ? 6 : 0;
    }
    text = plain.toStdString();
}

/// The text of a shared or inline string: plain, or in runs; readings beside it do not count.
std::string stringText(PartReader& xml) {
    std::string text;
    while (xml.child()) {
        if (xml.is("t"))
            text += xml.text();
        else if (xml.is("r"))
            while (xml.child()) {
                if (xml.is("t"))
                    text += xml.text();
                else
                    xml.skip();
            }
        else
            xml.skip();
    }
    unescape(text);
    return text;
}

bool isTrue(std::string_view text) {
    return text == "1" || text == "true" || text == "on";
}

/// The whole number that a text is; nothing for another text.
std::optional<int> wholeNumber(std::string_view text) {
    int number = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isWhole = !text.empty() && read.ec == std::errc() && read.ptr == text.data() + text.size();
    return isWhole ? std::optional(number) : std::nullopt;
}

/// A date in the form of ISO 8601 as a date text; the text itself where it is none.
QString isoText(const QString& text) {
    const QDate date = QDate::fromString(text.left(10), Qt::ISODate);
    if (!date.isValid())
        return text;
    const QTime time = QTime::fromString(text.mid(11, 8), Qt::ISODate);
    const QString day = QStringLiteral("%1-%2-%3").arg(date.year()).arg(date.month()).arg(date.day());
    const bool hasTime = time.isValid() && time != QTime(0, 0);
    return hasTime ? day + time.toString(QStringLiteral(" H:mm:ss")) : day;
}

/// Reads what stands before the sheets.
class BookReader {
public:
    BookReader(ZipParts& parts, Workbook& book)
        : m_parts(parts)
        , m_book(book) {}

    void read() {
        const QString part = partOfKind(relationsOf(m_parts, {}), u"officeDocument");
        if (!m_parts.has(part))
            throw ImportError(QStringLiteral("文件已损坏，或者不是 Excel 的 .xlsx 文件。"));
        m_relations = relationsOf(m_parts, part);
        PartReader xml(m_parts.open(part));
        if (!xml.is("workbook"))
            throw ImportError(QStringLiteral("文件不是工作簿。"));
        while (xml.child()) {
            if (xml.is("sheets"))
                takeSheets(xml);
            else if (xml.is("workbookPr"))
                m_book.from1904 = isTrue(xml.raw("date1904"));
            if (!xml.is("sheets"))
                xml.skip();
        }
    }
    QString strings() const { return partOfKind(m_relations, u"sharedStrings"); }
    QString styles() const { return partOfKind(m_relations, u"styles"); }

private:
    /// Hidden ones too; charts and macros have no rows.
    void takeSheets(PartReader& xml) {
        while (xml.child()) {
            const Relation relation = m_relations.value(xml.attribute("id"));
            if (relation.kind == u"worksheet")
                m_book.sheets.push_back({xml.attribute("name"), relation.part});
            xml.skip();
        }
    }

    ZipParts& m_parts;
    Workbook& m_book;
    Relations m_relations;
};

void readStyles(std::unique_ptr<QIODevice> part, Workbook& book) {
    PartReader xml(std::move(part));
    QHash<int, QString> codes; // of own formats
    std::vector<int> formats;
    while (xml.child()) {
        const bool styles = xml.is("cellXfs");
        if (!styles && !xml.is("numFmts")) {
            xml.skip();
            continue;
        }
        while (xml.child()) {
            const int format = wholeNumber(xml.raw("numFmtId")).value_or(0);
            if (styles)
                formats.push_back(format);
            else
                codes[format] = xml.attribute("formatCode");
            xml.skip();
        }
    }
    for (const int format : formats)
        book.isDate.push_back(isDateFormat(format, codes.value(format)));
}

void readStrings(std::unique_ptr<QIODevice> part, Workbook& book, RowSink& sink) {
    PartReader xml(std::move(part));
    while (xml.child()) {
        book.strings.add(stringText(xml));
        if (book.strings.count() % kPerSign == 0)
            sink.alive();
    }
}

/// Row and column of "B12", both from 0.
struct Place {
    int row;
    int column;
};
/// Of the number that rows bear. One beyond the last row is no row.
int rowOf(int number) {
    return std::clamp(number, 0, SheetCells::kWidest.rows + 1) - 1;
}
std::optional<Place> placeOf(std::string_view reference) {
    Place place{0, 0};
    std::size_t i = 0;
    for (; i < reference.size() && i < 3 && reference[i] >= 'A' && reference[i] <= 'Z'; ++i)
        place.column = place.column * 26 + (reference[i] - 'A' + 1);
    const auto number = wholeNumber(reference.substr(i));
    place.row = rowOf(number.value_or(0));
    --place.column;
    return number && place.row >= 0 && place.column >= 0 ? std::optional(place) : std::nullopt;
}

enum class CellKind { Number, Shared, Text, Truth, Error, Date };
CellKind kindOf(std::string_view type) {
    return type == "s"                            ? CellKind::Shared
           : type == "str" || type == "inlineStr" ? CellKind::Text
           : type == "b"                          ? CellKind::Truth
           : type == "e"                          ? CellKind::Error
           : type == "d"                          ? CellKind::Date
                                                  : CellKind::Number;
}

/// Reads the cells of one sheet.
class SheetReader {
public:
    SheetReader(const Workbook& book, std::unique_ptr<QIODevice> part)
        : m_book(book)
        , m_xml(std::move(part))
        , m_cells(book.strings, SheetCells::kWidest) {}

    void read(RowSink& sink) {
        while (m_xml.child()) {
            if (m_xml.is("sheetData"))
                takeRows(sink);
            else
                m_xml.skip();
        }
        m_cells.table(sink);
    }

private:
    void takeRows(RowSink& sink) {
        for (int rows = 1; m_xml.child(); ++rows) {
            m_next = {rowOf(wholeNumber(m_xml.raw("r")).value_or(m_next.row + 2)), 0};
            while (m_xml.child())
                takeCell();
            if (rows % kPerSign == 0)
                sink.alive();
        }
    }

    void takeCell() {
        m_next = placeOf(m_xml.raw("r")).value_or(m_next);
        const CellKind kind = kindOf(m_xml.raw("t"));
        const int style = wholeNumber(m_xml.raw("s")).value_or(0);
        while (m_xml.child()) {
            if (m_xml.is("v"))
                putValue(m_xml.text(), kind, style);
            else if (m_xml.is("is"))
                put(stringText(m_xml));
            else
                m_xml.skip();
        }
        ++m_next.column;
    }

    void put(std::string_view text) { m_cells.put(m_next.row, m_next.column, text); }
    void put(const QString& text) { put(text.toStdString()); }

    void putValue(std::string_view value, CellKind kind, int style) {
        switch (kind) {
        case CellKind::Shared:
            if (const auto number = wholeNumber(value); number && *number >= 0)
                m_cells.putShared(m_next.row, m_next.column, quint32(*number));
            return;
        case CellKind::Truth:
            return put(std::string_view(isTrue(value) ? "True" : "False"));
        case CellKind::Error:
            return; // no value
        case CellKind::Text: {
            std::string text(value);
            unescape(text);
            return put(text);
        }
        case CellKind::Date:
            return put(isoText(QString::fromStdString(std::string(value))));
        case CellKind::Number:
            if (!value.empty())
                putNumber(value, style);
        }
    }

    void putNumber(std::string_view value, int style) {
        if (isShortest(value) && !isDate(style))
            return put(value);
        double number = 0;
        const auto read = std::from_chars(value.data(), value.data() + value.size(), number);
        if (read.ec != std::errc() || read.ptr != value.data() + value.size())
            return put(value);
        put(isDate(style) ? serialText(number, m_book.from1904) : plainNumber(number));
    }
    /// Whether a number stands as it is shown already.
    static bool isShortest(std::string_view value) {
        const bool digits =
            std::all_of(value.begin(), value.end(), [](char c) { return c >= '0' && c <= '9'; });
        return digits && value.size() <= 15 && (value.front() != '0' || value.size() == 1);
    }
    bool isDate(int style) const {
        return style >= 0 && style < int(m_book.isDate.size()) && m_book.isDate[std::size_t(style)];
    }

    const Workbook& m_book;
    PartReader m_xml;
    SheetCells m_cells;
    Place m_next{-1, 0}; // of the cell that comes
};

class XlsxReader : public TableReader {
public:
    explicit XlsxReader(const SourceFile& file)
        : m_parts(packed(file)) {
        BookReader reader(m_parts, m_book);
        reader.read();
        m_strings = reader.strings();
        m_styles = reader.styles();
    }

    QStringList tables() override {
        QStringList names;
        for (const Sheet& sheet : m_book.sheets)
            names << sheet.name;
        return names;
    }
    void read(const QString& table, RowSink& sink) override {
        readShared(sink);
        for (const Sheet& sheet : m_book.sheets)
            if (sheet.name == table)
                return SheetReader(m_book, m_parts.open(sheet.part)).read(sink);
        throw ImportError(QStringLiteral("没有这个工作表：%1").arg(table));
    }

private:
    /// A workbook with a password is a compound file around it.
    static const SourceFile& packed(const SourceFile& file) {
        if (file.read(0, 4) == QByteArray::fromHex("D0CF11E0"))
            throw ImportError(QStringLiteral("工作簿有密码，或者是 .xls 文件，不能读取。"));
        return file;
    }
    void readShared(RowSink& sink) {
        if (std::exchange(m_sharedRead, true))
            return;
        if (m_parts.has(m_styles))
            readStyles(m_parts.open(m_styles), m_book);
        if (m_parts.has(m_strings))
            readStrings(m_parts.open(m_strings), m_book, sink);
    }

    ZipParts m_parts;
    Workbook m_book;
    QString m_strings;
    QString m_styles;
    bool m_sharedRead = false;
};

} // namespace

std::unique_ptr<TableReader> xlsxReader(const SourceFile& file) {
    return std::make_unique<XlsxReader>(file);
}
