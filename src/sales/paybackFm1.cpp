#include "sales/paybackFm1.h"

#include "controls/formParts.h"
#include "controls/prompts.h"
#include "controls/recordBoxes.h"
#include "controls/recordPane.h"
#include "data/losses.h"
#include "recordset/shownText.h"
#include "recordset/textNumber.h"
#include "sales/discountTyping.h"
#include "sales/lineBoxes.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>

#include <algorithm>

paybackFm1::paybackFm1(ViewHost& host, Prompts& prompts)
    : View(QStringLiteral("paybackFm1"), QStringLiteral("订单维护"))
    , m_host(host)
    , m_session(host.session())
    , m_prompts(prompts)
    , m_book(m_session) {
    auto* column = new QVBoxLayout;
    column->addWidget(buildLines(), 3);
    column->addWidget(buildLine(), 2);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(buildOrders(), 2);
    row->addLayout(column, 7);
    const auto named = [this](const char* name) {
        return findChild<QPushButton*>(QString::fromLatin1(name));
    };
    tabThrough(QWidgetList{m_search, named("Command6"), m_orders->grid} + m_orders->moves->buttons() +
               QWidgetList{named("Command2"), m_lines->grid} + m_lines->moves->buttons() +
               m_boxes->widgets() + QWidgetList{m_bought, named("Command3"), named("Command4")});
    setSearchBox(m_search);
    connect(m_orders->grid, &DataGrid::rowChosen, this, &paybackFm1::chooseOrder);
    connect(m_lines->grid, &DataGrid::rowChosen, this, &paybackFm1::chooseLine);
    m_lines->onRow([this] { linesMoved(); });
    m_orders->onRow([this] {
        m_orders->showPosition();
        nameChosenOrder();
    });
    connect(m_boxes, &RecordBoxes::changed, this, &paybackFm1::boxChanged);
}

QPushButton* paybackFm1::addButton(const char* name, const QString& caption, void (paybackFm1::*action)()) {
    QPushButton* button = makeButton(QString::fromLatin1(name), caption, this);
    connect(button, &QPushButton::clicked, this, action);
    return button;
}

QWidget* paybackFm1::buildOrders() {
    auto* side = new QGroupBox(QStringLiteral("购物订单号"), this);
    m_orders = new RecordPane({u"DataGrid2", u"Command1", u"Text2"}, QStringLiteral("还没有订单。"),
                              m_prompts, side);
    m_orders->grid->setChosenByEnter();
    QPushButton* find = addButton("Command6", QStringLiteral("查询"), &paybackFm1::search);
    m_search = makeSearchBox(QStringLiteral("Text1"), QStringLiteral("输入订单号"), find, side);
    auto* top = new QHBoxLayout;
    top->addWidget(m_search, 1);
    top->addWidget(find);
    auto* column = new QVBoxLayout(side);
    column->addLayout(top);
    column->addWidget(m_orders->grid, 1);
    column->addWidget(m_orders->moves, 0, Qt::AlignHCenter);
    m_changing << addButton("Command2", QStringLiteral("删除整个订单"), &paybackFm1::deleteOrder);
    column->addWidget(m_changing.last());
    return side;
}

QWidget* paybackFm1::buildLines() {
    auto* side = new QGroupBox(QStringLiteral("订单明细"), this);
    m_order = makeLabel(QStringLiteral("Label3"), QStringLiteral("订单号"), side);
    m_lines = new RecordPane({u"DataGrid1", u"Command5", u"Text5"}, QStringLiteral("请在左边点一个订单号。"),
                             m_prompts, side);
    m_lines->grid->setNothingFoundText(QStringLiteral("请在左边点一个订单号。"));
    m_lines->grid->setChosenByEnter();
    m_order->setFont(boldOf(m_order, 1.5));
    m_facts = makeLabel(QStringLiteral("orderFacts"), {}, side);
    m_facts->setFont(boldOf(m_facts, 1.15));
    m_facts->setTextFormat(Qt::PlainText);
    m_facts->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto* top = new QHBoxLayout;
    top->addWidget(m_order);
    top->addWidget(m_facts, 1);
    top->addLayout(buildTotals());
    auto* column = new QVBoxLayout(side);
    column->addLayout(top);
    column->addWidget(m_lines->grid, 1);
    column->addWidget(m_lines->moves, 0, Qt::AlignHCenter);
    return side;
}

QLayout* paybackFm1::buildTotals() {
    auto* row = new QHBoxLayout;
    m_quantity = makeFigure(QStringLiteral("Label5"), QStringLiteral("总件数"), this);
    m_paid = makeFigure(QStringLiteral("Label7"), QStringLiteral("总金额"), this);
    for (QLabel* figure : {m_quantity, m_paid}) {
        row->addWidget(new QLabel(figure->accessibleName() + u'：', this));
        row->addWidget(figure);
    }
    return row;
}

