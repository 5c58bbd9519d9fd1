#include "data/session.h"

#include "recordset/condition.h"
#include "recordset/error.h"
#include "recordset/textNumber.h"

namespace {

QString firstRowText(const RecordsetPtr& recordset, const QString& field) {
    return recordset->hasRows() ? recordset->Fields(field).text() : QString();
}

QString firstRowShown(const RecordsetPtr& recordset, const QString& field) {
    return recordset->hasRows() ? recordset->Fields(field).shown() : QString();
}

} // namespace

Session::Session(const QString& databasePath)
    : cn(databasePath) {
    for (RecordsetPtr* slot : slotPlaces())
        *slot = std::make_shared<Recordset>(cn);
    cn.enrol(this);
}

std::vector<RecordsetPtr*> Session::slotPlaces() {
    return {&clientTable,  &buyList,      &productTable, &productTable2,  &buyList2,
            &clientTable2, &clientTable3, &clerkClients, &productClients, &productLines,
            &tempTable2,   &buyList3,     &product_Bank, &product_Bank2,  &stock_Count_Bank,
            &return_Bank,  &return_Bank2, &no_use_Bank,  &no_use_Bank2,   &out_of_Bank,
            &out_of_Bank2, &counterCode,  &orderTable,   &saleTable,      &buy_Frequence_Table,
            &month_Table,  &orderTotals,  &clerkTotals,  &oneProduct,     &scratch};
}

Session::~Session() {
    cn.leave(this);
}

void Session::transactionBegun() {
    m_before = {cursors(), nextClientNum, nextOrderNum, nextProductNum};
}

void Session::transactionTakenBack() noexcept {
    if (m_before.cursors.empty())
        return;
    std::size_t i = 0;
    for (RecordsetPtr* slot : slotPlaces())
        *slot = m_before.cursors[i++];
    nextClientNum = m_before.nextClientNum;
    nextOrderNum = m_before.nextOrderNum;
    nextProductNum = m_before.nextProductNum;
    m_before = {};
}

std::vector<RecordsetPtr> Session::cursors() {
    std::vector<RecordsetPtr> cursors;
    for (const RecordsetPtr* slot : slotPlaces())
        cursors.push_back(*slot);
    return cursors;
}

void Session::reopenIfThere(RecordsetPtr& slot, const QString& table) {
    try {
        reopen(slot, QStringLiteral("Select * From ") + table);
    } catch (const RuntimeError& error) {
        if (error.number() != ErrorNumber::TableMissing)
            throw;
    }
}

void Session::openMainCursors() {
    reopen(clientTable, QStringLiteral("Select * From clientTable"));
    reopen(buyList, QStringLiteral("Select * From buyList "));
    reopen(productTable, QStringLiteral("Select * From productTable"));
}

void Session::open_rs() {
    // The first screen asks for the span of dates, whose column comes in with the rows, in one scan.
    cn.image(QStringLiteral("buyList"), {QStringLiteral("日期")});
    openMainCursors();
    reopen(counterCode, QStringLiteral("Select * From counterCode"));
    showSource = ShowSource::Clients;
    readCounters();
}

void Session::readCounters() {
    if (!counterCode->hasRows())
        return;
    counterCode->MoveFirst();
    nextClientNum = counterCode->Fields(QStringLiteral("counterNum")).number();
    nextOrderNum = counterCode->Fields(QStringLiteral("counterNum2")).number();
    nextProductNum = toInt32(counterCode->Fields(QStringLiteral("counterNum3")).number());
}

void Session::readCurrent() {
    currentClientNum = firstRowText(clientTable, QStringLiteral("客户编号"));
    currentClientName = firstRowShown(clientTable, QStringLiteral("单位名称"));
    currentContact = firstRowShown(clientTable, QStringLiteral("联系人"));
    currentProductNum = firstRowText(buyList, QStringLiteral("产品编号"));
    currentOrderNum = firstRowText(buyList, QStringLiteral("订单号"));
}

void Session::takeCustomer(const RecordsetPtr& clients) {
    if (!clients->currentRow())
        return;
    currentClientNum = clients->Fields(QStringLiteral("客户编号")).text();
    currentClientName = clients->Fields(QStringLiteral("单位名称")).shown();
    currentContact = clients->Fields(QStringLiteral("联系人")).shown();
}

void Session::refreshCustomer() {
    RecordsetPtr row;
    reopen(row, QStringLiteral("Select * From clientTable Where ") +
                    keyCondition(QStringLiteral("客户编号"), currentClientNum));
    takeCustomer(row);
}

QString counterText(const std::optional<double>& number) {
    return number ? plainNumber(*number) : QString();
}

QString counterText(const std::optional<qint32>& number) {
    return number ? QString::number(*number) : QString();
}

void writeCounter(Session& session, const QString& column, double number) {
    if (!session.counterCode->hasRows())
        return;
    session.counterCode->MoveFirst();
    session.counterCode->Fields(column).setValue(number);
    session.counterCode->Update();
}

QString keyCondition(const QString& column, const QString& key) {
    return column + QStringLiteral(" = '") + quotedInside(key) + u'\'';
}
