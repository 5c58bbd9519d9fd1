// Reads Access files through the packaged library, whose every answer may be missing.
#include "import/tableReader.h"

#include "recordset/textDate.h"
#include "recordset/textNumber.h"

// The library pulls this one in where it does not compile.
#include <glib.h>

#include <mdbtools.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace {

constexpr qint64 kVersionByte = 0x14; // of the file: which engine wrote it
constexpr char kJet3Version = 0;
constexpr std::size_t kBindSize = 131072; // bytes of the longest value
constexpr int kMostColumns = 255;
constexpr qint64 kJet3Page = 2048;
constexpr qint64 kJet4Page = 4096;
constexpr qint64 kLeastRowBytes = 6; // what a row takes in its page at least
constexpr qint64 kRowsPerSign = 100; // rows from one sign of life to the next
constexpr quint32 kNull = 0xFFFFFFFF;

// Marks of a row in its page, beside the place where it begins.
constexpr int kElsewhere = 0x4000; // moved: in its place stands where it is now
constexpr int kUnlisted = 0x8000;  // deleted; or, without the other mark, what a moved row was moved to
constexpr int kPlaceMask = 0x1FFF;

struct CloseHandle {
    void operator()(MdbHandle* handle) const { mdb_close(handle); }
};
struct FreeTable {
    void operator()(MdbTableDef* table) const { mdb_free_tabledef(table); }
};

[[noreturn]] void damaged() {
    throw ImportError(QStringLiteral("不是 Access 文件，或者文件已损坏。"));
}

/// A date as the file holds it: days since 1899-12-30, the time of the day as their fraction, which counts
/// forward before that day too. What is no day of a calendar stays a number.
QString dateOf(double days) {
    constexpr double firstDay = -657434;  // 100-1-1
    constexpr double endOfDays = 2958466; // 10000-1-1
    const double day = std::trunc(days);
    if (!(day >= firstDay && day < endOfDays))
        return std::isfinite(days) ? plainNumber(days) : QStringLiteral("?");
    const auto second = std::llround(std::abs(days - day) * 86400);
    return dateText({qint64(day) * 86400 + second});
}

/// A decimal as it is written, without the zeros at its end: it may have more digits than a double.
QString decimalOf(std::string_view text) {
    if (text.find('.') != std::string_view::npos) {
        text = text.substr(0, text.find_last_not_of('0') + 1);
        if (text.back() == '.')
            text.remove_suffix(1);
    }
    return QString::fromLatin1(text.data(), qsizetype(text.size()));
}

