#include "recordset/connection.h"

#include "recordset/collation.h"
#include "recordset/dialect.h"
#include "recordset/error.h"
#include "recordset/imageLoader.h"
#include "recordset/tableImage.h"

#include <sqlite3.h>

namespace {

int countCommit(void* counter) {
    ++*static_cast<int*>(counter);
    return 0;
}

/// Adds doubles one after the other in the order of the rows; Null over no numbers.
struct PlainSum {
    double total;
    int count;
};

void sumStep(sqlite3_context* context, int, sqlite3_value** values) {
    auto* sum = static_cast<PlainSum*>(sqlite3_aggregate_context(context, sizeof(PlainSum)));
    if (!sum || sqlite3_value_type(values[0]) == SQLITE_NULL)
        return;
    sum->total += sqlite3_value_double(values[0]);
    ++sum->count;
}

void sumFinal(sqlite3_context* context) {
    const auto* sum = static_cast<PlainSum*>(sqlite3_aggregate_context(context, 0));
    if (sum && sum->count > 0)
        sqlite3_result_double(context, sum->total);
    else
        sqlite3_result_null(context);
}

int compareTexts(void* collation, int sizeA, const void* a, int sizeB, const void* b) {
    return static_cast<Collation*>(collation)->compare({static_cast<const char*>(a), std::size_t(sizeA)},
                                                       {static_cast<const char*>(b), std::size_t(sizeB)});
}

/// Allocation counters are guarded by one lock that two loading threads would fight for. The engine takes
/// this only before its first use, whoever that is.
[[maybe_unused]] const int kUncounted = sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);

constexpr int kPatience = 2000; // milliseconds that another program's lock is waited for

} // namespace

Connection::QuickAnswer::QuickAnswer(const Connection& connection)
    : m_db(connection.handle()) {
    sqlite3_busy_timeout(m_db, 0);
}

Connection::QuickAnswer::~QuickAnswer() {
    sqlite3_busy_timeout(m_db, kPatience);
}

void registerSqlFunctions(sqlite3* db) {
    sqlite3_create_function_v2(db, "plain_sum", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr, nullptr,
                               sumStep, sumFinal, nullptr);
    registerGatherRows(db);
    sqlite3_create_collation_v2(db, "textorder", SQLITE_UTF8, new Collation, compareTexts,
                                [](void* collation) { delete static_cast<Collation*>(collation); });
}

Connection::Connection(const QString& path)
    : m_path(path) {
    try {
        openHandle();
        setPragmas();
    } catch (...) {
        sqlite3_close_v2(m_db);
        throw;
    }
}

Connection::~Connection() {
    m_images.clear();
    m_cached.clear();
    sqlite3_close_v2(m_db);
}

void Connection::openHandle() {
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_PRIVATECACHE;
    if (sqlite3_open_v2(m_path.toUtf8().constData(), &m_db, flags, nullptr) != SQLITE_OK)
        fail(ErrorNumber::Engine, QString::fromUtf8(sqlite3_errmsg(m_db)), m_path);
    // A misspelt column must be an error, not a text in double quotes.
    sqlite3_db_config(m_db, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(m_db, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    sqlite3_extended_result_codes(m_db, 1);
    sqlite3_busy_timeout(m_db, kPatience);
    sqlite3_commit_hook(m_db, countCommit, &m_commits);
    registerSqlFunctions(m_db);
}

void Connection::setPragmas() {
    execute(QStringLiteral("PRAGMA foreign_keys = OFF"));
    execute(QStringLiteral("PRAGMA synchronous = FULL"));
    execute(QStringLiteral("PRAGMA cache_size = -16000"));
    Statement journal = prepare(QStringLiteral("PRAGMA journal_mode = TRUNCATE"));
    const bool truncates = journal.step() && journal.text(0) == u"truncate";
    Statement synchronous = prepare(QStringLiteral("PRAGMA synchronous"));
    if (!truncates || !synchronous.step() || synchronous.integer(0) != 2)
        fail(ErrorNumber::Engine, QStringLiteral("数据库不能以安全方式写入"), m_path);
}

Statement& Connection::cached(const QString& sql) {
    auto& statement = m_cached[sql];
    if (!statement)
        statement = std::make_shared<Statement>(m_db, sql, &m_failed);
    return *statement;
}

void Connection::execute(const QString& sql) {
    if (sqlite3_exec(m_db, sql.toUtf8().constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
        failEngine(m_db, sql, &m_failed);
}

bool Connection::inTransaction() const {
    return sqlite3_get_autocommit(m_db) == 0;
}

bool Connection::hasTable(const QString& table) {
    Statement& statement = cached(
        QStringLiteral("SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = ? COLLATE NOCASE"));
    statement.bindText(1, table);
    const bool found = statement.step();
    statement.reset();
    return found;
}

QStringList Connection::tables() {
    QStringList names;
    Statement statement = prepare(QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table'"));
    while (statement.step())
        names << statement.text(0);
    return names;
}

std::vector<ColumnInfo> Connection::columns(const QString& table) {
    if (!hasTable(table))
        fail(ErrorNumber::TableMissing, QStringLiteral("找不到表 %1").arg(table));
    std::vector<ColumnInfo> columns;
    Statement statement = prepare(QStringLiteral("PRAGMA table_info(%1)").arg(quotedName(table)));
    while (statement.step())
        columns.push_back(ColumnInfo::fromDeclaration(statement.text(1), statement.text(2)));
    return columns;
}

std::shared_ptr<TableImage> Connection::image(const QString& table, const QStringList& columns) {
    auto& image = m_images[table.toLower()];
    if (!image) {
        try {
            image = std::make_shared<TableImage>(*this, table, this->columns(table));
            image->loadRows(columns);
        } catch (...) {
            m_images.remove(table.toLower());
            throw;
        }
    }
    return image;
}

std::shared_ptr<TableImage> Connection::standingImage(const QString& table) const {
    return m_images.value(table.toLower());
}

void Connection::forgetImage(const QString& table) {
    m_images.remove(table.toLower());
}
