#include "durability/shopWorker.h"

#include "data/recount.h"
#include "sales/clientRegister.h"
#include "sales/settlement.h"
#include "stock/productRegister.h"

namespace {

/// First cell of a query as text.
QString cell(Connection& connection, const QString& sql) {
    Statement statement = connection.prepare(sql);
    return statement.step() ? statement.text(0) : QString();
}

constexpr int kFirstNumber = 1001;

/// A query that counts what must not be, and its name.
struct Rule {
    const char* name;
    const char* count;
};

constexpr Rule kRules[] = {
    {"stock is not received less sold",
     "SELECT count(*) FROM productTable p WHERE 数量 <> (SELECT sum(数量) FROM product_Bank h WHERE "
     "h.产品编号 = p.产品编号)"
     " - ifnull((SELECT sum(数量) FROM buyList l WHERE l.产品编号 = p.产品编号), 0)"},
    {"a product stands in history or stock alone",
     "SELECT (SELECT count(*) FROM productTable) <> (SELECT count(DISTINCT 产品编号) FROM product_Bank)"},
    {"an order lacks lines or has too many", "SELECT count(*) FROM (SELECT 订单号 FROM buyList GROUP BY "
                                             "订单号 HAVING count(*) <> 1 + CAST(订单号 AS INTEGER) % 5)"},
    {"the customer counter",
     "SELECT counterNum <> 1001 + (SELECT count(*) FROM clientTable) FROM counterCode"},
    {"the order counter",
     "SELECT counterNum2 <> 1001 + (SELECT count(DISTINCT 订单号) FROM buyList) FROM counterCode"},
    {"the product counter",
     "SELECT counterNum3 <> 1001 + (SELECT count(*) FROM productTable) FROM counterCode"},
    {"a settled order lies in the basket still",
     "SELECT count(*) FROM buyList2 WHERE 订单号 IN (SELECT 订单号 FROM buyList)"},
    {"a customer's totals are not those of his lines",
     "SELECT count(*) FROM clientTable c WHERE 消费合计 <> ifnull((SELECT sum(实付) FROM buyList l WHERE "
     "l.客户编号 = c.客户编号), 0)"
     " OR 购买数 <> ifnull((SELECT sum(数量) FROM buyList l WHERE l.客户编号 = c.客户编号), 0)"
     " OR 差额利润 <> ifnull((SELECT sum(差额利润) FROM buyList l WHERE l.客户编号 = c.客户编号), 0)"},
};

} // namespace

Acknowledged Acknowledged::fromText(const QString& text) {
    const QStringList words = text.split(u' ');
    return words.size() == 4
               ? Acknowledged{words[0].toInt(), words[1].toInt(), words[2].toInt(), words[3].toInt()}
               : Acknowledged();
}

ShopWorker::ShopWorker(Session& session, unsigned seed)
    : m_session(session)
    , m_random(seed) {}

void ShopWorker::open() {
    m_session.open_rs();
    m_session.readCurrent();
    client_totals_recount(m_session.cn, m_session.clientTable, m_session.buyList);
    m_session.reopen(m_session.product_Bank, QStringLiteral("Select * From product_Bank"));
    m_done.customers = m_session.clientTable->RecordCount();
    m_done.products = m_session.productTable->RecordCount();
    m_done.stockIns = m_session.product_Bank->RecordCount() - m_done.products;
    m_done.orders = int(*m_session.nextOrderNum) - kFirstNumber;
}

void ShopWorker::step() {
    if (m_done.products < 3)
        return addProduct();
    if (m_done.customers < 2)
        return addCustomer();
    const int kind = below(10);
    if (kind == 0)
        addCustomer();
    else if (kind == 1)
        addProduct();
    else if (kind < 4)
        stockUp();
    else
        sell();
}

void ShopWorker::addCustomer() {
    m_session.clientTable->clearFilter();
    QStringList boxes(registerColumns().size(), QStringLiteral("0"));
    boxes[0] = counterText(m_session.nextClientNum);
    addClient(m_session, boxes);
    ++m_done.customers;
}

