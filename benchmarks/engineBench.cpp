#include "engineBench.h"

#include "data/recount.h"
#include "plainSqlite.h"
#include "recordset/recordset.h"
#include "recordset/tableImage.h"

#include <QFile>
#include <QFileInfo>

namespace {

RecordsetPtr openLines(Connection& connection) {
    RecordsetPtr lines;
    reopen(lines, connection, QStringLiteral("Select * From buyList"));
    return lines;
}

void benchOpen(BenchReport& report, const QString& path) {
    std::unique_ptr<Connection> connection;
    std::vector<double> first, again, reference;
    for (int i = 0; i < 5; ++i) {
        connection = std::make_unique<Connection>(path);
        first.push_back(milliseconds([&] {
            openLines(*connection);
            connection->image(QStringLiteral("buyList"))->loadAllColumns();
        }));
        again.push_back(milliseconds([&] { openLines(*connection); }));
        PlainSqlite plain(path);
        reference.push_back(milliseconds([&] { plain.readAll(QStringLiteral("SELECT * FROM buyList")); }));
    }
    report.add({QStringLiteral("first open of buyList, every column read"), median(first), median(reference),
                QStringLiteral("ms"), 0.9});
    report.add({QStringLiteral("reopen of a loaded table / first open"), median(again), median(first),
                QStringLiteral("ms"), 0.01});
}

/// Size of a file that holds nothing but buyList.
qint64 fileOfLinesAlone(const QString& path, const QString& folder) {
    const QString alone = folder + QStringLiteral("/lines.mdb");
    QFile::remove(alone);
    sqlite3* db = nullptr;
    sqlite3_open(alone.toUtf8().constData(), &db);
    const QString sql =
        QStringLiteral("ATTACH '%1' AS s; CREATE TABLE buyList AS SELECT * FROM s.buyList WHERE 0;"
                       "INSERT INTO buyList SELECT * FROM s.buyList;")
            .arg(path);
    sqlite3_exec(db, sql.toUtf8().constData(), nullptr, nullptr, nullptr);
    sqlite3_close(db);
    const qint64 size = QFileInfo(alone).size();
    QFile::remove(alone);
    return size;
}

void benchMemory(BenchReport& report, const QString& path, const QString& folder) {
    Connection connection(path);
    const auto image = connection.image(QStringLiteral("buyList"));
    image->loadAllColumns();
    const double mega = 1024.0 * 1024.0;
    report.add({QStringLiteral("memory of the image of buyList / file of it alone"),
                double(image->memory()) / mega, double(fileOfLinesAlone(path, folder)) / mega,
                QStringLiteral("MiB"), 1.2});
    const RecordsetPtr lines = openLines(connection);
    for (int i = 0; i < 3; ++i) {
        lines->setFilter(QStringLiteral("客户编号 = '1001'"));
        lines->setFilter(QStringLiteral("产品编号 = '1001'"));
        lines->setSort(QStringLiteral("订单号"));
    }
    report.note(QStringLiteral("indexes on 客户编号 and 产品编号, ranks of 订单号: %1 MiB")
                    .arg(double(image->indexMemory()) / mega, 0, 'f', 1));
}

void benchFilters(BenchReport& report, const QString& path) {
    PlainSqlite plain(path);
    plain.readAll(QStringLiteral("SELECT * FROM buyList"));
    const QString equal = QStringLiteral("SELECT rowid FROM buyList WHERE 客户编号 = '1500'");
    std::vector<double> first, again, reference;
    for (int i = 0; i < 5; ++i) {
        Connection connection(path);
        const RecordsetPtr lines = openLines(connection);
        connection.image(QStringLiteral("buyList"))->loadAllColumns();
        const auto filter = [&lines](int customer) {
            lines->setFilter(QStringLiteral("客户编号 = '%1'").arg(customer));
        };
        first.push_back(milliseconds([&] { filter(1500); }));
        filter(1501);
        again.push_back(milliseconds([&] { filter(1502); }));
        reference.push_back(milliseconds([&] { plain.readAll(equal); }));
    }
    report.add({QStringLiteral("Filter 客户编号 = 'x', first on the column"), median(first),
                median(reference), QStringLiteral("ms"), 0.05});
    report.add({QStringLiteral("Filter 客户编号 = 'x', repeated"), median(again), median(reference),
                QStringLiteral("ms"), 0.005});

    Connection connection(path);
    const RecordsetPtr lines = openLines(connection);
    connection.image(QStringLiteral("buyList"))->loadAllColumns();
    alternate(
        report, QStringLiteral("Filter 品名 Like '%纸%'"), 0.2,
        [&] { lines->setFilter(QStringLiteral("品名 Like '%纸%'")); },
        [&] { plain.readAll(QStringLiteral("SELECT rowid FROM buyList WHERE 品名 LIKE '%纸%'")); });
    lines->clearFilter();
    const std::pair<const char*, double> sorts[] = {{"日期", 0.1}, {"品名", 0.1}, {"订单号", 0.4}};
    for (const auto& [field, wanted] : sorts) {
        // The ranks of texts are kept; each round measures them anew, on a fresh image.
        std::vector<double> ours, theirs;
        for (int i = 0; i < 5; ++i) {
            Connection fresh(path);
            const RecordsetPtr rs = openLines(fresh);
            fresh.image(QStringLiteral("buyList"))->loadAllColumns();
            ours.push_back(milliseconds([&, name = field] { rs->setSort(QString::fromUtf8(name)); }));
            const QString sql =
                QStringLiteral("SELECT rowid FROM buyList ORDER BY %1").arg(QString::fromUtf8(field));
            theirs.push_back(milliseconds([&] { plain.readAll(sql); }));
        }
        report.add({QStringLiteral("Sort %1").arg(QString::fromUtf8(field)), median(ours), median(theirs),
                    QStringLiteral("ms"), wanted});
    }
}

/// A column where every row has a text of its own: compiling the condition is the work.
void benchDistinctTexts(BenchReport& report, const QString& folder) {
    QFile file(folder + QStringLiteral("/texts.mdb"));
    if (!file.open(QIODevice::WriteOnly))
        return report.miss();
    file.close();
    const QString path = file.fileName();
    PlainSqlite plain(path);
    plain.exec(
        QStringLiteral("CREATE TABLE t (编号 TEXT(20) COLLATE NOCASE, 数量 REAL);"
                       "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 1000000)"
                       "INSERT INTO t SELECT 'P-' || (i * 7919 % 1000003) || '-纸', i * 31 % 997 FROM n"));
    Connection connection(path);
    RecordsetPtr rows;
    reopen(rows, connection, QStringLiteral("Select * From t"));
    connection.image(QStringLiteral("t"))->loadAllColumns();
    const QString like = QStringLiteral("编号 Like '%99%'");
    alternate(
        report, QStringLiteral("Filter Like '%99%' over 1,000,000 distinct texts"), 0.5,
        [&] { rows->setFilter(like); },
        [&] { plain.readAll(QStringLiteral("SELECT rowid FROM t WHERE 编号 LIKE '%99%'")); });
    alternate(
        report, QStringLiteral("Sort 数量 of what it found / that Filter"), 0.1,
        [&] { rows->setSort(QStringLiteral("数量")); }, [&] { rows->setFilter(like); }, 5,
        [&] { rows->setSort({}); });
    file.remove();
}

void benchRecount(BenchReport& report, const QString& path) {
    Connection connection(path);
    RecordsetPtr clients;
    reopen(clients, connection, QStringLiteral("Select * From clientTable"));
    const RecordsetPtr lines = openLines(connection);
    client_totals_recount(connection, clients, lines);
    const int before = connection.commits();
    PlainSqlite plain(path);
    alternate(
        report, QStringLiteral("client_totals_recount, nothing to change"), 0.1,
        [&] { client_totals_recount(connection, clients, lines); },
        [&] {
            plain.readAll(QStringLiteral(
                "SELECT 客户编号, sum(实付), sum(差额利润), sum(数量) FROM buyList GROUP BY 客户编号"));
        });
    report.note(QStringLiteral("commits by those recounts: %1").arg(connection.commits() - before));
    if (connection.commits() != before)
        report.miss();
}

} // namespace

void runEngineBench(BenchReport& report, const QString& path, const QString& scratchFolder) {
    benchOpen(report, path);
    benchMemory(report, path, scratchFolder);
    benchFilters(report, path);
    benchDistinctTexts(report, scratchFolder);
    benchRecount(report, path);
}
