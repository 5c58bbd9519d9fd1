#include "reports/reportColumns.h"
#include "reports/reportHeads.h"

namespace {

/// Customers with what they bring in.
constexpr ReportDescription worthList(const char16_t* name, RecordsetPtr Session::*cursor, double tableTop) {
    return {.name = name,
            .caption = u"打印客户资料",
            .cursor = cursor,
            .columns = sets::kWorth,
            .boxNames = sets::kWorthBoxes,
            .addend = 32,
            .tableTop = tableTop,
            .title = u" 客 户 资 料",
            .head = heads::kWorth,
            .testReadsUnopened = true,
            .emptyPageSizeIsZero = true};
}

/// Customers with how to reach them.
constexpr ReportDescription contactList(const char16_t* name, RecordsetPtr Session::*cursor) {
    return {.name = name,
            .caption = u"打印客户资料",
            .cursor = cursor,
            .columns = sets::kContact,
            .boxNames = sets::kContactBoxes,
            .addend = 32,
            .tableTop = 0,
            .footerX = 135,
            .title = u" 客 户 资 料",
            .head = heads::kClient};
}

/// Customers whom the shop is to call.
constexpr ReportDescription callList(const char16_t* name, const char16_t* caption,
                                     std::span<const ReportColumn> columns,
                                     std::span<const char16_t* const> boxes, const char16_t* title) {
    return {.name = name,
            .caption = caption,
            .cursor = &Session::scratch,
            .columns = columns,
            .boxNames = boxes,
            .tableTop = 28,
            .title = title,
            .head = heads::kCallList};
}

constexpr ReportDescription groupList(const char16_t* name, const char16_t* caption,
                                      std::span<const ReportColumn> columns,
                                      std::span<const char16_t* const> boxes, const char16_t* title) {
    return {.name = name,
            .caption = caption,
            .cursor = &Session::scratch,
            .columns = columns,
            .boxNames = boxes,
            .orientation = PaperOrientation::Portrait,
            .rows = 65,
            .titleBase = 60,
            .addend = 32,
            .tableTop = 5,
            .footerX = 98,
            .title = title};
}

/// A list of stock whose title comes from the calling view.
constexpr ReportDescription stockList(const char16_t* name, const char16_t* caption,
                                      RecordsetPtr Session::*cursor) {
    return {.name = name,
            .caption = caption,
            .cursor = cursor,
            .columns = sets::kStock,
            .boxNames = sets::kStockBoxes};
}

constexpr ReportDescription stockInList(const char16_t* name, RecordsetPtr Session::*cursor) {
    ReportDescription report = stockList(name, u"产品入库清单打印", cursor);
    report.head = heads::kDisplay;
    return report;
}

constexpr ReportDescription movementList(const char16_t* name, const char16_t* caption,
                                         RecordsetPtr Session::*cursor, std::span<const ReportColumn> columns,
                                         std::span<const char16_t* const> boxes) {
    return {.name = name,
            .caption = caption,
            .cursor = cursor,
            .columns = columns,
            .boxNames = boxes,
            .head = heads::kDisplay};
}

constexpr ReportDescription stoppingAtAFullPage(ReportDescription report) {
    report.printReadsUnopened = true;
    return report;
}

/// Sold goods with their four figures.
constexpr ReportDescription soldList(const char16_t* name, RecordsetPtr Session::*cursor,
                                     std::span<const HeadItem> head) {
    return {.name = name,
            .caption = u"打印已销售产品统计",
            .cursor = cursor,
            .columns = sets::kSold,
            .boxNames = sets::kSoldBoxes,
            .title = u"已 销 售 产 品 统 计",
            .head = head,
            .printReadsUnopened = true};
}

/// Sales line by line. Their moves look at the products and not at their own rows: that is meant.
constexpr ReportDescription lineList(const char16_t* name, const char16_t* caption,
                                     RecordsetPtr Session::*cursor, std::span<const ReportColumn> columns,
                                     std::span<const HeadItem> head) {
    return {.name = name,
            .caption = caption,
            .cursor = cursor,
            .columns = columns,
            .boxNames = sets::kSaleBoxes,
            .addend = 32,
            .tableTop = 0,
            .head = head,
            .printReadsUnopened = true,
            .moveGuard = &Session::productTable};
}

constexpr ReportDescription salesList(const char16_t* name) {
    ReportDescription report =
        lineList(name, u"打印销售清单", &Session::buyList, sets::kSales, heads::kSales);
    report.tableTop = 2;
    report.title = u"销售清单";
    report.pagesAtActivation = true;
    return report;
}

constexpr ReportDescription orderLines() {
    ReportDescription report = lineList(u"showprint_rs22", u"打印订单明细", &Session::buyList,
                                        sets::kOrderLines, heads::kOrderLines);
    report.addend = 31;
    report.titleOf = heads::orderNumberTitle;
    report.pagesAtActivation = true;
    return report;
}

constexpr ReportDescription productLines() {
    ReportDescription report = lineList(u"showprint_rs_temp", u"打印单项产品销售清单", &Session::scratch,
                                        sets::kSales, heads::kSales);
    report.addend = 34;
    report.pagesAtActivation = true;
    return report;
}

constexpr ReportDescription clientLines() {
    ReportDescription report = lineList(u"showprint_rs6", u"单个打印客户购物清单", &Session::tempTable2,
                                        sets::kClientLines, heads::kClientLines);
    report.title = u"客 户 购 物 清 单";
    report.testReadsUnopened = true;
    return report;
}

constexpr ReportDescription withPrinterSetup(ReportDescription report) {
    report.settings = SettingsMenu::PrinterSetup;
    return report;
}

constexpr ReportDescription kReports[] = {
    {.name = u"print_rs3",
     .caption = u"销售库存打印",
     .cursor = &Session::productTable,
     .columns = sets::kStock,
     .boxNames = sets::kStockBoxes,
     .title = u"销 售 库 存 ",
     .head = heads::kStock,
     .printReadsUnopened = true},
    stoppingAtAFullPage(stockList(u"showprint_rs3", u"库存打印", &Session::productTable)),
    stoppingAtAFullPage(stockList(u"showprint_rs4", u"库存打印", &Session::productTable2)),
    contactList(u"showprint_rs1", &Session::clientTable),
    contactList(u"showprint_rs1A", &Session::clerkClients),
    contactList(u"showprint_rs7", &Session::clientTable2),
    {.name = u"showprint_rs8",
     .caption = u"打印客户资料",
     .cursor = &Session::clientTable3,
     .columns = sets::kContact,
     .boxNames = sets::kContactBoxes,
     .tableTop = 5,
     .title = u" 客 户 资 料",
     .settings = SettingsMenu::PrinterSetup},
    worthList(u"print_rs1", &Session::clientTable, 0),
    worthList(u"print_rs7", &Session::clientTable2, 5),
    worthList(u"print_rs8", &Session::clientTable3, 5),
    {.name = u"print_rs_statistic",
     .caption = u"打印营业额统计",
     .cursor = &Session::saleTable,
     .columns = sets::kTurnover,
     .boxNames = sets::kTurnoverBoxes,
     .orientation = PaperOrientation::Portrait,
     .rows = 65,
     .titleBase = 55,
     .addend = 32,
     .tableTop = 5,
     .footerX = 98,
     .wideTitleShift = true},
    {.name = u"print_rs_sum",
     .caption = u"打印业务员业绩",
     .cursor = &Session::clerkTotals,
     .columns = sets::kClerks,
     .boxNames = sets::kClerkBoxes,
     .orientation = PaperOrientation::Portrait,
     .rows = 65,
     .titleBase = 60,
     .footerX = 98,
     .title = u"业 务 员 业 绩 报 表",
     .head = heads::kClerk,
     .printReadsUnopened = true,
     .pageSizeGuard = &Session::scratch,
     .settings = SettingsMenu::Bare},
    groupList(u"print_clientline", u"打印客户行业分布", sets::kIndustries, sets::kIndustryBoxes,
              u" 客 户 行 业 分 布"),
    groupList(u"print_clientplace", u"打印客户地区分布", sets::kRegions, sets::kRegionBoxes,
              u" 客 户 地 区 分 布"),
    soldList(u"print_rs2", &Session::buyList, heads::kSold),
    withPrinterSetup(soldList(u"print_rs9", &Session::buyList2, heads::kSoldInPeriod)),
    {.name = u"print_rs_single",
     .caption = u"打印某客户购物统计",
     .cursor = &Session::tempTable2,
     .columns = sets::kSold,
     .boxNames = sets::kSoldBoxes,
     .titleBase = 90,
     .title = u"购物清单",
     .head = heads::kClientShares,
     .printReadsUnopened = true,
     .settings = SettingsMenu::Bare},
    salesList(u"showprint_rs2"),
    withPrinterSetup(salesList(u"showprint_rs9")),
    orderLines(),
    productLines(),
    clientLines(),
    {.name = u"print_rs_order",
     .caption = u"打印订单号购买额",
     .cursor = &Session::orderTable,
     .columns = sets::kOrders,
     .boxNames = sets::kOrderBoxes,
     .orientation = PaperOrientation::Portrait,
     .rows = 70,
     .titleBase = 55,
     .addend = 32,
     .tableTop = 2,
     .title = u" 订 单 号 购 买 额",
     .head = heads::kOrders},
    {.name = u"print_rs_total",
     .caption = u"打印购物记录",
     .cursor = &Session::orderTotals,
     .columns = sets::kPurchases,
     .boxNames = sets::kPurchaseBoxes,
     .orientation = PaperOrientation::Portrait,
     .rows = 65,
     .titleBase = 55,
     .addend = 31,
     .tableTop = 0,
     .footerX = 98,
     .titleOf = heads::purchasesTitle,
     .head = heads::kPurchases,
     .wideTitleShift = true},
    {.name = u"showprint_rs5",
     .caption = u"打印客户资料",
     .cursor = &Session::productClients,
     .columns = sets::kContact,
     .boxNames = sets::kContactBoxes,
     .titleBase = 80,
     .addend = 31,
     .tableTop = 1,
     .titleOf = heads::buyersTitle,
     .head = heads::kBuyers,
     .keepsOrientation = true},
    stockInList(u"showprint_rs15", &Session::product_Bank),
    stoppingAtAFullPage(stockInList(u"showprint_rs16", &Session::product_Bank2)),
    movementList(u"showprint_rs17", u"库存盘点打印", &Session::stock_Count_Bank, sets::kCount,
                 sets::kCountBoxes),
    movementList(u"showprint_rs18", u"退货表打印", &Session::return_Bank, sets::kReturns, sets::kReturnBoxes),
    movementList(u"showprint_rs19", u"退货表打印", &Session::return_Bank2, sets::kReturns,
                 sets::kReturnBoxes),
    movementList(u"showprint_rs20", u"产品报废表打印", &Session::no_use_Bank, sets::kScrap,
                 sets::kScrapBoxes),
    movementList(u"showprint_rs21", u"产品报废表打印", &Session::no_use_Bank2, sets::kScrap,
                 sets::kScrapBoxes),
    movementList(u"showprint_rs23", u"产品调拨表打印", &Session::out_of_Bank, sets::kTransfers,
                 sets::kTransferBoxes),
    movementList(u"showprint_rs24", u"产品调拨表打印", &Session::out_of_Bank2, sets::kTransfers,
                 sets::kTransferBoxes),
    callList(u"print_birthdays", u"打印近期生日", sets::kBirthdays, sets::kBirthdayBoxes, u"近 期 生 日"),
    callList(u"print_lapsed", u"打印久未购买", sets::kLapsed, sets::kLapsedBoxes, u"久 未 购 买"),
};

} // namespace

std::span<const ReportDescription> reportCatalogue() {
    return kReports;
}

const ReportDescription* findReport(QStringView name) {
    for (const ReportDescription& report : kReports)
        if (name == QStringView(report.name))
            return &report;
    return nullptr;
}
