// The head lines and the made titles of the reports, on values made for the test.
#include "support/reportRows.h"
#include "support/reportTable.h"

#include <gtest/gtest.h>

#include <map>

namespace {

using namespace table;

/// Values of the session that name themselves, and views whose controls do.
class ReportHeads : public testing::Test {
protected:
    ReportHeads() {
        s().periodDate1 = "起";
        s().periodDate2 = "止";
        s().displayDate1 = "库起";
        s().displayDate2 = "库止";
        s().currentClientNum = "1001";
        s().currentClientName = "红木家具厂";
        s().currentOrderNum = "5002";
        s().orderQuantity = "7";
        s().orderAmount = "276";
        s().report.totalCount = "12";
        s().report.totalAmount = "480.5";
    }
    Session& s() { return books.session(); }
    HeadSource source() {
        const auto control = [](QStringView view, QStringView name) {
            return view.toString() + u'.' + name.toString();
        };
        return {s(), control, rows, "打印者"};
    }
    QStringList headOf(const char16_t* name) {
        QStringList texts;
        for (const HeadItem& item : findReport(name)->head)
            texts << item.text(source());
        return texts;
    }
    QString titleOf(const char16_t* name) { return findReport(name)->titleOf(source()); }
    /// The order totals over lines of two orders, 2004-3-1 and 2004-5-1.
    void openTotals() {
        books.addLine("5001", "1001", "P1", "2004-03-01", 2, 10.25, 1);
        books.addLine("5002", "1001", "P1", "2004-05-01", 3, 20, 1);
        books.addLine("5002", "1001", "P2", "2004-05-01", 1, 5.5, 1);
        s().reopen(rows, rowsOf(*findReport(u"print_rs_total")));
    }

