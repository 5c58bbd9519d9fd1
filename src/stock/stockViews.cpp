#include "stock/stockViews.h"

#include "stock/stockPanels.h"

namespace {

constexpr DisplaySource kStock[] = {{ShowSource::Products, u"print_rs3", datesOfRows},
                                    {ShowSource::PeriodProducts, u"print_rs3", datesOfRowsOrPeriod}};
constexpr DisplaySource kStockIn[] = {{ShowSource::StockIn, u"showprint_rs15", datesOfRows},
                                      {ShowSource::PeriodStockIn, u"showprint_rs16", periodTexts}};
constexpr DisplaySource kReturns[] = {{ShowSource::Returns, u"showprint_rs18", datesOfRows},
                                      {ShowSource::PeriodReturns, u"showprint_rs19", periodTexts}};
constexpr DisplaySource kScrap[] = {{ShowSource::Scrap, u"showprint_rs20", datesOfRows},
                                    {ShowSource::PeriodScrap, u"showprint_rs21", periodTexts}};
// Transfers have no period copy: a period chosen there changes nothing.
constexpr DisplaySource kTransfers[] = {{ShowSource::Transfers, u"showprint_rs23", datesOfRows},
                                        {ShowSource::PeriodTransfers, u"showprint_rs24", periodTexts}};
constexpr DisplaySource kCount[] = {{ShowSource::StockCount, u"showprint_rs17", datesOfRows}};

constexpr DisplayDescription kDisplays[] = {
    {.name = u"stockFm1",
     .caption = u"销售库存显示",
     .table = u"productTable",
     .sources = kStock,
     .sort = u"品名",
     .emptyText = u"没有库存产品。\n新产品在“产品登录（入库）”中登记。",
     .family = &Session::stockShowSource,
     .clearsFilter = true,
     .asksWholeForRows = true,
     .tells = [](const Session& session, ShowSource) { return stockSource(session); },
     .panel = makePanel<StockPanel>},
    {.name = u"stock_BankFm1",
     .caption = u"产品入库明细显示",
     .table = u"product_Bank",
     .sources = kStockIn,
     .sort = u"日期",
     .reportTitle = u"产 品 入 库 清 单",
     .emptyText = u"没有入库记录。\n入库在“产品登录（入库）”中进行。",
     .panel = makePanel<StockInPanel>},
    {.name = u"stock_ReturnFm2",
     .caption = u"产品退货表显示",
     .table = u"return_Bank",
     .sources = kReturns,
     .sort = u"品名",
     .reportTitle = u"产 品 退 货 表",
     .emptyText = u"没有退货记录。"},
    {.name = u"stock_no_use_BankFm2",
     .caption = u"产品报废表显示",
     .table = u"no_use_Bank",
     .sources = kScrap,
     .sort = u"品名",
     .reportTitle = u"产 品 报 废 表",
     .emptyText = u"没有报废记录。"},
    {.name = u"stock_out_of_BankFm2",
     .caption = u"产品调拨表显示",
     .table = u"out_of_Bank",
     .sources = kTransfers,
     .sort = u"品名",
     .reportTitle = u"产 品 调 拨 表",
     .emptyText = u"没有调拨记录。"},
    {.name = u"stock_CountFm1",
     .caption = u"库存盘点",
     .table = u"stock_Count_Bank",
     .sources = kCount,
     .sort = u"品名",
     .reportTitle = u"库 存 盘 点",
     .emptyText = u"还没有盘点表。\n用“产品管理”—“库存盘点”—“新建盘点表”建立。",
     .editable = true,
     .wholeShowCode = ShowSource::StockIn,
     .present = [](const Session&) { return ShowSource::StockCount; },
     .tells = [](const Session& session, ShowSource) { return session.showSource; },
     .panel = makePanel<StockCountPanel>},
};

} // namespace

std::span<const DisplayDescription> stockDisplays() {
    return kDisplays;
}
