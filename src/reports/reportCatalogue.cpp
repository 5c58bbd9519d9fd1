#include "reports/reportDescription.h"

#include <array>

namespace {

constexpr ReportColumn kStock[] = {
    {u"日期", u"日期", 20},  {u"产品编号", u"产品编号", 62}, {u"品名", u"品名", 94},
    {u"规格", u"规格", 116}, {u"产地", u"产地", 138},        {u"厂家", u"厂家", 160},
    {u"单价", u"单价", 182}, {u"数量", u"数量", 204},        {u"成本", u"成本", 216},
    {u"折扣", u"折扣"},
};
constexpr const char16_t* kStockBoxes[] = {u"日期方框", u"产品编号方框", u"品名方框",
                                           u"规格方框", u"产地方框",     u"厂家方框",
                                           u"单价方框", u"数量方框",     u"成本方框"};

constexpr ReportColumn kContact[] = {
    {u"联系人", u"联系人", 15}, {u"电话", u"电话", 37},    {u"手机", u"手机", 59},
    {u"传真", u"传真", 81},     {u"Email", u"Email", 123}, {u"单位名称", u"单位名称", 175},
    {u"地址", u"地址", 227},    {u"邮编", u"邮政编码"},
};
constexpr const char16_t* kContactBoxes[] = {u"联系人方框", u"电话方框",     u"手机方框", u"传真方框",
                                             u"Email方框",  u"单位名称方框", u"地址方框"};

constexpr ReportColumn kWorth[] = {
    {u"联系人", u"联系人", 15},      {u"电话", u"电话", 37},          {u"手机", u"手机", 59},
    {u"Email", u"Email", 101},       {u"单位名称", u"单位名称", 153}, {u"消费合计", u"消费合计", 205},
    {u"差额利润", u"差额利润", 223}, {u"购买数", u"购买数"},
};
// The last name is without the word for a box: that is meant.
constexpr const char16_t* kWorthBoxes[] = {u"联系人方框",   u"电话方框",     u"手机方框", u"Email方框",
                                           u"单位名称方框", u"消费合计方框", u"差额利润"};

constexpr ReportColumn kTurnover[] = {
    {u"日期", u"日期", 30}, {u"营业额", u"营业额", 62}, {u"", u"", 94}, {u"", u""}};
constexpr const char16_t* kTurnoverBoxes[] = {u"日期方框", u"营业额方框", u"第三方框"};

constexpr ReportColumn kClerks[] = {
    {u"业务员编号", u"业务员编号", 40}, {u"营业额", u"营业额", 102}, {u"客户数", u"客户数"}};
constexpr const char16_t* kClerkBoxes[] = {u"业务员编号方框", u"营业额方框"};

/// A group of customers with its number and its share.
constexpr std::array<ReportColumn, 3> groupColumns(const char16_t* group) {
    return {{{group, group, 80}, {u"数量", u"数量", 142}, {u"百分率", u"百分率"}}};
}
constexpr auto kIndustries = groupColumns(u"行业");
constexpr const char16_t* kIndustryBoxes[] = {u"行业方框", u"数量方框"};
constexpr auto kRegions = groupColumns(u"地区");
constexpr const char16_t* kRegionBoxes[] = {u"地区方框", u"数量方框"};

/// The columns that all movements of stock share, and the two that each has of its own.
constexpr std::array<ReportColumn, 10> movementColumns(const char16_t* ninth, const char16_t* tenth) {
    return {{{u"日期", u"日期", 20},
             {u"产品编号", u"产品编号", 62},
             {u"品名", u"品名", 94},
             {u"规格", u"规格", 116},
             {u"产地", u"产地", 138},
             {u"厂家", u"厂家", 160},
             {u"成本", u"成本", 182},
             {u"数量", u"数量", 204},
             {ninth, ninth, 225},
             {tenth, tenth}}};
}
constexpr std::array<const char16_t*, 9> movementBoxes(const char16_t* ninth) {
    return {u"日期方框", u"产品编号方框", u"品名方框", u"规格方框", u"产地方框",
            u"厂家方框", u"成本方框",     u"数量方框", ninth};
}
constexpr auto kCount = movementColumns(u"实物数", u"亏_盈");
constexpr auto kCountBoxes = movementBoxes(u"实物数方框");
constexpr auto kReturns = movementColumns(u"退货款", u"说明");
constexpr auto kReturnBoxes = movementBoxes(u"退货款方框");
constexpr auto kScrap = movementColumns(u"亏损金额", u"说明");
constexpr auto kScrapBoxes = movementBoxes(u"亏损金额方框");
constexpr auto kTransfers = movementColumns(u"合计金额", u"说明");
constexpr auto kTransferBoxes = movementBoxes(u"合计金额方框");

QString period(const QString& first, const QString& last) {
    return QStringLiteral("时间：") + first + u'/' + last;
}

// The stock list and the stock statistic both print it, with figures of the same names and of their own.
constexpr HeadItem kStockHead[] = {
    {0, [](const HeadSource& s) { return period(s.ofCaller(u"Text2"), s.ofCaller(u"Text3")); }},
    {80, [](const HeadSource& s) { return QStringLiteral("库存资金：") + s.ofCaller(u"Label5"); }},
    {130, [](const HeadSource& s) { return QStringLiteral("库存量：") + s.ofCaller(u"Label7"); }},
};
constexpr HeadItem kDisplayHead[] = {
    {0, [](const HeadSource& s) { return period(s.session.displayDate1, s.session.displayDate2); }},
};
constexpr HeadItem kClientHead[] = {
    {0, [](const HeadSource& s) { return period(s.session.periodDate1, s.session.periodDate2); }},
};

/// A text of the evaluation, which may stand hidden behind another view.
QString evaluated(const HeadSource& s, QStringView control) {
    return s.control(u"statisticFm1", control);
}
constexpr HeadItem kWorthHead[] = {
    {0, [](const HeadSource& s) { return period(evaluated(s, u"Text2"), evaluated(s, u"Text3")); }},
    {100, [](const HeadSource& s) { return QStringLiteral("消费总合：") + evaluated(s, u"Label6"); }},
    {150, [](const HeadSource& s) { return QStringLiteral("差额利润总合：") + evaluated(s, u"Label10"); }},
    {200, [](const HeadSource& s) { return QStringLiteral("购买数总合：") + evaluated(s, u"Label14"); }},
};
constexpr HeadItem kClerkHead[] = {
    {0, [](const HeadSource& s) { return period(s.ofCaller(u"Text2"), s.ofCaller(u"Text3")); }},
    {60, [](const HeadSource& s) { return QStringLiteral("营业额总合：") + s.ofCaller(u"Label5"); }},
    {115, [](const HeadSource& s) { return QStringLiteral("客户数总合：") + s.ofCaller(u"Label7"); }},
};

/// Customers with what they bring in.
constexpr ReportDescription worthList(const char16_t* name, RecordsetPtr Session::*cursor, double tableTop) {
    return {.name = name,
            .caption = u"打印客户资料",
            .cursor = cursor,
            .columns = kWorth,
            .boxNames = kWorthBoxes,
            .addend = 32,
            .tableTop = tableTop,
            .title = u" 客 户 资 料",
            .head = kWorthHead,
            .testReadsUnopened = true,
            .emptyPageSizeIsZero = true};
}

/// Customers with how to reach them.
constexpr ReportDescription contactList(const char16_t* name, RecordsetPtr Session::*cursor) {
    return {.name = name,
            .caption = u"打印客户资料",
            .cursor = cursor,
            .columns = kContact,
            .boxNames = kContactBoxes,
            .addend = 32,
            .tableTop = 0,
            .footerX = 135,
            .title = u" 客 户 资 料",
            .head = kClientHead};
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
    return {.name = name, .caption = caption, .cursor = cursor, .columns = kStock, .boxNames = kStockBoxes};
}

constexpr ReportDescription stockInList(const char16_t* name, RecordsetPtr Session::*cursor) {
    ReportDescription report = stockList(name, u"产品入库清单打印", cursor);
    report.head = kDisplayHead;
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
            .head = kDisplayHead};
}

