#include "sales/orderMaintenance.h"

#include "data/cursorMoves.h"
#include "data/recount.h"
#include "data/workTable.h"
#include "recordset/error.h"
#include "recordset/ignoringErrors.h"
#include "recordset/textNumber.h"
#include "sales/clientTotals.h"

namespace {

const QStringList& keptColumns() {
    static const QStringList columns{QStringLiteral("产品编号"), QStringLiteral("品名"),
                                     QStringLiteral("规格"),     QStringLiteral("产地"),
                                     QStringLiteral("厂家"),     QStringLiteral("计量单位"),
                                     QStringLiteral("单价"),     QStringLiteral("数量"),
                                     QStringLiteral("折扣"),     QStringLiteral("成本")};
    return columns;
}

/// Makes buyList3 an empty table shaped like buyList. Throws RuntimeError where it cannot be made.
void emptyLinesTable(Session& session) {
    IgnoringErrors errors;
    rebuildEmpty(session, session.buyList3, QStringLiteral("buyList3"), QStringLiteral("buyList"), errors);
    if (!session.buyList3->isOpen())
        session.reopen(session.buyList3, QStringLiteral("Select * From buyList3 "));
}

} // namespace

/// What a deleted line leaves behind for the stock and its customer.
struct OrderMaintenance::KeptLine {
    explicit KeptLine(const RecordsetPtr& lines)
        : order(lines->Fields(QStringLiteral("订单号")).text())
        , client(lines->Fields(QStringLiteral("客户编号")).text()) {
        for (const QString& column : keptColumns())
            values.push_back(lines->Fields(column).Value());
    }

    QString product() const { return fieldText(values.front()); }
    double quantity() const {
        return toNumber(values[std::size_t(keptColumns().indexOf(QStringLiteral("数量")))]);
    }

    QString order;
    QString client;
    std::vector<CellValue> values; // of the kept columns, in their order
};

OrderMaintenance::OrderMaintenance(Session& session)
    : m_session(session)
    , m_orders(std::make_shared<Recordset>(session.cn))
    , m_lines(std::make_shared<Recordset>(session.cn)) {}

void OrderMaintenance::open() {
    m_session.reopen(m_orders, QStringLiteral("Select distinct 订单号 From buyList "));
    m_session.reopen(m_session.buyList, QStringLiteral("Select * From buyList "));
    m_session.reopen(m_session.productTable, QStringLiteral("Select * From productTable "));
    emptyLinesTable(m_session);
    m_lines = m_session.buyList3;
    m_chosen = false;
}

QString OrderMaintenance::chooseOrder() {
    QString number = m_orders->Fields(QStringLiteral("订单号")).text();
    auto lines = std::make_shared<Recordset>(m_session.cn);
    lines->Open(QStringLiteral("Select * From buyList "));
    lines->setFilter(keyCondition(QStringLiteral("订单号"), number));
    if (lines->hasRows())
        lines->MoveLast();
    m_lines = lines;
    m_chosen = true;
    return number;
}

bool OrderMaintenance::findOrder(const QString& number) {
    const QuietWalk walk(m_orders);
    if (findKey(m_orders, QStringLiteral("订单号"), number))
        return true;
    backOntoARow(m_orders);
    return false;
}

BasketTotals OrderMaintenance::totals() const {
    return m_lines->hasRows() ? basketTotals(m_lines) : BasketTotals();
}

OrderFacts OrderMaintenance::facts() const {
    if (!m_lines->hasRows())
        return {};
    const auto shown = [](const Recordset& rows, const QString& column) {
        return rows.shownAt(0, rows.fieldIndex(column));
    };
    const QString number = shown(*m_lines, QStringLiteral("客户编号"));
    // A look of its own: the shared customers stay where they stand.
    Recordset clients(m_session.cn);
    clients.Open(QStringLiteral("Select * From clientTable Where ") +
                 keyCondition(QStringLiteral("客户编号"), number));
    QStringList customer{number};
    for (const QString& column : {QStringLiteral("单位名称"), QStringLiteral("联系人")})
        if (clients.hasRows())
            customer << shown(clients, column);
    customer.removeAll(QString());
    return {customer.join(u' '), shown(*m_lines, QStringLiteral("日期"))};
}

