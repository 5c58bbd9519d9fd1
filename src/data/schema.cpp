#include "data/schema.h"

#include "data/booksLock.h"
#include "data/immutableFile.h"
#include "recordset/columnStore.h"
#include "recordset/connection.h"
#include "recordset/error.h"

#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

#include <fcntl.h>
#include <map>
#include <unistd.h>

/// Keeps the linker from dropping the resources of a static library; the macro wants to stand in no
/// namespace.
static void linkResources() {
    Q_INIT_RESOURCE(schema);
}

namespace {

DatabaseHandle openHandle(const QString& path, int flags) {
    sqlite3* db = nullptr;
    const int code = sqlite3_open_v2(path.toUtf8().constData(), &db, flags, nullptr);
    DatabaseHandle handle(db);
    if (code != SQLITE_OK)
        failEngine(db, path);
    return handle;
}

void runScript(sqlite3* db) {
    linkResources();
    QFile script(QStringLiteral(":/schema.sql"));
    if (!script.open(QIODevice::ReadOnly))
        fail(ErrorNumber::Engine, QStringLiteral("建表脚本不可读"));
    if (sqlite3_exec(db, script.readAll().constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
        fail(ErrorNumber::Engine, QString::fromUtf8(sqlite3_errmsg(db)), QStringLiteral("schema.sql"));
}

/// The columns of a table by their names in lower case; none where there is no such table.
std::map<QString, ColumnInfo> columnsOf(sqlite3* db, const QString& table) {
    std::map<QString, ColumnInfo> columns;
    Statement statement(db, QStringLiteral("PRAGMA table_info(\"%1\")").arg(table));
    try {
        while (statement.step())
            columns[statement.text(1).toLower()] =
                ColumnInfo::fromDeclaration(statement.text(1), statement.text(2));
    } catch (const RuntimeError& error) {
        fail(error.number(), QStringLiteral("表 %1：%2").arg(table, error.text()));
    }
    return columns;
}

/// What the bytes at the start of the file say against it.
QString headerFault(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("文件不能读取（%1）").arg(file.errorString());
    if (file.size() == 0)
        return QStringLiteral("文件是空的，不是数据库");
    const QByteArray header = file.read(100);
    if (header.mid(4, 15) == "Standard Jet DB")
        return QStringLiteral("这是旧格式（Jet）的数据库，还没有转换");
    if (!header.startsWith(QByteArray("SQLite format 3\0", 16)))
        return QStringLiteral("文件不是本系统的数据库");
    return {};
}

/// Whether the file is shorter than its own count of pages says.
QString lengthFault(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("文件不能读取（%1）").arg(file.errorString());
    const QByteArray header = file.read(100);
    if (header.size() < 100)
        return QStringLiteral("文件不完整（被截断）");
    const auto byte = [&header](int at) { return qint64(quint8(header[at])); };
    const qint64 pageSize = byte(16) == 0 && byte(17) == 1 ? 65536 : byte(16) << 8 | byte(17);
    const qint64 pages = byte(28) << 24 | byte(29) << 16 | byte(30) << 8 | byte(31);
    if (file.size() < pageSize * pages)
        return QStringLiteral("文件不完整（被截断）：应有 %1 字节，只有 %2 字节")
            .arg(pageSize * pages)
            .arg(file.size());
    return {};
}

/// Whether a broken-off action waits to be taken back, which opening the file does.
bool hasJournal(const QString& path) {
    return QFileInfo(path + QStringLiteral("-journal")).size() > 0;
}

QString accessFault(const QString& path) {
    if (QString fault = kindFault(path); !fault.isEmpty())
        return fault;
    const QFileInfo info(path);
    if (!info.isReadable())
        return QStringLiteral("没有读取此文件的权限");
    if (!info.isWritable())
        return QStringLiteral("文件是只读的");
    if (!QFileInfo(info.absolutePath()).isWritable())
        return QStringLiteral("所在的文件夹是只读的，无法安全写入");
    return {};
}

/// What a table lacks of its model, or has otherwise.
QString tableFault(sqlite3* db, sqlite3* model, const QString& table) {
    const auto there = columnsOf(db, table);
    for (const auto& [name, wanted] : columnsOf(model, table)) {
        const auto found = there.find(name);
        if (found == there.end())
            return QStringLiteral("表 %1 缺少列 %2").arg(table, wanted.name);
        if (found->second.type != wanted.type)
            return QStringLiteral("表 %1 的列 %2 的类型是 %3，应为 %4")
                .arg(table, wanted.name, found->second.declaration, wanted.declaration);
    }
    return {};
}

QStringList tableNames(sqlite3* db) {
    QStringList names;
    Statement statement(db, QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table'"));
    while (statement.step())
        names << statement.text(0);
    return names;
}

QString schemaFault(sqlite3* db) {
    const DatabaseHandle model =
        openHandle(QStringLiteral(":memory:"), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    runScript(model.get());
    const QStringList there = tableNames(db);
    for (const QString& table : requiredTables())
        if (!there.contains(table, Qt::CaseInsensitive))
            return QStringLiteral("缺少表 %1").arg(table);
    // A work copy may be missing, but one that is there is read.
    for (const QString& table : tableNames(model.get()))
        if (there.contains(table, Qt::CaseInsensitive))
            if (QString fault = tableFault(db, model.get(), table); !fault.isEmpty())
                return fault;
    return {};
}

QString engineFault(const QString& path) {
    try {
        const DatabaseHandle db = openHandle(path, SQLITE_OPEN_READWRITE);
        if (sqlite3_db_readonly(db.get(), "main") == 1)
            return QStringLiteral("文件是只读的");
        const int code = sqlite3_exec(db.get(), "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
        if (code == SQLITE_BUSY)
            return QStringLiteral("文件正被另一个程序使用（已锁定）");
        if (code != SQLITE_OK)
            return QStringLiteral("文件已损坏（%1）").arg(QString::fromUtf8(sqlite3_errmsg(db.get())));
        QString fault = schemaFault(db.get());
        sqlite3_exec(db.get(), "ROLLBACK", nullptr, nullptr, nullptr);
        return fault;
    } catch (const RuntimeError& error) {
        return error.text();
    } catch (const std::exception& error) {
        return QStringLiteral("文件已损坏（%1）").arg(QString::fromUtf8(error.what()));
    }
}

/// A new file that only its owner may read; the engine takes its rights over to the journal.
void makePrivateFile(const QString& path) {
    const int file =
        ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (file >= 0)
        ::close(file);
}

} // namespace

void createDatabase(const QString& path) {
    makePrivateFile(path);
    const DatabaseHandle db = openHandle(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    runScript(db.get());
    markAsNew(db.get());
}

void markDatabase(const QString& path) {
    markAsNew(openHandle(path, SQLITE_OPEN_READWRITE).get());
}

QString databaseFault(const QString& path) {
    QString fault = accessFault(path);
    if (fault.isEmpty())
        fault = headerFault(path);
    // While a broken-off action is in the journal, the length may be in between: the engine repairs it first.
    if (fault.isEmpty() && !hasJournal(path))
        fault = lengthFault(path);
    if (fault.isEmpty())
        fault = engineFault(path);
    if (fault.isEmpty())
        fault = lengthFault(path);
    return fault.isEmpty() ? QString() : QStringLiteral("不能打开数据库 %1\n%2。").arg(path, fault);
}

QStringList requiredTables() {
    return {QStringLiteral("clientTable"),         QStringLiteral("buyList"),
            QStringLiteral("productTable"),        QStringLiteral("product_Bank"),
            QStringLiteral("return_Bank"),         QStringLiteral("out_of_Bank"),
            QStringLiteral("no_use_Bank"),         QStringLiteral("counterCode"),
            QStringLiteral("saleTable"),           QStringLiteral("orderTable"),
            QStringLiteral("buy_Frequence_Table"), QStringLiteral("month_Table"),
            QStringLiteral("clientplaceTable"),    QStringLiteral("clientlineTable")};
}
