// Ways down to one customer, one order and one product as an owner goes them, on an empty, a small and a
// filtered shop, with a sale in between.
#include "support/drillShop.h"

namespace {

enum class State { Empty, Small, Filtered };

class DrillStories : public DrillShop, public testing::WithParamInterface<State> {
protected:
    bool empty() const { return GetParam() == State::Empty; }
    void begin() {
        if (!empty())
            fillTwoProducts();
        start();
        if (GetParam() != State::Filtered)
            return;
        session().clientTable->setFilter("客户编号 = 'nobody'");
        session().buyList->setFilter("客户编号 = 'nobody'");
        session().productTable->setFilter("产品编号 = 'none'");
    }
    void confirmOrder(const char* order) {
        ASSERT_NE(window("order_Form_NumFm1"), nullptr);
        Driver dialog(*window("order_Form_NumFm1"));
        dialog.clickItem("List1", QString::fromUtf8(order));
        dialog.click("Command1");
    }
    /// Nothing has come up and the command bar is alive.
    void expectNothing() {
        EXPECT_EQ(inFront(), u"dataInputFm1");
        EXPECT_TRUE(main->isEnabled());
        EXPECT_TRUE(main->isVisible());
    }
    bool has(const QStringList& page, std::initializer_list<const char*> texts) {
        bool all = true;
        for (const char* text : texts)
            if (!page.contains(QString::fromUtf8(text))) {
                ADD_FAILURE() << text << " is not in " << page.join(u' ').toStdString();
                all = false;
            }
        return all;
    }
};

INSTANTIATE_TEST_SUITE_P(Shops, DrillStories, testing::Values(State::Empty, State::Small, State::Filtered));

TEST_P(DrillStories, CustomerHisListHisOrdersOneOrderPrint) {
    begin();
    if (empty()) {
        for (const char* command : {"show_whole_client", "show_one_client1", "show_one_client2"})
            drive->choose(QString::fromUtf8(command));
        return expectNothing();
    }
    drive->choose("show_whole_client");
    chooseClient("1");
    drive->choose("show_one_client1");
    EXPECT_EQ(labels({"Label2", "Label11"}), u"70 单位1");
    has(print("showprint_rs6"), {"客户编号：1", "联系人：联系人1", "合计件数：8", "合计金额：70"});
    sell("1", "3");
    drive->choose("show_one_client1");
    EXPECT_EQ(view().rows("DataGrid1"), 4);
    has(print("showprint_rs6"), {"合计件数：11", "合计金额：100"});
    drive->choose("show_one_client2");
    confirmOrder("9002");
    EXPECT_EQ(column("产品编号"), u"p1 p2");
    has(print("showprint_rs22"), {"订单号：9002", "单位名称：单位1", "合计件数：6", "合计金额：50"});
    drive->choose("show_one_client1");
    EXPECT_EQ(of("Label2"), u"100") << "back at his list";
}

TEST_P(DrillStories, CutOneCustomer) {
    begin();
    drive->choose("data_statistic1");
    if (empty()) {
        drive->choose("proporation_analysis2");
        drive->choose("statistic_one_client");
        EXPECT_EQ(inFront(), u"statisticFm1");
        return;
    }
    cutByRank("2");
    sell("2", "1");
    drive->choose("data_statistic1");
    EXPECT_EQ(clients(), u"1 2") << "a ranking cut stays";
    chooseClient("2");
    drive->choose("statistic_one_client");
    EXPECT_EQ(view().rows("DataGrid1"), 3);
    EXPECT_EQ(labels({"Label2", "Label3"}), u"40 33.33%") << "of the 120 that all have paid by now";
    has(print("print_rs_single"), {"购物清单", "消费合计：40", "购物数：4"});
    drive->choose("data_statistic1");
    EXPECT_EQ(clients(), u"1 2");
}

TEST_P(DrillStories, StockListSalesOfAProductPrintDistributionPrint) {
    begin();
    if (empty()) {
        drive->choose("show_stock");
        drive->choose("show_one_sale_product");
        EXPECT_EQ(inFront(), u"stockFm1");
        return;
    }
    sell("3", "2");
    drive->choose("show_stock");
    chooseRow("产品编号", "p1");
    drive->choose("show_one_sale_product");
    const QString sold = QStringLiteral("时间：2003-6-1/") + session().todayText();
    QStringList page = print("showprint_rs_temp");
    has(page, {"纸--产品销售清单", "合计件数：12", "营业额：120"});
    EXPECT_TRUE(page.contains(sold)) << "its own days" << page.join(u' ').toStdString();
    drive->choose("distribution_analysis1");
    Driver(*window("clientPlaceFm1")).click("Command1");
    has(this->page("print_clientplace"), {"客 户 地 区 分 布", "上海", "北京"});
    window("clientPlaceFm1")->close();
    page = print("showprint_rs_temp");
    has(page, {"合计件数：12", "营业额：120"});
    EXPECT_FALSE(page.contains("上海")) << "the product's own rows, not those that were printed since";
}

TEST_P(DrillStories, SalesOneProductItsBuyersBack) {
    begin();
    if (empty()) {
        drive->choose("show_sales");
        prompts.expectMessage("请看库存显示或看销售显示！");
        drive->choose("show_one_sale_product");
        prompts.expectMessage("请先看销售显示！");
        drive->choose("show_product_client");
        return expectNothing();
    }
    drive->choose("show_sales");
    chooseRow("产品编号", "p2");
    view().click("Command3");
    EXPECT_EQ(labels({"Label2", "Label6", "Label8"}), u"p2 2 10");
    drive->choose("show_sales");
    chooseRow("产品编号", "p2");
    view().click("Command4");
    EXPECT_EQ(clients(), u"1");
    sell("2", "1");
    drive->choose("show_sales");
    EXPECT_EQ(labels({"Label5", "Label9", "Label11"}), u"120 13 3");
    view().click("orderStatistic");
    Driver orders(*window("statisticFm5"));
    EXPECT_EQ(orders.rows("DataGrid1"), 6);
    orders.click("print");
    has(this->page("print_rs_order"), {"营业额(合计)/120", "销售量(合计)/13"});
    orders.click("return");
    EXPECT_EQ(inFront(), u"statisticFm2");
    has(print("print_rs2"), {"营业额：120", "客户数：3"});
}

} // namespace
