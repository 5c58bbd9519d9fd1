#include "periodBench.h"

#include "analysis/periodCopies.h"
#include "plainSqlite.h"

#include <QFile>

namespace {

/// The same copies by the same Select Into statements as the storage engine says them, and the customers'
/// figures by one UPDATE FROM, one transaction each.
class HandMadePeriod {
public:
    explicit HandMadePeriod(const QString& path)
        : m_db(path) {
        Connection connection(path);
        Statement shapes = connection.prepare(QStringLiteral("SELECT name, sql FROM sqlite_master"));
        while (shapes.step())
            m_shapes[shapes.text(0)] = shapes.text(1);
        m_db.exec(QStringLiteral(
            "PRAGMA journal_mode = TRUNCATE; PRAGMA synchronous = FULL; PRAGMA cache_size = -16000"));
    }

    void build() {
        static const QString period = QStringLiteral("日期 >= '2022-01-01' AND 日期 <= '2022-12-31'");
        copy(QStringLiteral("clientTable"),
             QStringLiteral("客户编号 IN (SELECT 客户编号 FROM buyList WHERE ") + period + u')');
        copy(QStringLiteral("buyList"), period);
        m_db.exec(QStringLiteral(
            "BEGIN; UPDATE clientTable2 SET 消费合计 = s.paid, 差额利润 = s.margin, 购买数 = s.quantity, "
            "差额利润率 = substr(s.margin / s.paid * 100, 1, 5) || '%' FROM (SELECT 客户编号 AS number, "
            "sum(实付) AS paid, sum(差额利润) AS margin, sum(数量) AS quantity FROM buyList2 GROUP BY "
            "客户编号) "
            "AS s WHERE 客户编号 = s.number; COMMIT"));
        for (const char* source : {"productTable", "product_Bank", "return_Bank", "no_use_Bank"})
            copy(QString::fromLatin1(source), period);
    }

private:
    void copy(const QString& source, const QString& where) {
        const QString table = source + u'2';
        m_db.exec(
            QStringLiteral("BEGIN; DROP TABLE \"%1\"; %2; INSERT INTO \"%1\" SELECT * FROM \"%3\" WHERE "
                           "%4 ORDER BY rowid; COMMIT")
                .arg(table, m_shapes[table], source, where));
    }

    PlainSqlite m_db;
    QHash<QString, QString> m_shapes; // statement that makes a table, by its name
};

} // namespace

void runPeriodBench(BenchReport& report, const QString& path, const QString& scratchFolder) {
    const QString ourPath = scratchFolder + QStringLiteral("/period.mdb");
    const QString theirPath = scratchFolder + QStringLiteral("/handPeriod.mdb");
    QFile::copy(path, ourPath);
    QFile::copy(path, theirPath);
    {
        Session session(ourPath);
        session.open_rs();
        HandMadePeriod byHand(theirPath);
        const auto ours = [&session] {
            buildPeriodCopies(session, QStringLiteral("日期 >= #2022-1-1# And 日期 <= #2022-12-31#"),
                              PeriodCopies::All);
        };
        ours();
        alternate(report, QStringLiteral("period of one year of five / Select Into and one UPDATE"), 0.75,
                  ours, [&byHand] { byHand.build(); });
        report.note(QStringLiteral("lines in the period: %1, customers: %2")
                        .arg(session.buyList2->RecordCount())
                        .arg(session.clientTable2->RecordCount()));
    }
    QFile::remove(ourPath);
    QFile::remove(theirPath);
}
