#pragma once

#include "recordset/cellValue.h"

#include <QString>

#include <memory>
#include <string_view>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

/// What the user is told of another program that holds the file.
QString lockedByAnother();

/// Throws what the storage engine's last failure on this connection is: DatabaseLost where the disk or the
/// file failed, ActionEnded where another program holds the file, and sets `*lost` in both; else
/// RuntimeError(Engine) with the engine's words.
[[noreturn]] void failEngine(sqlite3* db, const QString& sql, bool* lost = nullptr);

/// A prepared SQLite statement. Finalised with the object.
class Statement {
public:
    /// `lost`, where given, is set when the disk or the file fails under the statement, and outlives it.
    Statement(sqlite3* db, const QString& sql, bool* lost = nullptr);
    ~Statement();
    Statement(Statement&&) noexcept;
    Statement& operator=(Statement&&) = delete;

    /// Positions count from 1.
    void bind(int position, const CellValue& value);
    void bind(int position, qint64 value);
    void bindText(int position, const QString& text);
    /// UTF-8 that stays where it is until the statement is reset.
    void bindBytes(int position, std::string_view text);
    /// True while there is a row. Throws RuntimeError(Engine) with the engine's words, DatabaseLost.
    bool step();
    /// Makes the statement ready to run again, its bindings gone.
    void reset();
    /// Runs a statement that gives no rows, and resets it, also where it fails.
    void run();

    int columnCount() const;
    bool isNull(int column) const;
    qint64 integer(int column) const;
    double number(int column) const;
    std::string_view bytes(int column) const;
    QString text(int column) const;
    /// The cell as a value of a column of this type. Throws TypeMismatch for a date that cannot be read.
    CellValue value(int column, ColumnType type) const;

private:
    sqlite3* m_db;
    sqlite3_stmt* m_statement = nullptr;
    QString m_sql;
    bool* m_lost;
    std::vector<QByteArray> m_texts; // what the bound texts point at
};
