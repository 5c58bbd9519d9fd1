#include "recordset/statement.h"

#include "recordset/error.h"

#include <sqlite3.h>

namespace {

/// Whether a failure is one of the disk or of the file, not one of the statement.
bool isOfTheDisk(int code) {
    switch (code & 0xff) {
    case SQLITE_FULL:
    case SQLITE_IOERR:
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_CANTOPEN:
    case SQLITE_READONLY:
    case SQLITE_NOMEM:
        return true;
    default:
        return false;
    }
}

/// A failure of the disk or the file in the user's language.
QString nameOf(int code) {
    switch (code & 0xff) {
    case SQLITE_FULL:
        return QStringLiteral("磁盘已满");
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return QStringLiteral("数据文件已损坏");
    case SQLITE_READONLY:
        return QStringLiteral("数据文件只能读，不能写");
    case SQLITE_NOMEM:
        return QStringLiteral("内存不足");
    default:
        return QStringLiteral("磁盘读写出错");
    }
}

/// Whether the file itself may have suffered, and not only what was to be written.
bool isOfTheFile(int code) {
    switch (code) {
    case SQLITE_IOERR_READ:
    case SQLITE_IOERR_SHORT_READ:
    case SQLITE_IOERR_CORRUPTFS:
    case SQLITE_IOERR_DATA:
        return true;
    default:
        return (code & 0xff) == SQLITE_CORRUPT || (code & 0xff) == SQLITE_NOTADB;
    }
}

} // namespace

QString lockedByAnother() {
    return QStringLiteral("数据文件正被另一个程序使用（已锁定），本次操作没有记入，请稍后再试。");
}

void failEngine(sqlite3* db, const QString& sql, bool* lost) {
    const QString words = QString::fromUtf8(sqlite3_errmsg(db));
    if ((sqlite3_errcode(db) & 0xff) == SQLITE_BUSY) {
        if (lost)
            *lost = true; // what the action did before it waited in vain is taken back
        throw ActionEnded(lockedByAnother());
    }
    if (!isOfTheDisk(sqlite3_errcode(db)))
        fail(ErrorNumber::Engine, words, sql);
    if (lost)
        *lost = true;
    const int code = sqlite3_extended_errcode(db);
    throw DatabaseLost(QStringLiteral("%1（%2）。").arg(nameOf(code), words), Outcome::TakenBack,
                       isOfTheFile(code));
}

Statement::Statement(sqlite3* db, const QString& sql, bool* lost)
    : m_db(db)
    , m_sql(sql)
    , m_lost(lost) {
    const QByteArray utf8 = sql.toUtf8();
    if (sqlite3_prepare_v2(db, utf8.constData(), int(utf8.size()), &m_statement, nullptr) != SQLITE_OK)
        failEngine(db, sql, m_lost);
}

Statement::~Statement() {
    sqlite3_finalize(m_statement);
}

Statement::Statement(Statement&& other) noexcept
    : m_db(other.m_db)
    , m_statement(std::exchange(other.m_statement, nullptr))
    , m_sql(std::move(other.m_sql))
    , m_lost(other.m_lost)
    , m_texts(std::move(other.m_texts)) {}

void Statement::bind(int position, const CellValue& value) {
    if (const auto* text = std::get_if<QString>(&value))
        bindText(position, *text);
    else if (const auto* number = std::get_if<double>(&value))
        sqlite3_bind_double(m_statement, position, *number);
    else if (const auto* integer = std::get_if<qint32>(&value))
        sqlite3_bind_int(m_statement, position, *integer);
    else if (const auto* moment = std::get_if<Moment>(&value))
        bindText(position, QString::fromLatin1(isoText(*moment)));
    else
        sqlite3_bind_null(m_statement, position);
}

void Statement::bind(int position, qint64 value) {
    sqlite3_bind_int64(m_statement, position, value);
}

void Statement::bindText(int position, const QString& text) {
    if (m_texts.empty())
        m_texts.resize(std::size_t(sqlite3_bind_parameter_count(m_statement)) + 1);
    QByteArray& utf8 = m_texts.at(std::size_t(position));
    utf8 = text.toUtf8();
    sqlite3_bind_text64(m_statement, position, utf8.constData(), sqlite3_uint64(utf8.size()), SQLITE_STATIC,
                        SQLITE_UTF8);
}

void Statement::bindBytes(int position, std::string_view text) {
    sqlite3_bind_text64(m_statement, position, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8);
}

bool Statement::step() {
    const int code = sqlite3_step(m_statement);
    if (code == SQLITE_ROW)
        return true;
    if (code == SQLITE_DONE)
        return false;
    // Else the next use would go on with the old bindings; the engine's words outlive the reset.
    sqlite3_reset(m_statement);
    failEngine(m_db, m_sql, m_lost);
}

void Statement::reset() {
    sqlite3_reset(m_statement);
    sqlite3_clear_bindings(m_statement);
}

void Statement::run() {
    try {
        step();
    } catch (...) {
        reset();
        throw;
    }
    reset();
}

int Statement::columnCount() const {
    return sqlite3_column_count(m_statement);
}

bool Statement::isNull(int column) const {
    return sqlite3_column_type(m_statement, column) == SQLITE_NULL;
}

qint64 Statement::integer(int column) const {
    return sqlite3_column_int64(m_statement, column);
}

double Statement::number(int column) const {
    return sqlite3_column_double(m_statement, column);
}

std::string_view Statement::bytes(int column) const {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(m_statement, column));
    return {text ? text : "", std::size_t(sqlite3_column_bytes(m_statement, column))};
}

QString Statement::text(int column) const {
    const std::string_view held = bytes(column);
    return QString::fromUtf8(held.data(), qsizetype(held.size()));
}

CellValue Statement::value(int column, ColumnType type) const {
    if (isNull(column))
        return {};
    switch (type) {
    case ColumnType::Text:
        return text(column);
    case ColumnType::Number:
        return number(column);
    case ColumnType::Date:
        if (const auto moment = parseIso(bytes(column).data(), int(bytes(column).size())))
            return *moment;
        fail(ErrorNumber::TypeMismatch, QStringLiteral("日期列中有无法识别的值：%1").arg(text(column)),
             m_sql);
    default:
        return qint32(integer(column));
    }
}
