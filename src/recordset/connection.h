#pragma once

#include "recordset/statement.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <exception>
#include <memory>
#include <vector>

class TableImage;
struct ColumnInfo;

/// The one connection to the database file: runs SQLite statements, keeps the table images that are open, and
/// holds the transaction of a WriteBatch. Used from the user-interface thread only.
class Connection {
public:
    /// Opens an existing file for reading and writing, and asserts its pragmas (rollback journal in mode
    /// TRUNCATE, full synchronous, no foreign keys). Throws RuntimeError(Engine) with the engine's words.
    explicit Connection(const QString& path);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    const QString& path() const { return m_path; }
    sqlite3* handle() const { return m_db; }

    Statement prepare(const QString& sql) { return Statement(m_db, sql); }
    /// A statement that is prepared once and kept. It must be reset after its use.
    Statement& cached(const QString& sql);
    /// Runs SQLite statements that give no rows, one after the other.
    void execute(const QString& sql);
    /// Runs a statement that writes: inside a batch, the first one opens the transaction.
    void write(Statement& statement);
    void write(const QString& sql);

    bool hasTable(const QString& table);
    QStringList tables();
    /// The columns of a table in their order. Throws TableMissing.
    std::vector<ColumnInfo> columns(const QString& table);
    /// The image that all cursors on `table` share; made on the first call. Throws TableMissing.
    /// `columns` are read in the same scan as the rows where the image is new.
    std::shared_ptr<TableImage> image(const QString& table, const QStringList& columns = {});
    /// The image if it stands already, else null.
    std::shared_ptr<TableImage> standingImage(const QString& table) const;
    /// Forgets the image of a table that is dropped.
    void forgetImage(const QString& table);

    bool inTransaction() const;
    /// Commits so far, counted by the commit hook.
    int commits() const { return m_commits; }

private:
    friend class WriteBatch;
    void openHandle();
    void setPragmas();
    void beginBatch() { ++m_batchDepth; }
    void endBatch();

    QString m_path;
    sqlite3* m_db = nullptr;
    QHash<QString, std::shared_ptr<Statement>> m_cached;
    QHash<QString, std::shared_ptr<TableImage>> m_images; // by lower-case name
    int m_batchDepth = 0;
    int m_commits = 0;
    QString m_lost; // why the file no longer holds what the images hold; empty while it does
};

/// One user action, one transaction: everything written while the outermost batch lives becomes durable
/// together at finish(), or at the end of its scope where an exception leaves it.
class WriteBatch {
public:
    explicit WriteBatch(Connection& connection)
        : m_connection(&connection)
        , m_exceptions(std::uncaught_exceptions()) {
        connection.beginBatch();
    }
    ~WriteBatch() noexcept(false);
    WriteBatch(const WriteBatch&) = delete;
    WriteBatch& operator=(const WriteBatch&) = delete;

    /// Commits, if this is the outermost batch. Throws DatabaseLost where the commit fails.
    void finish();

private:
    Connection* m_connection;
    int m_exceptions;
};

/// Orders texts as the system sorts them (digits, Chinese by pinyin, letters, without case).
void registerSqlFunctions(sqlite3* db);
