#include "sales/basket.h"

#include "data/cursorMoves.h"
#include "recordset/error.h"
#include "recordset/ignoringErrors.h"
#include "recordset/textNumber.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace {

bool isNumberBox(int index) {
    return index == LineBox::Price || index == LineBox::Quantity || index == LineBox::Due ||
           index == LineBox::Paid;
}

QString field(const RecordsetPtr& recordset, const char16_t* name) {
    return recordset->Fields(QString::fromUtf16(name)).text();
}

double number(const RecordsetPtr& recordset, const char16_t* name) {
    return val(field(recordset, name));
}

constexpr double kLargestAmount = 1e300;

/// Figures of a line as its columns give them.
struct LineFigures {
    double due;
    double paid;
    double margin;
};

/// In: what a column of the line holds, by its name. Throws Overflow.
template <typename Number> LineFigures lineFigures(Number&& number) {
    LineFigures figures{};
    figures.due = checkedFinite(number(u"单价") * number(u"数量"));
    figures.paid = checkedFinite(number(u"折扣") / 100 * figures.due);
    figures.margin = checkedFinite(figures.paid - number(u"成本") * number(u"数量"));
    return figures;
}

bool areModest(std::initializer_list<double> amounts) {
    return std::all_of(amounts.begin(), amounts.end(),
                       [](double amount) { return std::fabs(amount) <= kLargestAmount; });
}

void setSums(const RecordsetPtr& basket, double due, double paid, double margin) {
    basket->Fields(QStringLiteral("合计")).setValue(due);
    basket->Fields(QStringLiteral("实付")).setValue(paid);
    basket->Fields(QStringLiteral("差额利润")).setValue(margin);
}

void openOnNumber(Recordset& products, const QString& productNum) {
    products.Open(QStringLiteral("Select * From productTable Where ") +
                  keyCondition(QStringLiteral("产品编号"), productNum));
}

} // namespace

const QStringList& lineColumns() {
    static const QStringList columns{
        QStringLiteral("订单号"),   QStringLiteral("客户编号"), QStringLiteral("产品编号"),
        QStringLiteral("日期"),     QStringLiteral("品名"),     QStringLiteral("产地"),
        QStringLiteral("规格"),     QStringLiteral("厂家"),     QStringLiteral("单价"),
        QStringLiteral("计量单位"), QStringLiteral("数量"),     QStringLiteral("合计"),
        QStringLiteral("折扣"),     QStringLiteral("实付")};
    return columns;
}

double valOrMost(const QString& text) {
    try {
        return val(text);
    } catch (const RuntimeError&) {
        return HUGE_VAL;
    }
}

bool isBegunDiscount(const QString& typed) {
    return valOrMost(typed) == 0;
}

bool looksLikeTenths(const QString& discount) {
    const double percent = valOrMost(discount);
    return percent > 0 && percent < 10;
}

bool lineFits(const QString& quantity, const QString& price, double unitCost) {
    try {
        const double pieces = val(quantity);
        return areModest({pieces * val(price), pieces * unitCost});
    } catch (const RuntimeError&) {
        return false;
    }
}

LineAmounts lineAmounts(const QString& quantity, const QString& price, const QString& discount) {
    LineAmounts amounts;
    const double due = checkedFinite(val(quantity) * val(price));
    double percent = valOrMost(discount);
    amounts.discount = discount;
    if (percent <= 0 || percent >= 100) {
        amounts.discount = QStringLiteral("100");
        percent = 100;
    }
    amounts.due = plainNumber(due);
    amounts.paid = plainNumber(checkedFinite(percent * due / 100));
    return amounts;
}

QStringList Record_display3(Session& session) {
    const RecordsetPtr& products = session.productTable;
    QStringList texts(LineBox::Count, QString());
    texts[LineBox::Order] = counterText(session.nextOrderNum);
    texts[LineBox::Client] = session.currentClientNum;
    texts[LineBox::Date] = session.todayText();
    for (const int box : {LineBox::Product, LineBox::Name, LineBox::Place, LineBox::Spec, LineBox::Maker,
                          LineBox::Price, LineBox::Unit, LineBox::Discount})
        texts[box] = products->Fields(lineColumns()[box]).shown();
    for (const int box : {LineBox::Quantity, LineBox::Due, LineBox::Paid})
        texts[box] = QStringLiteral("0");
    return texts;
}

QStringList Record_display5(const RecordsetPtr& basket) {
    QStringList texts;
    for (const QString& column : lineColumns())
        texts << basket->Fields(column).shown();
    return texts;
}

