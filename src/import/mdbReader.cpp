// Reads Access files through the packaged library, whose every answer may be missing.
#include "import/importSource.h"

#include "recordset/textNumber.h"

#include <QFileInfo>

// The library pulls this one in where it does not compile.
#include <glib.h>

#include <mdbtools.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <string>
#include <string_view>

namespace {

constexpr std::size_t kBindSize = 131072; // bytes of the longest value
constexpr int kMostColumns = 255;
constexpr qint64 kJet3Page = 2048;
constexpr qint64 kJet4Page = 4096;
constexpr qint64 kLeastRowBytes = 6; // what a row takes in its page at least

struct CloseHandle {
    void operator()(MdbHandle* handle) const { mdb_close(handle); }
};
struct FreeTable {
    void operator()(MdbTableDef* table) const { mdb_free_tabledef(table); }
};

[[noreturn]] void damaged() {
    throw ImportError(QStringLiteral("不是 Access 文件，或者文件已损坏。"));
}

/// A number of two digits, without the zero before it.
std::string_view withoutZero(std::string_view digits) {
    return digits.front() == '0' ? digits.substr(1) : digits;
}

/// "2024-03-05 13:20:05" as the program writes dates: no leading zeros, no midnight, no date for a time
/// alone.
QString dateOf(std::string_view text) {
    const auto latin = [](std::string_view view) {
        return QString::fromLatin1(view.data(), qsizetype(view.size()));
    };
    if (text.size() < 19)
        return latin(text);
    std::string time(withoutZero(text.substr(11, 2)));
    time += text.substr(13);
    if (text.substr(0, 10) == "1899-12-30")
        return latin(time);
    std::string date(text.substr(0, 5));
    date.append(withoutZero(text.substr(5, 2))).append("-").append(withoutZero(text.substr(8, 2)));
    return latin(time == "0:00:00" ? date : date + ' ' + time);
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
    case MDB_DATETIME:
        return dateOf(text);
    case MDB_OLE:
    case MDB_BINARY:
        return QLatin1String("");
    default:
        return QString::fromUtf8(text.data(), qsizetype(text.size()));
    }
}

class MdbSource : public ImportSource {
public:
    explicit MdbSource(const QString& path)
        : m_fileSize(QFileInfo(path).size())
        , m_handle(mdb_open(path.toUtf8().constData(), MDB_NOFLAGS)) {
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

    SourceRows read(const QString& table) override {
        MdbCatalogEntry* found = nullptr;
        eachEntry([&](MdbCatalogEntry& entry, const QString& name) {
            if (name == table)
                found = &entry;
        });
        const std::unique_ptr<MdbTableDef, FreeTable> definition(found ? mdb_read_table(found) : nullptr);
        if (!definition || !mdb_read_columns(definition.get()) || !definition->columns ||
            definition->num_cols == 0 || definition->num_cols > kMostColumns)
            damaged();
        return rowsOf(*definition);
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

    static const MdbColumn& column(const MdbTableDef& table, unsigned index) {
        return *static_cast<const MdbColumn*>(g_ptr_array_index(table.columns, index));
    }

    SourceRows rowsOf(MdbTableDef& table) const {
        SourceRows rows;
        const unsigned width = table.num_cols;
        const auto values = std::make_unique_for_overwrite<char[]>(width * (kBindSize + 1));
        const auto value = [&values](unsigned i) { return values.get() + i * (kBindSize + 1); };
        std::vector<int> lengths(width);
        mdb_rewind_table(&table);
        for (unsigned i = 0; i < width; ++i) {
            rows.columns << QString::fromUtf8(column(table, i).name);
            if (mdb_bind_column(&table, int(i) + 1, value(i), &lengths[i]) < 0)
                damaged();
        }
        const qint64 most = m_fileSize / kLeastRowBytes;
        qint64 count = 0;
        while (mdb_fetch_row(&table)) {
            if (++count > most)
                damaged();
            const auto isNull = nullsOf(table);
            for (unsigned i = 0; i < width; ++i) {
                const int type = column(table, i).col_type;
                if (type != MDB_BOOL &&
                    (isNull[i] || (lengths[i] == 0 && type != MDB_TEXT && type != MDB_MEMO)))
                    rows.cells.emplace_back();
                else
                    rows.cells.push_back(valueOf(type, {value(i), std::size_t(std::max(0, lengths[i]))}));
            }
        }
        if (count < qint64(table.num_rows))
            damaged();
        return rows;
    }

    /// Which columns of the row just read hold no value. The library gives an empty text for them too; the
    /// row itself knows.
    static std::array<bool, kMostColumns + 1> nullsOf(MdbTableDef& table) {
        std::array<bool, kMostColumns + 1> nulls{};
        std::array<MdbField, kMostColumns + 1> fields; // as many as the row has are written
        int start = 0;
        std::size_t size = 0;
        if (table.cur_row == 0 ||
            mdb_find_row(table.entry->mdb, int(table.cur_row) - 1, &start, &size) != 0 ||
            mdb_crack_row(&table, start & 0x1FFF, size, fields.data()) < 0)
            return nulls;
        for (unsigned i = 0; i < table.num_cols; ++i)
            nulls[i] = fields[i].is_null;
        return nulls;
    }

    qint64 m_fileSize;
    std::unique_ptr<MdbHandle, CloseHandle> m_handle;
};

} // namespace

std::unique_ptr<ImportSource> openMdbSource(const QString& path) {
    return std::make_unique<MdbSource>(path);
}
