// The statements of docs/analysis.md over two shops' files, beside the program's own statistics of one shop
// that holds what both hold.
#include "analysis/bestClients.h"
#include "analysis/clerks.h"
#include "analysis/distribution.h"
#include "analysis/frequency.h"
#include "analysis/turnover.h"
#include "data/recount.h"
#include "recordset/textNumber.h"
#include "support/testBooks.h"

#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace {

class AnalysisPage : public testing::Test {
protected:
    AnalysisPage() {
        // Customers 1 to 4 of either shop; the numbers are the same, the customers are not.
        const std::tuple<int, const char*, const char*, const char*> clients[] = {
            {0, "1", "北京", "甲"}, {0, "2", "上海", "甲"}, {0, "3", "上海", "乙"}, {0, "4", "", ""},
            {1, "1", "北京", "丙"}, {1, "2", "上海", "甲"}, {1, "3", "成都", "乙"}, {1, "4", "北京", "丙"}};
        for (const auto& [shop, number, region, clerk] : clients)
            addClient(shop, number, region, clerk);
        const std::tuple<int, const char*, const char*, double, double, double> lines[] = {
            {0, "1", "2003-11-01", 2, 420, 100},  {0, "1", "2004-05-03", 1, 210.5, 90},
            {0, "2", "2004-02-10", 4, 75.25, 20}, {0, "2", "2004-05-21", 9, 60, 1.5},
            {0, "3", "2004-05-30", 3, 33, 10},    {1, "1", "2003-12-31", 1, 800, 790},
            {1, "2", "2004-03-01", 7, 140, 12},   {1, "2", "2004-05-09", 2, 44, 20},
            {1, "3", "2004-01-15", 5, 95, 3},     {1, "1", "2004-05-12", 1, 15, 16}};
        int order = 0;
        for (const auto& [shop, client, date, quantity, paid, cost] : lines)
            addLine(shop, ++order, client, date, quantity, paid, cost);
        openBoth();
    }
    ~AnalysisPage() override { sqlite3_close(m_db); }

