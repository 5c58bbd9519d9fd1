#include "stock/productRegister.h"

#include "data/cursorMoves.h"
#include "recordset/error.h"
#include "recordset/textNumber.h"

#include <cmath>

namespace {

bool isNumberBox(int box) {
    return box == ProductBox::Quantity || box == ProductBox::Cost || box == ProductBox::Price;
}

/// Numeric and not the very text "0"; "0.0" and negative numbers pass.
bool isAmount(const QString& text) {
    const QString trimmed = trimBlanks(text);
    return isNumeric(trimmed) && trimmed != u"0";
}

std::optional<BoxFault> check(const QStringList& boxes, bool withQuantity) {
    if (!isDate(trimBlanks(boxes[ProductBox::Date])))
        return BoxFault{ProductBox::Date, QStringLiteral("日期格式错误！")};
    if (trimBlanks(boxes[ProductBox::Number]).isEmpty())
        return BoxFault{ProductBox::Number, QStringLiteral("请输入‘产品编号’！")};
    if (trimBlanks(boxes[ProductBox::Name]).isEmpty())
        return BoxFault{ProductBox::Name, QStringLiteral("请输入‘品名’！")};
    if (withQuantity && !isAmount(boxes[ProductBox::Quantity]))
        return BoxFault{ProductBox::Quantity, QStringLiteral("请输入产品‘数量’！")};
    if (!isAmount(boxes[ProductBox::Cost]))
        return BoxFault{ProductBox::Cost, QStringLiteral("请输入‘成本’！")};
    if (!isAmount(boxes[ProductBox::Price]))
        return BoxFault{ProductBox::Price, QStringLiteral("请输入‘出售价’！")};
    return std::nullopt;
}

/// The uniqueness test is made against the history, so that the number of a deleted product stays taken.
bool isTaken(const RecordsetPtr& history, const QString& number) {
    if (findKey(history, QStringLiteral("产品编号"), number))
        return true;
    backOntoARow(history);
    return false;
}

/// Appends a row to the history, not yet updated; false, and no row, where a column refuses.
bool appendHistory(const RecordsetPtr& history, const QStringList& boxes) {
    history->AddNew();
    try {
        writeRecord(history, boxes);
        return true;
    } catch (const RuntimeError&) {
        history->CancelUpdate();
        return false;
    }
}

/// The proposed number is used up only where a history row holds it now.
void takeProductNumber(Session& session) {
    const RecordsetPtr& history = session.product_Bank;
    if (!findKey(history, QStringLiteral("产品编号"), counterText(session.nextProductNum)))
        return backOntoARow(history);
    session.nextProductNum = toInt32(double(session.nextProductNum.value_or(0)) + 1);
    writeCounter(session, QStringLiteral("counterNum3"), *session.nextProductNum);
}

} // namespace

const QStringList& productColumns() {
    static const QStringList columns{
        QStringLiteral("日期"),     QStringLiteral("产品编号"), QStringLiteral("品名"),
        QStringLiteral("规格"),     QStringLiteral("产地"),     QStringLiteral("厂家"),
        QStringLiteral("计量单位"), QStringLiteral("数量"),     QStringLiteral("成本"),
        QStringLiteral("折扣"),     QStringLiteral("单价")};
    return columns;
}

const QStringList& productBoxCaptions() {
    static const QStringList captions{
        QStringLiteral("日    期"), QStringLiteral("产品编号"), QStringLiteral("品    名"),
        QStringLiteral("规    格"), QStringLiteral("产    地"), QStringLiteral("厂    家"),
        QStringLiteral("计量单位"), QStringLiteral("数    量"), QStringLiteral("成    本"),
        QStringLiteral("折    扣"), QStringLiteral("出售单价")};
    return captions;
}

QStringList clearRecord(Session& session) {
    QStringList texts(ProductBox::Count, QString());
    texts[ProductBox::Date] = session.todayText();
    for (const int box : {ProductBox::Quantity, ProductBox::Cost, ProductBox::Price})
        texts[box] = QStringLiteral("0");
    return texts;
}

QStringList displayRecord(Session& session) {
    const RecordsetPtr& products = session.productTable;
    if (!products->hasRows() || !products->currentRow())
        return clearRecord(session);
    QStringList texts;
    for (const QString& column : productColumns())
        texts << products->Fields(column).shown();
    return texts;
}

void writeRecord(const RecordsetPtr& target, const QStringList& boxes) {
    for (int box = 0; box < ProductBox::Count; ++box) {
        Field field = target->Fields(productColumns()[box]);
        if (isNumberBox(box))
            field.setValue(val(boxes[box]));
        else
            field.setFromBox(boxes[box]);
    }
}

std::optional<BoxFault> text2_Check(const QStringList& boxes) {
    return check(boxes, true);
}

std::optional<BoxFault> text2_Check2(const QStringList& boxes) {
    return check(boxes, false);
}

RegisterResult registerProduct(Session& session, const QStringList& boxes,
                               const std::function<void()>& yield) {
    const QuietWalk historyWalk(session.product_Bank);
    const QuietWalk stockWalk(session.productTable);
    if (isTaken(session.product_Bank, trimBlanks(boxes[ProductBox::Number])))
        return RegisterResult::Duplicate;
    WriteBatch batch(session.cn);
    const bool written = appendHistory(session.product_Bank, boxes);
    if (yield)
        yield();
    if (!written)
        return RegisterResult::WriteFailed;
    session.product_Bank->Update();
    session.productTable->AddNew();
    writeRecord(session.productTable, boxes);
    session.productTable->Update();
    takeProductNumber(session);
    batch.finish();
    return RegisterResult::Saved;
}

bool canAddStock(Session& session, const QString& answer) {
    if (!isNumeric(answer))
        return false;
    return std::isfinite(val(answer) + session.productTable->Fields(QStringLiteral("数量")).number());
}

bool addStock(Session& session, const QStringList& boxes, const QString& answer,
              const std::function<void()>& yield) {
    const QuietWalk historyWalk(session.product_Bank);
    WriteBatch batch(session.cn);
    QStringList row = boxes;
    row[ProductBox::Quantity] = answer;
    const bool written = appendHistory(session.product_Bank, row);
    if (yield)
        yield();
    if (!written)
        return false;
    session.product_Bank->Update();
    Field quantity = session.productTable->Fields(QStringLiteral("数量"));
    quantity.setValue(val(answer) + quantity.number());
    session.productTable->Update();
    batch.finish();
    return true;
}

void deleteProduct(Session& session) {
    const RecordsetPtr& products = session.productTable;
    const QuietWalk walk(products);
    products->Delete();
    moveOnAfterDeletion(products);
}
