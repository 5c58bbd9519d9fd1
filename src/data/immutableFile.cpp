#include "data/immutableFile.h"

#include "recordset/error.h"
#include "recordset/statement.h"

#include <QFileInfo>
#include <QUrl>

#include <sqlite3.h>

void CloseDatabase::operator()(sqlite3* db) const {
    sqlite3_close_v2(db);
}

DatabaseHandle openImmutable(const QString& path) {
    const QByteArray uri =
        QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath()).toEncoded() + "?immutable=1";
    sqlite3* db = nullptr;
    const int flags = SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_URI;
    const int code = sqlite3_open_v2(uri.constData(), &db, flags, nullptr);
    DatabaseHandle handle(db);
    if (code != SQLITE_OK)
        failEngine(db, path);
    return handle;
}

QString structureFault(const QString& path) {
    try {
        const DatabaseHandle db = openImmutable(path);
        Statement check(db.get(), QStringLiteral("PRAGMA quick_check(1)"));
        const QString found = check.step() ? check.text(0) : QStringLiteral("no answer");
        return found == u"ok" ? QString() : found;
    } catch (const std::exception& error) {
        return QString::fromUtf8(error.what());
    }
}