constexpr ReportDescription stoppingAtAFullPage(ReportDescription report) {
    report.printReadsUnopened = true;
    return report;
}

constexpr ReportDescription kReports[] = {
    {.name = u"print_rs3",
     .caption = u"销售库存打印",
     .cursor = &Session::productTable,
     .columns = kStock,
     .boxNames = kStockBoxes,
     .title = u"销 售 库 存 ",
     .head = kStockHead,
     .printReadsUnopened = true},
    stoppingAtAFullPage(stockList(u"showprint_rs3", u"库存打印", &Session::productTable)),
    stoppingAtAFullPage(stockList(u"showprint_rs4", u"库存打印", &Session::productTable2)),
    contactList(u"showprint_rs1", &Session::clientTable),
    contactList(u"showprint_rs1A", &Session::clerkClients),
    contactList(u"showprint_rs7", &Session::clientTable2),
    {.name = u"showprint_rs8",
     .caption = u"打印客户资料",
     .cursor = &Session::clientTable3,
     .columns = kContact,
     .boxNames = kContactBoxes,
     .tableTop = 5,
     .title = u" 客 户 资 料",
     .settings = SettingsMenu::PrinterSetup},
    worthList(u"print_rs1", &Session::clientTable, 0),
    worthList(u"print_rs7", &Session::clientTable2, 5),
    worthList(u"print_rs8", &Session::clientTable3, 5),
    {.name = u"print_rs_statistic",
     .caption = u"打印营业额统计",
     .cursor = &Session::saleTable,
     .columns = kTurnover,
     .boxNames = kTurnoverBoxes,
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
     .columns = kClerks,
     .boxNames = kClerkBoxes,
     .orientation = PaperOrientation::Portrait,
     .rows = 65,
     .titleBase = 60,
     .footerX = 98,
     .title = u"业 务 员 业 绩 报 表",
     .head = kClerkHead,
     .printReadsUnopened = true,
     .pageSizeGuard = &Session::scratch,
     .settings = SettingsMenu::Bare},
    groupList(u"print_clientline", u"打印客户行业分布", kIndustries, kIndustryBoxes, u" 客 户 行 业 分 布"),
    groupList(u"print_clientplace", u"打印客户地区分布", kRegions, kRegionBoxes, u" 客 户 地 区 分 布"),
    stockInList(u"showprint_rs15", &Session::product_Bank),
    stoppingAtAFullPage(stockInList(u"showprint_rs16", &Session::product_Bank2)),
    movementList(u"showprint_rs17", u"库存盘点打印", &Session::stock_Count_Bank, kCount, kCountBoxes),
    movementList(u"showprint_rs18", u"退货表打印", &Session::return_Bank, kReturns, kReturnBoxes),
    movementList(u"showprint_rs19", u"退货表打印", &Session::return_Bank2, kReturns, kReturnBoxes),
    movementList(u"showprint_rs20", u"产品报废表打印", &Session::no_use_Bank, kScrap, kScrapBoxes),
    movementList(u"showprint_rs21", u"产品报废表打印", &Session::no_use_Bank2, kScrap, kScrapBoxes),
    movementList(u"showprint_rs23", u"产品调拨表打印", &Session::out_of_Bank, kTransfers, kTransferBoxes),
    movementList(u"showprint_rs24", u"产品调拨表打印", &Session::out_of_Bank2, kTransfers, kTransferBoxes),
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
