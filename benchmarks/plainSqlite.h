#pragma once

#include <QString>

#include <sqlite3.h>

/// A plain handle of the storage engine, as someone without this program's data engine would use it.
class PlainSqlite {
public:
    explicit PlainSqlite(const QString& path) {
        sqlite3_open_v2(path.toUtf8().constData(), &m_db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX,
                        nullptr);
    }
    ~PlainSqlite() { sqlite3_close(m_db); }
    PlainSqlite(const PlainSqlite&) = delete;
    PlainSqlite& operator=(const PlainSqlite&) = delete;

    sqlite3* handle() const { return m_db; }
    /// Runs statements, and says so on stderr where one fails.
    void exec(const QString& sql);
    /// Steps through all rows of a query and reads every column by its type.
    qint64 readAll(const QString& sql);

private:
    sqlite3* m_db = nullptr;
};
