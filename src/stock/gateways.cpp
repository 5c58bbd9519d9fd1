#include "stock/gateways.h"

#include "stock/stockCount.h"
#include "stock/stockOut.h"

namespace {

bool prepareWhole(const RecordsetPtr& cursor) {
    if (!cursor->isOpen())
        return false;
    cursor->clearFilter();
    return cursor->hasRows();
}

bool prepareSales(Session& session, QStringView /*view*/) {
    return prepareWhole(session.buyList);
}

bool prepareStock(Session& session, QStringView /*view*/) {
    return prepareWhole(session.productTable);
}

bool prepareStockIn(Session& session, QStringView /*view*/) {
    return session.product_Bank->hasRows();
}

bool prepareOldCount(Session& session, QStringView /*view*/) {
    return continueStockCount(session);
}

bool prepareNewCount(Session& session, QStringView /*view*/) {
    if (!canCountStock(session))
        return false;
    newStockCount(session);
    return true;
}

bool prepareStockOut(Session& session, QStringView view) {
    if (!session.productTable->hasRows())
        return false;
    const StockOut* road = findStockOut(view);
    session.reopen(session.*road->history,
                   QStringLiteral("Select * From ") + QString::fromUtf16(road->table));
    return true;
}

constexpr Gateway kGateways[] = {
    {9, u"产品销售显示", u"statisticFm2", true, true, false, prepareSales},
    {10, u"销售库存显示", u"stockFm1", true, true, true, prepareStock},
    {11, u"产品入库显示", u"stock_BankFm1", true, true, false, prepareStockIn},
    {12, u"继续盘点", u"stock_CountFm1", false, true, false, prepareOldCount},
    {13, u"新建盘点库", u"stock_CountFm1", false, true, false, prepareNewCount},
    {14, u"退库", u"stock_ReturnFm1", false, false, false, prepareStockOut},
    {15, u"调拨", u"stock_out_of_BankFm1", false, false, false, prepareStockOut},
    {16, u"报废", u"stock_no_use_BankFm1", false, false, false, prepareStockOut},
};

} // namespace

std::span<const Gateway> gateways() {
    return kGateways;
}

const Gateway* findGateway(int command) {
    for (const Gateway& gateway : kGateways)
        if (gateway.command == command)
            return &gateway;
    return nullptr;
}