    /// The rows of the page's statement of this name: columns parted by "|", rows by ";".
    QString answer(const char* name) {
        for (const QString& statement : m_statements)
            if (statement.startsWith(QStringLiteral("-- %1\n").arg(QString::fromUtf8(name))))
                return run(statement);
        ADD_FAILURE() << "no statement " << name;
        return {};
    }
    Session& both() { return m_both.session(); }
    /// The program's totals of the one shop.
    MeasureSums recounted() {
        both().open_rs();
        client_totals_recount(both().cn, both().clientTable, both().buyList);
        return clientTotals(both(), "clientTable");
    }
    QByteArray bytes(int shop) {
        QFile file(m_shops[shop].path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QStringList m_statements;

private:
    void addClient(int shop, const char* number, const char* region, const char* clerk) {
        const QString merged = QStringLiteral("%1-%2").arg(shop).arg(QString::fromUtf8(number));
        for (const auto& [books, client] :
             {std::pair(&m_shops[shop], QString::fromUtf8(number)), std::pair(&m_both, merged)}) {
            books->addClient(client, "单位" + merged);
            books->changeBehind(QStringLiteral("UPDATE clientTable SET 地区 = nullif('%1', ''), "
                                               "业务员编号 = nullif('%2', '') WHERE 客户编号 = '%3'")
                                    .arg(QString::fromUtf8(region), QString::fromUtf8(clerk), client));
        }
    }
    void addLine(int shop, int order, const char* client, const char* date, double quantity, double paid,
                 double cost) {
        const QString merged = QStringLiteral("%1-%2").arg(shop).arg(QString::fromUtf8(client));
        m_shops[shop].addLine(QString::number(order), QString::fromUtf8(client), "p", QString::fromUtf8(date),
                              quantity, paid, cost);
        m_both.addLine(QString::number(order), merged, "p", QString::fromUtf8(date), quantity, paid, cost);
    }
    /// Runs the page's preparation: what stands before its first named statement.
    void openBoth() {
        QFile page(QStringLiteral(DOCS "/analysis.md"));
        ASSERT_TRUE(page.open(QIODevice::ReadOnly));
        static const QRegularExpression fence(QStringLiteral("```sql\n(.*?)```"),
                                              QRegularExpression::DotMatchesEverythingOption);
        for (auto each = fence.globalMatch(QString::fromUtf8(page.readAll())); each.hasNext();)
            m_statements << each.next().captured(1);
        ASSERT_EQ(sqlite3_open_v2(":memory:", &m_db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_URI, nullptr),
                  SQLITE_OK);
        while (!m_statements.isEmpty() && !m_statements.first().startsWith(u"-- "))
            run(m_statements.takeFirst()
                    .replace("店一.mdb", m_shops[0].path())
                    .replace("店二.mdb", m_shops[1].path()));
    }
    QString run(const QString& statements) {
        QStringList rows;
        char* error = nullptr;
        const auto take = [](void* list, int count, char** cells, char**) {
            QStringList row;
            for (int i = 0; i < count; ++i)
                row << QString::fromUtf8(cells[i]);
            static_cast<QStringList*>(list)->append(row.join(u'|'));
            return 0;
        };
        EXPECT_EQ(sqlite3_exec(m_db, statements.toUtf8().constData(), take, &rows, &error), SQLITE_OK)
            << error << statements.toStdString();
        sqlite3_free(error);
        return rows.join(u';');
    }

    TestBooks m_shops[2];
    TestBooks m_both;
    sqlite3* m_db = nullptr;
};

TEST_F(AnalysisPage, TheEvaluationOfAllShopsIsThatOfTheirCustomersTogether) {
    const MeasureSums sums = recounted();
    const QStringList rows = answer("evaluation").split(u';');
    ASSERT_EQ(rows.size(), 3);
    EXPECT_TRUE(rows[0].startsWith(u"店一|4|") && rows[1].startsWith(u"店二|4|"));
    const QStringList all = rows[2].split(u'|');
    EXPECT_EQ(all[1], u"8");
    for (int i = 0; i < kMeasures; ++i)
        EXPECT_NEAR(all[2 + i].toDouble(), sums.of[i], 1e-9);
}

TEST_F(AnalysisPage, TheSixQuestionsGiveTheCutsOfTheProgram) {
    const MeasureSums sums = recounted();
    for (int i = 0; i < kMeasures; ++i) {
        const char* words[] = {"turnover", "margin", "quantity"};
        const auto measure = ClientMeasure(i);
        const BestClients share = cutByShare(both().clientTable, sums, measure, 0.8F);
        const QStringList told = answer(qPrintable(QStringLiteral("share of ") + words[i])).split(u'|');
        EXPECT_EQ(told[0].toInt(), share.count()) << words[i];
        EXPECT_NEAR(told[1].toDouble(), share.sums.of[i], 1e-9) << words[i];
        EXPECT_LT(share.count(), 8) << "a cut that cuts";
        const BestClients rank = cutByRank(both().clientTable, sums, measure, 3);
        const QStringList rows = answer(qPrintable(QStringLiteral("rank by ") + words[i])).split(u';');
        ASSERT_EQ(rows.size(), rank.count());
        double sum = 0;
        double percent = 0;
        for (int row = 0; row < rows.size(); ++row) {
            const QStringList cells = rows[row].split(u'|');
            const QString number =
                (cells[0] == u"店一" ? QStringLiteral("0-") : QStringLiteral("1-")) + cells[1];
            EXPECT_EQ(number, fieldText(both().clientTable->valueAt(
                                  row, both().clientTable->fieldIndex("客户编号"))));
            sum += cells[3].toDouble();
            percent += cells[4].toDouble();
        }
        EXPECT_NEAR(sum, rank.sums.of[i], 1e-9);
        EXPECT_NEAR(percent, rank.shares[i].toDouble(), 0.01) << "which is cut";
    }
}

TEST_F(AnalysisPage, TheTurnoverOfAMonthIsThatOfTheProgram) {
    recounted();
    countTurnover(both(), turnoverStatistics()[0]);
    QMap<QString, double> wanted;
    const RecordsetPtr& months = both().saleTable;
    for (int i = 0; i < months->RecordCount(); ++i)
        wanted[toText(months->valueAt(i, months->fieldIndex("日期")))] =
            toNumber(months->valueAt(i, months->fieldIndex("营业额")));
    const QStringList rows = answer("turnover by month").split(u';');
    EXPECT_EQ(rows.size(), wanted.size());
    for (const QString& row : rows) {
        const QStringList cells = row.split(u'|');
        const QStringList parts = cells[0].split(u'-');
        const QString key = QStringLiteral("%1-%2").arg(parts[0]).arg(parts[1].toInt());
        ASSERT_TRUE(wanted.contains(key)) << key.toStdString();
        EXPECT_NEAR(cells[1].toDouble(), wanted[key], 1e-9);
        EXPECT_NEAR(cells[2].toDouble() + cells[3].toDouble(), wanted[key], 1e-9) << "the shops' columns";
    }
}

TEST_F(AnalysisPage, RegionsSalespeopleAndIntervalsAreCountedAsInTheProgram) {
    recounted();
    EXPECT_EQ(answer("regions"), u"上海|3;北京|3;成都|1");
    const DistributionCount regions = countDistribution(both(), distributions()[0]);
    EXPECT_EQ(regions.total, 7);
    both().showSource = ShowSource::Clerks;
    clerk_Count(both());
    QStringList clerks;
    for (int i = 0; i < both().clerkTotals->RecordCount(); ++i)
        clerks << toText(both().clerkTotals->valueAt(i, 0)) + u'|' +
                      plainNumber(toNumber(both().clerkTotals->valueAt(i, 1))) + u'|' +
                      toText(both().clerkTotals->valueAt(i, 2));
    QStringList told;
    for (const QString& row : answer("clerks").split(u';')) {
        const QStringList cells = row.split(u'|');
        told << cells[0] + u'|' + plainNumber(cells[1].toDouble()) + u'|' + cells[2];
    }
    EXPECT_EQ(told, clerks.filter(QRegularExpression(QStringLiteral("^[^|]"))));
    countFrequency(both());
    // Since May 2004: December and November 2003, February and March 2004.
    EXPECT_EQ(answer("intervals"), u"2|1;3|1;5|1;6|1");
}

TEST_F(AnalysisPage, NoStatementChangesAFile) {
    const QByteArray before[] = {bytes(0), bytes(1)};
    for (const QString& statement : m_statements)
        answer(statement.section(u'\n', 0, 0).mid(3).toUtf8().constData());
    EXPECT_EQ(m_statements.size(), 11);
    EXPECT_EQ(bytes(0), before[0]);
    EXPECT_EQ(bytes(1), before[1]);
}

} // namespace
