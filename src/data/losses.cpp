#include "data/losses.h"

#include "recordset/textNumber.h"

namespace {

QString stored(const RecordsetPtr& recordset, const char16_t* column) {
    return fieldText(recordset->Fields(QString::fromUtf16(column)).OriginalValue());
}

} // namespace

QString lossOfClient(const RecordsetPtr& clients, int lines) {
    return QStringLiteral("客户 %1 及其 %2 条购物记录").arg(stored(clients, u"客户编号")).arg(lines);
}

QString lossOfLine(const RecordsetPtr& lines) {
    return QStringLiteral("订单 %1 的 1 行：%2 %3，%4 件，%5 元")
        .arg(stored(lines, u"订单号"), stored(lines, u"产品编号"), stored(lines, u"品名"),
             stored(lines, u"数量"), stored(lines, u"实付"));
}

QString lossOfOrder(const RecordsetPtr& lines) {
    const int paid = lines->fieldIndex(QStringLiteral("实付"));
    double sum = 0;
    for (int row = 0; row < lines->RecordCount(); ++row)
        sum += lines->numberAt(row, paid);
    return QStringLiteral("订单 %1：%2 行，%3 元")
        .arg(fieldText(lines->valueAt(0, lines->fieldIndex(QStringLiteral("订单号")))))
        .arg(lines->RecordCount())
        .arg(plainNumber(sum));
}

QString lossOfProduct(const RecordsetPtr& products) {
    return QStringLiteral("产品 %1 %2，库存 %3")
        .arg(stored(products, u"产品编号"), stored(products, u"品名"), stored(products, u"数量"));
}

QString lossOfStockIn(const RecordsetPtr& history) {
    return QStringLiteral("产品 %1 %2 在 %3 的入库记录，数量 %4")
        .arg(stored(history, u"产品编号"), stored(history, u"品名"), stored(history, u"日期"),
             stored(history, u"数量"));
}

QString lossOfTable(Connection& connection, const QString& table) {
    Recordset whole(connection);
    whole.Open(QStringLiteral("Select * From ") + table);
    return QStringLiteral("全部 %1 条记录，连同现在没有显示的").arg(whole.RecordCount());
}
