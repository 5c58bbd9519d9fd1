#include "stock/stockDisplay.h"

#include "data/cursorMoves.h"
#include "recordset/error.h"
#include "recordset/textNumber.h"

StockSums stockSums(const RecordsetPtr& products) {
    StockSums sums;
    if (!products->hasRows())
        return sums;
    const int cost = products->fieldIndex(QStringLiteral("成本"));
    const int quantity = products->fieldIndex(QStringLiteral("数量"));
    for (int i = 0; i < products->RecordCount(); ++i) {
        const double pieces = products->numberAt(i, quantity);
        sums.value = checkedFinite(sums.value + products->numberAt(i, cost) * pieces);
        sums.quantity = checkedFinite(sums.quantity + pieces);
    }
    return sums;
}

StockSums stock_Count(const RecordsetPtr& products) {
    if (products->hasRows())
        products->MoveLast();
    return stockSums(products);
}

bool pickOneProduct(Session& session, const RecordsetPtr& products, ShowSource code) {
    if (!products->hasRows() || !products->currentRow())
        return false;
    const QString number = products->Fields(QStringLiteral("产品编号")).text();
    const QString table =
        code == ShowSource::PeriodProducts ? QStringLiteral("productTable2") : QStringLiteral("productTable");
    session.reopen(session.oneProduct,
                   QStringLiteral("Select 产品编号, 品名, 规格, 厂家, 产地, 数量,计量单位 From ") + table);
    session.oneProduct->setFilter(keyCondition(QStringLiteral("产品编号"), number));
    return true;
}

ShowSource stockSource(const Session& session) {
    const bool lost =
        session.stockShowSource == ShowSource::PeriodProducts && !session.productTable2->isOpen();
    return lost ? ShowSource::Products : session.stockShowSource;
}

QStringList oneProductLines(const RecordsetPtr& product) {
    QStringList lines;
    if (!product->hasRows())
        return lines;
    for (int i = 0; i < product->fieldCount(); ++i) {
        lines << product->Fields(i).Name() + QStringLiteral("----") + product->Fields(i).shown();
        lines << QString();
    }
    return lines;
}

void filterShortfall(const Session& session, const RecordsetPtr& products) {
    // The threshold itself counts as a shortfall.
    products->setFilter(QStringLiteral("数量 <= ") + QString::number(session.safetyStock));
}

void changeSafetyStock(Session& session, int by) {
    session.safetyStock = toInt16(double(session.safetyStock) + by);
}

void deleteStockIn(Session& session) {
    const RecordsetPtr& history = session.product_Bank;
    const QuietWalk walk(history);
    const Bookmark row = history->Bookmark();
    history->MoveFirst();
    history->setBookmark(row);
    history->Delete();
    moveOnAfterDeletion(history);
}
