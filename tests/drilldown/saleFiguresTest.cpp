// The indicators of sold goods, of the whole and of what a search leaves.
#include "drilldown/saleFigures.h"
#include "support/smallShop.h"

#include <gtest/gtest.h>

namespace {

class SaleFiguresOf : public testing::Test {
protected:
    SaleFiguresOf() { addSmallShop(books); }

    static QString text(const SaleFigures& figures) {
        return QStringList{figures.turnover, figures.margin, figures.quantity, figures.clients}.join(u' ');
    }
    QString whole(ShowSource source = ShowSource::Lines) { return text(sales_Count(session(), source)); }
    QString shown(const QString& filter = {}) {
        session().openMainCursors();
        session().buyList->setFilter(filter);
        return text(rs2_Count(session().buyList));
    }
    Session& session() { return books.session(); }

    TestBooks books;
};

TEST_F(SaleFiguresOf, AnEmptyShopAreZero) {
    EXPECT_EQ(whole(), u"0 0 0 0");
    EXPECT_EQ(shown(), u"0 0 0 0");
}

TEST_F(SaleFiguresOf, TheWholeAreTheSumsOfAllLinesAndTheCustomersWhoHaveLines) {
    books.addLine("1", "7", "p1", "2004-03-05", 2, 10, 2);
    books.addLine("2", "7", "p2", "2004-02-05", 1, 5, 1);
    books.addLine("3", "gone", "p2", "2004-02-05", 1, 5, 1);
    EXPECT_EQ(whole(), u"20 14 4 1") << "of the lines of a deleted customer only the sums count";
}

TEST_F(SaleFiguresOf, TheWholeLookPastASearch) {
    books.addLine("1", "7", "p1", "2004-03-05", 2, 10, 2);
    session().openMainCursors();
    session().buyList->setFilter("客户编号 = 'nobody'");
    session().clientTable->setFilter("客户编号 = 'nobody'");
    EXPECT_EQ(whole(), u"10 6 2 1");
}

TEST_F(SaleFiguresOf, APeriodAreThoseOfItsCopies) {
    books.addLine("1", "7", "p1", "2003-03-05", 2, 10, 2);
    books.addLine("2", "8", "p2", "2004-02-05", 1, 5, 1);
    books.execute("INSERT INTO buyList2 SELECT * FROM buyList WHERE 流水号 = 2");
    books.execute("INSERT INTO clientTable2 SELECT * FROM clientTable");
    EXPECT_EQ(whole(ShowSource::PeriodLines), u"5 4 1 1");
}

TEST_F(SaleFiguresOf, WhatIsShownCountEachCustomerOnce) {
    books.addLine("1", "7", "p1", "2004-03-05", 2, 10, 2);
    books.addLine("2", "7", "p1", "2004-02-05", 1, 5, 2);
    books.addLine("3", "8", "p1", "2004-02-05", 1, 5, 2);
    books.addLine("4", "gone", "p1", "2004-02-05", 1, 5, 2);
    books.addLine("5", "7", "p2", "2004-02-05", 9, 9, 1);
    EXPECT_EQ(shown("产品编号 = 'p1'"), u"25 15 5 3");
    EXPECT_EQ(shown("产品编号 = 'none'"), u"0 0 0 0");
}

TEST_F(SaleFiguresOf, CustomerNumbersAreToldApartByCaseAndNotByBlanks) {
    books.addLine("1", "ab", "p1", "2004-03-05", 1, 1, 0);
    books.addLine("2", "AB", "p1", "2004-03-05", 1, 1, 0);
    books.addLine("3", " ab ", "p1", "2004-03-05", 1, 1, 0);
    books.addLine("4", "", "p1", "2004-03-05", 1, 1, 0);
    books.changeBehind("INSERT INTO buyList (流水号, 产品编号) VALUES (5, 'p1')");
    EXPECT_EQ(shown(), u"4 4 4 3") << "a line without a customer is one more";
}

TEST_F(SaleFiguresOf, OfOneProductTakeThePlaceOfASearch) {
    books.addLine("1", "7", "p1", "2004-03-05", 2, 10, 2);
    books.addLine("2", "8", "p''2", "2004-02-05", 1, 5, 2);
    shown("客户编号 = 'nobody'");
    EXPECT_EQ(text(singleCount(session().buyList, "p'2")), u"5 3 1 1");
    EXPECT_EQ(text(singleCount(session().buyList, "none")), u"0 0 0 0");
}

TEST_F(SaleFiguresOf, TheFirstLineOfAProductIsFoundAndTheLastOfAllWithoutOne) {
    books.addLine("1", "7", "p1", "2004-03-05", 2, 10, 2);
    books.addLine("2", "7", "p2", "2004-03-05", 2, 10, 2);
    books.addLine("3", "7", "p2", "2004-03-05", 2, 10, 2);
    books.addLine("4", "7", "p1", "2004-03-05", 2, 10, 2);
    session().openMainCursors();
    const RecordsetPtr& lines = session().buyList;
    lines->MoveLast();
    findProduct(lines, "p2");
    EXPECT_EQ(lines->AbsolutePosition(), 2);
    findProduct(lines, "none");
    EXPECT_EQ(lines->AbsolutePosition(), 4);
    lines->setFilter("产品编号 = 'none'");
    findProduct(lines, "p2"); // without rows nothing moves
    EXPECT_FALSE(lines->currentRow());
}

TEST_F(SaleFiguresOf, PendingEditsOfAWindowBesideCountAsShown) {
    books.addLine("1", "7", "p1", "2004-03-05", 2, 10, 2);
    session().openMainCursors();
    session().buyList->Fields("实付").setValue(30.0);
    EXPECT_EQ(text(rs2_Count(session().buyList)), u"30 6 2 1");
    session().buyList->CancelUpdate();
}

} // namespace
