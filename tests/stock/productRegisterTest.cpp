#include "stock/productRegister.h"

#include "data/searchTexts.h"
#include "support/errorOf.h"
#include "support/testBooks.h"

#include <gtest/gtest.h>

namespace {

class ProductRegister : public testing::Test {
protected:
    Session& session() { return books.session(); }
    void open() {
        session().open_rs();
        session().reopen(session().product_Bank, "Select * From product_Bank");
    }
    QStringList boxes(const QString& number, const QString& quantity = "5", const QString& cost = "2",
                      const QString& price = "3") {
        return {"2004-11-21", number, "名", "规", "地", "厂", "个", quantity, cost, "95", price};
    }
    QString stock() { return books.stored("SELECT 产品编号, 数量 FROM productTable ORDER BY rowid"); }
    QString history() { return books.stored("SELECT 产品编号, 数量 FROM product_Bank ORDER BY rowid"); }
    QString counter() { return books.stored("SELECT counterNum3 FROM counterCode"); }
    static std::optional<QString> messageOf(const std::optional<BoxFault>& fault) {
        return fault ? std::optional(fault->message) : std::nullopt;
    }
    TestBooks books;
};

TEST_F(ProductRegister, AnEmptyFormHasTodayAndZeros) {
    EXPECT_EQ(clearRecord(session()), (QStringList{"2004-11-21", "", "", "", "", "", "", "0", "0", "", "0"}));
}

TEST_F(ProductRegister, TheCurrentProductReadsNullAsEmpty) {
    books.addProduct("p1", "纸", 10, 2, 5);
    books.execute("UPDATE productTable SET 规格 = NULL, 成本 = NULL");
    open();
    EXPECT_EQ(displayRecord(session()),
              (QStringList{"2004-1-5", "p1", "纸", "", "产地p1", "厂家p1", "个", "10", "", "100", "5"}));
}

TEST_F(ProductRegister, EveryTestOfANewProductInOrder) {
    EXPECT_EQ(messageOf(text2_Check(boxes("1"))), std::nullopt);
    const std::pair<int, const char*> faults[] = {{0, "日期格式错误！"}, {1, "请输入‘产品编号’！"},
                                                  {2, "请输入‘品名’！"}, {7, "请输入产品‘数量’！"},
                                                  {8, "请输入‘成本’！"}, {10, "请输入‘出售价’！"}};
    for (const auto& [box, message] : faults) {
        QStringList texts = boxes("1");
        texts[box] = " ";
        EXPECT_EQ(messageOf(text2_Check(texts)), QString(message));
        EXPECT_EQ(text2_Check(texts)->box, box);
        texts[7] = box == 7 ? "" : texts[7];
        EXPECT_EQ(messageOf(text2_Check2(texts)), box == 7 ? std::nullopt : std::optional(QString(message)));
    }
    EXPECT_EQ(messageOf(text2_Check(QStringList(11, QString()))), QString("日期格式错误！"));
    EXPECT_EQ(messageOf(text2_Check(boxes("1", "abc"))), QString("请输入产品‘数量’！"));
    QStringList texts = boxes("1");
    texts[0] = "2004-2-30";
    EXPECT_EQ(messageOf(text2_Check(texts)), QString("日期格式错误！"));
}

TEST_F(ProductRegister, TheTextZeroIsRefusedButZeroPointZeroAndNegativeNumbersPass) {
    EXPECT_EQ(messageOf(text2_Check(boxes("1", "0"))), QString("请输入产品‘数量’！"));
    EXPECT_EQ(messageOf(text2_Check(boxes("1", "0.0"))), std::nullopt);
    EXPECT_EQ(messageOf(text2_Check(boxes("1", "-3"))), std::nullopt);
    EXPECT_EQ(messageOf(text2_Check(boxes("1", "5", "0"))), QString("请输入‘成本’！"));
    EXPECT_EQ(messageOf(text2_Check(boxes("1", "5", "2", "0"))), QString("请输入‘出售价’！"));
}

TEST_F(ProductRegister, ANewProductWritesOneRowToHistoryAndStockInOneCommit) {
    open();
    const int commits = session().cn.commits();
    EXPECT_EQ(registerProduct(session(), boxes("1001")), RegisterResult::Saved);
    EXPECT_EQ(session().cn.commits(), commits + 1);
    const QString row = "1|2004-11-21|1001|名|规|地|厂|个|5.0|2.0|95|3.0";
    EXPECT_EQ(books.stored("SELECT * FROM productTable"), row);
    EXPECT_EQ(books.stored("SELECT * FROM product_Bank"), row);
    EXPECT_EQ(counter(), u"1002.0");
    EXPECT_EQ(counterText(session().nextProductNum), u"1002");
}

TEST_F(ProductRegister, ANumericTextThatValReadsOtherwiseIsStoredAsValReadsIt) {
    open();
    registerProduct(session(), boxes("1", "1,000"));
    EXPECT_EQ(stock(), u"1|1.0");
}

TEST_F(ProductRegister, ANumberTypedByHandLeavesTheCounter) {
    open();
    registerProduct(session(), boxes("X9"));
    EXPECT_EQ(counter(), u"1001.0");
    EXPECT_EQ(counterText(session().nextProductNum), u"1001");
    EXPECT_EQ(session().product_Bank->AbsolutePosition(), 1);
}

TEST_F(ProductRegister, AProposedNumberThatIsTakenIsRefusedAndProposedAgain) {
    open();
    registerProduct(session(), boxes("1002"));
    registerProduct(session(), boxes("1001"));
    EXPECT_EQ(counterText(session().nextProductNum), u"1002");
    EXPECT_EQ(registerProduct(session(), boxes("1002")), RegisterResult::Duplicate);
    EXPECT_EQ(counterText(session().nextProductNum), u"1002") << "the counter does not move";
    EXPECT_EQ(stock(), u"1002|5.0;1001|5.0");
}

TEST_F(ProductRegister, TheNumberMovesOnWhoeverHoldsTheProposedOne) {
    open();
    registerProduct(session(), boxes("1001"));
    registerProduct(session(), boxes("1003"));
    EXPECT_EQ(counter(), u"1002.0");
    registerProduct(session(), boxes("1002"));
    EXPECT_EQ(counter(), u"1003.0");
    registerProduct(session(), boxes("Y"));
    EXPECT_EQ(counter(), u"1004.0");
}

TEST_F(ProductRegister, TheNumberOfADeletedProductStaysTaken) {
    open();
    registerProduct(session(), boxes("1001"));
    deleteProduct(session());
    EXPECT_EQ(stock(), u"");
    EXPECT_EQ(history(), u"1001|5.0");
    EXPECT_EQ(registerProduct(session(), boxes("1001")), RegisterResult::Duplicate);
    EXPECT_EQ(stock(), u"");
}

TEST_F(ProductRegister, BlanksRoundANumberMakeNoOtherNumberOfIt) {
    open();
    registerProduct(session(), boxes("1001"));
    EXPECT_EQ(registerProduct(session(), boxes(" 1001 ")), RegisterResult::Duplicate);
    EXPECT_EQ(registerProduct(session(), boxes(" A7 ")), RegisterResult::Saved);
    EXPECT_EQ(stock(), u"1001|5.0;A7|5.0");
}

TEST_F(ProductRegister, ATextTooLongForItsColumnWritesNothingAtAll) {
    open();
    QStringList texts = boxes("1001");
    texts[2] = QString(100'000, u'甲');
    EXPECT_EQ(registerProduct(session(), texts), RegisterResult::WriteFailed);
    EXPECT_EQ(stock() + history(), u"");
    EXPECT_EQ(session().product_Bank->RecordCount(), 0);
    EXPECT_EQ(counter(), u"1001.0");
}

TEST_F(ProductRegister, WithoutACounterRowNothingIsWrittenToItAndNothingFails) {
    books.execute("DELETE FROM counterCode");
    open();
    registerProduct(session(), boxes("5"));
    EXPECT_EQ(stock(), u"5|5.0");
    EXPECT_EQ(counterText(session().nextProductNum), u"");
}

TEST_F(ProductRegister, TheCounterBeyond32BitsIsAnOverflow) {
    books.execute("UPDATE counterCode SET counterNum3 = 2147483647");
    open();
    EXPECT_EQ(errorOf([&] { registerProduct(session(), boxes("2147483647")); }), ErrorNumber::Overflow);
    EXPECT_EQ(stock(), u"2147483647|5.0") << "what was written before the failure stays";
}

TEST_F(ProductRegister, StockInAddsAHistoryRowAndNothingButTheQuantity) {
    books.addProduct("p1", "纸", 10, 2, 5);
    open();
    QStringList texts = displayRecord(session());
    texts[0] = "2004-11-21";
    texts[8] = "9";
    const int commits = session().cn.commits();
    ASSERT_TRUE(canAddStock(session(), "2.5"));
    EXPECT_TRUE(addStock(session(), texts, "2.5", {}));
    EXPECT_EQ(session().cn.commits(), commits + 1);
    EXPECT_EQ(books.stored("SELECT 日期, 数量, 成本, 单价 FROM productTable"), u"2004-01-05|12.5|2.0|5.0");
    EXPECT_EQ(books.stored("SELECT 日期, 数量, 成本 FROM product_Bank ORDER BY rowid"),
              u"2004-01-05|10.0|2.0;2004-11-21|2.5|9.0");
}

TEST_F(ProductRegister, ANegativeStockInIsAccepted) {
    books.addProduct("p1", "纸", 2, 2, 5);
    open();
    EXPECT_TRUE(addStock(session(), displayRecord(session()), "-3", {}));
    EXPECT_EQ(stock(), u"p1|-1.0");
    EXPECT_EQ(history(), u"p1|2.0;p1|-3.0");
}

TEST_F(ProductRegister, AnswersThatAreNoNumberOrLeaveADoubleAreRefused) {
    books.addProduct("p1", "纸", 1e308, 2, 5);
    open();
    for (const char* answer : {"", "abc", "5%", "1e999", "1e308"})
        EXPECT_FALSE(canAddStock(session(), answer)) << answer;
    EXPECT_TRUE(canAddStock(session(), "-3"));
}

TEST_F(ProductRegister, DeletingGoesToTheNeighbour) {
    books.addProduct("p1", "纸", 1, 2, 5);
    books.addProduct("p2", "纸", 2, 2, 5);
    open();
    session().productTable->MoveLast();
    deleteProduct(session());
    EXPECT_EQ(session().productTable->Fields("产品编号").text(), u"p1");
    deleteProduct(session());
    EXPECT_EQ(session().productTable->RecordCount(), 0);
    EXPECT_EQ(history(), u"p1|1.0;p2|2.0");
}

TEST_F(ProductRegister, TheSearchComparesTheNumberAndLooksIntoFourTexts) {
    EXPECT_EQ(productSearch("x"),
              u"产品编号 = 'x' Or 品名 Like '%x%' Or 规格 Like '%x%' Or 产地 Like '%x%' Or 厂家 Like '%x%'");
    books.addProduct("1", "纸", 1, 2, 5);
    books.addProduct("11", "笔", 2, 2, 5);
    open();
    session().productTable->setFilter(productSearch("1"));
    EXPECT_EQ(session().productTable->RecordCount(), 2) << "equal to the first number, inside texts of both";
    session().productTable->setFilter(productSearch("笔"));
    EXPECT_EQ(session().productTable->RecordCount(), 1);
    EXPECT_EQ(errorOf([&] { session().productTable->setFilter(productSearch("'")); }), ErrorNumber::BadText);
}

} // namespace
