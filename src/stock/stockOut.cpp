#include "stock/stockOut.h"

#include "recordset/error.h"
#include "recordset/textNumber.h"
#include "stock/productRegister.h"

namespace {

constexpr StockOut kRoads[] = {
    {.chooser = u"stock_ReturnFm1",
     .dialog = u"stock_ReturnFm3",
     .caption = u"产品退货",
     .action = u"退货",
     .table = u"return_Bank",
     .history = &Session::return_Bank,
     .amountColumn = u"退货款",
     .quantityCaption = u"退货数量",
     .amountCaption = u"退 货 款",
     .zeroMessage = u"请输入退货数量！",
     .question = u"确认该产品退货及退货数量吗？",
     .excessMessage = u"退货数已超出现有销售库存数：",
     .searchCaught = true,
     .writeCaught = false,
     .report = u"showprint_rs18",
     .periodReport = u"showprint_rs19"},
    {.chooser = u"stock_out_of_BankFm1",
     .dialog = u"stock_out_of_BankFm3",
     .caption = u"产品调拨",
     .action = u"调拨",
     .table = u"out_of_Bank",
     .history = &Session::out_of_Bank,
     .amountColumn = u"合计金额",
     .quantityCaption = u"调拨数量",
     .amountCaption = u"合计金额",
     .zeroMessage = u"请输入产品调拨数量！",
     .question = u"确认该产品调拨及调拨数量吗？",
     .excessMessage = u"产品调拨数已超出现有销售库存数：",
     .searchCaught = true,
     .writeCaught = true,
     .report = u"showprint_rs23",
     .periodReport = u"showprint_rs19"}, // the returns of a period: that is meant
    {.chooser = u"stock_no_use_BankFm1",
     .dialog = u"stock_no_use_BankFm3",
     .caption = u"产品报废",
     .action = u"报废",
     .table = u"no_use_Bank",
     .history = &Session::no_use_Bank,
     .amountColumn = u"亏损金额",
     .quantityCaption = u"报废数量",
     .amountCaption = u"亏损金额",
     .zeroMessage = u"请输入报废数量！",
     .question = u"确认该产品报废及报废数量吗？",
     .excessMessage = u"产品报废数已超出现有销售库存数：",
     .searchCaught = false,
     .writeCaught = true,
     .report = u"showprint_rs18", // the return report, also from here: that is meant
     .periodReport = u"showprint_rs19"},
};

/// The chooser's part of a history row: date, product and unit cost.
void writeProduct(const RecordsetPtr& history, const QStringList& boxes) {
    for (int box = ProductBox::Date; box <= ProductBox::Unit; ++box)
        history->Fields(productColumns()[box]).setValue(trimBlanks(boxes[box]));
    history->Fields(QStringLiteral("成本")).setValue(val(boxes[ProductBox::Cost]));
}

/// The dialog's part.
void writeMovement(const RecordsetPtr& history, const StockOut& road, const Movement& movement) {
    history->Fields(QStringLiteral("数量")).setValue(movement.quantity);
    history->Fields(QString::fromUtf16(road.amountColumn)).setValue(movement.amount);
    history->Fields(QStringLiteral("说明")).setValue(trimBlanks(movement.remark));
}

} // namespace

std::span<const StockOut> stockOuts() {
    return kRoads;
}

const StockOut* findStockOut(QStringView chooser) {
    for (const StockOut& road : kRoads)
        if (chooser == QStringView(road.chooser))
            return &road;
    return nullptr;
}

QStringList clearChoice() {
    QStringList texts(ProductBox::Count, QString());
    for (const int box : {ProductBox::Quantity, ProductBox::Cost, ProductBox::Discount})
        texts[box] = QStringLiteral("0");
    return texts;
}

bool canMoveStock(const Session& session) {
    return session.productTable->hasRows();
}

double stockOnHand(const Session& session) {
    return session.productTable->Fields(QStringLiteral("数量")).number();
}

bool amountFits(const Session& session, const QString& quantity) {
    if (!session.productTable->hasRows() || !session.productTable->currentRow())
        return true;
    try {
        const double pieces = val(quantity);
        if (pieces <= stockOnHand(session))
            amountAtCost(session, pieces);
        return true;
    } catch (const RuntimeError&) {
        return false;
    }
}

double amountAtCost(const Session& session, double quantity) {
    return checkedFinite(quantity * session.productTable->Fields(QStringLiteral("成本")).number());
}

MoveResult bookStockOut(Session& session, const StockOut& road, const QStringList& boxes,
                        const Movement& movement) {
    const RecordsetPtr& history = session.*road.history;
    const QuietWalk walk(history);
    WriteBatch batch(session.cn);
    auto result = MoveResult::Booked;
    history->AddNew();
    try {
        writeProduct(history, boxes);
    } catch (const RuntimeError&) {
        if (!road.writeCaught)
            throw;
        result = MoveResult::WriteFailed;
    }
    writeMovement(history, road, movement);
    history->Update();
    Field stock = session.productTable->Fields(QStringLiteral("数量"));
    stock.setValue(checkedFinite(stock.number() - movement.quantity));
    session.productTable->Update();
    batch.finish();
    return result;
}
