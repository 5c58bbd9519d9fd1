// The catalogue of reports as a table of its own, to hold the program's against.
#pragma once

#include "reports/reportDescription.h"

#include <QStringList>

#include <algorithm>
#include <string>
#include <vector>

namespace table {

/// What a member does otherwise than the others.
enum Trait : unsigned {
    Plain = 0,
    StopsInPrint = 1,
    StopsTest = 2,
    AtActivation = 4,
    MovesByProducts = 8,
    SizeByScratch = 16,
    ZeroWhenEmpty = 32,
    KeepsOrientation = 64,
    WideShift = 128,
    BareMenu = 256,
    SetupMenu = 512,
};

inline constexpr const char16_t* kHanded = u"";
inline constexpr const char16_t* kMade = u"*";

struct ReportRow {
    const char16_t* name;
    const char16_t* caption;
    RecordsetPtr Session::*cursor;
    char set; // of columns
    PaperOrientation orientation;
    int rows;
    double titleBase, addend, tableTop, footerX;
    const char16_t* title;
    std::vector<double> head; // bases of its items
    unsigned traits = Plain;
};

inline constexpr auto P = PaperOrientation::Portrait;
inline constexpr auto L = PaperOrientation::Landscape;

inline ReportRow reportRow(const char16_t* name, const char16_t* caption, RecordsetPtr Session::*cursor,
                           char set, PaperOrientation orientation, int rows, double titleBase, double addend,
                           double tableTop, double footerX, const char16_t* title, std::vector<double> head,
                           unsigned traits = Plain) {
    return {name,   caption,  cursor,  set,   orientation,     rows,  titleBase,
            addend, tableTop, footerX, title, std::move(head), traits};
}

inline const std::vector<ReportRow> kRows = {
    reportRow(u"print_clientline", u"打印客户行业分布", &Session::scratch, 'i', P, 65, 60, 32, 5, 98,
              u" 客 户 行 业 分 布", {}),
    reportRow(u"print_clientplace", u"打印客户地区分布", &Session::scratch, 'r', P, 65, 60, 32, 5, 98,
              u" 客 户 地 区 分 布", {}),
    reportRow(u"print_rs1", u"打印客户资料", &Session::clientTable, 'F', L, 40, 115, 32, 0, 145,
              u" 客 户 资 料", {0, 100, 150, 200}, StopsTest | ZeroWhenEmpty),
    reportRow(u"print_rs7", u"打印客户资料", &Session::clientTable2, 'F', L, 40, 115, 32, 5, 145,
              u" 客 户 资 料", {0, 100, 150, 200}, StopsTest | ZeroWhenEmpty),
    reportRow(u"print_rs8", u"打印客户资料", &Session::clientTable3, 'F', L, 40, 115, 32, 5, 145,
              u" 客 户 资 料", {0, 100, 150, 200}, StopsTest | ZeroWhenEmpty),
    reportRow(u"print_rs2", u"打印已销售产品统计", &Session::buyList, 'A', L, 40, 115, 0, 25, 145,
              u"已 销 售 产 品 统 计", {0, 70, 120, 170, 210}, StopsInPrint),
    reportRow(u"print_rs9", u"打印已销售产品统计", &Session::buyList2, 'A', L, 40, 115, 0, 25, 145,
              u"已 销 售 产 品 统 计", {0, 130, 170, 210}, StopsInPrint | SetupMenu),
    reportRow(u"print_rs3", u"销售库存打印", &Session::productTable, 'B', L, 40, 115, 0, 25, 145,
              u"销 售 库 存 ", {0, 80, 130}, StopsInPrint),
    reportRow(u"print_rs_order", u"打印订单号购买额", &Session::orderTable, 'o', P, 70, 55, 32, 2, 145,
              u" 订 单 号 购 买 额", {0, 63, 95, 127}),
    reportRow(u"print_rs_single", u"打印某客户购物统计", &Session::tempTable2, 'A', L, 40, 90, 0, 25, 145,
              u"购物清单", {0, 70, 120, 170}, StopsInPrint | BareMenu),
    reportRow(u"print_rs_statistic", u"打印营业额统计", &Session::saleTable, 't', P, 65, 55, 32, 5, 98,
              kHanded, {}, WideShift),
    reportRow(u"print_rs_sum", u"打印业务员业绩", &Session::clerkTotals, 's', P, 65, 60, 0, 25, 98,
              u"业 务 员 业 绩 报 表", {0, 60, 115}, StopsInPrint | SizeByScratch | BareMenu),
    reportRow(u"print_rs_total", u"打印购物记录", &Session::orderTotals, 'p', P, 65, 55, 31, 0, 98, kMade,
              {0, 50, 63, 125}, WideShift),
    reportRow(u"showprint_rs1", u"打印客户资料", &Session::clientTable, 'E', L, 40, 115, 32, 0, 135,
              u" 客 户 资 料", {0}),
    reportRow(u"showprint_rs1A", u"打印客户资料", &Session::clerkClients, 'E', L, 40, 115, 32, 0, 135,
              u" 客 户 资 料", {0}),
    reportRow(u"showprint_rs7", u"打印客户资料", &Session::clientTable2, 'E', L, 40, 115, 32, 0, 135,
              u" 客 户 资 料", {0}),
    reportRow(u"showprint_rs8", u"打印客户资料", &Session::clientTable3, 'E', L, 40, 115, 0, 5, 145,
              u" 客 户 资 料", {}, SetupMenu),
    reportRow(u"showprint_rs5", u"打印客户资料", &Session::productClients, 'E', L, 40, 80, 31, 1, 145, kMade,
              {0}, KeepsOrientation),
    reportRow(u"showprint_rs2", u"打印销售清单", &Session::buyList, 'D', L, 40, 115, 32, 2, 145, u"销售清单",
              {0, 150, 200}, StopsInPrint | AtActivation | MovesByProducts),
    reportRow(u"showprint_rs9", u"打印销售清单", &Session::buyList, 'D', L, 40, 115, 32, 2, 145, u"销售清单",
              {0, 150, 200}, StopsInPrint | AtActivation | MovesByProducts | SetupMenu),
    reportRow(u"showprint_rs22", u"打印订单明细", &Session::buyList, 'O', L, 40, 115, 31, 0, 145, kMade,
              {0, 60, 150, 200}, StopsInPrint | AtActivation | MovesByProducts),
    reportRow(u"showprint_rs_temp", u"打印单项产品销售清单", &Session::scratch, 'D', L, 40, 115, 34, 0, 145,
              kHanded, {0, 150, 200}, StopsInPrint | AtActivation | MovesByProducts),
    reportRow(u"showprint_rs6", u"单个打印客户购物清单", &Session::tempTable2, 'K', L, 40, 115, 32, 0, 145,
              u"客 户 购 物 清 单", {0, 40, 80, 160, 200}, StopsInPrint | StopsTest | MovesByProducts),
    reportRow(u"showprint_rs3", u"库存打印", &Session::productTable, 'B', L, 40, 115, 0, 25, 145, kHanded, {},
              StopsInPrint),
    reportRow(u"showprint_rs4", u"库存打印", &Session::productTable2, 'B', L, 40, 115, 0, 25, 145, kHanded,
              {}, StopsInPrint),
    reportRow(u"showprint_rs15", u"产品入库清单打印", &Session::product_Bank, 'B', L, 40, 115, 0, 25, 145,
              kHanded, {0}),
    reportRow(u"showprint_rs16", u"产品入库清单打印", &Session::product_Bank2, 'B', L, 40, 115, 0, 25, 145,
              kHanded, {0}, StopsInPrint),
    reportRow(u"showprint_rs17", u"库存盘点打印", &Session::stock_Count_Bank, 'c', L, 40, 115, 0, 25, 145,
              kHanded, {0}),
    reportRow(u"showprint_rs18", u"退货表打印", &Session::return_Bank, 'b', L, 40, 115, 0, 25, 145, kHanded,
              {0}),
    reportRow(u"showprint_rs19", u"退货表打印", &Session::return_Bank2, 'b', L, 40, 115, 0, 25, 145, kHanded,
              {0}),
    reportRow(u"showprint_rs20", u"产品报废表打印", &Session::no_use_Bank, 'n', L, 40, 115, 0, 25, 145,
              kHanded, {0}),
    reportRow(u"showprint_rs21", u"产品报废表打印", &Session::no_use_Bank2, 'n', L, 40, 115, 0, 25, 145,
              kHanded, {0}),
    reportRow(u"showprint_rs23", u"产品调拨表打印", &Session::out_of_Bank, 'm', L, 40, 115, 0, 25, 145,
              kHanded, {0}),
    reportRow(u"showprint_rs24", u"产品调拨表打印", &Session::out_of_Bank2, 'm', L, 40, 115, 0, 25, 145,
              kHanded, {0}),
    reportRow(u"print_birthdays", u"打印近期生日", &Session::scratch, 'g', L, 40, 115, 0, 28, 145,
              u"近 期 生 日", {0, 115}),
    reportRow(u"print_lapsed", u"打印久未购买", &Session::scratch, 'l', L, 40, 115, 0, 28, 145,
              u"久 未 购 买", {0, 115}),
};

/// Columns of a report. Texts are parted by a blank; "-" is an empty one.
struct ColumnSet {
    char set;
    const char* labels;
    const char* fields; // null: the labels
    std::vector<double> separators;
    const char* boxes;
};

inline const std::vector<ColumnSet> kSets = {
    {'A',
     "产品编号 品名 规格 产地 厂家 单价 数量 合计 折扣 实付",
     nullptr,
     {20, 62, 94, 116, 138, 160, 182, 204, 216},
     "产品编号方框 品名方框 规格方框 产地方框 厂家方框 单价方框 数量合方框 合计金额方框 折价方框"},
    {'B',
     "日期 产品编号 品名 规格 产地 厂家 单价 数量 成本 折扣",
     nullptr,
     {20, 62, 94, 116, 138, 160, 182, 204, 216},
     "日期方框 产品编号方框 品名方框 规格方框 产地方框 厂家方框 单价方框 数量方框 成本方框"},
    {'c',
     "日期 产品编号 品名 规格 产地 厂家 成本 数量 实物数 亏_盈",
     nullptr,
     {20, 62, 94, 116, 138, 160, 182, 204, 225},
     "日期方框 产品编号方框 品名方框 规格方框 产地方框 厂家方框 成本方框 数量方框 实物数方框"},
    {'b',
     "日期 产品编号 品名 规格 产地 厂家 成本 数量 退货款 说明",
     nullptr,
     {20, 62, 94, 116, 138, 160, 182, 204, 225},
     "日期方框 产品编号方框 品名方框 规格方框 产地方框 厂家方框 成本方框 数量方框 退货款方框"},
    {'n',
     "日期 产品编号 品名 规格 产地 厂家 成本 数量 亏损金额 说明",
     nullptr,
     {20, 62, 94, 116, 138, 160, 182, 204, 225},
     "日期方框 产品编号方框 品名方框 规格方框 产地方框 厂家方框 成本方框 数量方框 亏损金额方框"},
    {'m',
     "日期 产品编号 品名 规格 产地 厂家 成本 数量 合计金额 说明",
     nullptr,
     {20, 62, 94, 116, 138, 160, 182, 204, 225},
     "日期方框 产品编号方框 品名方框 规格方框 产地方框 厂家方框 成本方框 数量方框 合计金额方框"},
    {'D',
     "日期 产品编号 品名 规格 产地 厂家 单价 数量 合计 折扣 实收",
     "日期 产品编号 品名 规格 产地 厂家 单价 数量 合计 折扣 实付",
     {20, 38, 70, 100, 132, 162, 180, 192, 212, 222},
     "日期方框 产品编号方框 品名方框 规格方框 产地方框 厂家方框 单价方框 数量方框 合计方框 折扣方框"},
    {'O',
     "日期 产品编号 品名 规格 产地 厂家 单价 数量 合计 折扣 实付",
     nullptr,
     {20, 38, 70, 100, 132, 162, 180, 192, 212, 222},
     "日期方框 产品编号方框 品名方框 规格方框 产地方框 厂家方框 单价方框 数量方框 合计方框 折扣方框"},
    {'K',
     "日期 产品编号 品名 规格 产地 厂家 单价 数量 金额 折扣 实付",
     "日期 产品编号 品名 规格 产地 厂家 单价 数量 合计 折扣 实付",
     {20, 38, 70, 100, 132, 162, 180, 192, 212, 222},
     "日期方框 产品编号方框 品名方框 规格方框 产地方框 厂家方框 单价方框 数量方框 合计方框 折扣方框"},
    {'E',
     "联系人 电话 手机 传真 Email 单位名称 地址 邮编",
     "联系人 电话 手机 传真 Email 单位名称 地址 邮政编码",
     {15, 37, 59, 81, 123, 175, 227},
     "联系人方框 电话方框 手机方框 传真方框 Email方框 单位名称方框 地址方框"},
    {'F',
     "联系人 电话 手机 Email 单位名称 消费合计 差额利润 购买数",
     nullptr,
     {15, 37, 59, 101, 153, 205, 223},
     "联系人方框 电话方框 手机方框 Email方框 单位名称方框 消费合计方框 差额利润"},
    {'g',
     "近期生日 天数 单位名称 联系人 生日 电话 手机 消费合计",
     nullptr,
     {24, 36, 98, 122, 152, 182, 212},
     "近期生日方框 天数方框 单位名称方框 联系人方框 生日方框 电话方框 手机方框"},
    {'l',
     "最近购买 天数 单位名称 联系人 电话 手机 消费合计 购买数 业务员编号",
     nullptr,
     {24, 36, 98, 122, 152, 182, 208, 226},
     "最近购买方框 天数方框 单位名称方框 联系人方框 电话方框 手机方框 消费合计方框 购买数方框"},
    {'o',
     "客户编号 订单号 购买额 差额利润 购买数量",
     nullptr,
     {30, 62, 94, 126},
     "客户编号方框 订单号方框 购买额方框 差额利润方框"},
    {'t', "日期 营业额 - -", nullptr, {30, 62, 94}, "日期方框 营业额方框 第三方框"},
    {'s', "业务员编号 营业额 客户数", nullptr, {40, 102}, "业务员编号方框 营业额方框"},
    {'p', "日期 订单号 购物金额 购物数", nullptr, {30, 62, 94}, "日期方框 订单号方框 购物金额方框"},
    {'i', "行业 数量 百分率", nullptr, {80, 142}, "行业方框 数量方框"},
    {'r', "地区 数量 百分率", nullptr, {80, 142}, "地区方框 数量方框"},
};

inline QStringList textsOf(const char* list) {
    QStringList texts = QString::fromUtf8(list).split(u' ');
    texts.replaceInStrings(QStringLiteral("-"), QString());
    return texts;
}
inline QStringList labelsOf(const ColumnSet& set) {
    return textsOf(set.labels);
}
inline QStringList fieldsOf(const ColumnSet& set) {
    return textsOf(set.fields ? set.fields : set.labels);
}

inline const ColumnSet& setOf(const ReportRow& row) {
    return *std::find_if(kSets.begin(), kSets.end(),
                         [&row](const ColumnSet& each) { return each.set == row.set; });
}

/// The row of a report, null where none has its name.
inline const ReportRow* rowOf(const ReportDescription& report) {
    const auto row = std::find_if(kRows.begin(), kRows.end(), [&report](const ReportRow& each) {
        return QStringView(each.name) == QStringView(report.name);
    });
    return row == kRows.end() ? nullptr : &*row;
}

inline std::string nameOf(const ReportRow& row) {
    return QString::fromUtf16(row.name).toStdString();
}

} // namespace table
