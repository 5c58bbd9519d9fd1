// Reads dBase and FoxPro tables. The library gives fields as they are written; memo texts and the binary
// types of FoxPro are read here.
#include "import/byteReader.h"
#include "import/dbfMemo.h"
#include "import/tableReader.h"

#include "recordset/textDate.h"
#include "recordset/textNumber.h"

#include <QDate>
#include <QStringDecoder>

#include <shapefil.h>

#include <algorithm>
#include <cstring>

namespace {

struct CloseTable {
    void operator()(DBFHandle table) const { DBFClose(table); }
};
using Table = std::unique_ptr<std::remove_pointer_t<DBFHandle>, CloseTable>;

constexpr int kRowsPerSign = 1000; // rows from one sign of life to the next

/// The library's place in a file, which is read a stretch at a time: the library asks for single records.
class Cursor {
public:
    explicit Cursor(const SourceFile& file)
        : m_file(file) {}

    SAOffset read(void* bytes, SAOffset size, SAOffset count) {
        if (size == 0 || count > kLongestStretch / size)
            return 0;
        const qint64 wanted = qint64(size) * qint64(count);
        if (m_at < m_start || m_at + wanted > m_start + m_stretch.size()) {
            m_start = m_at;
            m_stretch = m_file.read(m_at, std::max(wanted, kStretch));
        }
        const qint64 come = std::clamp<qint64>(m_start + m_stretch.size() - m_at, 0, wanted);
        std::memcpy(bytes, m_stretch.constData() + (come > 0 ? m_at - m_start : 0), std::size_t(come));
        m_at += come;
        return SAOffset(come) / size;
    }
    SAOffset seek(SAOffset offset, int whence) {
        m_at = whence == SEEK_SET ? qint64(offset)
                                  : (whence == SEEK_CUR ? m_at : m_file.size()) + qint64(offset);
        m_at = std::max<qint64>(m_at, 0);
        return 0;
    }
    SAOffset place() const { return SAOffset(m_at); }

private:
    static constexpr qint64 kStretch = 256 << 10;
    static constexpr SAOffset kLongestStretch = SAOffset(1) << 26;

    const SourceFile& m_file;
    qint64 m_at = 0;
    QByteArray m_stretch;
    qint64 m_start = 0; // of the stretch
};

Cursor& cursorOf(SAFile file) {
    return *reinterpret_cast<Cursor*>(file);
}

/// Opens the table that a cursor stands on. The library puts endings of its own choice behind a name and
/// looks for further files beside it; here each name it asks for but the table's own is a file that lacks.
DBFHandle openTable(Cursor& cursor) {
    static thread_local Cursor* table;
    table = &cursor;
    SAHooks hooks;
    SASetupDefaultHooks(&hooks);
    hooks.FOpen = [](const char* asked, const char*) -> SAFile {
        return qstrcmp(asked, "source.dbf") == 0 ? reinterpret_cast<SAFile>(table) : nullptr;
    };
    hooks.FRead = [](void* bytes, SAOffset size, SAOffset count, SAFile file) -> SAOffset {
        return cursorOf(file).read(bytes, size, count);
    };
    hooks.FWrite = [](void*, SAOffset, SAOffset, SAFile) -> SAOffset { return 0; };
    hooks.FSeek = [](SAFile file, SAOffset offset, int whence) -> SAOffset {
        return cursorOf(file).seek(offset, whence);
    };
    hooks.FTell = [](SAFile file) -> SAOffset { return cursorOf(file).place(); };
    hooks.FFlush = [](SAFile) { return 0; };
    hooks.FClose = [](SAFile) { return 0; };
    hooks.Remove = [](const char*) { return -1; };
    hooks.Error = [](const char*) {};
    return DBFOpenLL("source.dbf", "rb", &hooks);
}

QString dateOf(const QString& digits) {
    if (digits.size() != 8)
        return digits.isEmpty() ? QString() : digits;
    return QStringLiteral("%1-%2-%3")
        .arg(digits.left(4))
        .arg(digits.mid(4, 2).toInt())
        .arg(digits.mid(6).toInt());
}

bool isDigits(const QByteArray& bytes, qsizetype from, qsizetype to) {
    return from < to &&
           std::all_of(bytes.begin() + from, bytes.begin() + to, [](char c) { return c >= '0' && c <= '9'; });
}

/// A number as it is written, in its plain form; whatever is no number stays as it stands.
QString numberOf(const QByteArray& bytes) {
    const qsizetype start = bytes.startsWith('-') ? 1 : 0;
    const qsizetype point = bytes.indexOf('.');
    const qsizetype end = point < 0 ? bytes.size() : point;
    constexpr qsizetype exactDigits = 15;
    const bool plain = isDigits(bytes, start, end) &&
                       (point < 0 || isDigits(bytes, point + 1, bytes.size())) &&
                       bytes.size() <= exactDigits && (bytes[start] != '0' || end == start + 1);
    if (!plain) {
        const QString text = QString::fromLatin1(bytes);
        return isNumeric(text) && !text.contains(u',') ? plainNumber(val(text)) : text;
    }
    qsizetype length = bytes.size();
    if (point >= 0)
        while (bytes[length - 1] == '0')
            --length;
    if (bytes[length - 1] == '.')
        --length;
    const QString text = QString::fromLatin1(bytes.constData(), length);
    return text == u"-0" ? QStringLiteral("0") : text;
}

bool isAscii(const QByteArray& bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](char c) { return quint8(c) < 0x80; });
}

