#include "analysis/clientViews.h"

#include "analysis/analysisPanels.h"
#include "analysis/clerks.h"
#include "analysis/clientDates.h"
#include "analysis/evaluation.h"

namespace {

DateSpan datesOfLinesWithRows(Session& session, const RecordsetPtr& shown) {
    return shown->hasRows() ? datesOfLines(session, shown) : noDates();
}

DateSpan periodTextsWithRows(Session& session, const RecordsetPtr& shown) {
    return shown->hasRows() ? periodTexts(session, shown) : noDates();
}

/// The dates of the period's own lines, without any the period's words.
DateSpan datesOfPeriodLines(Session& session, const RecordsetPtr& shown) {
    if (!shown->hasRows())
        return noDates();
    return session.buyList2->hasRows() ? sortByDate(session.buyList2) : periodTexts(session, shown);
}

constexpr DisplaySource kEvaluated[] = {
    {ShowSource::Clients, u"print_rs1", datesOfLines},
    {ShowSource::PeriodClients, u"print_rs7", periodTexts},
    {ShowSource::BestClients, u"print_rs8", periodTexts, u"没有客户入选：所选指标的合计为 0"}};
constexpr DisplaySource kIntervalClients[] = {
    {ShowSource::Clients, u"showprint_rs1", datesOfLinesWithRows},
    {ShowSource::PeriodClients, u"showprint_rs7", datesOfPeriodLines, u""}};
constexpr DisplaySource kClerks[] = {{ShowSource::Clerks, u"print_rs_sum", datesOfLinesWithRows},
                                     {ShowSource::PeriodClerks, u"print_rs_sum", periodTextsWithRows}};
constexpr DisplaySource kClerkClients[] = {
    {ShowSource::Clerks, u"showprint_rs1A", datesOfLinesWithRows},
    {ShowSource::PeriodClerks, u"showprint_rs1A", periodTextsWithRows}};

/// A step back to the whole table ends a cut, whether it was by rank or by share, and a search of the
/// register.
void endCut(Session& session) {
    if (session.clientTable->isOpen())
        session.clientTable->clearFilter();
    session.analysisKind = 1;
    session.cutOnScreen = false;
}

constexpr DisplayDescription kDisplays[] = {
    {.name = u"statisticFm1",
     .caption = u"客户资料统计",
     .table = u"clientTable",
     .sources = kEvaluated,
     .sort = u"消费合计 desc",
     .emptyText = kNoClients,
     .dateTips = {u"启始时间", u"终止时间"},
     .dateValues = kPeriodDates,
     .family = &Session::clientShowSource,
     .customers = true,
     .present = evaluatedSource,
     .tells = [](const Session& session, ShowSource) { return evaluatedSource(session); },
     .atLoad = openEvaluation,
     .begin = beginEvaluation,
     .prepare = begin_setup,
     .toWhole = endCut,
     .panel = makePanel<EvaluationPanel>},
    {.name = u"userInfoFm2",
     .caption = u"客户资料显示(业务员)",
     .table = u"",
     .sources = kClerkClients,
     .sort = u"",
     .emptyText = u"该业务员没有客户。",
     .dateValues = kPeriodDates,
     .keepsSource = true,
     .customers = true,
     .queryCode = ShowSource::ClerkClients,
     .tells = [](const Session& session,
                 ShowSource shown) { return shown == ShowSource::None ? session.showSource : shown; },
     .prepare = [](Session& session, ShowSource) { openClerkClients(session); }},
    {.name = u"userInfoFm3",
     .caption = u"客户资料显示（购买频率）",
     .table = u"",
     .sources = kIntervalClients,
     .sort = u"",
     .emptyText = u"该时间间隔没有客户。",
     .dateValues = kPeriodDates,
     .keepsSource = true,
     .customers = true,
     .queryCode = ShowSource::BestClients,
     .present = [](const Session& session) { return session.clientShowSource; },
     .tells = [](const Session&, ShowSource) { return ShowSource::Clients; },
     .panel = makePanel<IntervalClientsPanel>},
    {.name = u"statisticFm3",
     .caption = u"业务员业绩统计",
     .table = u"",
     .sources = kClerks,
     .sort = u"",
     .emptyText = u"没有业绩：还没有客户，或者这段时间没有客户购买。",
     .dateValues = kPeriodDates,
     .closedKeepsFigures = true,
     .prepare = [](Session& session, ShowSource) { clerk_Count(session); },
     .panel = makePanel<ClerkPanel>},
};

} // namespace

std::span<const DisplayDescription> clientDisplays() {
    return kDisplays;
}
