#include "drilldown/drillViews.h"

#include "analysis/clientDates.h"
#include "drilldown/clientPanels.h"
#include "drilldown/productPanels.h"

namespace {

/// The lines by date and their first and last one, from the first row on.
DateSpan fromTheFirst(Session& session, const RecordsetPtr& shown) {
    DateSpan dates = datesOfRows(session, shown);
    if (shown->hasRows())
        shown->MoveFirst();
    return dates;
}

DateSpan periodFromTheFirst(Session& session, const RecordsetPtr& shown) {
    fromTheFirst(session, shown);
    return periodTexts(session, shown);
}

/// The newest line first; the words of the period where the lines are those of one.
DateSpan newestFirst(Session& session, const RecordsetPtr& shown) {
    if (!shown->isOpen())
        return {};
    const DateSpan dates = dateSpanOf(*shown);
    shown->setSort(QStringLiteral("日期 desc"));
    return session.productLinesSource == ShowSource::PeriodLines ? periodTexts(session, shown) : dates;
}

/// The words of the period where the lines are those of one; else the dates of the whole as the evaluation
/// has them, without one those of all lines.
DateSpan datesOfEvaluation(Session& session, const RecordsetPtr& shown) {
    if (session.clientLinesSource == ShowSource::PeriodLines)
        return periodTexts(session, shown);
    if (!session.evaluationDate1.isNull())
        return {session.evaluationDate1, session.evaluationDate2};
    Recordset lines(session.cn);
    lines.Open(QStringLiteral("Select * From buyList"));
    return dateSpanOf(lines);
}

bool showsClientPeriod(const Session& session) {
    return session.clientLinesSource == ShowSource::PeriodLines;
}

bool showsProductPeriod(const Session& session) {
    return session.productLinesSource == ShowSource::PeriodLines;
}

/// A search that another view has left would hide lines of the whole.
void openAllSales(Session& session) {
    session.reopenIfClosed(session.buyList, QStringLiteral("buyList"));
    if (session.saleShowSource == ShowSource::Lines)
        clearAnyFilter(session.buyList);
}

/// The Filter that a period has left on the lines is none of the whole's; a search of the view's own stays.
void dropPeriodFilter(Session& session, ShowSource code) {
    const RecordsetPtr& lines = session.buyList;
    if (code == ShowSource::Lines && lines->isOpen() && !session.periodCondition.isEmpty() &&
        lines->Filter() == session.periodCondition)
        lines->clearFilter();
}

constexpr DisplaySource kClients[] = {{ShowSource::Clients, u"showprint_rs1", datesOfLinesOrNone},
                                      {ShowSource::PeriodClients, u"showprint_rs7", periodTexts}};
constexpr DisplaySource kSales[] = {{ShowSource::Lines, u"print_rs2", fromTheFirst},
                                    {ShowSource::PeriodLines, u"print_rs9", periodFromTheFirst}};
constexpr DisplaySource kProductLines[] = {{ShowSource::ProductLines, u"showprint_rs_temp", newestFirst}};
constexpr DisplaySource kProductClients[] = {{ShowSource::ProductClients, u"showprint_rs5", nullptr}};
constexpr DisplaySource kClientLines[] = {{ShowSource::ClientLines, u"showprint_rs6", nullptr}};
constexpr DisplaySource kClientStatistic[] = {
    {ShowSource::ClientLines, u"print_rs_single", datesOfEvaluation}};
constexpr DisplaySource kOrder[] = {{ShowSource::Lines, u"showprint_rs22", nullptr}};

template <ShowSource code> ShowSource always(const Session& /*session*/) {
    return code;
}

constexpr DisplayDescription kDisplays[] = {
    {.name = u"userInfoFm1",
     .caption = u"客户资料显示",
     .table = u"clientTable",
     .sources = kClients,
     .sort = u"",
     .emptyText = kNoClients,
     .dateValues = kPeriodDates,
     .family = &Session::clientShowSource,
     .customers = true,
     .prepare = inTableOrder,
     .panel = makePanel<ClientWaysPanel>},
    {.name = u"statisticFm2",
     .caption = u"产品销售显示",
     .table = u"buyList",
     .sources = kSales,
     .sort = u"",
     .emptyText = u"没有销售记录。\n销售在“营销管理”—“购买”中进行。",
     .dateValues = kPeriodDates,
     .family = &Session::saleShowSource,
     .atLoad = openAllSales,
     .prepare = dropPeriodFilter,
     .panel = makePanel<SalesPanel>},
    {.name = u"goodsSalesFm2",
     .caption = u"某项产品销售显示",
     .table = u"",
     .sources = kProductLines,
     .sort = u"",
     .emptyText = u"该产品没有销售记录。",
     // What the goods cost and leave over stays out of this list.
     .hidden = u"流水号 成本 差额利润",
     .showsDates = false,
     .dateValues = kPeriodDates,
     .keepsAsker = true,
     .present = always<ShowSource::ProductLines>,
     .showsPeriod = showsProductPeriod,
     .panel = makePanel<ProductLinesPanel>},
    {.name = u"tempTable1Fm1",
     .caption = u"某项产品客户资料",
     .table = u"",
     .sources = kProductClients,
     .sort = u"",
     .emptyText = u"没有客户购买该产品。",
     .showsDates = false,
     .keepsAsker = true,
     .customers = true,
     .present = always<ShowSource::ProductClients>,
     .showsPeriod = showsProductPeriod,
     .panel = makePanel<ProductClientsPanel>},
    {.name = u"tempTable2Fm2",
     .caption = u"某客户购买产品清单",
     .table = u"",
     .sources = kClientLines,
     .sort = u"",
     .emptyText = u"该客户没有购物记录。",
     .showsDates = false,
     .keepsAsker = true,
     .emptyPosition = u"0",
     .queryCode = ShowSource::ClientLines,
     .present = always<ShowSource::ClientLines>,
     .showsPeriod = showsClientPeriod,
     .panel = makePanel<ClientLinesPanel>},
    {.name = u"tempTable2Fm22",
     .caption = u"某客户订单购物清单",
     .table = u"buyList",
     .sources = kOrder,
     .sort = u"",
     .emptyText = u"没有购物记录。",
     .showsDates = false,
     .keepsAsker = true,
     .queryCode = ShowSource::Lines,
     .present = always<ShowSource::Lines>,
     .panel = makePanel<OrderPanel>},
    {.name = u"tempTable3Fm3",
     .caption = u"购物统计",
     .table = u"",
     .sources = kClientStatistic,
     .sort = u"",
     .emptyText = u"该客户没有购物记录。",
     .dateValues = kPeriodDates,
     .keepsAsker = true,
     .emptyPosition = u"0",
     .present = always<ShowSource::ClientLines>,
     .showsPeriod = showsClientPeriod,
     .panel = makePanel<ClientStatisticPanel>},
};

} // namespace

std::span<const DisplayDescription> drillDisplays() {
    return kDisplays;
}