class DbfReader : public TableReader {
public:
    DbfReader(const SourceFile& file, const std::optional<MemoFile>& memos)
        : m_file(file)
        , m_cursor(m_file)
        , m_header(m_file.read(0, 32))
        , m_memo(memos)
        , m_table(openTable(m_cursor)) {
        if (!m_table)
            throw ImportError(QStringLiteral("不是 dBase 文件，或者文件已损坏。"));
        const char* page = DBFGetCodePage(m_table.get());
        m_isGbk = page && (qstrcmp(page, "LDID/77") == 0 || qstrcmp(page, "LDID/122") == 0);
        for (int i = 0; i < DBFGetFieldCount(m_table.get()); ++i)
            m_types.push_back(DBFGetNativeFieldType(m_table.get(), i));
        const quint8 version = ByteReader(m_header).u8(0);
        m_isFoxPro = version >= 0x30 && version <= 0x32;
    }

    void read(const QString& /*table*/, RowSink& sink) override {
        const std::vector<int> fields = shownFields();
        m_isUtf8 = !m_isGbk && looksLikeUtf8(fields);
        QStringList columns;
        for (const int field : fields)
            columns << nameOf(field);
        sink.begin(columns);
        const int records = recordCount();
        for (int record = 0; record < records; ++record) {
            if (record % kRowsPerSign == 0)
                sink.alive();
            const char* tuple = DBFReadTuple(m_table.get(), record);
            if (!tuple || tuple[0] == '*') // a deleted one
                continue;
            for (const int field : fields)
                put(tuple, field, sink);
        }
    }

private:
    /// Records that are wholly in the file, whatever its header promises.
    int recordCount() const {
        const ByteReader header(m_header);
        const qint64 headerLength = header.u16(8);
        const qint64 recordLength = header.u16(10);
        if (recordLength == 0)
            return 0;
        const qint64 whole = (m_file.size() - headerLength) / recordLength;
        return int(std::min<qint64>(DBFGetRecordCount(m_table.get()), std::max<qint64>(0, whole)));
    }

    std::vector<int> shownFields() const {
        std::vector<int> fields;
        for (std::size_t i = 0; i < m_types.size(); ++i)
            if (m_types[i] != '0') // the flags of FoxPro
                fields.push_back(int(i));
        return fields;
    }

    QByteArray rawName(int field) const {
        char name[XBASE_FLDNAME_LEN_READ + 1] = {};
        DBFGetFieldInfo(m_table.get(), field, name, nullptr, nullptr);
        return name;
    }
    QString nameOf(int field) const {
        const QString name = decode(rawName(field)).trimmed();
        return name.isEmpty() ? QStringLiteral("F%1").arg(field + 1) : name;
    }

    QString decode(const QByteArray& bytes) const {
        if (isAscii(bytes))
            return QString::fromLatin1(bytes);
        if (m_isUtf8 || !m_gbk.isValid())
            return QString::fromUtf8(bytes);
        m_gbk.resetState();
        return m_gbk(bytes);
    }

    /// Without a word about the encoding, a whole file of valid UTF-8 is taken for it: single Chinese words
    /// of the other encoding may pass for UTF-8, a file of them does not.
    bool looksLikeUtf8(const std::vector<int>& fields) const {
        QByteArray sample;
        for (const int field : fields)
            sample += rawName(field) + '\n';
        const int records = std::min(recordCount(), 200);
        for (int record = 0; record < records; ++record) {
            const char* tuple = DBFReadTuple(m_table.get(), record);
            for (const int field : fields)
                if (tuple && m_types[std::size_t(field)] == 'C')
                    sample += written(tuple, field) + '\n';
        }
        return QByteArrayView(sample).isValidUtf8();
    }

