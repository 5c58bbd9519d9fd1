#include "maintenance/takeOver.h"

#include "data/booksLock.h"
#include "data/schema.h"
#include "data/unfinished.h"
#include "import/importSource.h"
#include "maintenance/backup.h"
#include "recordset/columnStore.h"
#include "recordset/connection.h"
#include "recordset/dialect.h"
#include "recordset/error.h"
#include "recordset/textDate.h"
#include "recordset/textNumber.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

#include <algorithm>
#include <cstdio>
#include <numeric>
#include <unistd.h>

namespace {

constexpr int kRowsPerSign = 2000;

/// The tables without which a Jet file is some other program's. The rest are made empty where they lack.
QStringList neededTables() {
    return {QStringLiteral("clientTable"), QStringLiteral("buyList"), QStringLiteral("productTable"),
            QStringLiteral("product_Bank"), QStringLiteral("counterCode")};
}

/// A database password is hidden in the header: twenty words, each combined with a fixed one, the even ones
/// with one more that is the same for all. Without a password nothing else is left.
bool isProtected(const QByteArray& header) {
    static const quint16 fixed[20] = {0x6aba, 0x37ec, 0xd561, 0xfa9c, 0xcffa, 0xe628, 0x272f,
                                      0x608a, 0x0568, 0x367b, 0xe3c9, 0xb1df, 0x654b, 0x4313,
                                      0x3ef3, 0x33b1, 0xf008, 0x5b79, 0x24ae, 0x2a7c};
    constexpr int place = 0x42;
    if (header.size() < place + 40)
        return false;
    const auto word = [&](int i) {
        return quint16(quint8(header[place + 2 * i]) | quint8(header[place + 2 * i + 1]) << 8) ^ fixed[i];
    };
    for (int i = 0; i < 20; ++i)
        if (word(i) != (i % 2 == 0 ? word(18) : 0))
            return true;
    return false;
}

QByteArray headerOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(256) : QByteArray();
}

/// Rows of a table in the order in which they were entered: in the permanent tables by their serials, since
/// the reader gives a row that was moved within its file behind the others; work copies stand as they were
/// made.
std::vector<int> entryOrder(const QString& table, const SourceRows& rows) {
    std::vector<int> order(std::size_t(rows.rowCount()));
    std::iota(order.begin(), order.end(), 0);
    const auto serial = int(rows.columns.indexOf(QStringLiteral("流水号")));
    if (serial >= 0 && neededTables().contains(table, Qt::CaseInsensitive))
        std::stable_sort(order.begin(), order.end(),
                         [&](int a, int b) { return val(rows.cell(a, serial)) < val(rows.cell(b, serial)); });
    return order;
}

/// Fills the tables of a new database from an old one. `alive` is called now and then during a long table.
class Filling {
public:
    Filling(const QString& path, std::function<void()> alive)
        : m_alive(std::move(alive))
        , m_connection(path) {}

    QStringList tables() { return m_connection.tables(); }
    /// What could not be kept so far, a line a value.
    const QStringList& lost() const { return m_lost; }

    void fill(const QString& table, const SourceRows& rows) {
        std::vector<ColumnInfo> columns = m_connection.columns(table);
        const std::vector<int> sources = sourcesOf(columns, rows);
        WriteBatch batch(m_connection);
        if (widen(columns, sources, rows))
            makeAgain(table, columns);
        else
            m_connection.write(QStringLiteral("DELETE FROM ") + quotedName(table));
        insert(table, columns, sources, rows);
        batch.finish();
    }

private:
    /// For each of our columns the place of the old one of its name, -1 where it lacks.
    static std::vector<int> sourcesOf(const std::vector<ColumnInfo>& columns, const SourceRows& rows) {
        std::vector<int> sources;
        for (const ColumnInfo& column : columns) {
            const auto found =
                std::find_if(rows.columns.begin(), rows.columns.end(), [&column](const QString& name) {
                    return name.compare(column.name, Qt::CaseInsensitive) == 0;
                });
            sources.push_back(found == rows.columns.end() ? -1 : int(found - rows.columns.begin()));
        }
        return sources;
    }

