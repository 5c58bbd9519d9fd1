// What stands between the views of the stock and others.
#include "support/shopWindow.h"
#include "support/smallShop.h"

#include <QListWidget>

namespace {

class Gateways : public ShopWindow {
protected:
    Gateways() {
        addSmallShop(books);
        books.addLine("1", "7", "p1", "2004-05-07", 1, 1, 1);
    }
    /// A stand-in for the list of sales.
    void registerSales() {
        class Sales : public View {
        public:
            Sales()
                : View("statisticFm2", "产品销售显示") {}
        };
        main->host().registerView("statisticFm2", [] { return new Sales; });
    }
};

TEST_F(Gateways, StockInLeadsToTheSalesWithTheirFilterOff) {
    start();
    registerSales();
    drive->choose("maintain_product");
    session().buyList->setFilter("客户编号 = 'nobody'");
    drive->click("Command9");
    EXPECT_TRUE(main->host().isActive("statisticFm2"));
    EXPECT_EQ(session().buyList->Filter(), u"");
}

TEST_F(Gateways, StockInDoesNotLeadToSalesThatAreNotThere) {
    books.execute("DELETE FROM buyList");
    start();
    registerSales();
    drive->choose("maintain_product");
    drive->click("Command9");
    EXPECT_TRUE(main->host().isActive("productRegisterFm1"));
}

TEST_F(Gateways, TheStockOfAPeriodPrintsTheSalesStockAndAsksItForRows) {
    start();
    drive->choose("show_stock");
    drive->click("Toolbar1(2)");
    Driver time(*window("timeDefineFm2"));
    time.pick("Combo1", "2004");
    time.click("Option4"); // before 2004: no product was booked then
    time.click("Command1");
    EXPECT_EQ(session().showSource, ShowSource(4));
    EXPECT_EQ(drive->rows("DataGrid1"), 0);
    session().productTable->clearFilter();
    drive->click("Toolbar1(7)");
    ASSERT_NE(window("print_rs3"), nullptr) << "the copy is empty, the sales stock is not";
    window("print_rs3")->close();
    session().productTable->setFilter("产品编号 = 'nothing'");
    drive->click("Toolbar1(7)");
    EXPECT_EQ(window("print_rs3"), nullptr);
}

TEST_F(Gateways, ANewCustomerIsTheCustomerInHand) {
    start();
    drive->click("Command3");
    drive->type("Text3(8)", "新行");
    drive->type("Text3(1)", "赵");
    prompts.expectMessage("已保存新记录！");
    drive->click("Command5");
    EXPECT_EQ(session().currentClientNum, drive->text("Text3(0)"));
    EXPECT_EQ(session().currentClientName, u"新行");
    EXPECT_EQ(session().currentContact, u"赵");
}

TEST_F(Gateways, ANewCustomerSavedToGoOnIsTheCustomerInHand) {
    start();
    drive->click("Command3");
    const QString number = drive->text("Text3(0)");
    drive->type("Text3(8)", "新行");
    prompts.expectAsk("记录已保存，继续添加新客户吗？", true);
    drive->click("Command3");
    EXPECT_EQ(session().currentClientNum, number);
    EXPECT_EQ(session().currentClientName, u"新行");
}

TEST_F(Gateways, TheWindowOfOneProductKeepsItWhateverElseIsPickedOut) {
    start();
    drive->choose("show_stock");
    drive->clickCell("DataGrid1", 0, "品名");
    const QString product = drive->cell("DataGrid1", 0, "产品编号");
    drive->click("Command5");
    TopWindow* one = window("stockFm3");
    ASSERT_NE(one, nullptr);
    session().reopen(session().scratch, "Select * From clientTable");
    QEvent again(QEvent::WindowActivate);
    QCoreApplication::sendEvent(one, &again);
    EXPECT_EQ(one->findChild<QListWidget*>("List1")->item(0)->text(), "产品编号----" + product);
}

} // namespace
