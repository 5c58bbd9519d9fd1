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
    {.name = u"showprint_rs7",
     .caption = u"打印客户资料",
     .cursor = &Session::clientTable2,
     .columns = kContact,
     .boxNames = kContactBoxes,
     .addend = 32,
     .tableTop = 0,
     .footerX = 135,
     .title = u" 客 户 资 料",
     .head = kClientHead},
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
