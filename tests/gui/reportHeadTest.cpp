// Every report with figures in its head, opened from each of its callers in each of their sources: the
// figures are those of the rows that it prints.
#include "reports/reportDescription.h"
#include "support/drillShop.h"

#include <set>

namespace {

/// A figure of a head and the column that it sums; "客户编号" is counted, each once.
struct HeadSum {
    const char* label;
    const char* column;
};

class ReportHeads : public DrillShop {
protected:
    static const std::vector<HeadSum>& sumsOf(const QString& report) {
        static const std::vector<HeadSum> worth{
            {"消费总合：", "消费合计"}, {"差额利润总合：", "差额利润"}, {"购买数总合：", "购买数"}};
        static const std::vector<HeadSum> list{{"合计件数：", "数量"}, {"营业额：", "实付"}};
        static const std::vector<HeadSum> own{{"合计件数：", "数量"}, {"合计金额：", "实付"}};
        static const std::map<QString, std::vector<HeadSum>> sums{
            {"print_rs1", worth},
            {"print_rs7", worth},
            {"print_rs8", worth},
            {"print_rs2",
             {{"营业额：", "实付"},
              {"差额利润：", "差额利润"},
              {"销售量：", "数量"},
              {"客户数：", "客户编号"}}},
            {"print_rs9", {{"营业额：", "实付"}, {"销售量：", "数量"}, {"客户数：", "客户编号"}}},
            {"print_rs3", {{"库存量：", "数量"}}},
            {"print_rs_order",
             {{"营业额(合计)/", "购买额"}, {"差额利润(合计)/", "差额利润"}, {"销售量(合计)/", "购买数量"}}},
            {"print_rs_single", {{"消费合计：", "实付"}, {"差额利润：", "差额利润"}, {"购物数：", "数量"}}},
            {"print_rs_sum", {{"营业额总合：", "营业额"}, {"客户数总合：", "客户数"}}},
            {"print_rs_total", {{"合计金额：", "购物金额"}, {"合计数：", "购物数"}}},
            {"showprint_rs2", list},
            {"showprint_rs9", list},
            {"showprint_rs_temp", list},
            {"showprint_rs22", own},
            {"showprint_rs6", own}};
        return sums.at(report);
    }
    double shownIn(const QStringList& page, const HeadSum& sum) {
        for (const QString& text : page)
            if (text.startsWith(QString::fromUtf8(sum.label)))
                return text.mid(QString::fromUtf8(sum.label).size()).toDouble();
        ADD_FAILURE() << sum.label << " is not in " << page.join(u' ').toStdString();
        return -1;
    }
    static double ofRows(const RecordsetPtr& rows, const char* column) {
        const int field = rows->fieldIndex(QString::fromUtf8(column));
        std::set<QString> distinct;
        double sum = 0;
        for (int i = 0; i < rows->RecordCount(); ++i) {
            distinct.insert(fieldText(rows->valueAt(i, field)));
            sum += rows->numberAt(i, field);
        }
        return column == std::string_view("客户编号") ? double(distinct.size()) : sum;
    }
    /// The report stands open: its figures beside its rows. Closes it.
    void check(const char* report, const char* where) {
        SCOPED_TRACE(std::string(report) + ", " + where);
        ASSERT_NE(window(report), nullptr);
        const RecordsetPtr rows = session().*findReport(QString::fromUtf8(report))->cursor;
        ASSERT_TRUE(rows->hasRows());
        std::vector<double> expected;
        for (const HeadSum& sum : sumsOf(report))
            expected.push_back(ofRows(rows, sum.column));
        const QStringList texts = page(report);
        for (std::size_t i = 0; i < expected.size(); ++i)
            EXPECT_EQ(shownIn(texts, sumsOf(report)[i]), expected[i]) << sumsOf(report)[i].label;
        seen.insert(report);
    }
    void printed(const char* report, const char* where) {
        drive->click("Toolbar1(7)");
        check(report, where);
    }
    void search(const char* field, const char* value) {
        drive->click("Toolbar1(3)");
        Driver dialog(*window("searchFm1"));
        dialog.clickItem("List1", QString::fromUtf8(field));
        dialog.type("Text2", QString::fromUtf8(value));
        dialog.click("Command1");
    }
    void evaluation();
    void sales(const char* where);
    void salesWindow();
    void customers(const char* where);
    void stock();

