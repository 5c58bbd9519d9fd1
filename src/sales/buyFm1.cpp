#include "sales/buyFm1.h"

#include "controls/formParts.h"
#include "controls/keyCommands.h"
#include "controls/prompts.h"
#include "controls/recordBoxes.h"
#include "controls/recordPane.h"
#include "controls/scanBurst.h"
#include "data/cursorMoves.h"
#include "data/losses.h"
#include "data/searchTexts.h"
#include "recordset/error.h"
#include "recordset/shownText.h"
#include "recordset/textNumber.h"
#include "sales/basketList.h"
#include "sales/buyFm1Panels.h"
#include "sales/clientRegister.h"
#include "sales/discountTyping.h"
#include "sales/settlement.h"
#include "shell/rowOffers.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QScrollArea>
#include <QStackedWidget>

namespace {

const QStringList& hiddenColumns() {
    static const QStringList columns{QStringLiteral("流水号"), QStringLiteral("成本")};
    return columns;
}

} // namespace

buyFm1::buyFm1(ViewHost& host, Prompts& prompts)
    : TopWindow(QStringLiteral("buyFm1"), QStringLiteral("购买"))
    , m_host(host)
    , m_session(host.session())
    , m_prompts(prompts) {
    build();
    connectProducts();
    connectLine();
    connectBasket();
    bindKeys();
    open();
    m_products->search->setFocus();
}

buyFm1::~buyFm1() {
    m_products->pane->grid->unbind();
    m_basketPanel->pane->grid->unbind();
}

void buyFm1::build() {
    m_company = makeLabel(QStringLiteral("Label6"), {}, this);
    m_contact = makeLabel(QStringLiteral("Label8"), {}, this);
    auto* head = new QHBoxLayout;
    head->addWidget(makeLabel(QStringLiteral("Label5"), QStringLiteral("单位名称："), this));
    head->addWidget(m_company);
    head->addSpacing(32);
    head->addWidget(makeLabel(QStringLiteral("Label7"), QStringLiteral("联系人："), this));
    head->addWidget(m_contact);
    head->addStretch(1);
    m_products = new ProductPanel(m_prompts, this);
    m_frames = new QStackedWidget(this);
    m_line = new LinePanel(m_frames);
    m_basketPanel = new BasketPanel(m_prompts, m_frames);
    m_frames->addWidget(m_line);
    m_frames->addWidget(m_basketPanel);
    // What a small screen has no room for is scrolled; the window never outgrows it.
    auto* scroller = new QScrollArea(this);
    scroller->setObjectName(QStringLiteral("lineScroller"));
    scroller->setWidgetResizable(true);
    scroller->setFrameShape(QFrame::NoFrame);
    scroller->setFocusPolicy(Qt::NoFocus);
    scroller->setWidget(m_frames);
    auto* body = new QHBoxLayout;
    body->addWidget(m_products, 6);
    body->addWidget(scroller, 5);
    auto* column = new QVBoxLayout(this);
    column->addLayout(head);
    column->addLayout(body, 1);
}

void buyFm1::connectProducts() {
    connect(m_products->pane->grid, &DataGrid::rowChosen, this, &buyFm1::GataGrid1_show);
    m_products->pane->onMove([this](int button) { moveProduct(button); });
    connect(m_products->search, &QLineEdit::returnPressed, this, &buyFm1::searchEntered);
    connect(m_products->find, &QPushButton::clicked, this, &buyFm1::searchProducts);
    connect(m_products->whole, &QPushButton::clicked, this, &buyFm1::showAllProducts);
    offerRows(m_products->search, this, m_host.suggestions().products, [this](RowId row) {
        if (goToSuggested(m_session.productTable, row))
            GataGrid1_show();
    });
    m_products->pane->grid->recordsetModel().setOverlay(
        [this](RowId row, int field) -> std::optional<CellValue> {
            if (m_left.empty() || m_session.productTable->fieldInfo(field).name != u"数量")
                return std::nullopt;
            const auto left = m_left.find(row);
            return left == m_left.end() ? std::nullopt : std::optional<CellValue>(left->second);
        });
}

