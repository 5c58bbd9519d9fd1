#include "stock/stockViews.h"

namespace {

constexpr DisplayDescription kDisplays[] = {
    {.name = u"stockFm1",
     .caption = u"销售库存显示",
     .table = u"productTable",
     .whole = ShowSource::Products,
     .period = ShowSource::PeriodProducts,
     .sort = u"品名",
     .reportTitle = u"",
     .wholeReport = u"print_rs3",
     .periodReport = u"print_rs3",
     .emptyText = u"没有库存产品。\n新产品在“产品登录（入库）”中登记。",
     .family = &Session::stockShowSource,
     .clearsFilter = true,
     .periodDatesFromRows = true},
    {.name = u"stock_BankFm1",
     .caption = u"产品入库明细显示",
     .table = u"product_Bank",
     .whole = ShowSource::StockIn,
     .period = ShowSource::PeriodStockIn,
     .sort = u"日期",
     .reportTitle = u"产 品 入 库 清 单",
     .wholeReport = u"showprint_rs15",
     .periodReport = u"showprint_rs16",
     .emptyText = u"没有入库记录。\n入库在“产品登录（入库）”中进行。"},
    {.name = u"stock_ReturnFm2",
     .caption = u"产品退货表显示",
     .table = u"return_Bank",
     .whole = ShowSource::Returns,
     .period = ShowSource::PeriodReturns,
     .sort = u"品名",
     .reportTitle = u"产 品 退 货 表",
     .wholeReport = u"showprint_rs18",
     .periodReport = u"showprint_rs19",
     .emptyText = u"没有退货记录。"},
    {.name = u"stock_no_use_BankFm2",
     .caption = u"产品报废表显示",
     .table = u"no_use_Bank",
     .whole = ShowSource::Scrap,
     .period = ShowSource::PeriodScrap,
     .sort = u"品名",
     .reportTitle = u"产 品 报 废 表",
     .wholeReport = u"showprint_rs20",
     .periodReport = u"showprint_rs21",
     .emptyText = u"没有报废记录。"},
    // Transfers have no period copy: a period chosen there changes nothing.
    {.name = u"stock_out_of_BankFm2",
     .caption = u"产品调拨表显示",
     .table = u"out_of_Bank",
     .whole = ShowSource::Transfers,
     .period = ShowSource::PeriodTransfers,
     .sort = u"品名",
     .reportTitle = u"产 品 调 拨 表",
     .wholeReport = u"showprint_rs23",
     .periodReport = u"showprint_rs24",
     .emptyText = u"没有调拨记录。"},
};

} // namespace

std::span<const DisplayDescription> stockDisplays() {
    return kDisplays;
}
