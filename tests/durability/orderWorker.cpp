#include "durability/orderWorker.h"

#include "stock/productRegister.h"
#include "stock/stockCount.h"
#include "stock/stockOut.h"

#include <QCryptographicHash>

OrderWorker::OrderWorker(Session& session, unsigned seed)
    : ShopWorker(session, seed)
    , m_book(session) {
    session.today = [] { return QDate(2004, 11, 21); };
}

void OrderWorker::step() {
    const int kind = below(9);
    m_action = QStringLiteral("work");
    if (acknowledged().products < 3 || acknowledged().customers < 2 || kind < 3)
        return ShopWorker::step();
    m_session.buyList->clearFilter();
    m_session.clientTable->clearFilter();
    m_session.productTable->clearFilter();
    switch (kind) {
    case 3:
    case 4:
        return saveLine();
    case 5:
        return deleteLine();
    case 6:
        return deleteOrder();
    case 7:
        return moveOut();
    default:
        return count();
    }
}

bool OrderWorker::chooseSomeOrder() {
    m_book.open();
    if (!m_book.orders()->hasRows())
        return false;
    m_book.orders()->moveTo(below(m_book.orders()->RecordCount()));
    m_book.chooseOrder();
    m_book.lines()->moveTo(below(m_book.lines()->RecordCount()));
    return true;
}

void OrderWorker::saveLine() {
    m_action = QStringLiteral("saving a line");
    if (!chooseSomeOrder())
        return;
    QStringList boxes = m_book.record_Display();
    boxes[LineBox::Quantity] = QStringLiteral("%1.25").arg(below(6) - 1);
    const LineAmounts amounts =
        orderLineAmounts(boxes[LineBox::Quantity], boxes[LineBox::Price], QStringLiteral("100"));
    boxes[LineBox::Due] = amounts.due;
    boxes[LineBox::Paid] = amounts.paid;
    m_book.save(boxes);
}

void OrderWorker::deleteLine() {
    m_action = QStringLiteral("deleting a line");
    if (chooseSomeOrder())
        m_book.deleteLine();
}

void OrderWorker::deleteOrder() {
    m_action = QStringLiteral("deleting an order");
    if (chooseSomeOrder())
        m_book.deleteOrder([] {});
}

void OrderWorker::moveOut() {
    m_action = QStringLiteral("a stock-out");
    const StockOut& road = stockOuts()[std::size_t(below(3))];
    RecordsetPtr& history = m_session.*road.history;
    if (!history->isOpen())
        m_session.reopen(history, QStringLiteral("Select * From ") + QString::fromUtf16(road.table));
    m_session.productTable->moveTo(below(m_session.productTable->RecordCount()));
    const double quantity = below(8) / 4.0;
    bookStockOut(m_session, road, displayRecord(m_session),
                 {quantity, amountAtCost(m_session, quantity), {}});
}

void OrderWorker::count() {
    m_action = QStringLiteral("a count");
    const int kind = below(3);
    if (kind == 0)
        return newStockCount(m_session);
    if (!continueStockCount(m_session))
        return;
    if (kind == 1)
        return clearStockCount(m_session);
    const RecordsetPtr& counting = m_session.stock_Count_Bank;
    for (int i = 0; i < counting->RecordCount(); ++i) {
        counting->moveTo(i);
        counting->Fields(QStringLiteral("实物数")).setValue(double(below(40)));
    }
    saveStockCount(m_session);
}

QByteArray digestOfBooks(const QString& path) {
    Connection connection(path);
    QCryptographicHash hash(QCryptographicHash::Md5);
    for (const char* table : {"clientTable", "buyList", "productTable", "product_Bank", "return_Bank",
                              "out_of_Bank", "no_use_Bank", "counterCode", "stock_Count_Bank"}) {
        Statement rows = connection.prepare(
            QStringLiteral("SELECT * FROM \"%1\" ORDER BY rowid").arg(QLatin1String(table)));
        while (rows.step())
            for (int i = 0; i < rows.columnCount(); ++i)
                hash.addData((rows.isNull(i) ? QStringLiteral("Null") : rows.text(i)).toUtf8() + '|');
        hash.addData(table);
    }
    return hash.result();
}