    TestBooks books;
    RecordsetPtr rows = std::make_shared<Recordset>(books.session().cn);
};

const QStringList kNone;
const QStringList kPeriod{"时间：起/止"};
const QStringList kStockPeriod{"时间：库起/库止"};
const QStringList kEvaluation{"时间：statisticFm1.Text2/statisticFm1.Text3", "消费总合：statisticFm1.Label6",
                              "差额利润总合：statisticFm1.Label10", "购买数总合：statisticFm1.Label14"};
const QStringList kSales{"时间：起/止", "合计件数：12", "营业额：480.5"};

const std::map<QString, QStringList> kHeads = {
    {"print_clientline", kNone},
    {"print_clientplace", kNone},
    {"print_rs_statistic", kNone},
    {"showprint_rs3", kNone},
    {"showprint_rs4", kNone},
    {"showprint_rs8", kNone},
    {"print_birthdays", {"打印者.Label1", "打印者.Label2"}},
    {"print_lapsed", {"打印者.Label1", "打印者.Label2"}},
    {"print_rs1", kEvaluation},
    {"print_rs7", kEvaluation},
    {"print_rs8", kEvaluation},
    {"print_rs2",
     {"时间：statisticFm2.Text2/statisticFm2.Text3", "营业额：statisticFm2.Label5",
      "差额利润：statisticFm2.Label7", "销售量：statisticFm2.Label9", "客户数：statisticFm2.Label11"}},
    {"print_rs9",
     {"时间：statisticFm2.Text2/statisticFm2.Text3", "营业额：statisticFm2.Label5",
      "销售量：statisticFm2.Label9", "客户数：statisticFm2.Label11"}},
    {"print_rs3", {"时间：打印者.Text2/打印者.Text3", "库存资金：打印者.Label5", "库存量：打印者.Label7"}},
    {"print_rs_order",
     {"时间：起/止", "statisticFm5.Label4/statisticFm5.Label5", "statisticFm5.Label6/statisticFm5.Label7",
      "statisticFm5.Label8/statisticFm5.Label9"}},
    {"print_rs_single",
     {"时间：起/止", "消费合计：tempTable3Fm3.Label2", "差额利润：tempTable3Fm3.Label5",
      "购物数：tempTable3Fm3.Label8"}},
    {"print_rs_sum",
     {"时间：打印者.Text2/打印者.Text3", "营业额总合：打印者.Label5", "客户数总合：打印者.Label7"}},
    {"print_rs_total", {"客户编号：", "时间：/", "合计金额：0", "合计数：0"}},
    {"showprint_rs1", kPeriod},
    {"showprint_rs1A", kPeriod},
    {"showprint_rs7", kPeriod},
    {"showprint_rs2", kSales},
    {"showprint_rs9", kSales},
    {"showprint_rs_temp", kSales},
    {"showprint_rs22", {"时间：起", "单位名称：红木家具厂", "合计件数：7", "合计金额：276"}},
    {"showprint_rs5", {"tempTable1Fm1.Label2产品编号"}},
    {"showprint_rs6",
     {"客户编号：1001", "联系人：tempTable2Fm2.Label13", "单位：tempTable2Fm2.Label11",
      "合计件数：tempTable2Fm2.Label8", "合计金额：tempTable2Fm2.Label2"}},
    {"showprint_rs15", kStockPeriod},
    {"showprint_rs16", kStockPeriod},
    {"showprint_rs17", kStockPeriod},
    {"showprint_rs18", kStockPeriod},
    {"showprint_rs19", kStockPeriod},
    {"showprint_rs20", kStockPeriod},
    {"showprint_rs21", kStockPeriod},
    {"showprint_rs23", kStockPeriod},
    {"showprint_rs24", kStockPeriod},
};

TEST_F(ReportHeads, EachReportSpeaksOfItsOwnViewOrPeriod) {
    EXPECT_EQ(kHeads.size(), kRows.size());
    for (const ReportRow& row : kRows) {
        const auto wanted = kHeads.find(QString::fromUtf16(row.name));
        ASSERT_NE(wanted, kHeads.end()) << nameOf(row);
        EXPECT_EQ(headOf(row.name), wanted->second)
            << nameOf(row) << ": " << headOf(row.name).join(" ; ").toStdString();
    }
}

TEST_F(ReportHeads, TitlesAreMadeOfTheProductAndOfTheOrder) {
    EXPECT_EQ(titleOf(u"showprint_rs5"), u"购买'tempTable1Fm1.Label4'的客户资料");
    EXPECT_EQ(titleOf(u"showprint_rs22"), u"订单号：5002");
    s().currentOrderNum = "5003";
    EXPECT_EQ(titleOf(u"showprint_rs22"), u"订单号：5003");
}

TEST_F(ReportHeads, ThePurchasesBearTheCustomerWhomTheRegisterStandsOn) {
    EXPECT_EQ(titleOf(u"print_rs_total"), u"购物记录") << "the register is closed";
    books.addClient("1001", "红木家具厂");
    books.addClient("1002", "  文具店 ");
    s().reopen(s().clientTable, "Select * From clientTable");
    EXPECT_EQ(titleOf(u"print_rs_total"), u"红木家具厂购物记录");
    EXPECT_EQ(headOf(u"print_rs_total").first(), u"客户编号：1001");
    s().clientTable->MoveNext();
    EXPECT_EQ(titleOf(u"print_rs_total"), u"文具店购物记录");
    EXPECT_EQ(headOf(u"print_rs_total").first(), u"客户编号：1002");
    s().clientTable->MoveNext();
    EXPECT_EQ(titleOf(u"print_rs_total"), u"购物记录") << "behind the last one";
    EXPECT_EQ(headOf(u"print_rs_total").first(), u"客户编号：");
    s().clientTable->setFilter("客户编号 = '9'");
    EXPECT_EQ(titleOf(u"print_rs_total"), u"购物记录") << "no customer under the filter";
}

TEST_F(ReportHeads, ThePurchasesSumTheirRowsAndStayWhereTheyStand) {
    openTotals();
    rows->MoveLast();
    const QStringList sums{"客户编号：", "时间：2004-3-1/2004-5-1", "合计金额：35.75", "合计数：6"};
    EXPECT_EQ(headOf(u"print_rs_total"), sums);
    EXPECT_EQ(rows->AbsolutePosition(), 2);
    rows->setFilter("订单号 = '5002'");
    EXPECT_EQ(headOf(u"print_rs_total").mid(1),
              (QStringList{"时间：2004-5-1/2004-5-1", "合计金额：25.5", "合计数：4"}));
    rows->clearFilter();
    rows->setSort("日期 desc");
    EXPECT_EQ(headOf(u"print_rs_total").value(1), u"时间：2004-5-1/2004-3-1")
        << "first and last as they stand";
    rows->setFilter("订单号 = '9'");
    EXPECT_EQ(headOf(u"print_rs_total").mid(1), (QStringList{"时间：/", "合计金额：0", "合计数：0"}));
}

} // namespace
