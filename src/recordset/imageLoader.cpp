#include "recordset/imageLoader.h"

#include "recordset/connection.h"
#include "recordset/dialect.h"
#include "recordset/error.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstring>
#include <future>

namespace {

constexpr qint64 kWorthTwoThreads = 20'000;
constexpr qint64 kMostReserved = 16'000'000;
constexpr qint64 kLowerShare = 48; // percent of the rows for this thread, which starts the other one first

struct RowidRange {
    qint64 first = 0;
    qint64 last = -1;

    qint64 span() const { return last - first + 1; }
};

/// Reads the cells of one column; keeps what the row before held, since neighbours often repeat a value.
class CellReader {
public:
    explicit CellReader(ColumnStore& store)
        : m_store(store) {}

    void read(sqlite3_value* cell) {
        switch (m_store.info.type) {
        case ColumnType::Text:
            return readText(cell);
        case ColumnType::Number:
            return readNumber(cell);
        case ColumnType::Date:
            return readDate(cell);
        default:
            return readInteger(cell);
        }
    }

private:
    static bool isNull(sqlite3_value* cell) { return sqlite3_value_type(cell) == SQLITE_NULL; }

    /// The bytes of a text as they lie in the page: asking for them as text would copy every cell to end it
    /// with a NUL.
    static std::string_view bytes(sqlite3_value* cell) {
        const auto* text = static_cast<const char*>(sqlite3_value_blob(cell));
        return {text ? text : "", std::size_t(sqlite3_value_bytes(cell))};
    }

    // Null reads as 0 or as no bytes: only then is the type asked for.

    void readNumber(sqlite3_value* cell) {
        const double number = sqlite3_value_double(cell);
        m_store.numbers.push_back(number == 0 && isNull(cell) ? std::numeric_limits<double>::quiet_NaN()
                                                              : number);
    }

    void readInteger(sqlite3_value* cell) {
        const int number = sqlite3_value_int(cell);
        m_store.integers.push_back(number == 0 && isNull(cell) ? ColumnStore::NullInteger : number);
    }

    void readText(sqlite3_value* cell) {
        const std::string_view text = bytes(cell);
        if (text.empty() && isNull(cell))
            return m_store.codes.push_back(TextPool::Null);
        if (m_lastCode == TextPool::Null || m_store.pool.text(m_lastCode) != text)
            m_lastCode = m_store.pool.intern(text);
        m_store.codes.push_back(m_lastCode);
    }

    void readDate(sqlite3_value* cell) {
        const std::string_view text = bytes(cell);
        if (text.empty() && isNull(cell))
            return m_store.moments.push_back(ColumnStore::NullMoment);
        if (text != m_lastDate) {
            const auto moment = parseIso(text.data(), int(text.size()));
            if (!moment)
                fail(ErrorNumber::TypeMismatch,
                     QStringLiteral("日期列中有无法识别的值：%1")
                         .arg(QString::fromUtf8(text.data(), qsizetype(text.size()))));
            m_lastDate = text;
            m_lastMoment = moment->seconds;
        }
        m_store.moments.push_back(m_lastMoment);
    }

    ColumnStore& m_store;
    TextPool::Code m_lastCode = TextPool::Null;
    std::string m_lastDate;
    qint64 m_lastMoment = 0;
};

constexpr const char* kReading = "reading"; // what the statement's pointer points to

/// All rows come in one step of the statement, by an aggregate: a step a row takes half as long again.
QString selectText(const QString& table, const std::vector<ColumnInfo>& columns) {
    QString names;
    for (const ColumnInfo& column : columns)
        names += QStringLiteral(", ") + quotedName(column.name);
    return QStringLiteral("SELECT gather_rows(?3, rowid%1) FROM %2 WHERE rowid BETWEEN ?1 AND ?2")
        .arg(names, quotedName(table));
}

using StatementHandle = std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)>;

