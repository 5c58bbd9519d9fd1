#include "maintenance/tableMaintenance.h"

#include "data/cursorMoves.h"
#include "data/losses.h"
#include "data/searchTexts.h"
#include "recordset/ignoringErrors.h"

namespace {

QString clientCondition(const QString& text) {
    return containedInAny({QStringLiteral("客户编号"), QStringLiteral("单位名称"), QStringLiteral("部门"),
                           QStringLiteral("联系人"), QStringLiteral("电话"), QStringLiteral("生日"),
                           QStringLiteral("地址"), QStringLiteral("邮政编码"), QStringLiteral("业务员编号")},
                          text);
}

QString lineCondition(const QString& text) {
    return QStringLiteral("订单号 = '") + text + QStringLiteral("' Or 客户编号 = '") + text +
           QStringLiteral("' Or ") + productSearch(text);
}

constexpr MaintainedTable kTables[] = {
    {.view = u"maintainFm1",
     .caption = u"客户表维护",
     .title = u"客户资料",
     .table = u"clientTable",
     .cursor = &Session::clientTable,
     .code = 1,
     .save = u"Command3",
     .saveCaption = u"保存修改",
     .discard = u"Command4",
     .remove = u"Command5",
     .removeAll = u"Command8",
     .removeAllCaption = u"删除全库记录",
     .searchHint = u"查询入口：客户编号、单位名称、联系人、电话、生日",
     .searchFields = u"查询字段：客户编号、单位名称、部门、人名、电话、生日、地址、邮政编码、业务员编号",
     .hidden = u"流水号 差额利润 差额利润率",
     .sort = u"",
     .sortsAtActivation = false,
     .readsAfresh = true,
     .question = u"确实要删除该记录吗？该客户的购买信息也将同时被删除！",
     .questionTitle = u"删除提示",
     .broken = BrokenSearch::FindsNothing,
     .nothingFound = u"查询结果为零！",
     .condition = clientCondition,
     .removeRow = removeClient},
    {.view = u"maintainFm2",
     .caption = u"购物表维护",
     .title = u"购物清单",
     .table = u"buyList",
     .cursor = &Session::buyList,
     .code = 2,
     .save = u"Command3",
     .saveCaption = u"保存修改",
     .discard = u"Command4",
     .remove = u"Command5",
     .removeAll = u"Command2",
     .removeAllCaption = u"删除全部记录",
     .searchHint = u"查询入口：订单号、客户编号、产品编号、品名、规格、产地、厂家",
     .searchFields = u"",
     .hidden = u"流水号 成本 差额利润",
     .sort = u"日期",
     .sortsAtActivation = false,
     .readsAfresh = false,
     .question = u"确实要删除该记录吗？",
     .questionTitle = u"删除提示",
     .broken = BrokenSearch::ToldAsDate,
     .nothingFound = u"",
     .condition = lineCondition,
     .removeRow = removeLine},
    {.view = u"maintainFm3",
     .caption = u"销售库存表维护",
     .title = u"产品数据",
     .table = u"productTable",
     .cursor = &Session::productTable,
     .code = 3,
     .save = u"Command2",
     .saveCaption = u"保存",
     .discard = u"Command3",
     .remove = u"Command4",
     .removeAll = u"Command8",
     .removeAllCaption = u"删除全部记录",
     .searchHint = u"查询入口：产品编号、品名、规格、产地、厂家",
     .searchFields = u"",
     .hidden = u"流水号",
     .sort = u"品名",
     .sortsAtActivation = true,
     .readsAfresh = false,
     .question = u"确实要删除该记录吗？",
     .questionTitle = u"信息提示",
     .broken = BrokenSearch::FindsNothing,
     .nothingFound = u"",
     .condition = productSearch,
     .removeRow = removeProduct},
};

void giveBack(Session& session, const QString& product, double quantity) {
    const RecordsetPtr& products = session.productTable;
    if (!products->isOpen())
        return;
    const QuietWalk walk(products);
    products->clearFilter();
    if (!findKey(products, QStringLiteral("产品编号"), product))
        return;
    Field stock = products->Fields(QStringLiteral("数量"));
    stock.setValue(checkedFinite(stock.number() + quantity));
    products->Update();
}

} // namespace

std::span<const MaintainedTable> maintainedTables() {
    return kTables;
}

void discardEdits(const RecordsetPtr& cursor) {
    IgnoringErrors errors;
    errors.run([&] {
        if (cursor->hasRows())
            cursor->CancelBatch(3);
    });
}

void dropEdits(const RecordsetPtr& cursor) {
    if (cursor->isOpen())
        cursor->CancelBatch(3);
}

QString lossOfRow(Session& session, const MaintainedTable& table) {
    const RecordsetPtr& cursor = session.*table.cursor;
    if (table.cursor == &Session::buyList)
        return lossOfLine(cursor);
    if (table.cursor == &Session::productTable)
        return lossOfProduct(cursor);
    Recordset lines(session.cn);
    lines.Open(QStringLiteral("Select * From buyList Where ") +
               keyCondition(QStringLiteral("客户编号"),
                            fieldText(cursor->Fields(QStringLiteral("客户编号")).OriginalValue())));
    return lossOfClient(cursor, lines.RecordCount());
}

void removeAllRows(Session& session, const MaintainedTable& table) {
    runStatement(session.cn, QStringLiteral("Delete * From ") + QString::fromUtf16(table.table));
    (session.*table.cursor)->Requery();
}

void removeClient(Session& session, const std::function<void()>& yield) {
    const RecordsetPtr& clients = session.clientTable;
    const RecordsetPtr& lines = session.buyList;
    const QuietWalk clientWalk(clients);
    const QuietWalk lineWalk(lines);
    WriteBatch batch(session.cn);
    clients->CancelUpdate(); // the stored number tells whose lines go, not one typed and never saved
    if (lines->isOpen())
        lines->setFilter(
            keyCondition(QStringLiteral("客户编号"), clients->Fields(QStringLiteral("客户编号")).text()));
    clients->Delete();
    while (lines->hasRows()) {
        lines->Delete();
        lines->MoveNext();
        yield();
    }
    moveOnAfterDeletion(clients);
    batch.finish();
}

void removeLine(Session& session, const std::function<void()>& /*yield*/) {
    const RecordsetPtr& lines = session.buyList;
    const QuietWalk walk(lines);
    WriteBatch batch(session.cn);
    lines->CancelUpdate(); // what goes back is what was stored
    const double quantity = lines->Fields(QStringLiteral("数量")).number();
    const QString product = lines->Fields(QStringLiteral("产品编号")).text();
    lines->Delete();
    moveOnAfterDeletion(lines);
    // The last line of all gives nothing back: that is meant.
    if (lines->hasRows())
        giveBack(session, product, quantity);
    batch.finish();
}

void removeProduct(Session& session, const std::function<void()>& /*yield*/) {
    const QuietWalk walk(session.productTable);
    session.productTable->Delete();
    moveOnAfterDeletion(session.productTable);
}