QWidget* paybackFm1::buildLine() {
    auto* panel = new QGroupBox(QStringLiteral("修改"), this);
    m_boxes = makeLineBoxes(BoxKeys{Qt::Key_Left, Qt::Key_Right}, panel);
    refuseTooLarge(m_boxes, [this] { return unitCost(); });
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    for (QPushButton* each : {addButton("Command3", QStringLiteral("保存"), &paybackFm1::save),
                              addButton("Command4", QStringLiteral("删除"), &paybackFm1::deleteLine)}) {
        buttons->addWidget(each);
        m_changing << each;
    }
    auto* column = new QVBoxLayout(panel);
    column->addLayout(buildBoxes(panel));
    column->addLayout(buttons);
    return panel;
}

QLayout* paybackFm1::buildBoxes(QWidget* panel) {
    auto* grid = new QGridLayout;
    constexpr int perRow = 3;
    for (int i = 0; i < LineBox::Count; ++i)
        m_boxes->place(grid, i, i / perRow, i % perRow * 3);
    const std::tuple<const char*, int, double> steppers[] = {{"UpDown1", LineBox::Quantity, 1e15},
                                                             {"UpDown2", LineBox::Discount, 100}};
    for (const auto& [name, box, most] : steppers) {
        auto* stepper = new UpDown(QString::fromLatin1(name), panel);
        connect(stepper, &UpDown::stepped, this,
                [this, index = box, limit = most](int by) { step(index, by, limit); });
        grid->addWidget(stepper, box / perRow, box % perRow * 3 + 2);
        m_steppers.push_back(stepper);
    }
    QLabel* discountHint = makeLabel(QStringLiteral("discountHint"), {}, panel);
    m_typing = new DiscountTyping(m_boxes, discountHint);
    grid->addWidget(discountHint, LineBox::Count / perRow + 1, 0, 1, perRow * 3);
    m_bought = makeShownBox(QStringLiteral("Text3"), QStringLiteral("购买该产品总数"), panel);
    m_bought->setReadOnly(true);
    m_bought->setAlignment(Qt::AlignRight);
    grid->addWidget(new QLabel(QStringLiteral("购买该产品总数"), panel), LineBox::Count / perRow, 6);
    grid->addWidget(m_bought, LineBox::Count / perRow, 7);
    return grid;
}

void paybackFm1::load() {
    Fm_Activate_paybackFm1();
}

void paybackFm1::Fm_Activate_paybackFm1() {
    const QScopedValueRollback filling(fillGuard, qint16(Filling));
    m_book.open();
    m_orders->bind(m_book.orders(), {});
    bindLines();
    m_search->clear();
    m_boxes->clear();
    for (QLabel* total : {m_quantity, m_paid})
        total->setText(QStringLiteral("0"));
    m_bought->setText(QStringLiteral("0"));
    showPositions();
}

void paybackFm1::bindLines() {
    m_lines->bind(m_book.lines(),
                  {QStringLiteral("流水号"), QStringLiteral("成本"), QStringLiteral("差额利润")});
}

void paybackFm1::showPositions() {
    m_orders->showPosition();
    m_lines->showPosition();
}

void paybackFm1::linesMoved() {
    m_lines->showPosition();
    showLine();
}

void paybackFm1::showLine() {
    const QScopedValueRollback filling(fillGuard, qint16(Filling));
    const RecordsetPtr& lines = m_book.lines();
    if (lines->hasRows() && lines->currentRow())
        m_boxes->setTexts(m_book.record_Display());
    else
        m_boxes->clear();
    lineEdited = 0;
    setUnsavedBoxes(false);
}

void paybackFm1::showTotals() {
    const BasketTotals totals = m_book.totals();
    m_quantity->setText(plainNumber(totals.quantity));
    m_paid->setText(plainNumber(totals.paid));
    showFacts(totals);
}

void paybackFm1::showFacts(const BasketTotals& totals) {
    const OrderFacts facts = m_book.facts();
    m_facts->setText(m_book.lines()->hasRows()
                         ? captionText(QStringLiteral("　客户 %1　%2　金额 %3")
                                           .arg(facts.customer, facts.day, plainNumber(totals.paid)))
                         : QString());
    m_facts->setToolTip(m_facts->text());
    nameChosenOrder();
}

void paybackFm1::nameChosenOrder() {
    const RecordsetPtr& orders = m_book.orders();
    const bool other = m_book.orderChosen() && orders->hasRows() && orders->currentRow() &&
                       orders->Fields(QStringLiteral("订单号")).text() != m_chosen;
    const QString tip =
        other ? QStringLiteral("对选中的订单 %1，不是光标所在的订单").arg(captionText(m_chosen)) : QString();
    for (QPushButton* each : m_changing)
        each->setToolTip(tip);
}