void buyFm1::connectLine() {
    connect(m_line->boxes, &RecordBoxes::changed, this, &buyFm1::boxChanged);
    for (const int box : {LineBox::Quantity, LineBox::Discount})
        connect(m_line->boxes->box(box), &QLineEdit::returnPressed, this, &buyFm1::confirmLine);
    m_scan = new ScanBurst(m_line->boxes->box(LineBox::Quantity));
    connect(m_scan, &ScanBurst::scanned, this, &buyFm1::takeScanned);
    new EnterGuard(this, {m_products->search, m_line->boxes->box(LineBox::Quantity)});
    refuseTooLarge(m_line->boxes, [this] { return m_unitCost; });
    connect(m_line->quantity, &UpDown::stepped, this, [this](int by) { step(LineBox::Quantity, by); });
    connect(m_line->discount, &UpDown::stepped, this, [this](int by) { step(LineBox::Discount, by); });
    connect(m_line->confirm, &QPushButton::clicked, this, &buyFm1::confirmLine);
    connect(m_line->cancel, &QPushButton::clicked, this, &buyFm1::cancelLine);
    connect(m_line->browse, &QPushButton::clicked, this, &buyFm1::showBasket);
    connect(m_line->settle, &QPushButton::clicked, this, &buyFm1::settleBasket);
    connect(m_line->back, &QPushButton::clicked, this, &buyFm1::wayOut);
}

void buyFm1::connectBasket() {
    BasketPanel* panel = m_basketPanel;
    connect(panel->pane->grid, &DataGrid::rowChosen, this, &buyFm1::chooseBasketRow);
    connect(panel->pane->grid, &DataGrid::cellEdited, this, &buyFm1::basketEdited);
    panel->pane->grid->setCellCheck(
        [this](int field, const QString& text) { return basketRowFits(m_session, m_basket, field, text); });
    panel->pane->onMove([this](int button) { moveBasket(button); });
    connect(panel->save, &QPushButton::clicked, this, &buyFm1::saveBasketEdits);
    connect(panel->remove, &QPushButton::clicked, this, &buyFm1::deleteBasketRow);
    connect(panel->clear, &QPushButton::clicked, this, &buyFm1::clearAll);
    connect(panel->back, &QPushButton::clicked, this, &buyFm1::hideBasket);
}

void buyFm1::bindKeys() {
    auto* keys = new KeyCommands(this);
    keys->press(Qt::Key_F3, m_line->confirm);
    keys->press(Qt::Key_F6, m_line->browse);
    keys->press(Qt::Key_F9, m_line->settle);
    keys->press(Qt::Key_Escape, m_basketPanel->back);
    keys->press(Qt::Key_Escape, m_line->back);
    keys->focus(QKeySequence::Find, m_products->search);
}

void buyFm1::open() {
    m_basket = openBasket(m_session);
    m_basketPanel->pane->bind(m_basket, hiddenColumns());
    m_session.reopen(m_session.productTable, QStringLiteral("Select * From productTable"));
    bindProducts();
    showTotals();
    record_Clear3();
    const RecordsetPtr& clients = m_session.clientTable;
    if (clients->hasRows() && clients->currentRow()) {
        m_company->setText(captionText(clients->Fields(QStringLiteral("单位名称")).shown()));
        m_contact->setText(captionText(clients->Fields(QStringLiteral("联系人")).shown()));
    }
}

void buyFm1::bindProducts() {
    dropAllLeft();
    m_products->pane->bind(m_session.productTable, hiddenColumns());
}

void buyFm1::moveProduct(int button) {
    moveInRecordset(m_session.productTable, button);
    GataGrid1_show();
}

