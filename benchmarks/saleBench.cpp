#include "saleBench.h"

#include "plainSqlite.h"
#include "sales/settlement.h"

#include <QFile>

namespace {

constexpr int kPairs = 31;
constexpr int kLines = 10;

void fillBasket(Session& session, const RecordsetPtr& basket) {
    WriteBatch batch(session.cn);
    for (int i = 0; i < kLines; ++i) {
        session.productTable->setAbsolutePosition(1 + i * 7);
        QStringList boxes = Record_display3(session);
        boxes[LineBox::Quantity] = QStringLiteral("0.25");
        const LineAmounts amounts =
            lineAmounts(boxes[LineBox::Quantity], boxes[LineBox::Price], QStringLiteral("100"));
        boxes[LineBox::Due] = amounts.due;
        boxes[LineBox::Paid] = amounts.paid;
        basket->AddNew();
        writeRecord5(basket, boxes, 1);
        basket->Update();
    }
    batch.finish();
}

/// The same rows written by statements made by hand: lines, counter, customer, stock, basket.
class HandMade {
public:
    explicit HandMade(const QString& path)
        : m_db(path) {
        m_db.exec(QStringLiteral(
            "PRAGMA journal_mode = TRUNCATE; PRAGMA synchronous = FULL; PRAGMA cache_size = -16000"));
        m_db.readAll(QStringLiteral("SELECT max(rowid) FROM buyList"));
    }

    void fillBasket() {
        QString sql = QStringLiteral("BEGIN; DELETE FROM buyList2;");
        for (int i = 0; i < kLines; ++i)
            sql += QStringLiteral("INSERT INTO buyList2 SELECT %1, '1001', '1050', 产品编号, '2026-11-21', "
                                  "品名, 产地, 规格, 厂家, 单价,"
                                  "计量单位, 0.25, 0.25 * 单价, '100', 0.25 * 单价, 1, 0.25 FROM "
                                  "productTable WHERE rowid = %2;")
                       .arg(i + 1)
                       .arg(1 + i * 7);
        m_db.exec(sql + QStringLiteral("COMMIT"));
    }

    void settle() {
        QString sql =
            QStringLiteral("BEGIN IMMEDIATE; INSERT INTO buyList SELECT * FROM buyList2;"
                           "UPDATE counterCode SET counterNum2 = counterNum2 + 1 WHERE rowid = 1;"
                           "UPDATE clientTable SET 消费合计 = 1, 差额利润 = 2, 购买数 = 3 WHERE rowid = 50;"
                           "UPDATE clientTable SET 差额利润率 = '12.34%' WHERE rowid = 50;");
        for (int i = 0; i < kLines; ++i)
            sql +=
                QStringLiteral("UPDATE productTable SET 数量 = 数量 - 0.25 WHERE rowid = %1;").arg(1 + i * 7);
        m_db.exec(sql + QStringLiteral("DELETE FROM buyList2; COMMIT"));
    }

private:
    PlainSqlite m_db;
};

/// Deletes the last order, as the order view does, with three cursors open over the lines.
void deleteLastOrder(Session& session, const RecordsetPtr& lines) {
    WriteBatch batch(session.cn);
    for (int i = 0; i < kLines; ++i) {
        lines->MoveLast();
        lines->Delete();
    }
    batch.finish();
}

} // namespace

void runSaleBench(BenchReport& report, const QString& path, const QString& scratchFolder) {
    const QString ours = scratchFolder + QStringLiteral("/ours.mdb");
    const QString theirs = scratchFolder + QStringLiteral("/theirs.mdb");
    QFile::copy(path, ours);
    QFile::copy(path, theirs);
    Session session(ours);
    session.open_rs();
    session.clientTable->setAbsolutePosition(50);
    session.currentClientNum = session.clientTable->Fields(QStringLiteral("客户编号")).text();
    HandMade handMade(theirs);
    std::vector<double> settlements, references, deletions;
    int commits = 0;
    for (int i = 0; i < kPairs; ++i) {
        const RecordsetPtr basket = openBasket(session);
        fillBasket(session, basket);
        const int before = session.cn.commits();
        settlements.push_back(milliseconds([&] { settle(session, basket); }));
        commits = std::max(commits, session.cn.commits() - before);
        handMade.fillBasket();
        references.push_back(milliseconds([&] { handMade.settle(); }));
        RecordsetPtr lines, sorted;
        reopen(lines, session.cn, QStringLiteral("Select * From buyList"));
        reopen(sorted, session.cn, QStringLiteral("Select * From buyList"));
        sorted->setSort(QStringLiteral("日期"));
        session.buyList->clearFilter();
        session.buyList->setSort(QStringLiteral("日期"));
        deletions.push_back(milliseconds([&] { deleteLastOrder(session, lines); }));
        session.reopen(session.buyList, QStringLiteral("Select * From buyList "));
    }
    report.add({QStringLiteral("settlement of 10 lines, durable / hand-made statements"), median(settlements),
                median(references), QStringLiteral("ms"), 1.5});
    report.note(QStringLiteral("commits of a settlement, by the commit hook: %1").arg(commits));
    if (commits != 1)
        report.miss();
    report.add({QStringLiteral("deleting an order's 10 lines, 3 cursors / settlement"), median(deletions),
                median(settlements), QStringLiteral("ms"), 2});
    QFile::remove(ours);
    QFile::remove(theirs);
}
