#include "stock/productRegisterFm1.h"

#include "controls/blinkingLabel.h"
#include "controls/formParts.h"
#include "controls/prompts.h"
#include "controls/recordBoxes.h"
#include "controls/recordPane.h"
#include "data/cursorMoves.h"
#include "data/losses.h"
#include "data/searchTexts.h"
#include "recordset/error.h"
#include "recordset/ignoringErrors.h"
#include "recordset/shownText.h"
#include "recordset/textNumber.h"
#include "shell/rowOffers.h"
#include "stock/gateways.h"
#include "stock/productRegister.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

namespace {

/// Lets pending window events run without letting the user in.
void yieldOnce() {
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

} // namespace

productRegisterFm1::productRegisterFm1(ViewHost& host, Prompts& prompts)
    : View(QStringLiteral("productRegisterFm1"), QStringLiteral("产品登录（入库）"))
    , m_host(host)
    , m_session(host.session())
    , m_prompts(prompts) {
    static const std::pair<int, const char16_t*> captions[] = {
        {2, u"查询"}, {3, u"全库显示"}, {4, u"增加库存"},  {5, u"保存"},
        {6, u"取消"}, {7, u"删除"},     {8, u"新产品登录"}};
    for (const auto& [number, caption] : captions)
        m_commands[number] =
            makeButton(QStringLiteral("Command%1").arg(number), QString::fromUtf16(caption), this);
    for (const Gateway& gateway : gateways())
        m_commands[gateway.command] = makeButton(QStringLiteral("Command%1").arg(gateway.command),
                                                 QString::fromUtf16(gateway.caption), this);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(buildGridSide(), 5);
    row->addWidget(buildPanel(), 4);
    m_steadyTimer.setParent(this);
    m_steadyTimer.setObjectName(QStringLiteral("Timer3"));
    m_steadyTimer.setInterval(0);
    connectCommands();
    QWidgetList commands;
    for (const int number : {8, 4, 5, 6, 7, 9, 10, 11, 12, 13, 14, 15, 16})
        commands << command(number);
    tabThrough(QWidgetList{m_search, command(2), command(3), m_pane->grid} + m_pane->moves->buttons() +
               m_boxes->widgets() + commands);
    setSearchBox(m_search);
}

QWidget* productRegisterFm1::buildGridSide() {
    auto* side = new QGroupBox(this);
    QLabel* heading = makeLabel(QStringLiteral("Label2"), QStringLiteral("销售库"), side);
    heading->setFont(boldOf(heading, 1.1));
    m_pane = new RecordPane({}, QStringLiteral("还没有产品。\n请按“新产品登录”，填好资料后按“保存”。"),
                            m_prompts, side);
    m_search = makeSearchBox(QStringLiteral("Text3"),
                             QStringLiteral("查询入口：产品编号、品名、规格、产地、厂家"), command(2), side);
    auto* top = new QHBoxLayout;
    top->addWidget(heading);
    top->addWidget(m_search, 1);
    top->addWidget(command(2));
    top->addWidget(command(3));
    auto* column = new QVBoxLayout(side);
    column->addLayout(top);
    column->addWidget(m_pane->grid, 1);
    column->addWidget(m_pane->moves, 0, Qt::AlignHCenter);
    return side;
}

QWidget* productRegisterFm1::buildPanel() {
    auto* panel = new QGroupBox(this);
    m_heading = makeLabel(QStringLiteral("Label3"), QStringLiteral("产品登录（入库）"), panel);
    m_heading->setFont(boldOf(m_heading, 1.2));
    m_productFlag = new BlinkingLabel(QStringLiteral("Label4"), QStringLiteral("添加产品"),
                                      QStringLiteral("Timer2"), panel);
    m_stockFlag = makeLabel(QStringLiteral("Label8"), QStringLiteral("增加产品数量"), panel);
    m_stockFlag->setFont(m_productFlag->font());
    m_stockFlag->hide();
    m_boxes = new RecordBoxes(QStringLiteral("Text2"), productBoxCaptions(),
                              BoxKeys{Qt::Key_Up, Qt::Key_Down}, panel);
    m_boxes->limitToNumbers({ProductBox::Quantity, ProductBox::Cost, ProductBox::Price});
    m_boxes->alignRight({ProductBox::Discount});
    auto* head = new QHBoxLayout;
    head->addWidget(m_heading);
    head->addStretch(1);
    head->addWidget(m_productFlag);
    head->addWidget(m_stockFlag);
    auto* grid = new QGridLayout;
    m_boxes->layOut(grid, 2);
    auto* buttons = new QHBoxLayout;
    for (const int number : {8, 4, 5, 6, 7})
        buttons->addWidget(command(number));
    auto* column = new QVBoxLayout(panel);
    column->addLayout(head);
    column->addLayout(grid);
    column->addLayout(buildFigures());
    column->addLayout(buttons);
    column->addStretch(1);
    column->addLayout(buildGateway());
    return panel;
}

QLayout* productRegisterFm1::buildFigures() {
    static const QString captions[] = {QStringLiteral("原销售库存数"), QStringLiteral("加减销售库存数"),
                                       QStringLiteral("现有销售库存数")};
    auto* grid = new QGridLayout;
    for (int i = 0; i < 3; ++i) {
        QLabel* caption = makeLabel(QStringLiteral("Label6(%1)").arg(i), captions[i], this);
        m_figures[i] = makeFigure(QStringLiteral("Label7(%1)").arg(i), captions[i], this);
        m_figures[i]->setFont(boldOf(this, 1.2));
        caption->setAlignment(Qt::AlignCenter);
        m_figures[i]->setAlignment(Qt::AlignCenter);
        grid->addWidget(caption, 0, i);
        grid->addWidget(m_figures[i], 1, i);
    }
    return grid;
}

QLayout* productRegisterFm1::buildGateway() {
    auto* grid = new QGridLayout;
    int at = 0;
    for (const Gateway& gateway : gateways()) {
        grid->addWidget(command(gateway.command), at / 4, at % 4);
        ++at;
    }
    return grid;
}

void productRegisterFm1::connectCommands() {
    const std::pair<int, void (productRegisterFm1::*)()> actions[] = {
        {2, &productRegisterFm1::search},        {3, &productRegisterFm1::showAll},
        {4, &productRegisterFm1::addToStock},    {5, &productRegisterFm1::save},
        {6, &productRegisterFm1::cancel},        {7, &productRegisterFm1::deleteCurrent},
        {8, &productRegisterFm1::addNextProduct}};
    for (const auto& [number, action] : actions)
        connect(command(number), &QPushButton::clicked, this, action);
    for (const Gateway& gateway : gateways())
        connect(command(gateway.command), &QPushButton::clicked, this,
                [this, number = gateway.command] { openView(number); });
    m_pane->onMove([this](int button) { move(button); });
    m_pane->setWholeShow([this] { command(3)->click(); });
    connect(m_boxes, &RecordBoxes::changed, this, [this](int index) {
        changeMark = 2;
        if (index == ProductBox::Quantity && editState == AddingProduct)
            m_figures[1]->setText(trimBlanks(m_boxes->text(index)));
    });
    connect(m_boxes, &RecordBoxes::edited, this, [this] { setUnsavedBoxes(true); });
    m_pane->onRow([this] { rowChanged(); });
    offerRows(m_search, this, m_host.suggestions().products, [this](RowId row) {
        if (!refuseWhile(AddingProduct, QStringLiteral("正在添加新产品，不能执行此操作！")))
            goToSuggested(m_session.productTable, row);
    });
}

void productRegisterFm1::load() {
    m_session.reopen(m_session.product_Bank, QStringLiteral("Select * From product_Bank"));
    m_search->clear();
    Label7_Clear();
    enterState(Browsing);
}

void productRegisterFm1::activate() {
    displayMode = 1;
    if (m_session.product_Bank->isOpen())
        m_session.product_Bank->clearFilter();
    m_session.productTable->clearFilter();
    bindGrid();
    fillBoxes(clearRecord(m_session));
    showRow();
    Label7_Clear();
    Label7_show();
    m_pane->showPosition();
}

void productRegisterFm1::fillBoxes(const QStringList& texts) {
    m_boxes->setTexts(texts);
    setUnsavedBoxes(false);
}

void productRegisterFm1::saySaved(const QString& words) {
    setUnsavedBoxes(false);
    m_host.say({QStringLiteral("产品 %1 %2 ")
                    .arg(captionText(m_boxes->text(ProductBox::Number)),
                         captionText(m_boxes->text(ProductBox::Name))) +
                words});
}

void productRegisterFm1::bindGrid() {
    m_pane->bind(m_session.productTable);
}

void productRegisterFm1::showRow() {
    if (m_session.productTable->hasRows() && displayMode != 2)
        fillBoxes(displayRecord(m_session));
}

void productRegisterFm1::rowChanged() {
    const RecordsetPtr& products = m_session.productTable;
    if (!products->isOpen() || editState != Browsing || displayMode == 2)
        return;
    if (!products->hasRows())
        return m_pane->showPosition();
    backOntoARow(products);
    m_pane->showPosition();
    fillBoxes(clearRecord(m_session));
    showRow();
    Label7_Clear();
    Label7_show();
}

void productRegisterFm1::Label7_show() {
    const RecordsetPtr& products = m_session.productTable;
    if (!products->hasRows() || !products->currentRow())
        return;
    m_figures[0]->setText(products->Fields(QStringLiteral("数量")).text());
    m_figures[1]->setText(QStringLiteral("0"));
    m_figures[2]->setText(m_figures[0]->text());
}

void productRegisterFm1::emptyFiguresWithoutRow() {
    if (m_session.productTable->hasRows())
        return;
    for (QLabel* figure : m_figures)
        figure->clear();
}

void productRegisterFm1::Label7_Clear() {
    for (QLabel* figure : m_figures)
        figure->setText(QStringLiteral("0"));
}

void productRegisterFm1::enterState(EditState state) {
    editState = state;
    changeMark = 1;
    for (int box = ProductBox::Name; box < ProductBox::Count; ++box)
        m_boxes->box(box)->setToolTip(state == AddingProduct ? QStringLiteral("请输入新数据") : QString());
}

void productRegisterFm1::return_A() {
    enterState(Browsing);
    m_productFlag->stop();
    m_stockFlag->hide();
    m_steadyTimer.stop();
    m_pane->moves->setButtonsEnabled(true);
    for (const int number : {4, 5, 6, 7, 8})
        command(number)->setEnabled(true);
    m_pane->showPosition();
}

bool productRegisterFm1::refuseWhile(EditState state, const QString& message) {
    if (editState != state)
        return false;
    m_prompts.tell(message);
    return true;
}

void productRegisterFm1::move(int button) {
    if (refuseWhile(AddingProduct, QStringLiteral("正在添加新产品，不能执行此操作！")))
        return;
    moveInRecordset(m_session.productTable, button);
    m_pane->showPosition();
}

void productRegisterFm1::search() {
    if (refuseWhile(AddingProduct, QStringLiteral("正在添加新产品，不能执行此操作！")))
        return;
    if (!m_session.productTable->hasRows() || m_search->text().isEmpty())
        return;
    try {
        m_session.productTable->setFilter(productSearch(trimBlanks(m_search->text())));
    } catch (const RuntimeError&) {
        // The words of the date searches stand here too, whatever the reason.
        return m_prompts.tellAbout(m_search,
                                   QStringLiteral("日期输入错误，请按 2004-2-1 或 2004-11-21 格式输入！"));
    }
    m_pane->showPosition();
    fillBoxes(clearRecord(m_session));
    showRow();
    emptyFiguresWithoutRow();
}

void productRegisterFm1::showAll() {
    if (refuseWhile(AddingProduct, QStringLiteral("正在添加新产品，不能执行此操作！")))
        return;
    m_session.productTable->clearFilter();
    bindGrid();
    m_pane->showPosition();
}

void productRegisterFm1::addNextProduct() {
    if (editState == AddingProduct) {
        bool written = false;
        if (!saveProduct(QStringLiteral("新产品登录失败！"), true, written))
            return;
        if (!written)
            return return_A();
        m_pane->showPosition();
        enterState(Browsing);
    }
    startAddingProduct();
}

void productRegisterFm1::startAddingProduct() {
    m_productFlag->start();
    m_heading->setText(QStringLiteral("新产品登录"));
    Label7_Clear();
    fillBoxes(clearRecord(m_session));
    m_boxes->setText(ProductBox::Date, m_session.todayText());
    m_boxes->setText(ProductBox::Number, counterText(m_session.nextProductNum));
    m_boxes->focus(ProductBox::Name);
    m_pane->moves->setButtonsEnabled(false);
    command(7)->setEnabled(false);
    command(4)->setEnabled(false);
    if (m_session.productTable->hasRows())
        m_pane->moves->setPosition(QString::number(m_session.productTable->RecordCount()));
    enterState(AddingProduct);
}

bool productRegisterFm1::saveProduct(const QString& failure, bool yields, bool& written) {
    if (const auto fault = text2_Check(m_boxes->texts())) {
        m_prompts.tellAbout(m_boxes->box(fault->box), fault->message);
        return false;
    }
    const RegisterResult result =
        registerProduct(m_session, m_boxes->texts(), yields ? std::function<void()>(yieldOnce) : nullptr);
    if (result == RegisterResult::Duplicate) {
        m_prompts.tell(QStringLiteral("产品编号重复，请重新定义！"));
        return false;
    }
    written = result == RegisterResult::Saved;
    if (written) {
        saySaved(QStringLiteral("已登录，入库 ") + captionText(m_boxes->text(ProductBox::Quantity)));
    } else {
        m_prompts.tell(QStringLiteral("输入数据格式错误或数据类型不匹配！"));
        m_prompts.tell(failure);
    }
    return true;
}

void productRegisterFm1::save() {
    bool written = false;
    if (editState == AddingProduct && !saveProduct(QStringLiteral("登录新产品失败！"), false, written))
        return;
    if (written)
        m_session.product_Bank->MoveLast(); // back on the new row, wherever the search for the number went
    if (written)
        m_figures[2]->setText(m_session.productTable->Fields(QStringLiteral("数量")).text());
    m_heading->setText(QStringLiteral("显示产品数据"));
    return_A();
    // Told in any case: while browsing, where nothing is written, and after a failure, behind its message.
    m_prompts.tell(QStringLiteral("数据已保存！"));
}

void productRegisterFm1::cancel() {
    if (!m_session.productTable->isOpen())
        return;
    fillBoxes(clearRecord(m_session));
    if (m_session.productTable->hasRows()) {
        showRow();
        Label7_show();
    }
    m_heading->setText(QStringLiteral("产品数据显示"));
    return_A();
}

void productRegisterFm1::deleteCurrent() {
    if (refuseWhile(AddingProduct, QStringLiteral("正在添加新产品，不能执行此操作！")) ||
        refuseWhile(AddingStock, QStringLiteral("正在追加产品数量，不能执行此操作！")))
        return;
    if (!m_session.productTable->hasRows() || !m_session.productTable->currentRow() ||
        !m_prompts.confirmLoss(QStringLiteral("确实要删除此记录吗？"), lossOfProduct(m_session.productTable)))
        return;
    deleteProduct(m_session);
    fillBoxes(clearRecord(m_session));
    showRow();
    m_pane->showPosition();
    emptyFiguresWithoutRow();
}

void productRegisterFm1::addToStock() {
    if (editState != Browsing || !m_session.product_Bank->isOpen() || !m_session.productTable->hasRows() ||
        !m_session.productTable->currentRow())
        return;
    m_stockFlag->show();
    m_heading->setText(QStringLiteral("增加库存"));
    m_boxes->setText(ProductBox::Date, m_session.todayText());
    m_boxes->focus(ProductBox::Name);
    m_pane->moves->setButtonsEnabled(false);
    for (const int number : {4, 5, 6, 7, 8})
        command(number)->setEnabled(false);
    enterState(AddingStock);
    if (const auto fault = text2_Check2(m_boxes->texts())) {
        // The view stays as it is, its buttons disabled: only another view's command leads on. That is meant.
        return m_prompts.tellAbout(m_boxes->box(fault->box), fault->message);
    }
    bookStock();
    m_pane->showPosition();
    return_A();
}

void productRegisterFm1::bookStock() {
    const auto answer = m_prompts.input(QStringLiteral("请输入产品数量："), QStringLiteral("输入数字"));
    if (!answer || !canAddStock(m_session, *answer))
        return;
    if (!m_prompts.confirm(QStringLiteral("该产品将增加数：") + *answer))
        return;
    m_boxes->setText(ProductBox::Quantity, *answer);
    if (!addStock(m_session, m_boxes->texts(), *answer, yieldOnce)) {
        m_prompts.tell(QStringLiteral("输入数据格式错误或数据类型不匹配！"));
        return m_prompts.tell(QStringLiteral("增加库存失败！"));
    }
    m_figures[1]->setText(*answer);
    m_figures[2]->setText(m_session.productTable->Fields(QStringLiteral("数量")).text());
    showRow();
    saySaved(QStringLiteral("已入库 %1，现有库存 %2").arg(*answer, m_figures[2]->text()));
}

void productRegisterFm1::openView(int number) {
    const Gateway& gateway = *findGateway(number);
    if (gateway.refusedWhileAdding &&
        refuseWhile(AddingProduct, QStringLiteral("正在添加新产品，不能执行此操作！")))
        return;
    const QString view = QString::fromUtf16(gateway.view);
    const auto open = [&] {
        if (!gateway.prepare(m_session, view))
            return;
        if (gateway.stopsDisplay)
            displayMode = 2;
        m_host.show(view);
    };
    if (!gateway.passesErrors)
        return open();
    IgnoringErrors errors;
    errors.run(open);
}