void paybackFm1::showBought() {
    m_bought->setText(plainNumber(m_book.boughtOfProduct()));
}

void paybackFm1::chooseOrder() {
    if (m_deleting || !m_book.orders()->hasRows() || !m_book.orders()->currentRow())
        return;
    m_chosen = m_book.chooseOrder();
    m_order->setText(QStringLiteral("订单号： ") + m_chosen);
    bindLines();
    showPositions();
    showLine();
    showTotals();
    showBought();
}

void paybackFm1::chooseLine() {
    if (m_deleting || !m_book.lines()->hasRows())
        return;
    showLine();
    showTotals();
    showBought();
    m_boxes->focus(LineBox::Quantity);
}

void paybackFm1::search() {
    const QString number = trimBlanks(m_search->text());
    if (!m_book.orders()->hasRows() || number.isEmpty())
        return;
    // The lines are not loaded: the order found is still to be clicked.
    if (!m_book.findOrder(number))
        m_prompts.tellAbout(m_search, QStringLiteral("无此订单号！"));
    m_orders->showPosition();
}

void paybackFm1::boxChanged(int index) {
    if (fillGuard == Filling)
        return;
    lineEdited = -1;
    setUnsavedBoxes(canChange());
    if ((index != LineBox::Quantity && index != LineBox::Discount) || !m_book.lines()->hasRows())
        return;
    // The typed quantity stays, with the old amounts beside it, where the stock refuses it: that is meant.
    if (index == LineBox::Quantity && !stock_check())
        return;
    const QScopedValueRollback filling(fillGuard, qint16(Filling));
    showLineAmounts(m_boxes, *m_typing,
                    orderLineAmounts(m_boxes->text(LineBox::Quantity), m_boxes->text(LineBox::Price),
                                     m_typing->counted()));
}

double paybackFm1::unitCost() const {
    const RecordsetPtr& lines = m_book.lines();
    return lines->hasRows() && lines->currentRow() ? lines->Fields(QStringLiteral("成本")).number() : 0;
}

bool paybackFm1::stock_check() {
    const RecordsetPtr& lines = m_book.lines();
    if (!lines->currentRow())
        return true;
    const QString fault = orderStockFault(m_session, lines->Fields(QStringLiteral("产品编号")).text(),
                                          m_boxes->text(LineBox::Quantity));
    if (fault.isEmpty())
        return true;
    for (UpDown* stepper : m_steppers)
        stepper->endRepeat();
    m_prompts.tellAbout(m_boxes->box(LineBox::Quantity), fault);
    return false;
}

void paybackFm1::step(int box, int by, double most) {
    const double number = valOrMost(m_boxes->text(box)) + by;
    m_boxes->setText(box, plainNumber(by < 0 ? std::max(0.0, number) : std::min(number, most)));
}

bool paybackFm1::canChange() const {
    return !m_deleting && m_book.orderChosen() && m_book.lines()->hasRows() && m_book.lines()->currentRow();
}

void paybackFm1::save() {
    if (!canChange())
        return;
    m_typing->finish();
    const QString product = m_boxes->text(LineBox::Name);
    m_book.save(m_boxes->texts());
    showLine();
    showTotals();
    showBought();
    m_host.say({QStringLiteral("已保存：订单 %1 的 %2").arg(captionText(m_chosen), captionText(product))});
    m_prompts.tell(orderTotalsText(m_book.totals()));
}

void paybackFm1::deleteLine() {
    if (!canChange() ||
        !m_prompts.confirmLoss(QStringLiteral("确实要删除该记录吗？"), lossOfLine(m_book.lines()),
                               QStringLiteral("删除提示")) ||
        !canChange())
        return;
    const OrderMaintenance::Deleted deleted = m_book.deleteLine();
    showLine();
    showTotals();
    showBought();
    showPositions();
    if (deleted.toldTotals)
        m_prompts.tell(orderTotalsText(m_book.totals()));
}

void paybackFm1::deleteOrder() {
    if (!canChange() ||
        !m_prompts.confirmLoss(QStringLiteral("确实要删除该订单吗？"), lossOfOrder(m_book.lines()),
                               QStringLiteral("删除提示")) ||
        !canChange())
        return;
    {
        const QScopedValueRollback deleting(m_deleting, true);
        m_book.deleteOrder([this] {
            showPositions();
            QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        });
    }
    showLine();
    showTotals();
    m_bought->setText(QStringLiteral("0"));
    showPositions();
}