    /// A field of a record, not copied.
    QByteArray rawBytes(const char* tuple, int field) const {
        return QByteArray::fromRawData(tuple + m_table->panFieldOffset[field], m_table->panFieldSize[field]);
    }
    /// The same up to a zero byte, blanks off both ends.
    QByteArray written(const char* tuple, int field) const {
        const QByteArray raw = rawBytes(tuple, field);
        qsizetype end = qsizetype(qstrnlen(raw.constData(), size_t(raw.size())));
        qsizetype start = 0;
        while (end > 0 && raw[end - 1] == ' ')
            --end;
        while (start < end && raw[start] == ' ')
            ++start;
        return QByteArray::fromRawData(raw.constData() + start, end - start);
    }

    QString binary(char type, const QByteArray& bytes) const {
        const ByteReader value(bytes);
        switch (type) {
        case 'I':
            return QString::number(qint32(value.u32(0)));
        case 'B':
            return plainNumber(value.f64(0));
        case 'Y':
            return plainNumber(double(qint64(value.u64(0))) / 10000);
        default:
            return isBlank(bytes) ? QString() : dateTime(qint64(value.u32(0)), value.u32(4));
        }
    }

    /// Whether a date and time was never entered: FoxPro leaves it blank, or without a day.
    static bool isBlank(const QByteArray& bytes) {
        return ByteReader(bytes).u32(0) == 0 ||
               std::all_of(bytes.begin(), bytes.end(), [](char c) { return c == ' '; });
    }

    static QString dateTime(qint64 julianDay, quint32 milliseconds) {
        const QDate date = QDate::fromJulianDay(julianDay);
        QString text = QStringLiteral("%1-%2-%3").arg(date.year()).arg(date.month()).arg(date.day());
        const quint32 seconds = (milliseconds + 500) / 1000;
        if (seconds > 0 && seconds < 86400)
            text += QStringLiteral(" %1:%2:%3")
                        .arg(seconds / 3600)
                        .arg(seconds / 60 % 60, 2, 10, QChar(u'0'))
                        .arg(seconds % 60, 2, 10, QChar(u'0'));
        return text;
    }

    QString memo(const char* tuple, int field) const {
        const QByteArray place = rawBytes(tuple, field);
        const quint32 block = place.size() == 4 ? ByteReader(place).u32(0) : place.trimmed().toUInt();
        return block == 0 ? QString() : decode(m_memo.text(block));
    }

    void put(const char* tuple, int field, RowSink& sink) const {
        if (m_types[std::size_t(field)] == 'C') {
            // Most cells of most tables: what is plain Latin or UTF-8 goes on as it stands.
            const QByteArray text = written(tuple, field);
            if (text.isEmpty())
                return sink.null();
            if (isAscii(text) || (m_isUtf8 && QByteArrayView(text).isValidUtf8()))
                return sink.text({text.constData(), std::size_t(text.size())});
        }
        const QString text = cell(tuple, field);
        if (text.isNull())
            return sink.null();
        const QByteArray utf8 = text.toUtf8();
        sink.text({utf8.constData(), std::size_t(utf8.size())});
    }

    QString cell(const char* tuple, int field) const {
        const char type = m_types[std::size_t(field)];
        if (type == 'M')
            return memo(tuple, field);
        if (m_isFoxPro && (type == 'I' || type == 'B' || type == 'Y' || type == 'T'))
            return binary(type, rawBytes(tuple, field));
        const QByteArray text = written(tuple, field);
        if (text.isEmpty())
            return {};
        switch (type) {
        case 'D':
            return text == "00000000" ? QString() : dateOf(QString::fromLatin1(text));
        case 'L':
            return text == "?" ? QString()
                               : (strchr("TtYy", text[0]) ? QStringLiteral("True") : QStringLiteral("False"));
        case 'N':
        case 'F':
            return text[0] == '*' ? QString() : numberOf(text);
        default:
            return decode(text);
        }
    }

    SourceFile m_file;
    Cursor m_cursor;
    QByteArray m_header;
    DbfMemo m_memo;
    Table m_table;
    std::vector<char> m_types; // of the fields, by their index
    mutable QStringDecoder m_gbk{"GB18030"};
    bool m_isGbk = false;
    bool m_isUtf8 = false;
    bool m_isFoxPro = false;
};

} // namespace

std::unique_ptr<TableReader> dbfReader(const SourceFile& file, const std::optional<MemoFile>& memos) {
    return std::make_unique<DbfReader>(file, memos);
}
