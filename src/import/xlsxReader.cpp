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

bool isTrue(const QString& text) {
    return text == u"1" || text == u"true" || text == u"on";
}

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
        const QString kind = xml.attribute(u"Type");
        if (xml.attribute(u"TargetMode") != u"External")
            found[xml.attribute(u"Id")] = {kind.mid(kind.lastIndexOf(u'/') + 1),
                                           partPath(folder, xml.attribute(u"Target"))};
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
QString unescaped(const QString& text) {
    if (!text.contains(u"_x"))
        return text;
    QString plain;
    for (qsizetype i = 0; i < text.size(); ++i) {
        bool ok = false;
        ushort sign = 0;
        if (text[i] == u'_' && i + 6 < text.size() && text[i + 1] == u'x' && text[i + 6] == u'_')
            sign = QStringView(text).mid(i + 2, 4).toUShort(&ok, 16);
        plain += ok ? QChar(sign) : text[i];
        i += ok ? 6 : 0;
    }
    return plain;
}

/// The text of a shared or inline string: plain, or in runs; readings beside it do not count.
QString stringText(PartReader& xml) {
    QString text;
    while (xml.child()) {
        if (xml.is(u"t"))
            text += xml.text();
        else if (xml.is(u"r"))
            while (xml.child()) {
                if (xml.is(u"t"))
                    text += xml.text();
                else
                    xml.skip();
            }
        else
            xml.skip();
    }
    return unescaped(text);
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
        if (!xml.is(u"workbook"))
            throw ImportError(QStringLiteral("文件不是工作簿。"));
        while (xml.child()) {
            if (xml.is(u"sheets"))
                takeSheets(xml);
            else if (xml.is(u"workbookPr"))
                m_book.from1904 = isTrue(xml.attribute(u"date1904"));
            if (!xml.is(u"sheets"))
                xml.skip();
        }
    }
    QString strings() const { return partOfKind(m_relations, u"sharedStrings"); }
    QString styles() const { return partOfKind(m_relations, u"styles"); }

private:
    /// Hidden ones too; charts and macros have no rows.
    void takeSheets(PartReader& xml) {
        while (xml.child()) {
            const Relation relation = m_relations.value(idOf(xml));
            if (relation.kind == u"worksheet")
                m_book.sheets.push_back({xml.attribute(u"name"), relation.part});
            xml.skip();
        }
    }
    /// The attribute "id" of the name space of relations, not the sheet's own.
    static QString idOf(const PartReader& xml) {
        for (const QXmlStreamAttribute& each : xml.attributes())
            if (each.name() == u"id" && each.namespaceUri().endsWith(u"/relationships"))
                return each.value().toString();
        return {};
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
        const bool styles = xml.is(u"cellXfs");
        if (!styles && !xml.is(u"numFmts")) {
            xml.skip();
            continue;
        }
        while (xml.child()) {
            const int format = xml.attribute(u"numFmtId").toInt();
            if (styles)
                formats.push_back(format);
            else
                codes[format] = xml.attribute(u"formatCode");
            xml.skip();
        }
    }
    for (const int format : formats)
        book.isDate.push_back(isDateFormat(format, codes.value(format)));
}

void readStrings(std::unique_ptr<QIODevice> part, Workbook& book, RowSink& sink) {
    PartReader xml(std::move(part));
    while (xml.child()) {
        book.strings.add(stringText(xml).toStdString());
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
std::optional<Place> placeOf(QStringView reference) {
    Place place{0, 0};
    qsizetype i = 0;
    for (; i < reference.size() && i < 3 && reference[i] >= u'A' && reference[i] <= u'Z'; ++i)
        place.column = place.column * 26 + (reference[i].unicode() - u'A' + 1);
    bool ok = false;
    place.row = rowOf(reference.mid(i).toInt(&ok));
    --place.column;
    return ok && place.row >= 0 && place.column >= 0 ? std::optional(place) : std::nullopt;
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
            if (m_xml.is(u"sheetData"))
                takeRows(sink);
            else
                m_xml.skip();
        }
        m_cells.table(sink);
    }

private:
    void takeRows(RowSink& sink) {
        for (int rows = 1; m_xml.child(); ++rows) {
            bool ok = false;
            const int number = m_xml.attribute(u"r").toInt(&ok);
            m_next = {rowOf(ok ? number : m_next.row + 2), 0};
            while (m_xml.child())
                takeCell();
            if (rows % kPerSign == 0)
                sink.alive();
        }
    }

    void takeCell() {
        QString type;
        int style = 0;
        for (const QXmlStreamAttribute& each : m_xml.attributes()) {
            if (each.name() == u"r")
                m_next = placeOf(each.value()).value_or(m_next);
            else if (each.name() == u"t")
                type = each.value().toString();
            else if (each.name() == u"s")
                style = each.value().toInt();
        }
        while (m_xml.child()) {
            if (m_xml.is(u"v"))
                putValue(m_xml.text(), type, style);
            else if (m_xml.is(u"is"))
                put(stringText(m_xml));
            else
                m_xml.skip();
        }
        ++m_next.column;
    }

    void put(const QString& text) { m_cells.put(m_next.row, m_next.column, text.toStdString()); }

    void putValue(const QString& value, const QString& type, int style) {
        if (type == u"s") {
            bool ok = false;
            const quint32 number = value.toUInt(&ok);
            return ok ? m_cells.putShared(m_next.row, m_next.column, number) : void();
        }
        if (type == u"b")
            return put(isTrue(value) ? QStringLiteral("True") : QStringLiteral("False"));
        if (type == u"e")
            return; // an error is no value
        if (type == u"str" || type == u"inlineStr")
            return put(unescaped(value));
        if (type == u"d")
            return put(isoText(value));
        if (!value.isEmpty())
            put(numberText(value, style));
    }

    QString numberText(const QString& value, int style) const {
        bool ok = false;
        const double number = value.toDouble(&ok);
        if (!ok)
            return value;
        const bool isDate =
            style >= 0 && style < int(m_book.isDate.size()) && m_book.isDate[std::size_t(style)];
        return isDate ? serialText(number, m_book.from1904) : plainNumber(number);
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
