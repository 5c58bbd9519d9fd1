#include "sales/basket.h"

#include "sales/settlement.h"
#include "support/errorOf.h"
#include "support/testBooks.h"

#include <gtest/gtest.h>

namespace {

TEST(LineAmountsOf, DiscountIsAPercentageOfThePriceToPay) {
    const auto amounts = lineAmounts("4", "2.5", "90");
    EXPECT_EQ(amounts.due, u"10");
    EXPECT_EQ(amounts.discount, u"90");
    EXPECT_EQ(amounts.paid, u"9");
    EXPECT_EQ(lineAmounts("1", "10", "87.5").paid, u"8.75");
    EXPECT_EQ(lineAmounts("3", "1.1", "100").due, u"3.3");
}

TEST(LineAmountsOf, EmptyZeroNegativeAndTooLargeDiscountsBecome100) {
    for (const char* discount : {"", " ", "0", "-5", "100", "101", "1e9", "abc", "1e999"}) {
        const auto amounts = lineAmounts("2", "5", discount);
        EXPECT_EQ(amounts.discount, u"100") << discount;
        EXPECT_EQ(amounts.paid, u"10") << discount;
    }
    EXPECT_EQ(lineAmounts("2", "5", "0.5").discount, u"0.5");
    EXPECT_EQ(lineAmounts("2", "5", "99.9").discount, u"99.9");
}

TEST(LineAmountsOf, AnAmountBeyondADoubleIsAnOverflow) {
    EXPECT_EQ(errorOf([] { lineAmounts("1e200", "1e200", "100"); }), ErrorNumber::Overflow);
}

TEST(TypedDiscount, IsOnlyBegunWhileItsValueIsZero) {
    for (const char* begun : {"", " ", "0", ".", "0.", "0.00", "-", "-0", "abc", "e5"})
        EXPECT_TRUE(isBegunDiscount(begun)) << begun;
    for (const char* whole : {"0.5", "9", "100", "-5", "1e999", "5abc"})
        EXPECT_FALSE(isBegunDiscount(whole)) << whole;
}

TEST(TypedDiscount, LooksLikeTenthsAboveZeroAndBelowTen) {
    for (const char* small : {"0.5", "9", "9.99", "8.8"})
        EXPECT_TRUE(looksLikeTenths(small)) << small;
    for (const char* other : {"", "0", "-3", "10", "90", "1e999", "abc"})
        EXPECT_FALSE(looksLikeTenths(other)) << other;
}

TEST(LineFits, WhileAmountsAndCostStayFarFromTheLargestNumber) {
    EXPECT_TRUE(lineFits("1e150", "1e150", 1));
    EXPECT_TRUE(lineFits("", "abc", 1e308));
    EXPECT_FALSE(lineFits("1e151", "1e150", 0));
    EXPECT_FALSE(lineFits("-1e151", "1e150", 0));
    EXPECT_FALSE(lineFits("1e200", "1e200", 0));
    EXPECT_FALSE(lineFits("1e100", "1", 1e250));
    EXPECT_FALSE(lineFits("1e999", "1", 0));
}

class Basket : public testing::Test {
protected:
    Basket() {
        books.addClient("7", "红木行", "王平");
        books.addProduct("p1", "打印纸", 10, 2, 5);
        books.addProduct("p2", "硒鼓", 3, 20, 30, "90");
    }
    Session& session() { return books.session(); }
    void open() {
        session().open_rs();
        session().readCurrent();
        basket = openBasket(session());
    }
    /// Puts a line for a product into the basket as the window does.
    void put(const QString& product, const QString& quantity, const QString& discount = {}) {
        session().productTable->MoveFirst();
        session().productTable->Find(keyCondition("产品编号", product));
        QStringList boxes = Record_display3(session());
        boxes[LineBox::Quantity] = quantity;
        const LineAmounts amounts = lineAmounts(quantity, boxes[LineBox::Price],
                                                discount.isEmpty() ? boxes[LineBox::Discount] : discount);
        boxes[LineBox::Due] = amounts.due;
        boxes[LineBox::Discount] = amounts.discount;
        boxes[LineBox::Paid] = amounts.paid;
        basket->AddNew();
        writeRecord5(basket, boxes, session().productTable->Fields("成本").number());
        basket->Update();
    }
    QString client() {
        return books.stored("SELECT 消费合计, 差额利润, 购买数, 差额利润率 FROM clientTable");
    }
    QString stock() { return books.stored("SELECT 产品编号, 数量 FROM productTable ORDER BY rowid"); }

