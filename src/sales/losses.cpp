#include "sales/losses.h"

#include "recordset/textNumber.h"
#include "sales/basket.h"

namespace {

/// Whether the first line, which the search of a deletion leaves out, is this customer's.
bool hasFirstLine(Session& session, const QString& clientNum) {
    const RecordsetPtr& lines = session.buyList;
    RecordsetPtr whole = lines;
    if (!lines->Filter().isEmpty()) {
        whole = std::make_shared<Recordset>(session.cn);
        whole->Open(QStringLiteral("Select * From buyList"));
        if (!lines->Sort().isEmpty())
            whole->setSort(lines->Sort());
    }
    return whole->hasRows() &&
           fieldText(whole->valueAt(0, whole->fieldIndex(QStringLiteral("客户编号")))) == clientNum;
}

int linesThatGo(Session& session, const QString& clientNum) {
    if (!session.buyList->isOpen())
        return 0;
    Recordset lines(session.cn);
    lines.Open(QStringLiteral("Select * From buyList Where ") +
               keyCondition(QStringLiteral("客户编号"), clientNum));
    return lines.RecordCount() - int(hasFirstLine(session, clientNum));
}

} // namespace

QString lossOfClient(Session& session) {
    const RecordsetPtr& clients = session.clientTable;
    const QString number = fieldText(clients->Fields(QStringLiteral("客户编号")).OriginalValue());
    return QStringLiteral("客户 %1 及其 %2 条购物记录").arg(number).arg(linesThatGo(session, number));
}

QString lossOfLine(const RecordsetPtr& lines) {
    const auto text = [&lines](const char16_t* column) {
        return lines->Fields(QString::fromUtf16(column)).text();
    };
    return QStringLiteral("订单 %1 的 1 行：%2 %3，%4 件，%5 元")
        .arg(text(u"订单号"), text(u"产品编号"), text(u"品名"), text(u"数量"), text(u"实付"));
}

QString lossOfOrder(const RecordsetPtr& lines) {
    return QStringLiteral("订单 %1：%2 行，%3 元")
        .arg(fieldText(lines->valueAt(0, lines->fieldIndex(QStringLiteral("订单号")))))
        .arg(lines->RecordCount())
        .arg(plainNumber(basketTotals(lines).paid));
}