double OrderMaintenance::boughtOfProduct() {
    if (!m_lines->hasRows() || !m_lines->currentRow() || !m_session.buyList->isOpen())
        return 0;
    const QString client = m_lines->Fields(QStringLiteral("客户编号")).text();
    const QString product = m_lines->Fields(QStringLiteral("产品编号")).text();
    m_session.buyList->setFilter(keyCondition(QStringLiteral("客户编号"), client) + QStringLiteral(" And ") +
                                 keyCondition(QStringLiteral("产品编号"), product));
    return m_session.buyList->hasRows() ? basketTotals(m_session.buyList).quantity : 0;
}

QStringList OrderMaintenance::record_Display() const {
    return Record_display5(m_lines);
}

void OrderMaintenance::record_Write(const QStringList& boxes) {
    writeLineBoxes(m_lines, boxes);
    writeLineMargin(m_lines);
}

void OrderMaintenance::save(const QStringList& boxes) {
    const QuietWalk walk(m_lines);
    WriteBatch batch(m_session.cn);
    oldQuantity = toNumber(m_lines->Fields(QStringLiteral("数量")).OriginalValue());
    m_session.currentProductNum = m_lines->Fields(QStringLiteral("产品编号")).text();
    // A refused date or text ends the writing; the words for it are shown nowhere, and saving goes on.
    IgnoringErrors errors;
    errors.run([&] { record_Write(boxes); });
    m_lines->Update();
    payback();
    m_lines->MoveLast();
    batch.finish();
}

bool OrderMaintenance::findProduct(const QString& number) {
    const RecordsetPtr& products = m_session.productTable;
    products->clearFilter();
    return findKey(products, QStringLiteral("产品编号"), number);
}

void OrderMaintenance::addProduct(const KeptLine& line) {
    const RecordsetPtr& products = m_session.productTable;
    products->AddNew();
    products->Fields(QStringLiteral("日期")).setValue(m_session.todayText());
    for (qsizetype i = 0; i < keptColumns().size(); ++i)
        products->Fields(keptColumns()[i]).setValue(line.values[std::size_t(i)]);
    products->Update();
}

void OrderMaintenance::payback() {
    if (!m_lines->hasRows())
        return;
    const QuietWalk walk(m_session.productTable);
    if (!findProduct(m_session.currentProductNum)) {
        addProduct(KeptLine(m_lines));
    } else {
        const double quantity = m_lines->Fields(QStringLiteral("数量")).number();
        // A line that falls to nothing or below gives back its old quantity and no more: that is meant.
        const double correction = quantity <= 0 ? oldQuantity : oldQuantity - quantity;
        Field stock = m_session.productTable->Fields(QStringLiteral("数量"));
        stock.setValue(checkedFinite(stock.number() + correction));
        m_session.productTable->Update();
    }
    m_session.clientTable->clearFilter();
    m_session.buyList->clearFilter();
    cost_profit_num();
    oldQuantity = 0;
    m_session.currentProductNum.clear();
}

bool OrderMaintenance::returnLine(const KeptLine& line) {
    const QuietWalk walk(m_session.productTable);
    cost_profit_num();
    if (!findProduct(line.product())) {
        addProduct(line);
        return false;
    }
    Field stock = m_session.productTable->Fields(QStringLiteral("数量"));
    stock.setValue(checkedFinite(stock.number() + line.quantity()));
    m_session.productTable->Update();
    return true;
}

