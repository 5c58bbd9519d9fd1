#pragma once

#include "analysis/evaluation.h"
#include "analysis/periodCopies.h"
#include "support/testBooks.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

#include <random>

inline QString quoted(const QString& text) {
    return text.isNull() ? QStringLiteral("NULL")
                         : u'\'' + QString(text).replace(u'\'', QStringLiteral("''")) + u'\'';
}

/// A share as it is cut: its shortest decimal form without the nought before the point, by size.
inline QString cutShare(double percent) {
    QString text = QString::number(percent, 'g', 15);
    text.replace(QRegularExpression(QStringLiteral("^(-?)0\\.")), QStringLiteral("\\1."));
    return text.left(percent < 1 ? 3 : percent < 10 ? 4 : 5);
}

/// A random shop, by its seed. Amounts are whole quarters, so that sums are exact in any order; some numbers
/// bear an apostrophe or stand in the other case, some cells are Null, some customers are gone.
class RandomBooks : public testing::TestWithParam<unsigned> {
protected:
    void SetUp() override {
        m_random.seed(GetParam());
        books.execute(QStringLiteral("BEGIN"));
        const int clients = GetParam() % 10 == 0 ? 0 : pick(1, GetParam() % 7 == 0 ? 1 : 14);
        for (int i = 0; i < clients; ++i)
            addClient(i);
        const int lines = GetParam() % 9 == 0 ? 0 : pick(1, 90);
        for (int i = 0; i < lines; ++i)
            addLine(i, clients);
        books.execute(QStringLiteral("COMMIT"));
        session().open_rs();
        client_totals_recount(session().cn, session().clientTable, session().buyList);
        // The engine's comparison is that of the statements here, so the file is all that both share.
        for (const QString& table : session().cn.tables())
            session().cn.forgetImage(table);
        openEvaluation(session());
    }
    Session& session() { return books.session(); }
    int pick(int from, int to) { return std::uniform_int_distribution<int>(from, to)(m_random); }
    bool once(int in) { return pick(1, in) == 1; }
    QString numberOf(int client) {
        return client % 4 == 3 ? QStringLiteral("o'%1").arg(client) : QStringLiteral("A%1").arg(client);
    }
    static QString productOf(int product) {
        return product == 4 ? QStringLiteral("p'4") : QStringLiteral("p%1").arg(product);
    }
    QString amount() { return once(12) ? QStringLiteral("NULL") : QString::number(pick(-40, 200) / 4.0); }
    QString oneOf(const QStringList& texts) { return texts.at(pick(0, int(texts.size()) - 1)); }

    void addClient(int i) {
        const QStringList regions{QStringLiteral("北京"), QStringLiteral("上海"), QStringLiteral("o'x"),
                                  QString(), QStringLiteral("")};
        books.execute(QStringLiteral("INSERT INTO clientTable (流水号, 客户编号, 地区, 行业, 业务员编号, "
                                     "消费合计, 购买数, 差额利润, "
                                     "差额利润率) VALUES (%1, %2, %3, %4, %5, 0, 0, 0, '0')")
                          .arg(QString::number(i + 1), quoted(numberOf(i)), quoted(oneOf(regions)),
                               quoted(oneOf(regions)),
                               quoted(oneOf({QStringLiteral("s1"), QStringLiteral("S1"),
                                             QStringLiteral("s'2"), QString()}))));
    }
    void addLine(int i, int clients) {
        // Some lines are of customers who are gone, some bear their number in the other case.
        QString client = numberOf(pick(0, clients + 1));
        if (once(6))
            client = client.toLower();
        const QDate day = QDate(2002, 10, 1).addDays(pick(0, 800));
        const QString date = once(25) ? QStringLiteral("NULL") : u'\'' + day.toString(Qt::ISODate) + u'\'';
        books.execute(
            QStringLiteral(
                "INSERT INTO buyList (流水号, 订单号, 客户编号, 产品编号, 日期, 数量, 实付, 差额利润) "
                "VALUES (%1, '%2', %3, %8, %4, %5, %6, %7)")
                .arg(QString::number(i + 1), QString::number(pick(1, 30)), quoted(client), date, amount(),
                     amount(), amount(), quoted(productOf(pick(0, 5)))));
    }
    /// Makes the copies of a random period. Out: the same condition for the storage engine.
    QString takePeriodCopies() {
        const int year = pick(2002, 2005);
        buildPeriodCopies(session(), QStringLiteral("日期 >= #%1-1-1# And 日期 <= #%1-12-31#").arg(year),
                          PeriodCopies::All);
        session().periodStart = QString::number(year);
        return QStringLiteral("日期 BETWEEN '%1-01-01' AND '%1-12-31'").arg(year);
    }
    QString shown(const RecordsetPtr& rows) {
        QStringList all;
        for (int i = 0; rows->isOpen() && i < rows->RecordCount(); ++i) {
            QStringList cells;
            for (int field = 0; field < rows->fieldCount(); ++field)
                cells << toText(rows->valueAt(i, field));
            all << cells.join(u'|');
        }
        return all.join(u';');
    }
    /// Rows of a query of the storage engine in the same form.
    QString stored(const QString& sql) {
        QStringList all;
        Statement statement = session().cn.prepare(sql);
        while (statement.step()) {
            QStringList cells;
            for (int i = 0; i < statement.columnCount(); ++i)
                cells << statement.text(i).remove(QStringLiteral(".0"));
            all << cells.join(u'|');
        }
        return all.join(u';');
    }
    static QString sortedRows(const QString& rows) {
        QStringList all = rows.split(u';');
        all.sort();
        return all.join(u';');
    }

    TestBooks books;

private:
    std::mt19937 m_random;
};
