// Ways through the statistics as an owner goes them, on an empty, a small and a filtered shop.
#include "controls/dataGrid.h"
#include "reports/paperView.h"
#include "reports/reportForm.h"
#include "support/evaluationShop.h"

namespace {

/// How the shop stands when a story begins.
enum class State { Empty, Small, Filtered };

class Stories : public EvaluationShop, public testing::WithParamInterface<State> {
protected:
    bool empty() const { return GetParam() == State::Empty; }
    void begin() {
        if (!empty())
            fill();
        start();
        leaveFilters();
    }
    /// What a search without hits leaves in the register and elsewhere.
    void leaveFilters() {
        if (GetParam() != State::Filtered)
            return;
        session().clientTable->setFilter("客户编号 = 'nobody'");
        session().buyList->setFilter("客户编号 = 'nobody'");
        session().productTable->setFilter("产品编号 = 'none'");
    }
    /// Presses print. Out: the texts on the report's page, none where nothing opened.
    QStringList print(const char* report) {
        return pageOf(report, [this] { drive->click("Toolbar1(7)"); });
    }
    QStringList pageOf(const char* report, const std::function<void()>& press) {
        press();
        TopWindow* form = window(report);
        if (!form)
            return {};
        QStringList texts;
        for (const PageRecording::Item& item : form->findChild<PaperSheet*>("Picture2")->recording().items())
            if (item.font && item.text != u"|" && !item.text.trimmed().isEmpty())
                texts << item.text.trimmed();
        form->close();
        EXPECT_TRUE(main->isVisible() || window("buy_FrequenceFm1") || window("clientPlaceFm1"));
        EXPECT_TRUE(main->isEnabled());
        return texts;
    }
    const QString kWhole = QStringLiteral("2003-6-1/2004-5-21");
};

INSTANTIATE_TEST_SUITE_P(Shops, Stories, testing::Values(State::Empty, State::Small, State::Filtered));

TEST_P(Stories, WholePeriodWholePrintTheHeadSpeaksOfTheWhole) {
    begin();
    drive->choose("data_statistic1");
    if (empty()) {
        drive->click("Toolbar1(2)");
        EXPECT_EQ(window("timeDefineFm2"), nullptr);
        EXPECT_TRUE(print("print_rs1").isEmpty());
        return;
    }
    choosePeriod("2004");
    const QStringList ofPeriod = print("print_rs7");
    EXPECT_TRUE(ofPeriod.contains("时间：2004/")) << ofPeriod.join(' ').toStdString();
    EXPECT_TRUE(ofPeriod.contains("消费总合：80"));
    drive->click("Toolbar1(4)");
    const QStringList whole = print("print_rs1");
    EXPECT_TRUE(whole.contains("时间：" + kWhole));
    EXPECT_TRUE(whole.contains("消费总合：100"));
    EXPECT_TRUE(whole.contains("差额利润总合：60"));
    EXPECT_TRUE(whole.contains("购买数总合：10"));
    EXPECT_TRUE(whole.contains("联系人1"));
}

TEST_P(Stories, RankingCutFrequencyListBackPrint) {
    begin();
    if (empty()) {
        drive->choose("proporation_analysis2");
        drive->choose("buy_frequence");
        EXPECT_EQ(window("buy_FrequenceFm1"), nullptr);
        return;
    }
    cutByRank("2");
    EXPECT_EQ(clients(), u"1 2");
    const QStringList ofCut = print("print_rs8");
    EXPECT_TRUE(ofCut.contains("消费总合：90"));
    EXPECT_FALSE(ofCut.contains("联系人3"));
    drive->choose("buy_frequence");
    Driver(*window("buy_FrequenceFm1")).clickCell("DataGrid3", 0, "4");
    EXPECT_EQ(clients(), u"2");
    drive->choose("data_statistic1");
    EXPECT_EQ(clients(), u"1 2 3") << "the cut has lost its table and the view is back at its source";
    EXPECT_EQ(session().showSource, ShowSource::Clients);
    EXPECT_TRUE(print("print_rs1").contains("消费总合：100"));
}

TEST_P(Stories, CutAnotherViewBack) {
    begin();
    if (empty())
        return;
    cutByTurnover("50");
    EXPECT_EQ(clients(), u"1");
    drive->choose("show_stock");
    drive->choose("data_statistic1");
    EXPECT_EQ(clients(), u"1 2 3");
    cutByRank("2");
    drive->choose("show_stock");
    drive->choose("data_statistic1");
    EXPECT_EQ(clients(), u"1 2");
    EXPECT_TRUE(print("print_rs8").contains("消费总合：90"));
}

TEST_P(Stories, APeriodAndAStockViewBeforeTheDistribution) {
    begin();
    drive->choose("data_statistic1");
    if (empty()) {
        drive->choose("distribution_analysis1");
        EXPECT_EQ(window("clientPlaceFm1"), nullptr);
        return;
    }
    choosePeriod("2003");
    drive->choose("distribution_analysis1");
    Driver places(*window("clientPlaceFm1"));
    EXPECT_EQ(places.text("Text2"), u"1") << "customer 1 alone bought in 2003";
    const QStringList page = pageOf("print_clientplace", [&] { places.click("Command1"); });
    EXPECT_TRUE(page.contains("北京"));
    EXPECT_FALSE(page.contains("上海"));
    places.click("Command2");
    drive->choose("show_stock");
    drive->choose("distribution_analysis1");
    EXPECT_EQ(Driver(*window("clientPlaceFm1")).text("Text2"), u"3");
}

TEST_P(Stories, BothDistributionsOpenPrintEachItsOwnRows) {
    begin();
    if (empty())
        return;
    drive->choose("distribution_analysis1");
    drive->choose("distribution_analysis2");
    Driver places(*window("clientPlaceFm1"));
    Driver industries(*window("clientlineFm1"));
    EXPECT_TRUE(pageOf("print_clientplace", [&] { places.click("Command1"); }).contains("上海"));
    EXPECT_TRUE(pageOf("print_clientline", [&] { industries.click("Command2"); }).contains("纸"));
    EXPECT_TRUE(pageOf("print_clientplace", [&] { places.click("Command1"); }).contains("上海"));
}

TEST_P(Stories, ASearchWithoutHitsInTheRegisterAndThenTheEvaluation) {
    begin();
    drive->choose("management_client");
    view().type("Text2", "没有这样的客户");
    prompts.expectMessage("查询结果为零！");
    view().click("Command2");
    drive->choose("data_statistic1");
    EXPECT_EQ(view().rows("DataGrid1"), empty() ? 0 : 3);
    EXPECT_EQ(of("Label18"), empty() ? u"0" : u"3");
    drive->choose("statistic_achievement");
    EXPECT_EQ(view().rows("DataGrid1"), empty() ? 0 : 2);
    drive->choose("show_whole_client");
    EXPECT_EQ(view().rows("DataGrid1"), empty() ? 0 : 3);
}

TEST_P(Stories, FrequencyListBesideItsWindowPrintBack) {
    begin();
    drive->choose("buy_frequence");
    if (empty())
        return;
    Driver frequency(*window("buy_FrequenceFm1"));
    frequency.clickCell("DataGrid3", 0, "4");
    const QStringList page = print("showprint_rs1");
    EXPECT_TRUE(page.contains("时间：" + kWhole));
    EXPECT_TRUE(page.contains("联系人1")) << "the toolbar prints the customers of the source";
    auto* grid = view().find<DataGrid>("DataGrid1");
    QAction* printThese = nullptr;
    for (QAction* action : main->host().active()->findChildren<QAction*>())
        if (action->text() == u"打印这些客户")
            printThese = action;
    ASSERT_NE(printThese, nullptr);
    ASSERT_NE(grid, nullptr);
    const QStringList these = pageOf("showprint_rs8", [&] { printThese->trigger(); });
    EXPECT_TRUE(these.contains("联系人2"));
    EXPECT_FALSE(these.contains("联系人1"));
    EXPECT_NE(window("buy_FrequenceFm1"), nullptr);
    window("buy_FrequenceFm1")->close();
    EXPECT_TRUE(main->isVisible());
    EXPECT_EQ(clients(), u"2");
}

TEST_P(Stories, CustomersArePrintedFromEachStateOfTheirViews) {
    begin();
    drive->choose("show_whole_client");
    if (empty()) {
        EXPECT_NE(inFront(), u"userInfoFm1");
        return;
    }
    const QStringList whole = print("showprint_rs1");
    EXPECT_TRUE(whole.contains("时间：" + kWhole));
    EXPECT_TRUE(whole.contains("联系人3"));
    choosePeriod("2003");
    const QStringList ofPeriod = print("showprint_rs7");
    EXPECT_TRUE(ofPeriod.contains("时间：2003/")) << ofPeriod.join(' ').toStdString();
    EXPECT_FALSE(ofPeriod.contains("联系人3"));
    drive->choose("buy_frequence");
    Driver(*window("buy_FrequenceFm1")).clickCell("DataGrid3", 0, "4");
    EXPECT_EQ(period(), u"2003-6-1/2003-6-1") << "the days of the period's own lines";
    EXPECT_TRUE(print("showprint_rs7").contains("时间：2003-6-1/2003-6-1"));
    drive->choose("show_whole_client");
    EXPECT_EQ(clients(), u"1") << "the source of the customers stays the period";
    drive->click("Toolbar1(4)");
    EXPECT_EQ(clients(), u"1 2 3");
    EXPECT_TRUE(print("showprint_rs1").contains("时间：" + kWhole));
}

TEST_P(Stories, TheFrequencyWindowOpenAndThenAPurchase) {
    begin();
    drive->choose("buy_frequence");
    if (empty())
        return;
    Driver(*window("buy_FrequenceFm1")).clickCell("DataGrid3", 0, "4");
    sell("2", "1");
    EXPECT_EQ(window("buy_FrequenceFm1"), nullptr);
}

TEST_P(Stories, ASaleAndThenTheStatistics) {
    begin();
    if (empty())
        return;
    cutByRank("1");
    EXPECT_EQ(clients(), u"1");
    sell("3", "20");
    EXPECT_TRUE(prompts.done());
    drive->choose("data_statistic1");
    EXPECT_EQ(clients(), u"1") << "the cut stands as it was made";
    drive->click("Toolbar1(4)");
    EXPECT_EQ(clients(), u"3 1 2");
    EXPECT_EQ(of("Label6"), u"300");
    EXPECT_EQ(period(), u"2003-6-1/2004-11-21");
    cutByTurnover("70");
    EXPECT_EQ(clients(), u"3");
    drive->choose("count_Year");
    EXPECT_EQ(view().cell("DataGrid1", 1, "营业额"), u"280");
    drive->choose("statistic_achievement");
    EXPECT_EQ(view().cell("DataGrid1", 0, "业务员编号"), u"乙");
    drive->choose("buy_frequence");
    EXPECT_EQ(Driver(*window("buy_FrequenceFm1")).cell("DataGrid3", 0, "6"), u"1") << "May, then November";
}

TEST_P(Stories, SalespeoplePeriodHisCustomersSearchBack) {
    begin();
    drive->choose("statistic_achievement");
    if (empty()) {
        EXPECT_EQ(view().text("Text1"), u"0/0");
        view().click("Command4");
        EXPECT_EQ(inFront(), u"statisticFm3");
        EXPECT_TRUE(print("print_rs_sum").isEmpty());
        return;
    }
    choosePeriod("2004");
    const QStringList totals = print("print_rs_sum");
    EXPECT_TRUE(totals.contains("时间：2004/")) << totals.join(' ').toStdString();
    EXPECT_TRUE(totals.contains("营业额总合：80"));
    EXPECT_TRUE(totals.contains("客户数总合：3"));
    view().clickCell("DataGrid1", 0, "业务员编号"); // the report has walked the rows
    view().click("Command4");
    drive->click("Toolbar1(3)");
    Driver search(*window("searchFm1"));
    search.clickItem("List1", "单位名称");
    search.type("Text2", "单位1");
    search.click("Command1");
    EXPECT_EQ(clients(), u"1");
    const QStringList page = print("showprint_rs1A");
    EXPECT_TRUE(page.contains("时间：2004/"));
    EXPECT_FALSE(page.contains("联系人2"));
    drive->choose("statistic_achievement");
    EXPECT_EQ(of("Label5"), u"100");
    EXPECT_EQ(session().showSource, ShowSource::Clerks);
    EXPECT_TRUE(print("print_rs_sum").contains("时间：" + kWhole)) << "the period's filter is off the lines";
}

TEST_P(Stories, AStatisticRunTwiceWithItsWindowOpen) {
    begin();
    for (const char* command :
         {"count_Month", "count_Month", "statistic_achievement", "statistic_achievement", "data_statistic1",
          "data_statistic1", "distribution_analysis1", "distribution_analysis1"})
        drive->choose(command);
    if (empty())
        return;
    EXPECT_EQ(inFront(), u"statisticFm1");
    EXPECT_EQ(Driver(*window("clientPlaceFm1")).rows("DataGrid1"), 2);
    EXPECT_EQ(books.stored("SELECT count(*) FROM clientplaceTable"), u"2");
    EXPECT_EQ(books.stored("SELECT count(*) FROM saleTable"), u"5");
    drive->choose("buy_frequence");
    Driver frequency(*window("buy_FrequenceFm1"));
    frequency.clickCell("DataGrid3", 0, "4");
    drive->choose("buy_frequence");
    EXPECT_EQ(frequency.cell("DataGrid3", 0, "4"), u"1");
    EXPECT_EQ(books.stored("SELECT count(*) FROM buy_Frequence_Table"), u"5");
    frequency.clickCell("DataGrid3", 0, "4");
    EXPECT_EQ(clients(), u"2");
}

TEST_P(Stories, TurnoverPrintsUnderTheTitleOfItsStatistic) {
    begin();
    drive->choose("count_season");
    if (empty()) {
        EXPECT_NE(inFront(), u"saleroom_statistic");
        return;
    }
    QStringList page = print("print_rs_statistic");
    EXPECT_TRUE(page.contains("营 业 额 统 计(按季度)")) << page.join(' ').toStdString();
    EXPECT_TRUE(page.contains("2004-2季度"));
    drive->choose("show_return");
    drive->choose("count_Year");
    page = print("print_rs_statistic");
    EXPECT_TRUE(page.contains("营 业 额 统 计(按年)"));
    EXPECT_FALSE(page.contains("2004-2季度"));
}

} // namespace