void ShopWorker::addProduct() {
    QStringList boxes = clearRecord(m_session);
    boxes[ProductBox::Number] = counterText(m_session.nextProductNum);
    boxes[ProductBox::Name] = QStringLiteral("货");
    boxes[ProductBox::Quantity] = QStringLiteral("100000");
    boxes[ProductBox::Cost] = QStringLiteral("1.25");
    boxes[ProductBox::Price] = QStringLiteral("2.5");
    registerProduct(m_session, boxes);
    ++m_done.products;
}

void ShopWorker::stockUp() {
    m_session.productTable->setAbsolutePosition(1 + below(m_session.productTable->RecordCount()));
    addStock(m_session, displayRecord(m_session), QStringLiteral("%1.25").arg(below(50)), {});
    ++m_done.stockIns;
}

void ShopWorker::sell() {
    m_session.clientTable->setAbsolutePosition(1 + below(m_session.clientTable->RecordCount()));
    m_session.currentClientNum = m_session.clientTable->Fields(QStringLiteral("客户编号")).text();
    const RecordsetPtr basket = openBasket(m_session);
    const int lines = 1 + int(*m_session.nextOrderNum) % 5;
    for (int i = 0; i < lines; ++i) {
        m_session.productTable->setAbsolutePosition(1 + below(m_session.productTable->RecordCount()));
        QStringList boxes = Record_display3(m_session);
        boxes[LineBox::Quantity] = QStringLiteral("%1.75").arg(below(4));
        const LineAmounts amounts =
            lineAmounts(boxes[LineBox::Quantity], boxes[LineBox::Price], QStringLiteral("100"));
        boxes[LineBox::Due] = amounts.due;
        boxes[LineBox::Discount] = amounts.discount;
        boxes[LineBox::Paid] = amounts.paid;
        basket->AddNew();
        writeRecord5(basket, boxes, m_session.productTable->Fields(QStringLiteral("成本")).number());
        basket->Update();
    }
    settle(m_session, basket);
    ++m_done.orders;
}

QStringList faultsOfBooks(const QString& path, const Acknowledged& acknowledged) {
    QStringList faults;
    Session session(path);
    Connection& connection = session.cn;
    const QString integrity = cell(connection, QStringLiteral("PRAGMA integrity_check"));
    if (integrity != u"ok")
        return {QStringLiteral("integrity: ") + integrity};
    for (const Rule& rule : kRules)
        if (cell(connection, QString::fromUtf8(rule.count)) != u"0")
            faults << QString::fromUtf8(rule.name);

    // At most the action under way may be there beyond what was acknowledged.
    const Acknowledged there{
        cell(connection, QStringLiteral("SELECT count(*) FROM clientTable")).toInt(),
        cell(connection, QStringLiteral("SELECT count(*) FROM productTable")).toInt(),
        cell(connection,
             QStringLiteral("SELECT count(*) - (SELECT count(*) FROM productTable) FROM product_Bank"))
            .toInt(),
        cell(connection, QStringLiteral("SELECT count(DISTINCT 订单号) FROM buyList")).toInt()};
    const int ahead[] = {there.customers - acknowledged.customers, there.products - acknowledged.products,
                         there.stockIns - acknowledged.stockIns, there.orders - acknowledged.orders};
    int extra = 0;
    for (const int each : ahead) {
        if (each < 0)
            faults << QStringLiteral("acknowledged %1, there %2").arg(acknowledged.text(), there.text());
        extra += each;
    }
    if (extra > 1)
        faults << QStringLiteral("more there than was begun: %1, acknowledged %2")
                      .arg(there.text(), acknowledged.text());

    const QString figures =
        QStringLiteral("SELECT group_concat(消费合计 || ',' || 购买数 || ',' || 差额利润 || ',' || "
                       "CASE 差额利润率 WHEN '' THEN '0' ELSE 差额利润率 END) FROM clientTable");
    const QString before = cell(connection, figures);
    session.open_rs();
    client_totals_recount(connection, session.clientTable, session.buyList);
    if (cell(connection, figures) != before)
        faults << QStringLiteral("the recount at start changes figures");
    return faults;
}