void buyFm1::searchEntered() {
    // What comes next takes its place, where nothing was taken up.
    const auto select = qScopeGuard([this] { m_products->search->selectAll(); });
    const auto row = productOfNumber(m_session, trimBlanks(m_products->search->text()));
    if (!row)
        return searchProducts();
    m_session.productTable->clearFilter();
    if (goToSuggested(m_session.productTable, *row))
        GataGrid1_show();
}

void buyFm1::searchProducts() {
    const QString text = trimBlanks(m_products->search->text());
    if (text.isEmpty())
        return;
    // A text that cannot be searched finds nothing, and what the grid shows stays.
    if (!setTypedFilter(m_session.productTable, productSearch, text))
        return;
    bindProducts();
    GataGrid1_show();
}

void buyFm1::showAllProducts() {
    m_session.reopen(m_session.productTable, QStringLiteral("Select * From productTable"));
    bindProducts();
}

void buyFm1::GataGrid1_show() {
    const RecordsetPtr& products = m_session.productTable;
    if (!products->hasRows())
        return;
    const QScopedValueRollback displaying(m_displaying, true);
    {
        const QuietWalk walk(products);
        if (products->isEOF())
            products->MoveLast();
        else if (!products->currentRow())
            products->MoveFirst();
    }
    if (toNumber(products->Fields(QStringLiteral("数量")).OriginalValue()) <= 0) {
        m_products->pane->showPosition();
        return m_prompts.tell(QStringLiteral("该产品已售完！"));
    }
    m_products->pane->showPosition();
    giveUpLine();
    m_unitCost = products->Fields(QStringLiteral("成本")).number();
    const QString product = products->Fields(QStringLiteral("产品编号")).text();
    m_bought = product_Num3(m_session, m_session.currentClientNum, product);
    m_line->bought->setText(QString::number(m_bought));
    record_Clear3();
    showLine(Record_display3(m_session));
    m_lineMode = NewLine;
    if (check_Repeat_ProductNum(m_basket, product)) {
        m_prompts.tell(QStringLiteral("已选购该产品！"));
        showBasketLine();
        m_lineMode = BasketLine;
    }
    markLine();
    m_line->boxes->focus(LineBox::Quantity);
}

void buyFm1::record_Clear3() {
    const QScopedValueRollback displaying(m_displaying, true);
    m_line->boxes->clear();
    m_line->hint->clear();
    m_lineChanged = false;
    markLine();
}

void buyFm1::showLine(const QStringList& texts) {
    const QScopedValueRollback displaying(m_displaying, true);
    m_line->boxes->setTexts(texts);
    m_lineChanged = false;
}

void buyFm1::boxChanged(int index) {
    if (m_displaying)
        return;
    m_line->hint->clear();
    if (index == LineBox::Quantity && !stock_check())
        return;
    m_lineChanged = true;
    if (index != LineBox::Quantity && index != LineBox::Discount)
        return;
    const QScopedValueRollback displaying(m_displaying, true);
    RecordBoxes* boxes = m_line->boxes;
    showLineAmounts(
        boxes, *m_line->typing,
        lineAmounts(boxes->text(LineBox::Quantity), boxes->text(LineBox::Price), m_line->typing->counted()));
    markLine();
}

void buyFm1::step(int box, int by) {
    const double number = valOrMost(m_line->boxes->text(box)) + by;
    m_line->boxes->setText(box, plainNumber(by < 0 ? std::max(0.0, number) : number));
}

bool buyFm1::stock_check() {
    RecordBoxes* boxes = m_line->boxes;
    const QString product = boxes->text(LineBox::Product);
    const StockCheck check = checkStock(m_session, product, boxes->text(LineBox::Quantity));
    if (!check.stock)
        return true;
    if (check.result == StockCheck::Result::Passes) {
        setLeft(product, check.stock->row, check.left);
        return true;
    }
    m_line->quantity->endRepeat();
    if (m_scan->goesOn())
        return false;
    if (check.result == StockCheck::Result::SoldOut) {
        m_prompts.tell(QStringLiteral("该产品已无库存！"));
        return false;
    }
    m_prompts.tell(QStringLiteral("超出库存数，现有库存数") + plainNumber(check.stock->quantity),
                   QStringLiteral("库存提示"));
    boxes->setText(LineBox::Quantity, QStringLiteral("0"));
    boxes->box(LineBox::Quantity)->selectAll();
    setLeft(product, check.stock->row, check.stock->quantity);
    return false;
}