/// The number in a text; 0 where there is none.
double numberOf(std::string_view text) {
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

QString valueOf(int type, std::string_view text) {
    switch (type) {
    case MDB_BOOL:
        return text == "1" ? QStringLiteral("True") : QStringLiteral("False");
    case MDB_FLOAT: // seven digits are all that a single number holds
        return plainNumber(QString::number(numberOf(text), 'g', 7).toDouble());
    case MDB_DOUBLE:
        return plainNumber(numberOf(text));
    case MDB_MONEY:
    case MDB_NUMERIC:
        return decimalOf(text);
    case MDB_OLE:
    case MDB_BINARY:
        return QLatin1String("");
    default:
        return QString::fromUtf8(text.data(), qsizetype(text.size()));
    }
}

/// Reads the rows of one table. They are held until all are read: only then it shows which of them are gone.
class RowsReader {
public:
    RowsReader(MdbTableDef& table, qint64 fileSize, RowSink& sink)
        : m_table(table)
        , m_handle(table.entry->mdb)
        , m_most(fileSize / kLeastRowBytes)
        , m_sink(sink)
        , m_values(std::make_unique_for_overwrite<char[]>(table.num_cols * (kBindSize + 1)))
        , m_lengths(table.num_cols) {}

    void read() {
        mdb_rewind_table(&m_table);
        QStringList names;
        for (unsigned i = 0; i < m_table.num_cols; ++i) {
            names << QString::fromUtf8(column(i).name);
            if (mdb_bind_column(&m_table, int(i) + 1, value(i), &m_lengths[i]) < 0)
                damaged();
        }
        for (qint64 count = 0; mdb_fetch_row(&m_table);) {
            if (++count > m_most)
                damaged();
            takeRow();
            if (count % kRowsPerSign == 0)
                m_sink.alive();
        }
        const qint64 promised = m_table.num_rows;
        if (m_count > promised && !m_moved.empty())
            findDeleted();
        if (m_count - qint64(m_deleted.size()) < promised)
            damaged();
        m_sink.begin(names);
        hand();
    }

private:
    /// A row that was moved within the file: where it comes in the result, and its page and number there.
    struct Moved {
        qint64 row;
        quint32 place;
    };

    const MdbColumn& column(unsigned index) const {
        return *static_cast<const MdbColumn*>(g_ptr_array_index(m_table.columns, index));
    }
    char* value(unsigned i) const { return m_values.get() + i * (kBindSize + 1); }

    void takeRow() {
        const bool known = crackRow();
        for (unsigned i = 0; i < m_table.num_cols; ++i) {
            const int type = column(i).col_type;
            const bool isNull = known && m_fields[i].is_null;
            if (type != MDB_BOOL && (isNull || (m_lengths[i] == 0 && type != MDB_TEXT && type != MDB_MEMO)))
                hold({});
            else if (type == MDB_DATETIME)
                hold(known ? dateOf(rawDouble(m_fields[i])) : QString());
            else
                hold(valueOf(type, {value(i), std::size_t(std::max(0, m_lengths[i]))}));
        }
        ++m_count;
    }
    void hold(const QString& text) {
        const QByteArray utf8 = text.toUtf8();
        m_held.append(utf8.constData(), std::size_t(utf8.size()));
        m_heldLengths.push_back(text.isNull() ? kNull : quint32(utf8.size()));
    }

    /// Hands on the rows that are held, but for the deleted ones.
    void hand() {
        std::size_t at = 0;
        auto length = m_heldLengths.begin();
        for (qint64 row = 0; row < m_count; ++row) {
            const bool gone = m_deleted.contains(row);
            for (unsigned i = 0; i < m_table.num_cols; ++i, ++length) {
                const std::size_t size = *length == kNull ? 0 : *length;
                if (!gone && *length == kNull)
                    m_sink.null();
                else if (!gone)
                    m_sink.text(std::string_view(m_held).substr(at, size));
                at += size;
            }
        }
    }

    /// Takes the row just read apart, which the library has done without telling: it gives an empty text for
    /// no value too, and dates only of some centuries. The row itself knows.
    bool crackRow() {
        int start = 0;
        std::size_t size = 0;
        const int row = int(m_table.cur_row) - 1;
        if (row < 0 || mdb_find_row(m_handle, row, &start, &size) != 0)
            return false;
        if ((start & kUnlisted) != 0)
            m_moved.push_back({m_count, placeOf(row)});
        return mdb_crack_row(&m_table, start & kPlaceMask, size, m_fields.data()) >= 0;
    }
    quint32 placeOf(int row) const { return quint32(m_handle->cur_pg) << 8 | quint32(row); }

    double rawDouble(const MdbField& field) const {
        if (field.start < 0 || field.start + 8 > int(m_handle->fmt->pg_size))
            damaged();
        return mdb_get_double(m_handle->pg_buf, field.start);
    }

    /// The rows that were moved and then deleted: their old places say so, but the library reads the new
    /// ones.
    void findDeleted() {
        const std::unordered_set<quint32> live = livePlaces();
        for (const Moved& moved : m_moved)
            if (!live.contains(moved.place))
                m_deleted.insert(moved.row);
    }

    /// Where the moved rows are to which the table's pages still lead.
    std::unordered_set<quint32> livePlaces() {
        std::unordered_set<quint32> places;
        mdb_rewind_table(&m_table);
        while (mdb_read_next_dpg(&m_table)) {
            const int count = mdb_get_int16(m_handle->pg_buf, m_handle->fmt->row_count_offset);
            for (int row = 0; row < count; ++row) {
                int start = 0;
                std::size_t size = 0;
                if (mdb_find_row(m_handle, row, &start, &size) == 0 && (start & kElsewhere) != 0 &&
                    (start & kUnlisted) == 0)
                    places.insert(endOfRoad(m_handle->pg_buf, start));
            }
        }
        return places;
    }

    /// The place to which a row was moved in the end; some were moved more than once.
    quint32 endOfRoad(void* page, int start) {
        const auto* format = m_handle->fmt;
        quint32 place = 0;
        for (int moves = 0; (start & kElsewhere) != 0 && moves < 16; ++moves) {
            if ((start & kPlaceMask) + 4 > int(format->pg_size))
                return 0;
            place = quint32(mdb_get_int32(page, start & kPlaceMask));
            if (mdb_read_alt_pg(m_handle, place >> 8) != format->pg_size)
                return 0;
            page = m_handle->alt_pg_buf;
            start = mdb_get_int16(page, format->row_count_offset + 2 + 2 * int(place & 0xFF));
        }
        return place;
    }

    MdbTableDef& m_table;
    MdbHandle* m_handle;
    qint64 m_most; // rows that the file has room for
    RowSink& m_sink;
    std::unique_ptr<char[]> m_values;
    std::vector<int> m_lengths;
    std::array<MdbField, kMostColumns + 1> m_fields{}; // as many as the row has are written
    std::vector<Moved> m_moved;
    std::unordered_set<qint64> m_deleted;
    qint64 m_count = 0; // rows held
    std::string m_held; // their texts, UTF-8
    std::vector<quint32> m_heldLengths;
};

class MdbReader : public TableReader {
public:
    explicit MdbReader(const SourceFile& file)
        : m_file(file)
        , m_fileSize(file.size())
        , m_bytes(m_file.bytes())
        , m_handle(m_fileSize == 0 ? nullptr : open(m_bytes)) {
        if (!m_handle || !m_handle->f)
            damaged();
        const qint64 page = m_handle->f->jet_version == MDB_VER_JET3 ? kJet3Page : kJet4Page;
        // A file that was cut ends inside a page, and the library would give earlier rows again.
        if (m_fileSize == 0 || m_fileSize % page != 0)
            damaged();
        mdb_set_date_fmt(m_handle.get(), "%Y-%m-%d %H:%M:%S");
        mdb_set_shortdate_fmt(m_handle.get(), "%Y-%m-%d %H:%M:%S");
        mdb_set_bind_size(m_handle.get(), kBindSize);
        if (!mdb_read_catalog(m_handle.get(), MDB_TABLE) || !m_handle->catalog)
            damaged();
    }

    QStringList tables() override {
        QStringList names;
        eachEntry([&names](MdbCatalogEntry&, const QString& name) { names << name; });
        return names;
    }

    void read(const QString& table, RowSink& sink) override {
        MdbCatalogEntry* found = nullptr;
        eachEntry([&](MdbCatalogEntry& entry, const QString& name) {
            if (name == table)
                found = &entry;
        });
        const std::unique_ptr<MdbTableDef, FreeTable> definition(found ? mdb_read_table(found) : nullptr);
        if (!definition || !mdb_read_columns(definition.get()) || !definition->columns ||
            definition->num_cols == 0 || definition->num_cols > kMostColumns)
            damaged();
        RowsReader(*definition, m_fileSize, sink).read();
    }

private:
    template <typename Visit> void eachEntry(Visit&& visit) {
        for (unsigned i = 0; i < m_handle->num_catalog && i < m_handle->catalog->len; ++i) {
            auto* entry = static_cast<MdbCatalogEntry*>(g_ptr_array_index(m_handle->catalog, i));
            if (!entry || entry->object_type != MDB_TABLE)
                continue;
            const QString name = QString::fromUtf8(entry->object_name);
            if (!name.startsWith(QStringLiteral("MSys")) && !name.startsWith(QStringLiteral("~TMP")))
                visit(*entry, name);
        }
    }

    /// The library takes the bytes for its own and, asked to read, leaves them alone.
    static MdbHandle* open(const QByteArray& bytes) {
        return mdb_open_buffer(const_cast<char*>(bytes.constData()), std::size_t(bytes.size()), MDB_NOFLAGS);
    }

    SourceFile m_file;
    qint64 m_fileSize;
    QByteArray m_bytes; // of the file
    std::unique_ptr<MdbHandle, CloseHandle> m_handle;
};

} // namespace

