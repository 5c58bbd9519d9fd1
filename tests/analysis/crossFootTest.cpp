// Every statistic over random shops beside the same figures computed by the storage engine from the file, or
// by a plain walk where its language cannot say them. Amounts are whole quarters, so that sums are exact in
// any order.
#include "analysis/clerks.h"
#include "analysis/distribution.h"
#include "analysis/frequency.h"
#include "analysis/turnover.h"
#include "support/randomShop.h"

#include <map>
#include <set>

namespace {

class RandomShop : public RandomBooks {
protected:
    /// A customer as the file has him.
    struct Client {
        QString number;
        double figures[3] = {};
    };
    std::vector<Client> clientsInFile(const QString& table, int measure) {
        static const QStringList columns{QStringLiteral("消费合计"), QStringLiteral("差额利润"),
                                         QStringLiteral("购买数")};
        std::vector<Client> clients;
        Statement rows = session().cn.prepare(
            QStringLiteral("SELECT 客户编号, 消费合计, 差额利润, 购买数 FROM %1 ORDER BY %2 DESC, rowid")
                .arg(table, columns[measure]));
        while (rows.step())
            clients.push_back({rows.text(0), {rows.number(1), rows.number(2), rows.number(3)}});
        return clients;
    }
    void checkCut(const BestClientsQuestion& question, int answer);
    void checkEvaluation(const QString& table);
    void checkClerks(const QString& table);
    void checkDistributions(const QString& table);
    void checkTurnover();
    void checkFrequency();
};

void RandomShop::checkEvaluation(const QString& table) {
    ASSERT_TRUE(beginEvaluation(session()));
    begin_setup(session(), evaluatedSource(session()));
    const QStringList sums =
        stored(QStringLiteral("SELECT total(消费合计), total(差额利润), total(购买数), count(*) FROM %1")
                   .arg(table))
            .split(u'|');
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_EQ(session().evaluation[i].value.toDouble(), sums[int(i)].toDouble()) << i;
    EXPECT_EQ(session().evaluation[0].share, sums[3] == u"0" ? u"0%" : u"100%");
}

void RandomShop::checkCut(const BestClientsQuestion& question, int answer) {
    const RecordsetPtr clients = clientsToCut(session());
    if (!clients)
        return;
    const QString table =
        clients == session().clientTable2 ? QStringLiteral("clientTable2") : QStringLiteral("clientTable");
    const int measure = int(question.measure);
    const std::vector<Client> all = clientsInFile(table, measure);
    double totals[3] = {};
    for (const Client& each : all)
        for (int i = 0; i < 3; ++i)
            totals[i] += each.figures[i];
    const bool any =
        question.ranks ? totals[0] != 0 && totals[1] != 0 && totals[2] != 0 : totals[measure] != 0;
    const float target = float(answer / 100.0);
    QStringList taken;
    double sums[3] = {};
    for (const Client& each : all) {
        if (!any)
            break;
        taken << each.number;
        for (int i = 0; i < 3; ++i)
            sums[i] += each.figures[i];
        if (question.ranks ? int(taken.size()) >= answer : sums[measure] / totals[measure] >= double(target))
            break;
    }
    const RowsOfTable cut = cutBestClients(session(), clients, question, QString::number(answer));
    writeCut(session(), cut, question.measure);
    EXPECT_EQ(stored(QStringLiteral("SELECT 客户编号 FROM clientTable3 ORDER BY rowid")), taken.join(u';'));
    EXPECT_EQ(session().evaluation[3].value.toInt(), taken.size());
    QString text; // of the share before, where one is not written
    for (int i = 0; i < 4; ++i) {
        const Indicator& shown = session().evaluation[std::size_t(i)];
        const double part = i < 3 ? sums[i] : double(taken.size());
        const double whole = i < 3 ? totals[i] : double(all.size());
        EXPECT_EQ(shown.value.toDouble(), part) << i;
        const double percent = whole == 0 ? 0 : 100 * (part / whole);
        if (percent < 100)
            text = percent == 0 ? QStringLiteral("0") : cutShare(percent);
        else if (question.ranks || (measure == 0 && percent == 100))
            text = QStringLiteral("100");
        const bool apostrophe = question.ranks && i == 1 && percent == 0;
        EXPECT_EQ(shown.share, text + (apostrophe ? QStringLiteral("'%") : QStringLiteral("%"))) << i;
    }
}

void RandomShop::checkClerks(const QString& table) {
    clerk_Count(session());
    EXPECT_EQ(sortedRows(shown(session().clerkTotals)),
              sortedRows(stored(
                  QStringLiteral("SELECT 业务员编号, sum(消费合计), count(业务员编号) FROM (SELECT * FROM %1 "
                                 "ORDER BY rowid) GROUP BY 业务员编号 COLLATE NOCASE")
                      .arg(table))));
    double before = std::numeric_limits<double>::infinity();
    for (int i = 0; i < session().clerkTotals->RecordCount(); ++i) {
        EXPECT_LE(session().clerkTotals->numberAt(i, 1), before);
        before = session().clerkTotals->numberAt(i, 1);
    }
    const ClerkFigures figures = clerkFigures(session(), session().showSource);
    EXPECT_EQ(figures.turnover + u'|' + figures.clients,
              stored(QStringLiteral("SELECT total(消费合计), count(*) FROM ") + table));
}

void RandomShop::checkDistributions(const QString& table) {
    for (const Distribution& each : distributions()) {
        const QString column = QString::fromUtf16(each.column);
        const DistributionCount counted = countDistribution(session(), each);
        const double total = counted.total;
        const RecordsetPtr rows = writeDistribution(session(), each, counted);
        EXPECT_EQ(total, stored(QStringLiteral("SELECT count(%1) FROM %2").arg(column, table)).toDouble());
        Statement groups = session().cn.prepare(
            QStringLiteral("SELECT trim(coalesce(%1, '')), count(%1) FROM %2 GROUP BY %1 ORDER BY 2 DESC")
                .arg(column, table));
        QStringList wanted;
        for (QString text; total > 0 && groups.step();) {
            const double share = 100 * groups.number(1) / total;
            if (share < 100)
                text = share == 0 ? QStringLiteral("0") : cutShare(share);
            wanted << groups.text(0) + u'|' + groups.text(1) + u'|' +
                          (text.isEmpty() ? QStringLiteral("0") : text + u'%');
        }
        EXPECT_EQ(sortedRows(shown(rows)), sortedRows(wanted.join(u';'))) << column.toStdString();
    }
}

void RandomShop::checkTurnover() {
    for (const TurnoverStatistic& statistic : turnoverStatistics()) {
        const auto rows = countTurnover(session(), statistic);
        ASSERT_EQ(rows != nullptr, stored(QStringLiteral("SELECT count(*) FROM buyList")) != u"0");
        if (!rows)
            return;
        std::map<QString, double> sums;
        std::set<QString> paid; // keys with anything but Nulls
        Statement lines =
            session().cn.prepare(QStringLiteral("SELECT strftime('%Y', 日期), CAST(strftime('%m', 日期) AS "
                                                "INTEGER), 实付 FROM buyList ORDER BY rowid"));
        for (QString key = QStringLiteral(""); lines.step();) {
            const int month = int(lines.integer(1));
            const QString year = lines.text(0);
            if (statistic.span == TurnoverSpan::Year)
                key = year + u'年';
            else if (statistic.span == TurnoverSpan::Month)
                key = month == 0 ? QStringLiteral("") : year + u'-' + QString::number(month);
            else if (month > 0 && statistic.span == TurnoverSpan::Quarter)
                key = year + u'-' + QString::number((month - 1) / 3 + 1) + QStringLiteral("季度");
            else if (month > 0)
                key = year + (month < 7 ? QStringLiteral("-上半年") : QStringLiteral("-下半年"));
            sums[key] += lines.number(2);
            if (!lines.isNull(2))
                paid.insert(key);
        }
        QStringList wanted;
        for (const auto& [key, sum] : sums)
            wanted << key + u'|' + (paid.count(key) ? toText(CellValue(sum)) : QString());
        EXPECT_EQ(sortedRows(shown(session().saleTable)), sortedRows(wanted.join(u';')));
    }
}

void RandomShop::checkFrequency() {
    session().reopen(session().buyList, QStringLiteral("Select * From buyList "));
    if (!session().buyList->hasRows())
        return;
    const FrequencyTables tables = countFrequency(session());
    writeFrequency(session(), tables);
    // Months as texts by customer, and the month of the last line.
    std::map<QString, std::set<QString>> months;
    Statement lines = session().cn.prepare(QStringLiteral(
        "SELECT lower(trim(客户编号)), coalesce(strftime('%Y', 日期) || '-' || CAST(strftime('%m', 日期) AS "
        "INTEGER), '') FROM buyList"));
    while (lines.step())
        months[lines.text(0)].insert(lines.text(1));
    const QString latest =
        stored(QStringLiteral("SELECT coalesce(strftime('%Y', max(日期)) || '-' || CAST(strftime('%m', "
                              "max(日期)) AS INTEGER), '') FROM buyList"));
    std::map<int, QStringList> wanted; // customers by interval
    int total = 0;
    bool earlier = false;
    for (const auto& [client, all] : months) {
        std::set<QString> before = all;
        before.erase(latest);
        earlier = earlier || !before.empty();
        if (before.empty() || !all.count(latest))
            continue;
        const QString last = *before.rbegin();
        const int years = std::max(0, latest.left(4).toInt() - last.left(4).toInt());
        if (years > 1)
            continue;
        wanted[std::max(1, latest.mid(5).toInt() + 12 * years - last.mid(5).toInt())] << client;
        ++total;
    }
    ASSERT_EQ(tables.counted, earlier);
    if (!earlier)
        return;
    const RecordsetPtr& table = session().month_Table;
    for (int i = 1; i <= PurchaseIntervals::kLongest; ++i) {
        EXPECT_EQ(toText(table->valueAt(0, i)), QString::number(wanted[i].size())) << i;
        const double share = total == 0 ? 0 : 100.0 * double(wanted[i].size()) / total;
        const QString text = QString::number(share, 'g', 15).left(5);
        EXPECT_EQ(toText(table->valueAt(1, i)), total == 0 ? QStringLiteral("0") : text + u'%') << i;
        QStringList listed = session().intervalClients[std::size_t(i)].toLower().split(QStringLiteral(", "));
        for (QString& each : listed)
            each = each.mid(1)
                       .chopped(each.isEmpty() ? 0 : 1)
                       .replace(QStringLiteral("''"), QStringLiteral("'"));
        listed.sort();
        wanted[i].sort();
        EXPECT_EQ(listed, wanted[i].isEmpty() ? QStringList{QString()} : wanted[i]) << i;
    }
    EXPECT_EQ(stored(QStringLiteral("SELECT count(*) FROM buy_Frequence_Table")),
              stored(QStringLiteral("SELECT count(*) FROM buyList")));
    EXPECT_EQ(sortedRows(
                  stored(QStringLiteral("SELECT 日期, lower(客户编号), 购买次数 FROM buy_Frequence_Table2"))),
              sortedRows(stored(QStringLiteral(
                  "SELECT 日期, lower(客户编号), count(订单号) FROM buy_Frequence_Table GROUP BY "
                  "日期, 客户编号"))));
}

TEST_P(RandomShop, EveryFigureIsThatOfTheFile) {
    for (const bool period : {false, true}) {
        SCOPED_TRACE(period ? "period" : "whole");
        const QString table = period ? QStringLiteral("clientTable2") : QStringLiteral("clientTable");
        if (period)
            takePeriodCopies();
        session().clientShowSource = period ? ShowSource::PeriodClients : ShowSource::Clients;
        checkEvaluation(table);
        for (const BestClientsQuestion& question : bestClientsQuestions())
            checkCut(question, question.ranks ? pick(0, 8) : pick(0, 110));
        session().analysisKind = 1;
        session().showSource = period ? ShowSource::PeriodClients : ShowSource::Clients;
        checkDistributions(table);
        session().showSource = period ? ShowSource::PeriodClerks : ShowSource::Clerks;
        checkClerks(table);
        checkTurnover();
        checkFrequency();
    }
}

TEST_P(RandomShop, ThePeriodsTotalsAreThoseOfItsLinesAndNoughtWhereNothingWasPaid) {
    const QString condition = takePeriodCopies();
    EXPECT_EQ(sortedRows(stored(
                  QStringLiteral("SELECT lower(客户编号), 消费合计, 差额利润, 购买数 FROM clientTable2"))),
              sortedRows(stored(
                  QStringLiteral(
                      "SELECT lower(number), paid, iif(paid = 0, 0, margin), iif(paid = 0, 0, quantity) FROM "
                      "(SELECT c.客户编号 AS number, total(实付) AS paid, total(l.差额利润) AS margin, "
                      "total(数量) AS quantity FROM clientTable c JOIN buyList l ON l.客户编号 = c.客户编号 "
                      "WHERE l.%1 GROUP BY c.rowid)")
                      .arg(condition))));
}

INSTANTIATE_TEST_SUITE_P(FiftyShops, RandomShop, testing::Range(1U, 51U));

} // namespace
