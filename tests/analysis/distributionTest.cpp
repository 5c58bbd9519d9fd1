#include "analysis/distribution.h"
#include "analysis/periodCopies.h"
#include "support/testBooks.h"

#include <gtest/gtest.h>

namespace {

class CustomerDistribution : public testing::Test {
protected:
    Session& session() { return books.session(); }
    void add(const char* client, const char* region, const char* industry = "") {
        books.addClient(QString::fromUtf8(client));
        books.changeBehind(
            QStringLiteral("UPDATE clientTable SET 地区 = %1, 行业 = '%2' WHERE 客户编号 = '%3'")
                .arg(region ? u'\'' + QString::fromUtf8(region) + u'\'' : QStringLiteral("NULL"),
                     QString::fromUtf8(industry), QString::fromUtf8(client)));
    }
    /// Counts by region (0) or industry (1). Out: "total: group number share;…".
    QString count(int which) {
        const Distribution& distribution = distributions()[std::size_t(which)];
        const DistributionCount counted = countDistribution(session(), distribution);
        const double total = counted.total;
        const RecordsetPtr rows = writeDistribution(session(), distribution, counted);
        QStringList groups;
        for (int i = 0; i < rows->RecordCount(); ++i)
            groups << toText(rows->valueAt(i, 0)) + u' ' + toText(rows->valueAt(i, 1)) + u' ' +
                          toText(rows->valueAt(i, 2));
        return QString::number(total) + QStringLiteral(": ") + groups.join(u';');
    }

    TestBooks books;
};

TEST_F(CustomerDistribution, TheLargestGroupStandsFirstWithItsShare) {
    add("1", "北京", "纸");
    add("2", "上海", "纸");
    add("3", "上海", "墨");
    add("4", "上海", "笔");
    session().open_rs();
    EXPECT_EQ(count(0), u"4: 上海 3 75%;北京 1 25%");
    EXPECT_EQ(count(1), u"4: 纸 2 50%;笔 1 25%;墨 1 25%") << "ties in the order of the group";
    EXPECT_EQ(books.stored("SELECT * FROM clientplaceTable"), u"上海|3.0|75%;北京|1.0|25%");
    EXPECT_EQ(books.stored("SELECT count(*) FROM clientlineTable"), u"3");
}

TEST_F(CustomerDistribution, OneGroupWithAllCustomersShowsNought) {
    add("1", "北京");
    add("2", "北京");
    session().open_rs();
    EXPECT_EQ(count(0), u"2: 北京 2 0");
}

TEST_F(CustomerDistribution, SharesAreCutAndNotRounded) {
    for (int i = 0; i < 200; ++i)
        add(qPrintable(QString::number(i)), i < 1 ? "丙" : i < 67 ? "乙" : "甲");
    session().open_rs();
    EXPECT_EQ(count(0), u"200: 甲 133 66.5%;乙 66 33%;丙 1 .5%");
    books.changeBehind("DELETE FROM clientTable WHERE 流水号 > 18");
    books.changeBehind(
        "UPDATE clientTable SET 地区 = CASE WHEN 流水号 <= 1 THEN '丙' WHEN 流水号 <= 7 THEN '乙' ELSE "
        "'甲' END");
    session().open_rs();
    EXPECT_EQ(count(0), u"18: 甲 11 61.11%;乙 6 33.33%;丙 1 5.55%");
}

TEST_F(CustomerDistribution, CustomersWithoutARegionAreARowOfTheirOwnAndCountInNoShare) {
    add("1", "北京");
    add("2", nullptr);
    add("3", nullptr);
    add("4", "上海");
    session().open_rs();
    EXPECT_EQ(count(0), u"2: 北京 1 50%;上海 1 50%; 0 0%") << "Null counts nothing";
    books.changeBehind("UPDATE clientTable SET 地区 = '' WHERE 地区 IS NULL");
    session().open_rs();
    EXPECT_EQ(count(0), u"4:  2 50%;北京 1 25%;上海 1 25%") << "the empty text is a region";
}

TEST_F(CustomerDistribution, ARowAfterAWholeOneRepeatsNothingWrong) {
    add("1", "北京");
    add("2", nullptr);
    session().open_rs();
    EXPECT_EQ(count(0), u"1: 北京 1 0; 0 0%") << "a share of all is not written, the next one is its own";
}

TEST_F(CustomerDistribution, NobodyWithAGroupLeavesTheWorkTableEmpty) {
    add("1", nullptr);
    session().open_rs();
    books.execute("INSERT INTO clientplaceTable VALUES ('x', 1, '1%')");
    EXPECT_EQ(count(0), u"0: ");
    EXPECT_EQ(books.stored("SELECT * FROM clientplaceTable"), u"");
}

TEST_F(CustomerDistribution, APeriodOnShowCountsItsCustomersAlone) {
    add("1", "北京");
    add("2", "上海");
    books.addLine("1", "2", "p", "2004-03-05", 1, 1, 1);
    session().open_rs();
    buildPeriodCopies(session(), "日期 >= #2004-1-1#", PeriodCopies::All);
    const std::tuple<ShowSource, ShowSource, bool> sources[] = {
        {ShowSource::Clients, ShowSource::PeriodClients, false},
        {ShowSource::PeriodClients, ShowSource::PeriodClients, true},
        {ShowSource::PeriodClerks, ShowSource::Clients, true},
        {ShowSource::BestClients, ShowSource::PeriodClients, true},
        {ShowSource::BestClients, ShowSource::Clients, false},
        {ShowSource::Products, ShowSource::PeriodClients, false},
        {ShowSource::PeriodProducts, ShowSource::Clients, false}};
    for (const auto& [show, clients, period] : sources) {
        session().showSource = show;
        session().clientShowSource = clients;
        EXPECT_EQ(count(0), period ? u"1: 上海 1 0" : u"2: 北京 1 50%;上海 1 50%") << int(show);
    }
    session().showSource = session().clientShowSource = ShowSource::PeriodClients;
    session().clientTable2->Close();
    EXPECT_EQ(count(0), u"2: 北京 1 50%;上海 1 50%") << "a copy that is not there";
}

TEST_F(CustomerDistribution, AFilterOfTheRegisterDoesNotCount) {
    add("1", "北京");
    add("2", "上海");
    session().open_rs();
    session().clientTable->setFilter("客户编号 = '1'");
    EXPECT_EQ(count(0), u"2: 北京 1 50%;上海 1 50%");
}

} // namespace
