#include "plainSqlite.h"

#include <cstdio>

namespace {

qint64 readCell(sqlite3_stmt* statement, int column) {
    switch (sqlite3_column_type(statement, column)) {
    case SQLITE_TEXT:
        return sqlite3_column_text(statement, column)[0] + sqlite3_column_bytes(statement, column);
    case SQLITE_FLOAT:
        return sqlite3_column_double(statement, column) > 0;
    case SQLITE_INTEGER:
        return sqlite3_column_int64(statement, column);
    default:
        return 0;
    }
}

} // namespace

void PlainSqlite::exec(const QString& sql) {
    if (sqlite3_exec(m_db, sql.toUtf8().constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
        std::fprintf(stderr, "reference: %s\n", sqlite3_errmsg(m_db));
}

qint64 PlainSqlite::readAll(const QString& sql) {
    sqlite3_stmt* statement = nullptr;
    const QByteArray utf8 = sql.toUtf8();
    sqlite3_prepare_v2(m_db, utf8.constData(), int(utf8.size()), &statement, nullptr);
    const int columns = sqlite3_column_count(statement);
    qint64 sum = 0;
    while (sqlite3_step(statement) == SQLITE_ROW)
        for (int i = 0; i < columns; ++i)
            sum += readCell(statement, i);
    sqlite3_finalize(statement);
    return sum;
}