/// A statement over ranges of rowids and the cells that it has read.
class RangeReading {
public:
    RangeReading(sqlite3* db, const QString& table, const std::vector<ColumnInfo>& columns,
                 qint64 expectedRows)
        : m_db(db)
        , m_table(table)
        , m_statement(prepared(selectText(table, columns).toUtf8())) {
        const auto expected =
            std::size_t(std::clamp<qint64>(expectedRows, 0, kMostReserved)) + ColumnStore::kRoom;
        m_rows.columns.resize(columns.size());
        m_rows.rowids.reserve(expected);
        for (std::size_t i = 0; i < columns.size(); ++i) {
            m_rows.columns[i].info = columns[i];
            m_rows.columns[i].reserve(expected);
            m_readers.emplace_back(m_rows.columns[i]);
        }
    }

    void read(RowidRange range) {
        sqlite3_stmt* statement = m_statement.get();
        sqlite3_bind_int64(statement, 1, range.first);
        sqlite3_bind_int64(statement, 2, range.last);
        sqlite3_bind_pointer(statement, 3, this, kReading, nullptr);
        const int code = sqlite3_step(statement);
        sqlite3_reset(statement);
        if (m_error)
            std::rethrow_exception(m_error);
        if (code != SQLITE_ROW)
            failEngine(m_db, m_table);
    }

    /// Rowid and cells of the next row. What is thrown comes out of read(): the engine cannot let it through.
    bool take(sqlite3_value** values) noexcept {
        try {
            m_rows.rowids.push_back(sqlite3_value_int64(*values));
            for (CellReader& reader : m_readers)
                reader.read(*++values);
            return true;
        } catch (...) {
            m_error = std::current_exception();
            return false;
        }
    }

    LoadedRows take() { return std::move(m_rows); }

private:
    StatementHandle prepared(const QByteArray& sql) const {
        sqlite3_stmt* raw = nullptr;
        if (sqlite3_prepare_v2(m_db, sql.constData(), int(sql.size()), &raw, nullptr) != SQLITE_OK)
            failEngine(m_db, m_table);
        return {raw, sqlite3_finalize};
    }

    sqlite3* m_db;
    QString m_table;
    StatementHandle m_statement;
    LoadedRows m_rows;
    std::vector<CellReader> m_readers;
    std::exception_ptr m_error;
};

void gatherRow(sqlite3_context* context, int /*count*/, sqlite3_value** values) {
    auto* reading = static_cast<RangeReading*>(sqlite3_value_pointer(*values, kReading));
    if (!reading || !reading->take(values + 1))
        sqlite3_result_error(context, "gather_rows", -1);
}

/// `expected`: how many rows to make room for.
LoadedRows readRange(sqlite3* db, const QString& table, const std::vector<ColumnInfo>& columns,
                     RowidRange range, qint64 expected) {
    RangeReading reading(db, table, columns, expected);
    reading.read(range);
    return reading.take();
}

using DatabaseHandle = std::unique_ptr<sqlite3, decltype(&sqlite3_close)>;

/// A second connection for reading, null where the file cannot be opened twice (a memory database).
DatabaseHandle secondConnection(const QString& path) {
    sqlite3* db = nullptr;
    const int flags = SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX;
    const int code = sqlite3_open_v2(path.toUtf8().constData(), &db, flags, nullptr);
    DatabaseHandle handle(db, sqlite3_close);
    if (code != SQLITE_OK)
        return {nullptr, sqlite3_close};
    sqlite3_busy_timeout(db, 2000);
    registerGatherRows(db);
    return handle;
}

RowidRange wholeRange(Connection& connection, const QString& table) {
    // Each end by its own statement: SQLite seeks for one aggregate, and scans for two.
    const auto end = [&](const char* function) {
        Statement statement = connection.prepare(
            QStringLiteral("SELECT %1(rowid) FROM %2").arg(QLatin1String(function), quotedName(table)));
        statement.step();
        return statement.isNull(0) ? std::optional<qint64>() : statement.integer(0);
    };
    const auto first = end("min");
    return first ? RowidRange{*first, *end("max")} : RowidRange();
}