std::optional<BoxFault> text4_check(const QStringList& boxes) {
    enum class Test { NotEmpty, Date, Numeric };
    static const struct {
        int box;
        Test test;
        QString message;
    } rules[] = {
        {LineBox::Order, Test::NotEmpty, QStringLiteral("请输入订单号！")},
        {LineBox::Client, Test::NotEmpty, QStringLiteral("请输入客户编号！")},
        {LineBox::Product, Test::NotEmpty, QStringLiteral("请输入产品编号！")},
        {LineBox::Date, Test::Date, QStringLiteral("日期格式错误！")},
        {LineBox::Name, Test::NotEmpty, QStringLiteral("请输入品名！")},
        {LineBox::Price, Test::Numeric, QStringLiteral("请输入单价！")},
        {LineBox::Quantity, Test::Numeric, QStringLiteral("请输入数量！")},
        {LineBox::Due, Test::Numeric, QStringLiteral("请输入应付！")},
        {LineBox::Paid, Test::Numeric, QStringLiteral("请输入实付！")},
    };
    for (const auto& rule : rules) {
        const QString text = trimBlanks(boxes[rule.box]);
        const bool good = rule.test == Test::NotEmpty ? !text.isEmpty()
                          : rule.test == Test::Date   ? isDate(text)
                                                      : isNumeric(text);
        if (!good)
            return BoxFault{rule.box, rule.message};
    }
    return std::nullopt;
}

void writeLineBoxes(const RecordsetPtr& line, const QStringList& boxes) {
    for (int box = 0; box < LineBox::Count; ++box) {
        Field target = line->Fields(lineColumns()[box]);
        if (target.isTooLongFor(boxes[box]))
            continue;
        if (isNumberBox(box))
            target.setValue(val(boxes[box]));
        else if (box == LineBox::Date)
            target.setValue(trimBlanks(boxes[box].left(10)));
        else if (box == LineBox::Discount)
            target.setValue(trimBlanks(boxes[box]));
        else
            target.setValue(trimBlanks(boxes[box].left(target.DefinedSize())));
    }
}

void writeLineMargin(const RecordsetPtr& line) {
    const auto stored = [&line](const char16_t* column) {
        return line->Fields(QString::fromUtf16(column)).number();
    };
    line->Fields(QStringLiteral("差额利润"))
        .setValue(checkedFinite(stored(u"实付") - stored(u"成本") * stored(u"数量")));
}

void writeRecord5(const RecordsetPtr& basket, QStringList boxes, double unitCost) {
    boxes[LineBox::Discount] = plainNumber(val(boxes[LineBox::Discount]));
    writeLineBoxes(basket, boxes);
    basket->Fields(QStringLiteral("成本")).setValue(unitCost);
    writeLineMargin(basket);
}

void reture_OriginalValue(const RecordsetPtr& basket) {
    for (int field = 1; field < basket->fieldCount(); ++field)
        basket->Fields(field).setValue(basket->Fields(field).OriginalValue());
}

RecordsetPtr openBasket(Session& session) {
    WriteBatch batch(session.cn);
    if (!session.cn.hasTable(QStringLiteral("buyList2")))
        runStatement(session.cn, QStringLiteral("Select Top 0 * Into buyList2 From buyList"));
    runStatement(session.cn, QStringLiteral("Delete * From buyList2"));
    batch.finish();
    session.saleShowSource = ShowSource::Lines;
    session.clientShowSource = ShowSource::Clients;
    auto basket = std::make_shared<Recordset>(session.cn);
    basket->Open(QStringLiteral("Select * From buyList2"));
    return basket;
}

bool check_Repeat_ProductNum(const RecordsetPtr& basket, const QString& productNum) {
    if (!basket->hasRows())
        return false;
    const QuietWalk walk(basket);
    const auto before = basket->currentRow();
    if (findKey(basket, QStringLiteral("产品编号"), productNum))
        return true;
    if (before)
        basket->moveToRow(*before);
    return false;
}

qint32 product_Num3(Session& session, const QString& clientNum, const QString& productNum) {
    const RecordsetPtr& lines = session.buyList;
    if (!lines->isOpen())
        return 0;
    const QuietWalk walk(lines);
    lines->setFilter(keyCondition(QStringLiteral("客户编号"), clientNum) + QStringLiteral(" And ") +
                     keyCondition(QStringLiteral("产品编号"), productNum));
    const int quantity = lines->fieldIndex(QStringLiteral("数量"));
    qint32 sum = 0;
    for (int i = 0; i < lines->RecordCount(); ++i)
        sum = toInt32(sum + lines->numberAt(i, quantity));
    lines->clearFilter();
    return sum;
}

