#include "analysis/clerks.h"
#include "analysis/periodCopies.h"
#include "support/testBooks.h"

#include <gtest/gtest.h>

namespace {

class Clerks : public testing::Test {
protected:
    Session& session() { return books.session(); }
    void add(const char* client, const char* clerk, double turnover) {
        books.addClient(QString::fromUtf8(client));
        books.changeBehind(
            QStringLiteral("UPDATE clientTable SET 业务员编号 = %1, 消费合计 = %2 WHERE 客户编号 = '%3'")
                .arg(clerk ? u'\'' + QString::fromUtf8(clerk).replace("'", "''") + u'\''
                           : QStringLiteral("NULL"))
                .arg(turnover)
                .arg(QString::fromUtf8(client)));
    }
    QString totals() {
        clerk_Count(session());
        QStringList rows;
        const RecordsetPtr& clerks = session().clerkTotals;
        for (int i = 0; clerks->isOpen() && i < clerks->RecordCount(); ++i)
            rows << toText(clerks->valueAt(i, 0)) + u' ' + toText(clerks->valueAt(i, 1)) + u' ' +
                        toText(clerks->valueAt(i, 2));
        return rows.join(u';');
    }
    QString figures(ShowSource code) {
        const ClerkFigures found = clerkFigures(session(), code);
        return found.turnover + u' ' + found.clients;
    }
    QString clients() {
        QStringList numbers;
        for (int i = 0; i < session().clerkClients->RecordCount(); ++i)
            numbers << toText(
                session().clerkClients->valueAt(i, session().clerkClients->fieldIndex("客户编号")));
        return numbers.join(u' ');
    }

    TestBooks books;
};

TEST_F(Clerks, TheHighestTurnoverStandsFirstAndTiesInTheOrderOfTheirNumbers) {
    add("1", "b", 10);
    add("2", "a", 10);
    add("3", "c", 25);
    add("4", "a", 0);
    session().open_rs();
    session().showSource = ShowSource::Clerks;
    EXPECT_EQ(totals(), u"c 25 1;a 10 2;b 10 1");
    EXPECT_EQ(figures(ShowSource::Clerks), u"45 4");
}

TEST_F(Clerks, CustomersWithoutASalespersonAreARowWithoutCustomers) {
    add("1", nullptr, 30);
    add("2", "a", 10);
    session().open_rs();
    session().showSource = ShowSource::Clerks;
    EXPECT_EQ(totals(), u" 30 0;a 10 1");
    EXPECT_EQ(figures(ShowSource::Clerks), u"40 2") << "all customers count, also those without one";
    session().clerkTotals->MoveFirst();
    EXPECT_FALSE(takeClerk(session()));
    session().clerkTotals->MoveNext();
    EXPECT_TRUE(takeClerk(session()));
    EXPECT_EQ(session().currentClerk, u"a");
}

TEST_F(Clerks, APeriodCountsItsOwnCustomersAndTotals) {
    add("1", "a", 10);
    add("2", "b", 20);
    books.addLine("1", "2", "p", "2004-03-05", 1, 7, 1);
    books.addLine("2", "2", "p", "2003-03-05", 1, 13, 1);
    session().open_rs();
    buildPeriodCopies(session(), "日期 >= #2004-1-1#", PeriodCopies::All);
    session().showSource = ShowSource::PeriodClerks;
    EXPECT_EQ(totals(), u"b 7 1") << "who had no customer then does not appear";
    EXPECT_EQ(figures(ShowSource::PeriodClerks), u"7 1");
}

TEST_F(Clerks, WithoutCustomersAllIsNoughtAndTheSourceTheWholeTable) {
    session().open_rs();
    session().showSource = ShowSource::PeriodClerks;
    EXPECT_EQ(totals(), u"");
    EXPECT_EQ(session().showSource, ShowSource::Clerks);
    EXPECT_EQ(figures(ShowSource::Clerks), u"0 0");
    EXPECT_FALSE(takeClerk(session()));
}

TEST_F(Clerks, AFilterOfTheRegisterDoesNotCount) {
    add("1", "a", 10);
    add("2", "b", 20);
    session().open_rs();
    session().clientTable->setFilter("客户编号 = '1'");
    session().showSource = ShowSource::Clerks;
    EXPECT_EQ(totals(), u"b 20 1;a 10 1");
    EXPECT_EQ(figures(ShowSource::Clerks), u"30 2");
}

TEST_F(Clerks, TheCustomersOfOneAreFoundAlsoWithAnApostropheInHisNumber) {
    add("1", "o'b", 10);
    add("2", "x", 5);
    add("3", "O'B", 1);
    session().open_rs();
    session().showSource = ShowSource::Clerks;
    totals();
    session().clerkTotals->MoveFirst();
    ASSERT_TRUE(takeClerk(session()));
    openClerkClients(session());
    EXPECT_EQ(clients(), u"1 3");
}

TEST_F(Clerks, TheCustomersOfOneInAPeriodAreThoseOfItsCopy) {
    add("1", "a", 10);
    add("2", "a", 20);
    books.addLine("1", "2", "p", "2004-03-05", 1, 7, 1);
    session().open_rs();
    buildPeriodCopies(session(), "日期 >= #2004-1-1#", PeriodCopies::All);
    session().currentClerk = QStringLiteral("a");
    session().showSource = ShowSource::PeriodClerks;
    openClerkClients(session());
    EXPECT_EQ(clients(), u"2");
    session().showSource = ShowSource::Clerks;
    openClerkClients(session());
    EXPECT_EQ(clients(), u"1 2");
}

} // namespace
