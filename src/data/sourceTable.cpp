#include "data/sourceTable.h"

namespace {

constexpr bool yes = true;
constexpr bool no = false;

constexpr SourceRow kSources[] = {
    {ShowSource::Clients, &Session::clientTable, 1, yes, yes},
    {ShowSource::Lines, &Session::buyList, 2, yes, yes},
    {ShowSource::Products, &Session::productTable, 3, yes, yes},
    {ShowSource::PeriodProducts, &Session::productTable2, 3, yes, yes},
    {ShowSource::ProductClients, &Session::productClients, 5, yes, yes},
    {ShowSource::ClientLines, &Session::tempTable2, 6, yes, yes},
    {ShowSource::PeriodClients, &Session::clientTable2, 1, yes, yes},
    {ShowSource::BestClients, &Session::clientTable3, 1, yes, yes},
    {ShowSource::PeriodLines, &Session::buyList2, 2, yes, yes},
    {ShowSource::Clerks, &Session::clerkTotals, 11, no, yes},
    {ShowSource::PeriodClerks, &Session::clerkTotals, 12, no, yes},
    {ShowSource::StockIn, &Session::product_Bank, 15, yes, yes},
    {ShowSource::PeriodStockIn, &Session::product_Bank2, 16, yes, yes},
    {ShowSource::StockCount, &Session::stock_Count_Bank, 17, yes, yes},
    {ShowSource::Returns, &Session::return_Bank, 18, yes, yes},
    {ShowSource::PeriodReturns, &Session::return_Bank2, 19, yes, yes},
    {ShowSource::Scrap, &Session::no_use_Bank, 20, yes, yes},
    {ShowSource::PeriodScrap, &Session::no_use_Bank2, 21, yes, yes},
    {ShowSource::ClerkClients, &Session::clerkClients, 1, yes, yes},
    {ShowSource::Transfers, &Session::out_of_Bank, 23, no, no},
    {ShowSource::PeriodTransfers, &Session::out_of_Bank2, 24, no, no},
    {ShowSource::ProductLines, &Session::productLines, 25, no, no},
};

} // namespace

std::span<const SourceRow> sourceTable() {
    return kSources;
}

const SourceRow* sourceRow(ShowSource code) {
    for (const SourceRow& row : kSources)
        if (row.code == code)
            return &row;
    return nullptr;
}

RecordsetPtr* sourceCursor(Session& session, ShowSource code) {
    const SourceRow* row = sourceRow(code);
    return row ? &(session.*row->cursor) : nullptr;
}

qint16 searchCodeOf(ShowSource code) {
    const SourceRow* row = sourceRow(code);
    return row ? row->searchCode : qint16(code);
}