    std::set<std::string> seen;
};

void ReportHeads::evaluation() {
    drive->choose("data_statistic1");
    printed("print_rs1", "whole");
    cutByTurnover("50");
    printed("print_rs8", "cut by share");
    drive->click("Toolbar1(4)");
    choosePeriod("2004");
    printed("print_rs7", "period");
    cutByRank("2");
    printed("print_rs8", "cut of a period by rank");
    drive->click("Toolbar1(4)");
    drive->choose("statistic_achievement");
    printed("print_rs_sum", "whole");
    choosePeriod("2004");
    printed("print_rs_sum", "period");
}

void ReportHeads::sales(const char* where) {
    const bool period = session().showSource == ShowSource::PeriodLines;
    printed(period ? "print_rs9" : "print_rs2", where);
    chooseInMenu("打印销售清单");
    check(period ? "showprint_rs9" : "showprint_rs2", where);
    view().click("orderStatistic");
    Driver(*window("statisticFm5")).click("print");
    // A search of the sales is none of the orders'.
    check("print_rs_order", where);
    window("statisticFm5")->close();
}

void ReportHeads::salesWindow() {
    drive->choose("management_client");
    chooseInMenu("产品销售显示");
    Driver window(*this->window("goodsSalesFm1"));
    window.click("print");
    check("showprint_rs2", "window, whole");
    window.click("select_time");
    confirmYear("2004");
    window.click("print");
    check("showprint_rs9", "window, period");
    window.click("show_sales");
    printed("showprint_rs_temp", "window, period");
    this->window("goodsSalesFm1")->close();
}

void ReportHeads::customers(const char* where) {
    drive->choose("show_one_client1");
    printed("showprint_rs6", where);
    drive->choose("statistic_one_client");
    printed("print_rs_single", where);
    drive->choose("show_one_client2");
    chooseInMenu(*window("order_Form_NumFm1"), "打印购物记录");
    check("print_rs_total", where);
    Driver(*window("order_Form_NumFm1")).click("Command1");
    printed("showprint_rs22", where);
}

void ReportHeads::stock() {
    drive->choose("show_stock");
    printed("print_rs3", "list");
    chooseRow("产品编号", "p1");
    drive->choose("show_one_sale_product");
    printed("showprint_rs_temp", "from the stock");
    drive->choose("data_statistic1");
    chooseInMenu("库存统计");
    Driver(*window("statisticFm4")).click("print");
    check("print_rs3", "statistic");
    window("statisticFm4")->close();
}

TEST_F(ReportHeads, HaveTheFiguresOfTheirRowsWhateverWasDoneBefore) {
    begin();
    evaluation();
    drive->choose("show_sales");
    sales("whole");
    choosePeriod("2004");
    sales("period");
    search("客户编号", "2");
    sales("search in a period");
    drive->click("Toolbar1(4)");
    search("客户编号", "1");
    sales("search in the whole");
    chooseRow("产品编号", "p1");
    view().click("Command3");
    printed("showprint_rs_temp", "from the sales under a search");
    drive->choose("management_client");
    chooseClient("1");
    customers("whole");
    drive->choose("show_whole_client");
    choosePeriod("2004");
    chooseClient("2");
    customers("period");
    drive->choose("management_client");
    chooseClient("1");
    chooseInMenu("打印订单明细");
    Driver(*window("order_Form_NumFm1")).click("Command1");
    check("showprint_rs22", "register");
    salesWindow();
    stock();
    EXPECT_EQ(seen.size(), 15U);
}

} // namespace