    static bool widen(std::vector<ColumnInfo>& columns, const std::vector<int>& sources,
                      const SourceRows& rows) {
        bool wider = false;
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (columns[i].type != ColumnType::Text || sources[i] < 0)
                continue;
            qsizetype longest = 0;
            for (int row = 0; row < rows.rowCount(); ++row)
                longest = std::max(longest, rows.cell(row, sources[i]).size());
            if (longest <= columns[i].definedSize)
                continue;
            columns[i].declaration.replace(QStringLiteral("(%1)").arg(columns[i].definedSize),
                                           QStringLiteral("(%1)").arg(longest));
            wider = true;
        }
        return wider;
    }

    void makeAgain(const QString& table, const std::vector<ColumnInfo>& columns) {
        QStringList declarations;
        for (const ColumnInfo& column : columns)
            declarations << quotedName(column.name) + u' ' + column.declaration;
        m_connection.write(QStringLiteral("DROP TABLE ") + quotedName(table));
        m_connection.write(QStringLiteral("CREATE TABLE %1 (%2)")
                               .arg(quotedName(table), declarations.join(QStringLiteral(", "))));
    }

    /// A value as its column holds it, and whether that is all of it.
    struct Kept {
        CellValue value;
        bool whole = true;
    };

    static Kept keptOf(const ColumnInfo& column, const QString& text) {
        if (text.isNull())
            return {};
        const bool blank = withoutBlanks(text).isEmpty();
        try {
            if (column.type == ColumnType::Text)
                return {text};
            if (column.type == ColumnType::Date) {
                const auto moment = parseDate(text);
                return {moment ? CellValue(*moment) : CellValue(), moment || blank};
            }
            const double number = val(text);
            bool isNumber = false;
            const bool whole = blank || (text.toDouble(&isNumber) == number && isNumber);
            return column.type == ColumnType::Number ? Kept{number, whole} : Kept{toInt32(number), whole};
        } catch (const std::exception&) {
            return {CellValue(), false}; // nothing that the column could hold
        }
    }

    void insert(const QString& table, const std::vector<ColumnInfo>& columns, const std::vector<int>& sources,
                const SourceRows& rows) {
        QStringList marks(qsizetype(columns.size()), QStringLiteral("?"));
        Statement statement =
            m_connection.prepare(QStringLiteral("INSERT INTO %1 VALUES (%2)")
                                     .arg(quotedName(table), marks.join(QStringLiteral(", "))));
        int number = 0;
        for (const int row : entryOrder(table, rows)) {
            if (++number % kRowsPerSign == 0)
                m_alive();
            for (std::size_t i = 0; i < columns.size(); ++i) {
                const QString text = sources[i] < 0 ? QString() : rows.cell(row, sources[i]);
                const Kept kept = keptOf(columns[i], text);
                statement.bind(int(i) + 1, kept.value);
                if (!kept.whole)
                    m_lost << QStringLiteral("%1 第 %2 行 %3：%4")
                                  .arg(table, QString::number(number), columns[i].name, text);
            }
            m_connection.write(statement);
        }
    }

    std::function<void()> m_alive;
    QStringList m_lost;
    Connection m_connection;
};

/// Fills every table of a new database that the old books have too; gives what could not be kept.
QStringList fillAll(ImportSource& source, const QString& path,
                    const std::function<void(int, int)>& progress) {
    const QStringList old = source.tables();
    int done = 0;
    int total = 0;
    const auto tell = [&] {
        if (progress)
            progress(done, total);
    };
    Filling filling(path, tell);
    const QStringList tables = filling.tables();
    total = int(tables.size());
    const auto before = std::exchange(source.signOfLife, tell);
    const auto putBack = qScopeGuard([&] { source.signOfLife = before; });
    for (const QString& table : tables) {
        const auto found = std::find_if(old.begin(), old.end(), [&table](const QString& name) {
            return name.compare(table, Qt::CaseInsensitive) == 0;
        });
        if (found != old.end())
            filling.fill(table, source.read(*found));
        ++done;
        tell();
    }
    return filling.lost();
}