    TestBooks books;
    RecordsetPtr basket;
};

TEST_F(Basket, ANewLineShowsOrderCustomerTodayTheProductAndZeros) {
    open();
    EXPECT_EQ(Record_display3(session()), (QStringList{"1001", "7", "p1", "2004-11-21", "打印纸", "产地p1",
                                                       "规格p1", "厂家p1", "5", "个", "0", "0", "100", "0"}));
}

TEST_F(Basket, EveryBoxHasItsTestInOrder) {
    const QStringList good{"1", "7", "p", "2004-1-5", "n", "", "", "", "5", "", "1", "5", "", "5"};
    EXPECT_FALSE(text4_check(good));
    const std::pair<int, const char*> faults[] = {
        {0, "请输入订单号！"}, {1, "请输入客户编号！"}, {2, "请输入产品编号！"},
        {3, "日期格式错误！"}, {4, "请输入品名！"},     {8, "请输入单价！"},
        {10, "请输入数量！"},  {11, "请输入应付！"},    {13, "请输入实付！"}};
    for (const auto& [box, message] : faults) {
        QStringList boxes = good;
        boxes[box] = "  ";
        ASSERT_TRUE(text4_check(boxes)) << message;
        EXPECT_EQ(text4_check(boxes)->message, QString(message));
        EXPECT_EQ(text4_check(boxes)->box, box);
    }
    QStringList boxes(14, QString());
    EXPECT_EQ(text4_check(boxes)->message, QString("请输入订单号！"));
    boxes = good;
    boxes[LineBox::Quantity] = "0";
    EXPECT_FALSE(text4_check(boxes)) << "a quantity of 0 is numeric";
    boxes[LineBox::Date] = "2004-2-30";
    EXPECT_EQ(text4_check(boxes)->message, QString("日期格式错误！"));
}

TEST_F(Basket, ALineStoresItsBoxesCutToTheColumns) {
    open();
    QStringList boxes = Record_display3(session());
    boxes[LineBox::Quantity] = "2";
    boxes[LineBox::Paid] = "9";
    boxes[LineBox::Discount] = "90abc";
    boxes[LineBox::Name] = QString(70, u'甲');
    boxes[LineBox::Order] = " 1001 ";
    basket->AddNew();
    writeRecord5(basket, boxes, 2);
    basket->Update();
    EXPECT_EQ(
        books.stored("SELECT 订单号, 日期, length(品名), 数量, 折扣, 实付, 成本, 差额利润 FROM buyList2"),
        u"1001|2004-11-21|50|2.0|90|9.0|2.0|5.0");
}

TEST_F(Basket, TheDateIsTheFirstTenCharactersAndMayThenBeNone) {
    open();
    QStringList boxes = Record_display3(session());
    boxes[LineBox::Date] = "2004-11-21 8:30";
    basket->AddNew();
    writeRecord5(basket, boxes, 2);
    basket->CancelUpdate();
    boxes[LineBox::Date] = "2004-1-5 8:30";
    basket->AddNew();
    EXPECT_EQ(errorOf([&] { writeRecord5(basket, boxes, 2); }), ErrorNumber::TypeMismatch);
    basket->CancelUpdate();
    EXPECT_EQ(basket->RecordCount(), 0);
}

TEST_F(Basket, OpeningEmptiesTheBasketMakesAMissingTableAgainAndEndsThePeriod) {
    books.execute("INSERT INTO buyList2 (订单号) VALUES ('old')");
    session().saleShowSource = ShowSource(9);
    session().clientShowSource = ShowSource(7);
    open();
    EXPECT_EQ(basket->RecordCount(), 0);
    EXPECT_EQ(session().saleShowSource, ShowSource(2));
    EXPECT_EQ(session().clientShowSource, ShowSource(1));
    runStatement(session().cn, "Drop Table buyList2");
    const RecordsetPtr again = openBasket(session());
    EXPECT_EQ(again->RecordCount(), 0);
    EXPECT_EQ(again->fieldCount(), session().buyList->fieldCount());
    EXPECT_EQ(again->Fields("订单号").DefinedSize(), 20);
}

TEST_F(Basket, ARepeatedProductIsFoundFromTheFirstRowElseTheBasketStays) {
    open();
    put("p1", "1");
    put("p2", "1");
    EXPECT_TRUE(check_Repeat_ProductNum(basket, "p1"));
    EXPECT_EQ(basket->AbsolutePosition(), 1);
    EXPECT_FALSE(check_Repeat_ProductNum(basket, "px"));
    EXPECT_EQ(basket->AbsolutePosition(), 1);
}

TEST_F(Basket, AccumulatedQuantityIsRoundedAfterEachLineAndTheFilterIsOff) {
    // Halves go to the even neighbour, sum by sum: three halves stay 0, and one more half makes 1 into 2.
    const std::pair<const char*, std::vector<double>> bought[] = {
        {"7", {0.5, 0.5, 0.5}}, {"8", {1, 0.5}}, {"9", {2.4, 2.4}}};
    for (const auto& [client, quantities] : bought)
        for (const double quantity : quantities)
            books.addLine("1", client, "p1", "2004-01-05", quantity, 1, 1);
    open();
    EXPECT_EQ(product_Num3(session(), "7", "p1"), 0);
    EXPECT_EQ(product_Num3(session(), "8", "p1"), 2);
    EXPECT_EQ(product_Num3(session(), "9", "p1"), 4);
    EXPECT_EQ(session().buyList->Filter(), u"");
    EXPECT_EQ(product_Num3(session(), "o'n", "p'"), 0);
}

TEST_F(Basket, StockIsFoundWhereverTheCursorStandsAndWhateverItIsFilteredTo) {
    open();
    session().productTable->setFilter("产品编号 = 'p1'");
    EXPECT_EQ(stockOf(session(), "p2")->quantity, 3);
    EXPECT_FALSE(stockOf(session(), "px"));
    EXPECT_FALSE(stockOf(session(), ""));
}

TEST_F(Basket, StockIsCheckedAgainstTheStoredQuantity) {
    books.addProduct("p3", "墨盒", 0, 1, 2);
    open();
    using Result = StockCheck::Result;
    EXPECT_EQ(checkStock(session(), "p2", "3").result, Result::Passes);
    EXPECT_EQ(checkStock(session(), "p2", "3").left, 0);
    EXPECT_EQ(checkStock(session(), "p2", "-1").left, 4);
    for (const char* quantity : {"3.01", "1e308", "1e999"})
        EXPECT_EQ(checkStock(session(), "p2", quantity).result, Result::TooMany) << quantity;
    EXPECT_EQ(checkStock(session(), "p3", "0").result, Result::SoldOut);
    EXPECT_EQ(checkStock(session(), "gone", "5").result, Result::Passes);
}

TEST_F(Basket, AnEditMayReachStoredPlusAvailable) {
    open();
    put("p2", "2");
    basket->Fields("数量").setValue(5.0);
    EXPECT_EQ(afterBasketEdit(session(), basket), BasketEdit::Done);
    EXPECT_EQ(basket->Fields("合计").text(), u"150");
    EXPECT_EQ(basket->Fields("实付").text(), u"135");
    EXPECT_EQ(basket->Fields("差额利润").text(), u"35");
    basket->Fields("数量").setValue(5.25);
    EXPECT_EQ(afterBasketEdit(session(), basket), BasketEdit::TooMany);
    EXPECT_EQ(basket->Fields("数量").text(), u"2");
    EXPECT_EQ(basket->Fields("实付").text(), u"54");
    EXPECT_EQ(books.stored("SELECT 数量 FROM buyList2"), u"2.0");
}

TEST_F(Basket, AnEditOfALineWhoseProductIsGoneZeroesIt) {
    open();
    put("p2", "2");
    session().productTable->MoveLast();
    session().productTable->Delete();
    session().productTable->setFilter("产品编号 = 'zz'");
    afterBasketEdit(session(), basket);
    EXPECT_EQ(basket->Fields("数量").text() + basket->Fields("合计").text() + basket->Fields("实付").text() +
                  basket->Fields("差额利润").text(),
              u"0000");
    EXPECT_EQ(session().productTable->Filter(), u"");
}

TEST_F(Basket, ARowIsPutBackToWhatTheTableHolds) {
    open();
    put("p1", "2");
    basket->Fields("数量").setValue(9.0);
    basket->Fields("品名").setValue(QStringLiteral("x"));
    reture_OriginalValue(basket);
    EXPECT_EQ(basket->Fields("数量").text() + basket->Fields("品名").text(), u"2打印纸");
}

TEST_F(Basket, SavingTheEditsRecomputesEveryRowFromItsOwnColumns) {
    open();
    put("p1", "1");
    put("p2", "1");
    basket->MoveFirst();
    basket->Fields("折扣").setValue(QStringLiteral("50"));
    basket->MoveNext();
    basket->Fields("单价").setValue(40.0);
    const int commits = session().cn.commits();
    saveBasket(session(), basket);
    EXPECT_EQ(session().cn.commits(), commits + 1);
    EXPECT_EQ(books.stored("SELECT 合计, 实付, 差额利润 FROM buyList2 ORDER BY rowid"),
              u"5.0|2.5|0.5;40.0|36.0|16.0");
    EXPECT_EQ(basket->AbsolutePosition(), 2);
}

TEST_F(Basket, SavingTheEditsKeepsTheRow) {
    open();
    put("p1", "1");
    put("p2", "1");
    basket->MoveFirst();
    basket->Fields("数量").setValue(2.0);
    saveBasket(session(), basket);
    EXPECT_EQ(basket->AbsolutePosition(), 1);
}

TEST_F(Basket, TheSettlementQuestion) {
    EXPECT_EQ(settlementQuestion({3, 40.5}), u"购买总数量： 3\n总金额：40.5\n确认结算吗？");
}

TEST_F(Basket, TheRoadOfOneSale) {
    books.addLine("9", "7", "p1", "2003-01-05", 1, 6, 2);
    open();
    put("p1", "4");
    put("p2", "2", "90");
    const int commits = session().cn.commits();
    settle(session(), basket);
    EXPECT_EQ(session().cn.commits(), commits + 1);
    EXPECT_EQ(books.stored("SELECT * FROM buyList ORDER BY rowid"),
              u"1|9|7|p1|2003-01-05|货||||1.0|个|1.0|6.0|100|6.0|2.0|4.0;"
              "2|1001|7|p1|2004-11-21|打印纸|产地p1|规格p1|厂家p1|5.0|个|4.0|20.0|100|20.0|2.0|12.0;"
              "3|1001|7|p2|2004-11-21|硒鼓|产地p2|规格p2|厂家p2|30.0|个|2.0|60.0|90|54.0|20.0|14.0");
    EXPECT_EQ(stock(), u"p1|6.0;p2|1.0");
    // 6 + 20 + 54 paid, 4 + 12 + 14 margin: 30 of 80 is 37.5 percent.
    EXPECT_EQ(client(), u"80.0|30.0|7.0|37.5%");
    EXPECT_EQ(books.stored("SELECT counterNum2 FROM counterCode"), u"1002.0");
    EXPECT_EQ(basket->RecordCount(), 0);
    EXPECT_EQ(books.stored("SELECT count(*) FROM buyList2"), u"0");
    EXPECT_EQ(session().buyList->Filter(), u"客户编号 = '7'") << "the filter on the buyer stays";
    EXPECT_EQ(session().productTable->Fields("产品编号").text(), u"p2");
}

TEST_F(Basket, AProductThatASearchHidesLeavesTheStockToo) {
    open();
    put("p1", "4");
    put("p2", "2");
    session().productTable->setFilter("品名 Like '%硒%'");
    settle(session(), basket);
    EXPECT_EQ(stock(), u"p1|6.0;p2|1.0");
    EXPECT_EQ(session().productTable->Filter(), u"");
    EXPECT_EQ(session().productTable->RecordCount(), 2);
}

TEST_F(Basket, SettlementCutsARateHeldInDoublePrecision) {
    books.addProduct("q1", "金条", 2, 0.1, 1e9);
    open();
    put("q1", "1");
    settle(session(), basket);
    // 99.99999999 percent, which is 100 in single precision.
    EXPECT_EQ(books.stored("SELECT 差额利润率 FROM clientTable"), u"99.99%");
}

TEST_F(Basket, ThirtyLinesAndEarlierLinesSettleToTheFigureWorkedOutByHand) {
    for (int i = 1; i <= 30; ++i)
        books.addProduct(QStringLiteral("q%1").arg(i), QStringLiteral("货%1").arg(i), 100, 0.25 * i, 0.5 * i);
    books.addLine("9", "7", "p1", "2003-01-05", 2, 10, 2);
    open();
    for (int i = 1; i <= 30; ++i)
        put(QStringLiteral("q%1").arg(i), "2");
    settle(session(), basket);
    // Paid: sum of 2 * 0.5 i = 465; margin half of it; quantity 60; with the earlier line 475, 238.5, 62.
    EXPECT_EQ(client(), u"475.0|238.5|62.0|50.21%");
    EXPECT_EQ(books.stored("SELECT count(*), sum(实付) FROM buyList WHERE 订单号 = '1001'"), u"30|465.0");
    EXPECT_EQ(books.stored("SELECT sum(数量) FROM productTable WHERE 产品编号 LIKE 'q%'"), u"2940.0");
}

TEST_F(Basket, ARateOfZeroIsWrittenWithPercentHere) {
    open();
    put("p1", "0");
    settle(session(), basket);
    EXPECT_EQ(client(), u"0.0|0.0|0.0|0%");
    EXPECT_EQ(books.stored("SELECT 数量, 实付 FROM buyList"), u"0.0|0.0");
}

TEST_F(Basket, SettlementKeepsTheBuyersRowAndTheFilterOfTheRegister) {
    books.addClient("7", "同号的另一家");
    books.addClient("8");
    open();
    session().clientTable->setFilter("客户编号 = '7'");
    session().clientTable->setSort("单位名称");
    session().clientTable->MoveLast();
    const QString company = session().clientTable->Fields("单位名称").text();
    put("p1", "1");
    settle(session(), basket);
    EXPECT_EQ(session().clientTable->Filter(), u"客户编号 = '7'");
    EXPECT_EQ(session().clientTable->Fields("单位名称").text(), company);
    EXPECT_EQ(books.stored("SELECT count(*) FROM clientTable WHERE 消费合计 = 5"), u"1");
}

TEST_F(Basket, AProductThatIsGoneIsPassedOver) {
    open();
    put("p1", "1");
    put("p2", "1");
    session().productTable->MoveLast();
    session().productTable->Delete();
    settle(session(), basket);
    EXPECT_EQ(stock(), u"p1|9.0");
    EXPECT_EQ(books.stored("SELECT count(*) FROM buyList"), u"2");
}

TEST_F(Basket, WithTheCustomersCursorOnAnotherRowTheFiguresGoThere) {
    books.addClient("8");
    open();
    put("p1", "1");
    session().clientTable->MoveLast();
    settle(session(), basket);
    EXPECT_EQ(books.stored("SELECT 客户编号, 消费合计 FROM clientTable ORDER BY rowid"), u"7|0.0;8|5.0");
}

TEST_F(Basket, NothingIsSettledWithAnEmptyBasketOrClosedCursors) {
    open();
    EXPECT_FALSE(canSettle(session(), basket));
    put("p1", "1");
    EXPECT_TRUE(canSettle(session(), basket));
    session().buyList->Close();
    EXPECT_FALSE(canSettle(session(), basket));
}

TEST_F(Basket, AnOrderNumberIsNotUsedUpWithoutItsLine) {
    open();
    put("p1", "1");
    basket->Fields("订单号").setValue(QStringLiteral("other"));
    basket->Update();
    settle(session(), basket);
    EXPECT_EQ(counterText(session().nextOrderNum), u"1001");
}

TEST_F(Basket, CustomerNumbersWithApostrophesSettle) {
    books.execute("UPDATE clientTable SET 客户编号 = 'o''n'");
    books.execute("UPDATE productTable SET 产品编号 = 'p''1' WHERE 产品编号 = 'p1'");
    open();
    put("p'1", "1");
    settle(session(), basket);
    EXPECT_EQ(client(), u"5.0|3.0|1.0|60%");
    EXPECT_EQ(stock(), u"p'1|9.0;p2|3.0");
}

} // namespace
