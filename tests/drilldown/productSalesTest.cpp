// The sales and the buyers of one product.
#include "drilldown/productSales.h"
#include "support/smallShop.h"

#include <gtest/gtest.h>

namespace {

class ProductSales : public testing::Test {
protected:
    ProductSales() {
        addSmallShop(books);
        books.addClient("9", "丙");
        books.addLine("1", "8", "p1", "2003-03-05", 2, 10, 2);
        books.addLine("2", "7", "p1", "2004-01-05", 1, 5, 2);
        books.addLine("3", "7", "p1", "2004-02-05", 1, 5, 2);
        books.addLine("4", "9", "p2", "2004-02-05", 1, 4, 1);
        session().openMainCursors();
    }
    /// A column of what a cursor shows.
    static QString column(const RecordsetPtr& cursor, const char* name) {
        QStringList all;
        for (int i = 0; i < cursor->RecordCount(); ++i)
            all << fieldText(cursor->valueAt(i, cursor->fieldIndex(QString::fromUtf8(name))));
        return all.join(u' ');
    }
    /// Copies a year's lines for a period.
    void period(int year) {
        books.changeBehind(
            QStringLiteral("INSERT INTO buyList2 SELECT * FROM buyList WHERE 日期 LIKE '%1%'").arg(year));
    }
    QString buyers(const char* product, ShowSource source = ShowSource::Lines) {
        rows = openProductClients(session(), {QString::fromUtf8(product), "纸"}, source);
        return column(session().productClients, "客户编号");
    }
    Session& session() { return books.session(); }

