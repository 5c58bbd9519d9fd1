// Sales of a customer whom the register's search has ceased to find.
#include "support/purchaseWindow.h"

namespace {

class SaleUnderASearch : public Purchase {
protected:
    SaleUnderASearch() { books.addClient("8", "红旗店", "李"); }
    void search(const QString& text) {
        start();
        drive->type("Text2", text);
        drive->click("Command2");
    }
    void rename(const QString& company) {
        drive->type("Text3(8)", company);
        drive->click("Command5");
    }
    void openPurchase() {
        drive->click("Command7");
        ASSERT_NE(window("buyFm1"), nullptr);
        buy = std::make_unique<Driver>(*window("buyFm1"));
    }
    void settle(const QString& quantity, const QString& amount) {
        prompts.expectConfirm(
            QStringLiteral("购买总数量： %1\n总金额：%2\n确认结算吗？").arg(quantity, amount), true);
        buy->click("Command1");
    }
    void sellTwice() {
        put(0, "2");
        settle("2", "10");
        put(0, "1");
        settle("1", "5");
    }
    QString totals() {
        return books.stored("SELECT 客户编号, 消费合计, 购买数 FROM clientTable ORDER BY rowid");
    }
};

TEST_F(SaleUnderASearch, ASecondSettlementWritesABuyerWhomTheSearchNoLongerFinds) {
    search("红木");
    rename("檀木行");
    openPurchase();
    sellTwice();
    EXPECT_EQ(totals(), u"7|15.0|3.0;8|0.0|0.0");
    EXPECT_EQ(books.stored("SELECT 订单号, 数量 FROM buyList"), u"1001|2.0;1002|1.0");
    EXPECT_EQ(books.stored("SELECT 数量 FROM productTable WHERE 产品编号 = 'p1'"), u"7.0");
    buy->click("Command4");
    EXPECT_EQ(drive->text("Text3(0)"), u"7");
    EXPECT_EQ(drive->text("Text1"), u"1/2") << "the search that hid him is off";
}

TEST_F(SaleUnderASearch, TheTotalsNeverGoOntoAnotherCustomerWhomTheSearchStillFinds) {
    search("红");
    rename("檀木行");
    openPurchase();
    sellTwice();
    EXPECT_EQ(totals(), u"7|15.0|3.0;8|0.0|0.0");
    EXPECT_EQ(session().clientTable->Fields("客户编号").text(), u"7");
}

TEST_F(SaleUnderASearch, ASearchThatStillFindsTheBuyerStays) {
    search("红木");
    openPurchase();
    sellTwice();
    buy->click("Command4");
    EXPECT_EQ(totals(), u"7|15.0|3.0;8|0.0|0.0");
    EXPECT_EQ(drive->text("Text1"), u"1/1");
}

TEST_F(SaleUnderASearch, TheSecondOfTwoCustomersOfOneNumberKeepsHisSales) {
    books.addClient("8", "红运店");
    search("红运");
    rename("鸿运店");
    openPurchase();
    sellTwice();
    EXPECT_EQ(totals(), u"7|0.0|0.0;8|0.0|0.0;8|15.0|3.0");
}

} // namespace
