#include "recordset/fileMark.h"

#include "recordset/statement.h"

#include <QByteArray>
#include <QRandomGenerator>
#include <QtEndian>

namespace {

// Places in the header of the first page, https://www.sqlite.org/fileformat2.html#the_database_header.
constexpr int kUserVersion = 60;
constexpr int kApplicationId = 68;

qint32 pragma(sqlite3* db, const char* name) {
    Statement statement(db, QStringLiteral("PRAGMA ") + QLatin1String(name));
    statement.step();
    return qint32(statement.integer(0));
}

void setPragma(sqlite3* db, const char* name, qint32 value) {
    Statement(db, QStringLiteral("PRAGMA %1 = %2").arg(QLatin1String(name)).arg(value)).run();
}

/// Never 0, which an unmarked file has, nor the mark that it takes the place of.
qint32 freshMark(qint32 before) {
    for (;;) {
        const auto mark = qint32(QRandomGenerator::system()->generate());
        if (mark != 0 && mark != before)
            return mark;
    }
}

} // namespace

FileMark markIn(const QByteArray& page) {
    return {qFromBigEndian<qint32>(page.constData() + kUserVersion),
            qFromBigEndian<qint32>(page.constData() + kApplicationId)};
}

FileMark writeFreshMark(sqlite3* db) {
    const qint32 before = pragma(db, "user_version");
    const FileMark mark{freshMark(before), before};
    setPragma(db, "user_version", mark.now);
    setPragma(db, "application_id", mark.before);
    return mark;
}

void markAsNew(sqlite3* db) {
    Statement(db, QStringLiteral("BEGIN IMMEDIATE")).run();
    writeFreshMark(db);
    writeFreshMark(db);
    Statement(db, QStringLiteral("COMMIT")).run();
}

FileMark readMark(sqlite3* db) {
    return {pragma(db, "user_version"), pragma(db, "application_id")};
}
