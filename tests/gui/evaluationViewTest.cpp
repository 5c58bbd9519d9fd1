// The evaluation of customers through its real view: whole table, period, cut.
#include "controls/dataGrid.h"
#include "controls/figureCard.h"
#include "reports/paperView.h"
#include "support/evaluationShop.h"

namespace {

class EvaluationView : public EvaluationShop {
protected:
    QStringList card() {
        QStringList texts;
        for (const CardText& each : drive->find<FigureCard>("Picture1")->texts())
            texts << each.text;
        return texts;
    }
};

TEST_F(EvaluationView, TheWholeTableStandsHighestFirstWithItsIndicators) {
    fill();
    open();
    EXPECT_EQ(main->host().active()->caption(), u"客户资料统计");
    EXPECT_EQ(clients(), u"1 2 3");
    EXPECT_EQ(indicators(), u"100 100% 60 100% 10 100% 3 100%");
    EXPECT_EQ(period(), u"2003-6-1/2004-5-21");
    EXPECT_EQ(drive->text("Text1"), u"1/3");
    EXPECT_EQ(card(), (QStringList{"2003-6-1/2004-5-21", "分析显示(按指标)：", "全库数据", "购买金额：",
                                   "100", "100%", "差额利润：", "60", "100%", "购买数：", "10", "100%",
                                   "客户数：", "3", "100%"}));
    EXPECT_FALSE(enabled("Toolbar1(3)")) << "no search here";
    EXPECT_TRUE(enabled("Toolbar1(7)"));
}

TEST_F(EvaluationView, WithoutCustomersItIsAnEmptyLibrary) {
    open();
    EXPECT_EQ(drive->text("Text1"), u"0/0");
    EXPECT_EQ(indicators(), u"0 0% 0 0% 0 0% 0 0%");
    EXPECT_EQ(period(), u"/");
    EXPECT_EQ(card().value(2), u"空库");
}

TEST_F(EvaluationView, APeriodShowsItsWordsAndItsOwnTotalsAndTheWholeComesBack) {
    fill();
    open();
    choosePeriod("2004");
    EXPECT_EQ(clients(), u"1 2 3");
    EXPECT_EQ(indicators(), u"80 100% 48 100% 8 100% 3 100%");
    EXPECT_EQ(period(), u"2004/");
    EXPECT_EQ(session().periodDate1, u"2004");
    drive->click("Toolbar1(4)");
    EXPECT_EQ(indicators(), u"100 100% 60 100% 10 100% 3 100%");
    EXPECT_EQ(period(), u"2003-6-1/2004-5-21") << "the period's filter is off the lines";
    EXPECT_EQ(session().showSource, ShowSource::Clients);
}

TEST_F(EvaluationView, TheExactDaysOfAPeriodStandInTipsStatusAndBelowThePage) {
    fill();
    open();
    EXPECT_EQ(drive->find<QWidget>("Text2")->toolTip(), u"启始时间");
    EXPECT_EQ(drive->find<QWidget>("Text3")->toolTip(), u"终止时间");
    choosePeriod("2004");
    EXPECT_EQ(status(), u"统计时间：2004-1-1 至 2004-12-31");
    EXPECT_EQ(drive->find<QWidget>("Text2")->toolTip(), u"启始时间\n2004-1-1 至 2004-12-31");
    const auto below = [this](const char* report) {
        drive->click("Toolbar1(7)");
        bool said = false;
        for (const PageRecording::Item& item :
             window(report)->findChild<PaperSheet*>("Picture2")->recording().items())
            said = said || item.text == u"统计时间：2004-1-1 至 2004-12-31";
        window(report)->close();
        return said;
    };
    EXPECT_TRUE(below("print_rs7"));
    cutByRank("1");
    EXPECT_TRUE(below("print_rs8")) << "a cut of the period";
    drive->click("Toolbar1(4)");
    EXPECT_EQ(drive->find<QWidget>("Text2")->toolTip(), u"启始时间");
    EXPECT_FALSE(below("print_rs1"));
}

TEST_F(EvaluationView, ACutOfAFilteredPeriodShowsWhomItsFiguresSpeakOf) {
    fill();
    open();
    drive->choose("show_whole_client");
    choosePeriod("2004");
    drive->click("Toolbar1(3)");
    Driver search(*window("searchFm1"));
    search.clickItem("List1", "单位名称");
    search.type("Text2", "单位3");
    search.click("Command1");
    EXPECT_EQ(clients(), u"3");
    cutByRank("1");
    EXPECT_EQ(clients(), u"3");
    EXPECT_EQ(of("Label6"), u"10");
    EXPECT_EQ(of("Label19"), u"33.33%") << "of all customers of the period";
    EXPECT_EQ(books.stored("SELECT 客户编号 FROM clientTable3"), u"3");
}

TEST_F(EvaluationView, ACutWhoseTableAnEmptyIntervalHasDroppedPrintsNothing) {
    fill();
    open();
    cutByRank("2");
    drive->choose("buy_frequence");
    Driver(*window("buy_FrequenceFm1")).clickCell("DataGrid3", 0, "3");
    window("buy_FrequenceFm1")->close();
    EXPECT_EQ(inFront(), u"statisticFm1");
    drive->click("Toolbar1(7)");
    for (const char* report : {"print_rs1", "print_rs7", "print_rs8"})
        EXPECT_EQ(window(report), nullptr) << report;
    EXPECT_EQ(of("Label6"), u"90");
    drive->click("Toolbar1(4)");
    EXPECT_EQ(clients(), u"1 2 3");
    cutByRank("1");
    EXPECT_EQ(books.stored("SELECT 客户编号 FROM clientTable3"), u"1") << "the table is made again";
}

TEST_F(EvaluationView, APeriodIsChosenOverACutUnderASearchOfTheRegister) {
    fill();
    open();
    cutByRank("1");
    drive->choose("show_stock");
    session().clientTable->setFilter("客户编号 = 'nobody'");
    drive->choose("data_statistic1");
    EXPECT_EQ(clients(), u"1");
    choosePeriod("2003");
    EXPECT_EQ(clients(), u"1");
    EXPECT_EQ(of("Label6"), u"20");
}

TEST_F(EvaluationView, AQuestionOverAnEmptyPeriodIsAskedAndNothingIsCut) {
    fill();
    books.addLine("9007", "gone", "p1", "2001-01-01", 1, 10, 4);
    open();
    choosePeriod("2001");
    EXPECT_EQ(drive->rows("DataGrid1"), 0);
    EXPECT_EQ(drive->find<DataGrid>("DataGrid1")->emptyText(), u"该时间段没有数据")
        << "and not that the shop has no customers";
    cutByRank("1");
    EXPECT_TRUE(prompts.done());
    EXPECT_EQ(indicators(), u"0 0% 0 0% 0 0% 0 0%");
    EXPECT_EQ(session().showSource, ShowSource::PeriodClients);
}

TEST_F(EvaluationView, ARatioCutShowsWhoBringsTheShareAndGoesWithTheView) {
    fill();
    open();
    cutByTurnover("80");
    EXPECT_EQ(clients(), u"1 2");
    EXPECT_EQ(indicators(), u"90 90% 54 90% 9 90% 2 66.66%");
    EXPECT_EQ(card().value(2), u"占总销售额百分率");
    EXPECT_EQ(drive->text("Text1"), u"1/2");
    EXPECT_EQ(books.stored("SELECT 客户编号 FROM clientTable3"), u"1;2");
    EXPECT_EQ(session().showSource, ShowSource::BestClients);
    drive->choose("show_stock");
    drive->choose("data_statistic1");
    EXPECT_EQ(clients(), u"1 2 3");
    EXPECT_EQ(card().value(2), u"全库数据");
}

TEST_F(EvaluationView, ARankingCutSurvivesAChangeOfView) {
    fill();
    open();
    cutByRank("1");
    EXPECT_EQ(clients(), u"1");
    EXPECT_EQ(indicators(), u"60 60% 36 60% 6 60% 1 33.33%");
    drive->choose("show_stock");
    EXPECT_EQ(session().showSource, ShowSource::Products);
    drive->choose("data_statistic1");
    EXPECT_EQ(clients(), u"1");
    EXPECT_EQ(indicators(), u"60 60% 36 60% 6 60% 1 33.33%");
    EXPECT_EQ(card().value(2), u"最高购买金额客户数");
    EXPECT_EQ(session().showSource, ShowSource::BestClients);
    drive->choose("data_statistic1");
    EXPECT_EQ(clients(), u"1 2 3") << "asked for again in front, it goes back to the whole table";
}

TEST_F(EvaluationView, ACancelledQuestionOverACutLeavesItOnScreen) {
    fill();
    open();
    cutByRank("2");
    for (const std::optional<QString>& answer : {std::optional<QString>(), std::optional<QString>("")}) {
        cut("proporation_analysis2", "最高购买金额客户数，请输入1到100的整数！", "按购买金额确定客户数",
            answer);
        EXPECT_EQ(clients(), u"1 2");
        EXPECT_EQ(session().showSource, ShowSource::BestClients);
    }
}

TEST_F(EvaluationView, EachQuestionOfTheMenuHasItsWords) {
    fill();
    start();
    const std::tuple<const char*, const char*, const char*, const char*> questions[] = {
        {"proporation_analysis1", "占总销售额百分率的客户数，请输入1到100的整数！",
         "按销售额的百分率确定客户数", "占总销售额百分率"},
        {"proporation_analysis2", "最高购买金额客户数，请输入1到100的整数！", "按购买金额确定客户数",
         "最高购买金额客户数"},
        {"proporation_analysis3", "占总差额利润百分率的客户数，请输入1到100的整数！",
         "按差额利润百分率确定客户数", "占总差额利润百分率"},
        {"proporation_analysis4", "最高差额利润客户数，请输入1到100的整数！", "按差额利润确定客户数",
         "最高差额利润客户数"},
        {"proporation_analysis5", "占总销售量百分率的客户数，请输入1到100的整数！",
         "按销售量百分率确定客户数", "占总销售量百分率"},
        {"proporation_analysis6", "最高购买量客户数，请输入1到100的整数！", "按购买量确定客户数",
         "最高购买量客户数"}};
    for (const auto& [command, prompt, title, caption] : questions) {
        drive->choose("show_stock");
        cut(command, prompt, title, "1");
        EXPECT_EQ(inFront(), u"statisticFm1") << command;
        EXPECT_EQ(card().value(2), QString::fromUtf8(caption)) << command;
        EXPECT_EQ(clients(), u"1") << command;
    }
}

TEST_F(EvaluationView, APeriodGivenUpShowsTheWholeTable) {
    fill();
    open();
    cutByRank("1");
    drive->click("Toolbar1(2)");
    window("timeDefineFm2")->close();
    EXPECT_EQ(clients(), u"1 2 3");
    EXPECT_EQ(session().showSource, ShowSource::Clients);
    choosePeriod("2004");
    drive->click("Toolbar1(2)");
    window("timeDefineFm2")->close();
    EXPECT_EQ(indicators(), u"100 100% 60 100% 10 100% 3 100%");
}

TEST_F(EvaluationView, TheMoveButtonsGoThroughTheCut) {
    fill();
    open();
    cutByRank("2");
    drive->click("Command1(3)");
    EXPECT_EQ(drive->text("Text1"), u"2/2");
    EXPECT_EQ(session().clientTable3->AbsolutePosition(), 2);
    drive->click("Command1(0)");
    EXPECT_EQ(drive->text("Text1"), u"1/2");
}

TEST_F(EvaluationView, ASortOfTheCutSortsTheCutAndLeavesTheSource) {
    fill();
    open();
    cutByRank("2");
    drive->click("Toolbar1(5)");
    Driver dialog(*window("orderFm1"));
    dialog.clickItem("List1", "消费合计");
    dialog.click("Command1");
    EXPECT_EQ(clients(), u"2 1");
    EXPECT_EQ(session().clientShowSource, ShowSource::Clients);
}

TEST_F(EvaluationView, ASearchWithoutHitsInTheRegisterHidesNobody) {
    fill();
    start();
    session().clientTable->setFilter("客户编号 = 'nobody'");
    drive->choose("data_statistic1");
    EXPECT_EQ(clients(), u"1 2 3");
    drive->choose("management_client");
    session().clientTable->setFilter("客户编号 = 'nobody'");
    cutByTurnover("1");
    EXPECT_EQ(clients(), u"1");
}

TEST_F(EvaluationView, WithoutCustomersAQuestionIsNotAsked) {
    start();
    drive->choose("proporation_analysis1");
    EXPECT_EQ(inFront(), u"statisticFm1");
    EXPECT_TRUE(prompts.done());
}

} // namespace