    TestBooks books;
    RowsOfTable rows;
};

TEST_F(ProductSales, AreItsLinesWhateverASearchHides) {
    session().buyList->setFilter("客户编号 = 'nobody'");
    EXPECT_TRUE(openProductLines(session(), {"p1", "纸"}, ShowSource::Lines));
    EXPECT_EQ(column(session().productLines, "流水号"), u"1 2 3");
    EXPECT_EQ(session().currentProductNum + session().currentProductName, u"p1纸");
    EXPECT_EQ(session().buyList->Filter(), u"客户编号 = 'nobody'");
}

TEST_F(ProductSales, OfAPeriodAreThoseOfItsCopy) {
    period(2004);
    EXPECT_TRUE(openProductLines(session(), {"p1", "纸"}, ShowSource::PeriodLines));
    EXPECT_EQ(column(session().productLines, "流水号"), u"2 3");
    EXPECT_EQ(session().productLinesSource, ShowSource::PeriodLines);
}

TEST_F(ProductSales, WithoutAnyTheListBeforeStays) {
    ASSERT_TRUE(openProductLines(session(), {"p1", "纸"}, ShowSource::Lines));
    EXPECT_FALSE(openProductLines(session(), {"p3", "墨"}, ShowSource::Lines));
    EXPECT_EQ(column(session().productLines, "流水号"), u"1 2 3");
    EXPECT_EQ(session().currentProductNum, u"p1");
}

TEST_F(ProductSales, BuyersAreCustomersOnceAndInTheOrderOfTheirTable) {
    EXPECT_EQ(buyers("p1"), u"7 8");
    EXPECT_EQ(session().productClients->AbsolutePosition(), 1);
    EXPECT_EQ(buyers("p2"), u"9");
    EXPECT_EQ(buyers("none"), u"");
    EXPECT_TRUE(rows.rowids.empty());
}

TEST_F(ProductSales, BuyersOfAPeriodAreWholeCustomers) {
    period(2003);
    EXPECT_EQ(buyers("p1", ShowSource::PeriodLines), u"8");
    EXPECT_EQ(rows.source, u"clientTable");
}

TEST_F(ProductSales, BuyersLookPastASearchInTheRegister) {
    session().clientTable->setFilter("客户编号 = 'nobody'");
    EXPECT_EQ(buyers("p1"), u"7 8");
}

TEST_F(ProductSales, BuyersNumbersAreFoundWithoutRegardToCase) {
    books.addClient("Ab");
    books.addLine("5", "aB", "p3", "2004-02-05", 1, 4, 1);
    EXPECT_EQ(buyers("p3"), u"Ab");
}

TEST_F(ProductSales, BuyersStandInTheWorkTableOnceWrittenAndACutOnScreenKeepsItsRows) {
    books.changeBehind("INSERT INTO clientTable3 SELECT * FROM clientTable WHERE 客户编号 = '9'");
    session().reopen(session().clientTable3, "Select * From clientTable3");
    buyers("p1");
    writeProductClients(session(), rows);
    EXPECT_EQ(books.stored("SELECT 客户编号 FROM clientTable3"), u"7;8");
    EXPECT_EQ(column(session().productClients, "客户编号"), u"7 8");
    EXPECT_EQ(column(session().clientTable3, "客户编号"), u"9") << "the cut's own cursor";
    EXPECT_EQ(column(session().clientTable3, "单位名称"), u"丙");
}

TEST_F(ProductSales, AMissingWorkTableIsMadeAgain) {
    books.changeBehind("DROP TABLE clientTable3");
    buyers("p1");
    writeProductClients(session(), rows);
    EXPECT_EQ(books.stored("SELECT count(*) FROM clientTable3"), u"2");
}

TEST_F(ProductSales, TheProductOfARowIsItsNumberAndName) {
    session().productTable->MoveLast();
    const auto product = productOfRow(session().productTable);
    ASSERT_TRUE(product);
    EXPECT_EQ(product->number + product->name, u"p2笔");
    session().productTable->setFilter("产品编号 = 'none'");
    EXPECT_FALSE(productOfRow(session().productTable));
    EXPECT_FALSE(productOfRow(session().productLines)) << "a closed cursor";
}

TEST_F(ProductSales, TotalsOfAllLinesLookPastASearchAndThoseOfAListDoNot) {
    session().buyList->setFilter("客户编号 = '7'");
    const SaleTotals all = calculation_L2_L4(session(), ShowSource::Lines);
    EXPECT_EQ(all.amount + u' ' + all.count, u"24 5");
    const SaleTotals shown = saleTotals(session().buyList);
    EXPECT_EQ(shown.amount + u' ' + shown.count, u"10 2");
    const SaleTotals none = calculation_L2_L4(session(), ShowSource::PeriodLines);
    EXPECT_EQ(none.amount + u' ' + none.count, u"0 0");
}

TEST_F(ProductSales, TheirSourceIsThePeriodOnlyWhileItsCopyIsThere) {
    session().saleShowSource = ShowSource::PeriodLines;
    EXPECT_EQ(salesSource(session()), ShowSource::Lines);
    session().reopen(session().buyList2, "Select * From buyList2");
    EXPECT_EQ(salesSource(session()), ShowSource::PeriodLines);
}

TEST_F(ProductSales, TheWholeIsShownOnTheSameCursorWithItsEdits) {
    const RecordsetPtr lines = session().buyList;
    lines->setSort("实付 desc");
    lines->setFilter("客户编号 = '7'");
    lines->Fields("品名").setValue(QStringLiteral("typed"));
    session().saleShowSource = ShowSource::PeriodLines;
    showWholeLines(session());
    EXPECT_EQ(session().buyList, lines);
    EXPECT_EQ(column(lines, "流水号"), u"1 2 3 4");
    EXPECT_EQ(lines->pendingCount(), 1);
    EXPECT_EQ(session().saleShowSource, ShowSource::Lines);
    lines->CancelBatch();
    lines->Close();
    showWholeLines(session());
    EXPECT_EQ(session().buyList->RecordCount(), 4) << "a closed one is opened";
}

TEST_F(ProductSales, TheListOfAPeriodGetsThePeriodsFilterAgainBeforeItIsPrinted) {
    session().periodCondition = "日期 >= #2004-1-1#";
    session().buyList->setFilter("客户编号 = '8'");
    handSalesList(session(), ShowSource::PeriodLines);
    EXPECT_EQ(session().buyList->Filter(), u"日期 >= #2004-1-1#");
    EXPECT_EQ(session().report.totalAmount + u' ' + session().report.totalCount, u"14 3");
    session().buyList->setFilter("客户编号 = '8'");
    handSalesList(session(), ShowSource::Lines);
    EXPECT_EQ(session().buyList->Filter(), u"客户编号 = '8'") << "a search stays on the whole list";
    EXPECT_EQ(session().report.totalAmount + u' ' + session().report.totalCount, u"10 2");
}

} // namespace
