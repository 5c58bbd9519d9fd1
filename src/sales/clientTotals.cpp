#include "sales/clientTotals.h"

#include "recordset/error.h"
#include "recordset/textNumber.h"

namespace {

/// Puts the customer cursor, its filter cleared, on the customer of the current line; false if he is not
/// there.
bool findClientOfLine(Session& session) {
    if (!session.buyList->hasRows() || !session.clientTable->isOpen())
        return false;
    const QString number = session.buyList->Fields(QStringLiteral("客户编号")).text();
    session.clientTable->clearFilter();
    if (!session.clientTable->hasRows())
        return false;
    session.clientTable->Find(keyCondition(QStringLiteral("客户编号"), number));
    return !session.clientTable->isEOF();
}

} // namespace

void writeClientSums(const RecordsetPtr& clients, const LineSums& sums) {
    clients->Fields(QStringLiteral("消费合计")).setValue(checkedFinite(sums.paid));
    clients->Fields(QStringLiteral("差额利润")).setValue(checkedFinite(sums.margin));
    clients->Fields(QStringLiteral("购买数")).setValue(checkedFinite(sums.quantity));
    clients->Update();
}

void writeClientTotals(const RecordsetPtr& clients, const LineSums& sums, const QString& rate) {
    writeClientSums(clients, sums);
    clients->Fields(QStringLiteral("差额利润率")).setValue(rate + u'%');
    clients->Update();
}

void cost_profit_num(Session& session, KeptRate rate) {
    const QuietWalk walk(session.clientTable);
    WriteBatch batch(session.cn);
    if (findClientOfLine(session)) {
        const LineSums sums = sumsOfView(session.buyList);
        if (rate == KeptRate::None)
            writeClientSums(session.clientTable, sums);
        else
            writeClientTotals(session.clientTable, sums, rateText(float(marginRate(sums))));
    }
    batch.finish();
}
