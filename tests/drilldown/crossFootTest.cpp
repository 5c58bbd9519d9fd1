// One customer, one product and the orders of random shops beside the same figures computed by the storage
// engine from the file.
#include "drilldown/clientLines.h"
#include "drilldown/orderStatistic.h"
#include "drilldown/productSales.h"
#include "drilldown/saleFigures.h"
#include "support/randomShop.h"

namespace {

class RandomDrill : public RandomBooks {
protected:
    /// What a check is about: the whole, or a period's copies.
    struct Tables {
        ShowSource source;
        QString lines;
        QString clients;
    };
    /// Figures of the storage engine, as numbers; Null is 0.
    QList<double> figures(const QString& sql) {
        QList<double> all;
        for (const QString& text : stored(sql).split(u'|'))
            all << text.toDouble();
        return all;
    }
    void checkClient(const Tables& tables, const QString& number);
    void checkProduct(const Tables& tables, const QString& number);
    void checkSales(const Tables& tables);
    void checkOrders(const Tables& tables);
};

void RandomDrill::checkClient(const Tables& tables, const QString& number) {
    const QString own = tables.lines + QStringLiteral(" WHERE 客户编号 = ") + quoted(number);
    const RowsOfTable rows = openClientLines(session(), number, tables.source);
    const QList<double> sums =
        figures(QStringLiteral("SELECT total(实付), total(差额利润), total(数量) FROM ") + own);
    const QList<double> totals = figures(
        QStringLiteral("SELECT total(消费合计), total(差额利润), total(购买数) FROM ") + tables.clients);
    const ClientShares shares = statisticA(session());
    for (int i = 0; i < 3; ++i) {
        const ClientShare& share = shares[std::size_t(i)];
        const double percent = totals[i] == 0 ? 0 : 100 * (sums[i] / totals[i]);
        EXPECT_EQ(share.value.toDouble(), sums[i]) << i;
        EXPECT_EQ(share.share.has_value(), percent < 100) << percent;
        if (share.share) {
            EXPECT_EQ(*share.share, (percent == 0 ? QStringLiteral("0") : cutShare(percent)) + u'%');
        }
    }
    writeClientLines(session(), rows);
    EXPECT_EQ(stored(QStringLiteral("SELECT * FROM tempTable2 ORDER BY rowid")),
              stored(QStringLiteral("SELECT * FROM ") + own + QStringLiteral(" ORDER BY rowid")));
    EXPECT_EQ(calculation(session().tempTable2)[0].toDouble(), sums[0]);
}

void RandomDrill::checkProduct(const Tables& tables, const QString& number) {
    const QString own = tables.lines + QStringLiteral(" WHERE 产品编号 = ") + quoted(number);
    const QList<double> expected =
        figures(QStringLiteral("SELECT total(实付), total(差额利润), total(数量), count(DISTINCT "
                               "trim(coalesce(客户编号, '')) COLLATE BINARY), count(*) FROM ") +
                own);
    if (!openProductLines(session(), {number, {}}, tables.source)) {
        EXPECT_EQ(expected[4], 0);
        return;
    }
    const SaleFigures shown = rs2_Count(session().productLines);
    EXPECT_EQ(shown.turnover.toDouble(), expected[0]);
    EXPECT_EQ(shown.margin.toDouble(), expected[1]);
    EXPECT_EQ(shown.quantity.toDouble(), expected[2]);
    EXPECT_EQ(shown.clients.toDouble(), expected[3]);
    EXPECT_EQ(session().productLines->RecordCount(), expected[4]);
    EXPECT_EQ(saleTotals(session().productLines).amount, shown.turnover);
    const RowsOfTable buyers = openProductClients(session(), {number, {}}, tables.source);
    writeProductClients(session(), buyers);
    EXPECT_EQ(stored(QStringLiteral("SELECT * FROM clientTable3 ORDER BY rowid")),
              stored(QStringLiteral("SELECT * FROM clientTable WHERE 客户编号 IN (SELECT 客户编号 FROM %1) "
                                    "ORDER BY rowid")
                         .arg(own)));
}

void RandomDrill::checkSales(const Tables& tables) {
    const QList<double> sums =
        figures(QStringLiteral("SELECT total(实付), total(差额利润), total(数量) FROM ") + tables.lines);
    const QString clients =
        stored(QStringLiteral("SELECT count(*) FROM %1 WHERE 客户编号 IN (SELECT 客户编号 FROM %2)")
                   .arg(tables.clients, tables.lines));
    const SaleFigures whole = sales_Count(session(), tables.source);
    EXPECT_EQ(whole.turnover.toDouble(), sums[0]);
    EXPECT_EQ(whole.margin.toDouble(), sums[1]);
    EXPECT_EQ(whole.quantity.toDouble(), sums[2]);
    EXPECT_EQ(whole.clients, clients);
    EXPECT_EQ(calculation_L2_L4(session(), tables.source).count, whole.quantity);
}

void RandomDrill::checkOrders(const Tables& tables) {
    const OrderStatistic statistic = calculation_order(session(), tables.source);
    openOrders(session(), statistic);
    const QString shown = this->shown(session().orderTable);
    writeOrders(session(), statistic);
    EXPECT_EQ(this->shown(session().orderTable), shown) << "the file's rows are those that were seen";
    const QString fromFile = QStringLiteral(
        "SELECT 订单号, coalesce((SELECT trim(coalesce(客户编号, '')) FROM %1 AS one WHERE one.订单号 = "
        "each.订单号 ORDER BY rowid LIMIT 1), ''), sum(实付), sum(差额利润), sum(数量) FROM %1 AS each "
        "GROUP BY 订单号");
    EXPECT_EQ(sortedRows(stored(
                  QStringLiteral("SELECT 订单号, 客户编号, 购买额, 差额利润, 购买数量 FROM orderTable"))),
              sortedRows(stored(fromFile.arg(tables.lines))));
    const QList<double> sums =
        figures(QStringLiteral("SELECT total(实付), total(差额利润), total(数量) FROM ") + tables.lines);
    EXPECT_EQ(statistic.figures.turnover.toDouble(), sums[0]);
    EXPECT_EQ(statistic.figures.margin.toDouble(), sums[1]);
    EXPECT_EQ(statistic.figures.quantity.toDouble(), sums[2]);
}

TEST_P(RandomDrill, EveryFigureIsThatOfTheFile) {
    for (const bool period : {false, true}) {
        SCOPED_TRACE(period ? "period" : "whole");
        Tables tables{ShowSource::Lines, QStringLiteral("buyList"), QStringLiteral("clientTable")};
        if (period) {
            takePeriodCopies();
            tables = {ShowSource::PeriodLines, QStringLiteral("buyList2"), QStringLiteral("clientTable2")};
        }
        checkSales(tables);
        checkOrders(tables);
        for (int client = 0; client < 16; ++client)
            checkClient(tables, numberOf(client));
        for (int product = 0; product < 7; ++product)
            checkProduct(tables, productOf(product));
    }
}

INSTANTIATE_TEST_SUITE_P(FiftyShops, RandomDrill, testing::Range(1U, 51U));

} // namespace