template <typename T> void append(std::vector<T>& to, const std::vector<T>& from) {
    to.insert(to.end(), from.begin(), from.end());
}

/// Takes the cells over; `from` is given back, so that the halves never stand twice in memory.
void appendColumn(ColumnStore& to, ColumnStore&& taken) {
    const ColumnStore from = std::move(taken);
    std::vector<TextPool::Code> codes(from.pool.last() + 1, TextPool::Null);
    for (TextPool::Code code = 1; code <= from.pool.last(); ++code)
        codes[code] = to.pool.intern(from.pool.text(code));
    to.codes.reserve(to.codes.size() + from.codes.size() + ColumnStore::kRoom);
    for (const TextPool::Code code : from.codes)
        to.codes.push_back(codes[code]);
    append(to.numbers, from.numbers);
    append(to.integers, from.integers);
    append(to.moments, from.moments);
}

/// Appends the upper rows to the lower ones, the columns shared between two threads.
void appendRows(LoadedRows& rows, LoadedRows& rest) {
    const auto appendFrom = [&](std::size_t first) {
        for (std::size_t i = first; i < rows.columns.size(); i += 2)
            appendColumn(rows.columns[i], std::move(rest.columns[i]));
    };
    auto odd = std::async(std::launch::async, appendFrom, 1);
    append(rows.rowids, rest.rowids);
    appendFrom(0);
    odd.get();
}

LoadedRows readRows(Connection& connection, const QString& table, const std::vector<ColumnInfo>& columns) {
    const RowidRange whole = wholeRange(connection, table);
    DatabaseHandle second(nullptr, sqlite3_close);
    if (whole.span() >= kWorthTwoThreads && !connection.inTransaction())
        second = secondConnection(connection.path());
    if (!second)
        return readRange(connection.handle(), table, columns, whole, whole.span());

    const qint64 middle = whole.first + whole.span() * kLowerShare / 100;
    const RowidRange upperHalf{middle, whole.last};
    auto upper = std::async(std::launch::async, [&] {
        return readRange(second.get(), table, columns, upperHalf, upperHalf.span());
    });
    LoadedRows rows = readRange(connection.handle(), table, columns, {whole.first, middle - 1}, whole.span());
    LoadedRows rest = upper.get();
    appendRows(rows, rest);
    return rows;
}

} // namespace

void registerGatherRows(sqlite3* db) {
    sqlite3_create_function_v2(
        db, "gather_rows", -1, SQLITE_UTF8, nullptr, nullptr, gatherRow,
        [](sqlite3_context* context) { sqlite3_result_null(context); }, nullptr);
}

struct RangeLoader::Parts {
    DatabaseHandle db;
    RangeReading reading;
};

RangeLoader::RangeLoader(const QString& path, const QString& table, const std::vector<ColumnInfo>& columns,
                         qint64 expected) {
    DatabaseHandle db = secondConnection(path);
    if (!db)
        fail(ErrorNumber::Engine, QStringLiteral("不能再次打开数据库"), path);
    sqlite3_busy_timeout(db.get(), 0);
    sqlite3* handle = db.get();
    m_parts = std::make_unique<Parts>(Parts{std::move(db), RangeReading(handle, table, columns, expected)});
}

RangeLoader::~RangeLoader() = default;

void RangeLoader::read(qint64 first, qint64 last) {
    m_parts->reading.read({first, last});
}

LoadedRows RangeLoader::take() {
    return m_parts->reading.take();
}

LoadedRows loadRows(Connection& connection, const QString& table, const std::vector<ColumnInfo>& columns) {
    try {
        return readRows(connection, table, columns);
    } catch (const DatabaseLost&) {
        connection.markFailed();
        throw;
    }
}
