#include "drilldown/productSales.h"

#include "data/cursorMoves.h"
#include "data/sourceTable.h"
#include "drilldown/saleFigures.h"
#include "recordset/textNumber.h"

namespace {

/// The lines of a product as they stand in their table.
QString linesOfProduct(const ProductAsked& product, ShowSource source) {
    return QStringLiteral("Select * From %1 Where ").arg(linesTable(source)) +
           keyCondition(QStringLiteral("产品编号"), product.number);
}

void takeProduct(Session& session, const ProductAsked& product) {
    session.currentProductNum = product.number;
    session.currentProductName = product.name;
}

} // namespace

std::optional<ProductAsked> productOfRow(const RecordsetPtr& cursor) {
    if (!cursor->hasRows() || !cursor->currentRow())
        return std::nullopt;
    return ProductAsked{cursor->Fields(QStringLiteral("产品编号")).text(),
                        cursor->Fields(QStringLiteral("品名")).shown()};
}

bool openProductLines(Session& session, const ProductAsked& product, ShowSource source) {
    auto lines = std::make_shared<Recordset>(session.cn);
    lines->Open(linesOfProduct(product, source));
    if (!lines->hasRows())
        return false;
    takeProduct(session, product);
    session.productLinesSource = source;
    session.productLines = lines;
    return true;
}

RowsOfTable openProductClients(Session& session, const ProductAsked& product, ShowSource source) {
    takeProduct(session, product);
    session.productLinesSource = source;
    Recordset lines(session.cn);
    lines.Open(linesOfProduct(product, source));
    Recordset clients(session.cn);
    clients.Open(QStringLiteral("Select * From clientTable"));
    session.productClients = std::make_shared<Recordset>(session.cn);
    session.productClients->OpenRows(clients, customersWithLines(clients, lines));
    return rowsOfTable(*session.productClients);
}

void writeProductClients(Session& session, const RowsOfTable& rows, const Progress& progress) {
    rebuildFrom(session, session.productClients, QStringLiteral("clientTable3"), rows, progress);
}

ShowSource salesSource(const Session& session) {
    const bool period = session.saleShowSource == ShowSource::PeriodLines && session.buyList2->isOpen();
    return period ? ShowSource::PeriodLines : ShowSource::Lines;
}

void showWholeLines(Session& session) {
    session.saleShowSource = ShowSource::Lines;
    const RecordsetPtr whole = session.buyList;
    if (!whole->isOpen())
        return session.reopen(session.buyList, QStringLiteral("Select * From buyList "));
    const QuietWalk walk(whole);
    clearAnyFilter(whole);
    whole->setSort({});
}

SaleTotals calculation_L2_L4(Session& session, ShowSource source) {
    Recordset sums(session.cn);
    sums.Open(QStringLiteral("Select Sum(实付) As 营业额, Sum(数量) As 合计数 From ") + linesTable(source));
    return {plainNumber(sums.numberAt(0, 0)), plainNumber(sums.numberAt(0, 1))};
}

SaleTotals saleTotals(const RecordsetPtr& lines) {
    const LineSums sums = lines->hasRows() ? sumsOfView(lines) : LineSums();
    return {plainNumber(sums.paid), plainNumber(sums.quantity)};
}

void handSalesList(Session& session, ShowSource source) {
    const RecordsetPtr& lines = session.buyList;
    if (source == ShowSource::PeriodLines && lines->isOpen() && lines->Filter() != session.periodCondition)
        lines->setFilter(session.periodCondition);
    const SaleTotals totals = saleTotals(lines);
    session.report.totalAmount = totals.amount;
    session.report.totalCount = totals.count;
}
