// Turnover, frequency, distribution and salespeople through their real views and windows.
#include "controls/barChart.h"
#include "controls/dataGrid.h"
#include "support/evaluationShop.h"

#include <QAbstractButton>
#include <QApplication>

#include <functional>

namespace {

class StatisticViews : public EvaluationShop {
protected:
    QStringList bars(QWidget& root) {
        QStringList texts;
        for (const Bar& bar : root.findChild<BarChart*>("MSChart1")->bars())
            texts << bar.label + u' ' + QString::number(bar.value);
        return texts;
    }
    QString column(const Driver& where, const char* grid, const char* name) {
        QStringList cells;
        for (int row = 0; row < where.rows(QString::fromUtf8(grid)); ++row)
            cells << where.cell(QString::fromUtf8(grid), row, QString::fromUtf8(name));
        return cells.join(u' ');
    }
    QString column(const char* name) { return column(view(), "DataGrid1", name); }
};

/// Runs at every paint of the grid in a window of this name.
class AtGridPaint : public QObject {
public:
    AtGridPaint(const char* window, std::function<void()> action)
        : m_window(QString::fromUtf8(window))
        , m_action(std::move(action)) {
        qApp->installEventFilter(this);
    }
    bool eventFilter(QObject* watched, QEvent* event) override {
        const auto* widget = qobject_cast<const QWidget*>(watched);
        if (event->type() == QEvent::Paint && widget && widget->window()->objectName() == m_window &&
            qobject_cast<const DataGrid*>(widget->parentWidget()))
            m_action();
        return false;
    }

private:
    QString m_window;
    std::function<void()> m_action;
};

TEST_F(StatisticViews, TurnoverIsATableOfAllAndAChartOfTheLast) {
    fill();
    start();
    drive->choose("count_Month");
    EXPECT_EQ(inFront(), u"saleroom_statistic");
    EXPECT_EQ(main->host().active()->caption(), u"营业额统计");
    EXPECT_EQ(of("Label1"), u"营 业 额 统 计(按月)");
    EXPECT_EQ(column("日期"), u"2003-6 2004-1 2004-3 2004-5");
    EXPECT_EQ(column("营业额"), u"20 10 40 30");
    EXPECT_EQ(view().text("Text1"), u"4/4");
    const QStringList shown = bars(*main);
    EXPECT_EQ(shown.size(), 24);
    EXPECT_EQ(shown.mid(0, 5), (QStringList{"2003-6 20", "2004-1 10", "2004-3 40", "2004-5 30", " 0"}));
    EXPECT_EQ(books.stored("SELECT count(*), sum(实收) FROM saleTable"), u"5|100.0");
    view().click("Command1(0)");
    EXPECT_EQ(view().text("Text1"), u"1/4");
    view().click("Command1(1)");
    EXPECT_EQ(view().text("Text1"), u"1/4");
    view().click("Command1(3)");
    view().click("Command1(2)");
    EXPECT_EQ(view().text("Text1"), u"4/4");
}

TEST_F(StatisticViews, AnotherTurnoverStatisticComesIntoTheSameView) {
    fill();
    start();
    const std::tuple<const char*, const char*, const char*> statistics[] = {
        {"count_Month", "营 业 额 统 计(按月)", "2003-6 2004-1 2004-3 2004-5"},
        {"count_season", "营 业 额 统 计(按季度)", "2003-2季度 2004-1季度 2004-2季度"},
        {"count_half_year", "营 业 额 统 计(按半年)", "2003-上半年 2004-上半年"},
        {"count_Year", "营 业 额 统 计(按年)", "2003年 2004年"},
        {"count_Year", "营 业 额 统 计(按年)", "2003年 2004年"}};
    for (const auto& [command, title, keys] : statistics) {
        drive->choose(command);
        EXPECT_EQ(of("Label1"), QString::fromUtf8(title));
        EXPECT_EQ(column("日期"), QString::fromUtf8(keys));
    }
    EXPECT_EQ(view().text("Text1"), u"2/2");
}

TEST_F(StatisticViews, TurnoverIsAlwaysThatOfAllLines) {
    fill();
    open();
    choosePeriod("2004");
    drive->choose("count_Year");
    EXPECT_EQ(column("营业额"), u"20 80");
}

TEST_F(StatisticViews, WithoutLinesATurnoverStatisticDoesNothing) {
    start();
    drive->choose("show_stock");
    for (const char* command :
         {"count_Month", "count_season", "count_half_year", "count_Year", "buy_frequence"})
        drive->choose(command);
    EXPECT_EQ(inFront(), u"stockFm1");
    EXPECT_EQ(window("buy_FrequenceFm1"), nullptr);
}

TEST_F(StatisticViews, TheFrequencyStandsInAWindowOfItsOwnWithTheMainWindowHidden) {
    fill();
    start();
    drive->choose("buy_frequence");
    TopWindow* frequency = window("buy_FrequenceFm1");
    ASSERT_NE(frequency, nullptr);
    EXPECT_EQ(frequency->windowTitle(), u"购买频率统计");
    EXPECT_FALSE(main->isVisible());
    Driver there(*frequency);
    EXPECT_EQ(there.text("Label1"), u"时间起点：");
    EXPECT_EQ(there.text("Label2"), u"时间间隔（按月）");
    EXPECT_EQ(there.text("Label3"), u"2004-5-21");
    EXPECT_EQ(column(there, "DataGrid3", "4"), u"1 100%") << "customer 2: January, then May";
    EXPECT_EQ(column(there, "DataGrid3", "1"), u"0 0%");
    EXPECT_TRUE(there.find<DataGrid>("DataGrid3")->isColumnHidden(0));
    const QStringList shown = bars(*frequency);
    EXPECT_EQ(shown.size(), 24);
    EXPECT_EQ(shown.value(3), u"4 1");
    EXPECT_EQ(shown.value(23), u"24 0");
    frequency->close();
    EXPECT_TRUE(main->isVisible());
}

TEST_F(StatisticViews, AClickOnAnIntervalShowsItsCustomersBesideTheWindow) {
    fill();
    start();
    drive->choose("buy_frequence");
    Driver there(*window("buy_FrequenceFm1"));
    there.clickCell("DataGrid3", 0, "3");
    EXPECT_FALSE(main->isVisible()) << "nobody comes back after three months";
    EXPECT_FALSE(session().cn.hasTable("clientTable3"));
    there.clickCell("DataGrid3", 1, "4");
    EXPECT_TRUE(main->isVisible());
    EXPECT_EQ(inFront(), u"userInfoFm3");
    EXPECT_EQ(main->host().active()->caption(), u"客户资料显示（购买频率）");
    EXPECT_EQ(clients(), u"2");
    EXPECT_EQ(period(), u"2003-6-1/2004-5-21");
    EXPECT_EQ(session().showSource, ShowSource::Clients);
    EXPECT_NE(window("buy_FrequenceFm1"), nullptr);
}

TEST_F(StatisticViews, AnIntervalIsChosenByTheKeyboardToo) {
    fill();
    start();
    drive->choose("buy_frequence");
    Driver there(*window("buy_FrequenceFm1"));
    auto* grid = there.find<DataGrid>("DataGrid3");
    grid->setFocus();
    grid->setCurrentIndex(grid->model()->index(0, 4));
    there.key("DataGrid3", Qt::Key_Return);
    EXPECT_EQ(inFront(), u"userInfoFm3");
    EXPECT_EQ(clients(), u"2");
}

TEST_F(StatisticViews, AnotherIntervalComesIntoTheSameView) {
    fill();
    books.addLine("9006", "1", "p1", "2004-05-22", 1, 10, 4);
    start();
    drive->choose("buy_frequence");
    Driver there(*window("buy_FrequenceFm1"));
    there.clickCell("DataGrid3", 0, "4");
    EXPECT_EQ(clients(), u"2");
    there.clickCell("DataGrid3", 0, "2");
    EXPECT_EQ(inFront(), u"userInfoFm3");
    EXPECT_EQ(clients(), u"1");
    EXPECT_EQ(view().text("Text1"), u"1/1");
}

TEST_F(StatisticViews, APurchaseClosesTheStatisticsInWindowsOfTheirOwn) {
    fill();
    start();
    drive->choose("distribution_analysis1");
    drive->choose("distribution_analysis2");
    drive->choose("buy_frequence");
    Driver(*window("buy_FrequenceFm1")).clickCell("DataGrid3", 0, "4");
    drive->choose("management_client");
    view().click("Command7");
    ASSERT_NE(window("buyFm1"), nullptr);
    for (const char* name : {"buy_FrequenceFm1", "clientPlaceFm1", "clientlineFm1"})
        EXPECT_EQ(window(name), nullptr) << name;
}

TEST_F(StatisticViews, TheTwoDistributionsSwapTheRolesOfTheirButtons) {
    fill();
    start();
    drive->choose("distribution_analysis1");
    TopWindow* places = window("clientPlaceFm1");
    ASSERT_NE(places, nullptr);
    EXPECT_EQ(places->windowTitle(), u"客户地区分布");
    Driver region(*places);
    EXPECT_EQ(region.find<QAbstractButton>("Command1")->text(), u"打印");
    EXPECT_EQ(region.find<QAbstractButton>("Command2")->text(), u"返回");
    EXPECT_EQ(column(region, "DataGrid1", "地区"), u"上海 北京");
    EXPECT_EQ(column(region, "DataGrid1", "百分率"), u"66.66% 33.33%");
    EXPECT_EQ(region.text("Text2"), u"3");
    EXPECT_EQ(region.text("Text1"), u"1/2");
    region.click("Command3(3)");
    EXPECT_EQ(region.text("Text1"), u"2/2");
    drive->choose("distribution_analysis2");
    TopWindow* lines = window("clientlineFm1");
    ASSERT_NE(lines, nullptr);
    EXPECT_EQ(lines->windowTitle(), u"客户行业分布");
    Driver industry(*lines);
    EXPECT_EQ(industry.find<QAbstractButton>("Command2")->text(), u"打印");
    EXPECT_EQ(industry.find<QAbstractButton>("Command3")->text(), u"返回");
    EXPECT_EQ(column(industry, "DataGrid1", "百分率"), u"0") << "one industry has all";
    industry.click("Command1(0)");
    industry.click("Command3");
    EXPECT_EQ(window("clientlineFm1"), nullptr);
    region.click("Command2");
    EXPECT_EQ(window("clientPlaceFm1"), nullptr);
}

TEST_F(StatisticViews, ADistributionIsSeenBeforeItIsWritten) {
    fill();
    start();
    QStringList stored; // at each paint
    const AtGridPaint painted("clientPlaceFm1",
                              [&] { stored << books.stored("SELECT count(*) FROM clientplaceTable"); });
    drive->choose("distribution_analysis1");
    ASSERT_FALSE(stored.isEmpty());
    EXPECT_EQ(stored.first(), u"0");
    EXPECT_EQ(books.stored("SELECT * FROM clientplaceTable"), u"上海|2.0|66.66%;北京|1.0|33.33%");
}

TEST_F(StatisticViews, ADistributionWithoutCustomersDoesNothing) {
    start();
    drive->choose("distribution_analysis1");
    EXPECT_EQ(window("clientPlaceFm1"), nullptr);
}

TEST_F(StatisticViews, ADistributionOfNobodyIsPrintedAllTheSame) {
    fill();
    books.changeBehind("UPDATE clientTable SET 地区 = NULL");
    start();
    drive->choose("distribution_analysis1");
    Driver region(*window("clientPlaceFm1"));
    EXPECT_EQ(region.text("Text1"), u"0") << "and not 0/0 as elsewhere";
    EXPECT_EQ(region.text("Text2"), u"0");
    region.click("Command1");
    ASSERT_NE(window("print_clientplace"), nullptr);
    EXPECT_EQ(Driver(*window("print_clientplace")).text("Text1(2)"), u"第 0 页");
    EXPECT_FALSE(main->isVisible());
    EXPECT_FALSE(window("clientPlaceFm1")->isEnabled()) << "one report at a time";
    window("print_clientplace")->close();
    EXPECT_TRUE(main->isVisible());
    EXPECT_TRUE(window("clientPlaceFm1")->isEnabled());
}

TEST_F(StatisticViews, ADistributionFollowsThePeriodOnShow) {
    fill();
    books.changeBehind("DELETE FROM buyList WHERE 客户编号 <> '1' AND 日期 >= '2004-01-01'");
    open();
    choosePeriod("2004");
    drive->choose("distribution_analysis1");
    Driver region(*window("clientPlaceFm1"));
    EXPECT_EQ(region.text("Text2"), u"1");
    drive->choose("show_stock");
    drive->choose("distribution_analysis1");
    EXPECT_EQ(region.text("Text2"), u"3") << "run again in its open window, from a view of stock";
}

TEST_F(StatisticViews, SalespeopleStandByTurnoverAndTheirCustomersFollow) {
    fill();
    start();
    drive->choose("statistic_achievement");
    EXPECT_EQ(inFront(), u"statisticFm3");
    EXPECT_EQ(column("业务员编号"), u"甲 乙");
    EXPECT_EQ(column("营业额"), u"90 10");
    EXPECT_EQ(column("客户数"), u"2 1");
    EXPECT_EQ(of("Label5"), u"100");
    EXPECT_EQ(of("Label7"), u"3");
    EXPECT_EQ(of("Label4"), u"营业额总合");
    EXPECT_EQ(of("Label6"), u"客户数总合");
    EXPECT_EQ(period(), u"2003-6-1/2004-5-21");
    EXPECT_EQ(session().showSource, ShowSource::Clerks);
    view().click("Command4");
    EXPECT_EQ(inFront(), u"userInfoFm2");
    EXPECT_EQ(main->host().active()->caption(), u"客户资料显示(业务员)");
    EXPECT_EQ(clients(), u"1 2");
    EXPECT_EQ(session().showSource, ShowSource::Clerks);
}

TEST_F(StatisticViews, TheCustomersOfASalespersonAreAskedForFromHisStatisticAlone) {
    fill();
    start();
    drive->choose("show_stock");
    prompts.expectMessage("请先显示业务员业绩统计！");
    drive->choose("statistic_achievement2");
    drive->choose("statistic_achievement");
    view().clickCell("DataGrid1", 1, "业务员编号");
    EXPECT_EQ(view().text("Text1"), u"2/2");
    drive->choose("statistic_achievement2");
    EXPECT_EQ(clients(), u"3");
}

TEST_F(StatisticViews, APeriodOfTheSalespeopleGoesOnToTheirCustomersAndASearchActsOnThem) {
    fill();
    start();
    drive->choose("statistic_achievement");
    choosePeriod("2004");
    EXPECT_EQ(session().showSource, ShowSource::PeriodClerks);
    EXPECT_EQ(column("营业额"), u"70 10");
    EXPECT_EQ(of("Label5"), u"80");
    EXPECT_EQ(period(), u"2004/");
    view().click("Command4");
    EXPECT_EQ(clients(), u"1 2");
    EXPECT_EQ(column("消费合计"), u"40 30");
    EXPECT_EQ(period(), u"2004/");
    drive->click("Toolbar1(3)");
    Driver search(*window("searchFm1"));
    search.clickItem("List1", "单位名称");
    search.type("Text2", "单位2");
    search.click("Command1");
    EXPECT_EQ(clients(), u"2");
    EXPECT_EQ(session().clientTable->Filter(), u"") << "the search acted on the view's own rows";
    EXPECT_EQ(session().showSource, ShowSource::PeriodClerks);
    drive->click("Toolbar1(4)");
    EXPECT_EQ(clients(), u"1 2");
    EXPECT_EQ(column("消费合计"), u"40 30") << "the source stays";
    drive->choose("statistic_achievement");
    EXPECT_EQ(session().showSource, ShowSource::Clerks) << "loaded anew it starts with the whole table";
    EXPECT_EQ(of("Label5"), u"100");
}

TEST_F(StatisticViews, ASearchByDateInTheCustomersOfASalespersonMakesThemThoseOfThePeriod) {
    fill();
    start();
    drive->choose("statistic_achievement");
    view().click("Command4");
    drive->click("Toolbar1(3)");
    Driver(*window("searchFm1")).clickItem("List1", "日期");
    ASSERT_NE(window("timeDefineFm2"), nullptr);
    confirmYear("2003");
    EXPECT_EQ(clients(), u"1");
    EXPECT_EQ(session().showSource, ShowSource::PeriodClerks);
    EXPECT_EQ(period(), u"2003/");
}

TEST_F(StatisticViews, AnEmptyPeriodOfSalespeopleShowsNoughts) {
    fill();
    books.addLine("9007", "gone", "p1", "2001-01-01", 1, 10, 4);
    start();
    drive->choose("statistic_achievement");
    choosePeriod("2001");
    EXPECT_EQ(view().text("Text1"), u"0/0");
    EXPECT_EQ(period(), u"0000-0-0/0000-0-0");
    EXPECT_EQ(of("Label5"), u"0");
    EXPECT_EQ(of("Label7"), u"0");
    EXPECT_EQ(session().showSource, ShowSource::Clerks);
    drive->click("Toolbar1(4)");
    EXPECT_EQ(of("Label5"), u"100");
}

TEST_F(StatisticViews, APeriodThatCannotBeMadeLeavesTheFiguresOfTheSalespeople) {
    fill();
    start();
    drive->choose("statistic_achievement");
    drive->click("Toolbar1(2)");
    Driver dialog(*window("timeDefineFm2"));
    dialog.pick("Combo1", "2004");
    dialog.pick("Combo2", "12");
    dialog.click("Option3");
    dialog.click("Command1"); // behind December: the month 13
    EXPECT_EQ(of("Label5"), u"100");
    EXPECT_EQ(of("Label7"), u"3");
    EXPECT_EQ(period(), u"2003-6-1/2004-5-21");
    EXPECT_EQ(session().showSource, ShowSource::PeriodClerks);
    drive->click("Toolbar1(4)");
    EXPECT_EQ(column("营业额"), u"90 10");
}

TEST_F(StatisticViews, AllCustomersStandInTheOrderOfTheirTable) {
    fill();
    open();
    drive->choose("show_whole_client");
    EXPECT_EQ(inFront(), u"userInfoFm1");
    EXPECT_EQ(main->host().active()->caption(), u"客户资料显示");
    EXPECT_EQ(clients(), u"1 2 3");
    EXPECT_EQ(session().clientTable->Sort(), u"");
    EXPECT_EQ(view().text("Text1"), u"1/3");
    EXPECT_EQ(period(), u"2003-6-1/2004-5-21");
    choosePeriod("2003");
    EXPECT_EQ(clients(), u"1");
    EXPECT_EQ(period(), u"2003/");
    EXPECT_EQ(session().clientShowSource, ShowSource::PeriodClients);
}

} // namespace