std::unique_ptr<TableReader> mdbReader(const SourceFile& file) {
    return std::make_unique<MdbReader>(file);
}

void loadMdbConverters(const SourceFile& file) {
    static std::vector<iconv_t> held; // a converter that is open keeps what it needs
    const auto hold = [](const char* name) {
        held.push_back(iconv_open("UTF-8", name));
        held.push_back(iconv_open(name, "UTF-8"));
    };
    hold("UCS-2LE");
    // Later files hold their texts in that alone; of an older one the library takes the encoding that it
    // names.
    const QByteArray version = file.read(kVersionByte, 1);
    if (!version.isEmpty() && version[0] != kJet3Version)
        return;
    for (const char* name :
         {"UTF-16LE",     "UTF-16BE",     "UTF-32LE",     "UTF-32BE",     "UTF-7",        "WINDOWS-874",
          "WINDOWS-936",  "WINDOWS-1250", "WINDOWS-1251", "WINDOWS-1252", "WINDOWS-1253", "WINDOWS-1254",
          "WINDOWS-1255", "WINDOWS-1256", "WINDOWS-1257", "WINDOWS-1258", "CP1252",       "CP1361",
          "SHIFT-JIS",    "BIG-5",        "BIG5-HKSCS",   "EUC-JP",       "EUC-CN",       "EUC-KR",
          "KOI8-R",       "KOI8-U",       "IBM437",       "IBM850",       "IBM852",       "IBM855",
          "IBM860",       "IBM861",       "IBM862",       "IBM865",       "IBM866",       "IBM869",
          "ISO-8859-1",   "ISO-8859-2",   "ISO-8859-3",   "ISO-8859-4",   "ISO-8859-5",   "ISO-8859-6",
          "ISO-8859-7",   "ISO-8859-8",   "ISO-8859-9",   "ISO-8859-13",  "ISO-8859-15"})
        hold(name);
}