void OrderMaintenance::giveBack(const KeptLine& line, bool& toProduct) {
    const RecordsetPtr& clients = m_session.clientTable;
    if (!clients->isOpen())
        return;
    const QuietWalk walk(clients);
    // Before the test for rows: a search of the register without hits must not keep goods from coming back.
    clients->clearFilter();
    m_session.buyList->clearFilter();
    if (findKey(clients, QStringLiteral("客户编号"), line.client))
        toProduct = returnLine(line);
    else
        backOntoARow(clients); // without its customer a line gives nothing back to the stock: that is meant
}

OrderMaintenance::Deleted OrderMaintenance::deleteLine() {
    const QuietWalk walk(m_lines);
    WriteBatch batch(m_session.cn);
    const KeptLine line(m_lines);
    m_session.currentClientNum = line.client;
    m_lines->Delete();
    moveOnAfterDeletion(m_lines);
    if (!m_lines->hasRows()) {
        m_orders->Requery();
        m_chosen = false;
    }
    Deleted result;
    giveBack(line, result.toldTotals);
    batch.finish();
    return result;
}

void OrderMaintenance::deleteOrder(const std::function<void()>& yield) {
    const QuietWalk walk(m_lines);
    WriteBatch batch(m_session.cn);
    m_lines->MoveFirst();
    while (m_lines->hasRows()) {
        const KeptLine line(m_lines);
        m_lines->Delete();
        m_lines->MoveNext();
        yield();
        bool toProduct = false;
        giveBack(line, toProduct);
    }
    m_orders->Requery();
    m_session.buyList->Requery();
    m_chosen = false;
    batch.finish();
}

void OrderMaintenance::cost_profit_num() {
    const RecordsetPtr& clients = m_session.clientTable;
    const RecordsetPtr& lines = m_session.buyList;
    if (!clients->isOpen() || !lines->isOpen())
        return;
    const QuietWalk clientWalk(clients);
    const QuietWalk lineWalk(lines);
    const auto client = clients->currentRow();
    const auto line = lines->currentRow();
    clients->clearFilter();
    if (!findKey(clients, QStringLiteral("客户编号"), m_session.currentClientNum))
        return;
    const bool any = lines->hasRows();
    lines->setFilter(keyCondition(QStringLiteral("客户编号"), m_session.currentClientNum));
    const LineSums sums = sumsOfView(lines);
    lines->clearFilter();
    if (any)
        writeClientTotals(clients, sums, rateText(float(marginRate(sums))));
    else
        writeClientSums(clients, sums);
    if (client)
        clients->moveToRow(*client);
    if (line)
        lines->moveToRow(*line);
}

QString orderStockFault(Session& session, const QString& productNum, const QString& quantity) {
    const RecordsetPtr& products = session.productTable;
    const QuietWalk walk(products);
    if (!findKey(products, QStringLiteral("产品编号"), productNum))
        return QStringLiteral("库存中无此产品");
    const double stock = products->Fields(QStringLiteral("数量")).number();
    if (stock <= 0)
        return QStringLiteral("该产品已无库存！");
    if (stock - valOrMost(quantity) < 0)
        return QStringLiteral("超出库存数，该产品现有库存") + plainNumber(stock);
    return {};
}

LineAmounts orderLineAmounts(const QString& quantity, const QString& price, const QString& discount) {
    LineAmounts amounts;
    const double due = checkedFinite(val(price) * val(quantity));
    const double percent = valOrMost(discount);
    const bool whole = discount.isEmpty() || discount == u"0" || percent < 0 || percent >= 100;
    amounts.discount = whole ? QStringLiteral("100") : discount;
    amounts.due = plainNumber(due);
    amounts.paid = plainNumber(checkedFinite(due * (whole ? 100 : percent) / 100));
    return amounts;
}

QString orderTotalsText(const BasketTotals& totals) {
    return QStringLiteral("总计购物数：") + plainNumber(totals.quantity) + QStringLiteral("\n总计金额数：") +
           plainNumber(totals.paid);
}