void flush(const QString& path) {
    if (!flushFile(path))
        fail(ErrorNumber::Engine, QStringLiteral("文件没有写入磁盘"), path);
}

/// A name beside the old file that nothing has yet.
QString keptName(const QString& path) {
    const QFileInfo info(path);
    for (int i = 1;; ++i) {
        QString name =
            info.dir().filePath(QStringLiteral("%1-旧版%2.mdb")
                                    .arg(info.completeBaseName(), i == 1 ? QString() : QString::number(i)));
        if (!QFileInfo::exists(name))
            return name;
    }
}

/// Gives the old file a second name and the new one the old name. In between both names lead to the old file.
/// A failure leaves the old file its old name or, where it cannot have it back, its second one.
void swapIn(const QString& made, const QString& path, const QString& kept, BooksLock* lock) {
    const NotedName second(path, kept);
    const QByteArray oldName = QFile::encodeName(path);
    const QByteArray secondName = QFile::encodeName(kept);
    if (::link(oldName.constData(), secondName.constData()) != 0 && !copyPrivately(path, kept))
        fail(ErrorNumber::Engine, QStringLiteral("旧文件不能改名保留"), kept);
    try {
        flush(kept);
        const bool swapped = lock
                                 ? lock->replaceBy(made)
                                 : std::rename(QFile::encodeName(made).constData(), oldName.constData()) == 0;
        if (!swapped)
            fail(ErrorNumber::Engine, QStringLiteral("新数据库不能放到原来的位置"), path);
    } catch (...) {
        QFile::remove(kept);
        throw;
    }
    try {
        flush(QFileInfo(path).absolutePath());
    } catch (...) {
        if (std::rename(secondName.constData(), oldName.constData()) != 0)
            fail(ErrorNumber::Engine, QStringLiteral("文件没有写入磁盘，旧文件现在叫 %1").arg(kept), path);
        throw;
    }
}

} // namespace

bool isJetFile(const QString& path) {
    return headerOf(path).mid(4, 15) == "Standard Jet DB";
}

QString takeOverFault(const QString& path) {
    const auto because = [&path](const QString& why) { return takeOverRefusal(path, why); };
    if (isProtected(headerOf(path)))
        return because(QStringLiteral("文件有密码，请先在原来的程序里去掉密码"));
    try {
        const QStringList tables = openImportSource(SourceKind::Mdb, path)->tables();
        for (const QString& table : neededTables())
            if (!tables.contains(table, Qt::CaseInsensitive))
                return because(
                    QStringLiteral("这是 Access 数据库，但不是本系统的数据：缺少表 %1").arg(table));
    } catch (const ImportError& error) {
        return because(error.text());
    }
    return {};
}

QString takeOverRefusal(const QString& path, const QString& why) {
    const QString stop = why.endsWith(u'。') ? QString() : QStringLiteral("。");
    return QStringLiteral("不能接收旧数据库 %1\n%2%3").arg(path, why, stop);
}

TakenOver takeOver(const QString& path, const std::function<void(int, int)>& progress, BooksLock* lock) {
    return takeOverFrom(*openImportSource(SourceKind::Mdb, path), path, progress, lock);
}

TakenOver takeOverFrom(ImportSource& source, const QString& path,
                       const std::function<void(int, int)>& progress, BooksLock* lock) {
    const Unfinished made(path, unfinishedName(QFileInfo(path).absolutePath()));
    createDatabase(made.path());
    TakenOver result;
    result.lost = fillAll(source, made.path(), progress);
    if (const QString fault = databaseFault(made.path()); !fault.isEmpty())
        fail(ErrorNumber::Engine, fault, made.path());
    QFile::remove(made.path() + QStringLiteral("-journal")); // empty by now
    flush(made.path());
    result.kept = keptName(path);
    swapIn(made.path(), path, result.kept, lock);
    return result;
}