void buyFm1::setLeft(const QString& product, RowId row, double left) {
    if (product != m_leftOfLine)
        giveUpLine();
    m_leftOfLine = product;
    m_left[row] = left;
    m_leftRows[product] = row;
    m_products->pane->grid->recordsetModel().refreshRow(row);
}

void buyFm1::dropLeft(const QString& product) {
    const auto found = m_leftRows.find(product);
    if (found == m_leftRows.end())
        return;
    m_left.erase(found->second);
    m_products->pane->grid->recordsetModel().refreshRow(found->second);
    m_leftRows.erase(found);
}

void buyFm1::giveUpLine() {
    dropLeft(std::exchange(m_leftOfLine, QString()));
}

void buyFm1::dropAllLeft() {
    m_leftOfLine.clear();
    m_left.clear();
    m_leftRows.clear();
    m_products->pane->grid->recordsetModel().refreshAll();
}

void buyFm1::confirmLine() {
    if (m_lineMode == NoProduct)
        return m_prompts.tell(QStringLiteral("请选择产品！"));
    if (!keepLine())
        return;
    m_prompts.tell(QStringLiteral("已记入购物表！"));
    record_Clear3();
    m_lineMode = NoProduct;
    m_products->search->clear();
    m_products->search->setFocus(Qt::OtherFocusReason);
}

bool buyFm1::keepLine() {
    m_line->typing->finish();
    if (const auto fault = text4_check(m_line->boxes->texts())) {
        m_prompts.tellAbout(m_line->boxes->box(fault->box), fault->message);
        return false;
    }
    if (m_lineChanged && !storeLine())
        return false;
    if (m_lineChanged)
        m_lineMode = BasketLine;
    m_leftOfLine.clear(); // the basket has it now
    showTotals();
    showBought();
    return true;
}

void buyFm1::takeScanned(const QString& number) {
    m_products->search->setText(number);
    if (m_lineMode != NoProduct && valOrMost(m_line->boxes->text(LineBox::Quantity)) > 0 && !keepLine())
        return;
    giveUpLine();
    record_Clear3();
    m_lineMode = NoProduct;
    m_products->search->setFocus(Qt::OtherFocusReason);
    searchEntered();
}

bool buyFm1::storeLine() {
    const QuietWalk walk(m_basket);
    const bool fresh = m_lineMode == NewLine;
    WriteBatch batch(m_session.cn);
    try {
        if (fresh)
            m_basket->AddNew();
        writeRecord5(m_basket, m_line->boxes->texts(), m_unitCost);
    } catch (const RuntimeError& error) {
        m_basket->CancelUpdate();
        if (!fresh && m_basket->hasRows() && m_basket->currentRow())
            showBasketLine();
        m_line->hint->setText(QStringLiteral("这一行没有记入：%1").arg(error.text()));
        return false;
    }
    m_basket->Update();
    batch.finish();
    return true;
}

void buyFm1::cancelLine() {
    giveUpLine();
    record_Clear3();
    m_lineMode = BasketLine; // that the mode is 2 with no line in the boxes is meant
}

void buyFm1::wayOut() {
    m_basketPanel->pane->grid->commitEditor();
    if (!m_basket->hasRows())
        return finish();
    const auto answer = m_prompts.askOrLeave(QStringLiteral("选购的产品还没有结帐，结帐吗？"));
    if (!answer)
        return; // the question was left without an answer: window and basket stay
    if (*answer)
        settleBasket();
    else
        finish();
}