BasketTotals basketTotals(const RecordsetPtr& basket) {
    BasketTotals totals;
    const int quantity = basket->fieldIndex(QStringLiteral("数量"));
    const int paid = basket->fieldIndex(QStringLiteral("实付"));
    for (int i = 0; i < basket->RecordCount(); ++i) {
        totals.quantity = checkedFinite(totals.quantity + basket->numberAt(i, quantity));
        totals.paid = checkedFinite(totals.paid + basket->numberAt(i, paid));
    }
    return totals;
}

std::optional<RowId> productOfNumber(Session& session, const QString& productNum) {
    if (productNum.isEmpty())
        return std::nullopt;
    Recordset product(session.cn);
    openOnNumber(product, productNum);
    return product.RecordCount() == 1 ? product.currentRow() : std::nullopt;
}

std::optional<StockRow> stockOf(Session& session, const QString& productNum) {
    Recordset product(session.cn);
    openOnNumber(product, productNum);
    if (!product.hasRows())
        return std::nullopt;
    return StockRow{*product.currentRow(), toNumber(product.Fields(QStringLiteral("数量")).OriginalValue())};
}

StockCheck checkStock(Session& session, const QString& productNum, const QString& quantity) {
    StockCheck check;
    check.stock = stockOf(session, productNum);
    if (!check.stock)
        return check;
    check.left = check.stock->quantity - valOrMost(quantity);
    if (check.stock->quantity <= 0)
        check.result = StockCheck::Result::SoldOut;
    else if (check.left < 0)
        check.result = StockCheck::Result::TooMany;
    return check;
}

void recomputeLine(const RecordsetPtr& basket) {
    const LineFigures figures =
        lineFigures([&basket](const char16_t* column) { return number(basket, column); });
    setSums(basket, figures.due, figures.paid, figures.margin);
}

bool basketRowFits(Session& session, const RecordsetPtr& basket, int fieldIndex, const QString& text) {
    const QString typedInto = basket->fieldInfo(fieldIndex).name;
    if (typedInto == u"数量") {
        const auto stock = stockOf(session, field(basket, u"产品编号"));
        const double stored = toNumber(basket->Fields(fieldIndex).OriginalValue());
        if (!stock || valOrMost(text) - stored > stock->quantity)
            return true;
    }
    try {
        const LineFigures figures = lineFigures(
            [&](const char16_t* column) { return typedInto == column ? val(text) : number(basket, column); });
        return areModest({figures.due, figures.paid, figures.margin});
    } catch (const RuntimeError&) {
        return false;
    }
}

BasketEdit afterBasketEdit(Session& session, const RecordsetPtr& basket) {
    const RecordsetPtr& products = session.productTable;
    const QuietWalk walk(products);
    products->clearFilter();
    if (!findKey(products, QStringLiteral("产品编号"), field(basket, u"产品编号"))) {
        basket->Fields(QStringLiteral("数量")).setValue(0.0);
        setSums(basket, 0, 0, 0);
        return BasketEdit::Done;
    }
    const double available = toNumber(products->Fields(QStringLiteral("数量")).OriginalValue());
    Field quantity = basket->Fields(QStringLiteral("数量"));
    const double stored = toNumber(quantity.OriginalValue());
    const bool tooMany = val(quantity.text()) - stored > available;
    if (tooMany)
        quantity.setValue(stored);
    recomputeLine(basket);
    return tooMany ? BasketEdit::TooMany : BasketEdit::Done;
}

void saveBasket(Session& session, const RecordsetPtr& basket) {
    IgnoringErrors errors;
    const QuietWalk walk(basket);
    const auto before = basket->currentRow();
    WriteBatch batch(session.cn);
    errors.run([&] { basket->UpdateBatch(3); });
    for (int i = 0; i < basket->RecordCount(); ++i) {
        errors.run([&] { basket->moveTo(i); });
        errors.run([&] { recomputeLine(basket); });
        errors.run([&] { basket->Update(); });
    }
    errors.run([&] { batch.finish(); });
    if (before)
        basket->moveToRow(*before);
}

void clearBasket(Session& session, const RecordsetPtr& basket) {
    const QuietWalk walk(basket);
    WriteBatch batch(session.cn);
    while (basket->hasRows()) {
        basket->MoveFirst();
        basket->Delete();
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }
    batch.finish();
}
