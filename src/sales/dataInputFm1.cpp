#include "sales/dataInputFm1.h"

#include "controls/blinkingLabel.h"
#include "controls/formParts.h"
#include "controls/keyCommands.h"
#include "controls/prompts.h"
#include "controls/recordBoxes.h"
#include "controls/recordPane.h"
#include "controls/scanBurst.h"
#include "data/cursorMoves.h"
#include "data/losses.h"
#include "recordset/shownText.h"
#include "recordset/textNumber.h"
#include "sales/clientRegister.h"
#include "shell/orderChoice.h"
#include "shell/rowOffers.h"

#include <QAction>
#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QPushButton>

namespace {

const QStringList& boxCaptions() {
    static const QStringList captions{
        QStringLiteral("客户编号"), QStringLiteral("联系人"),    QStringLiteral("生    日"),
        QStringLiteral("电    话"), QStringLiteral("传    真"),  QStringLiteral("手    机    话"),
        QStringLiteral("Email"),    QStringLiteral("部    门"),  QStringLiteral("单位名称"),
        QStringLiteral("地    址"), QStringLiteral("邮政编码"),  QStringLiteral("地    区"),
        QStringLiteral("行    业"), QStringLiteral("消费累计"),  QStringLiteral("购物累计"),
        QStringLiteral("客户级别"), QStringLiteral("业务员编号")};
    return captions;
}

const QStringList& hiddenColumns() {
    static const QStringList columns{QStringLiteral("流水号"), QStringLiteral("差额利润"),
                                     QStringLiteral("差额利润率")};
    return columns;
}

} // namespace

dataInputFm1::dataInputFm1(ViewHost& host, Prompts& prompts)
    : View(QStringLiteral("dataInputFm1"), QStringLiteral("营销管理"))
    , m_host(host)
    , m_session(host.session())
    , m_prompts(prompts) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(buildGridSide(), 5);
    row->addWidget(buildPanel(), 4);
    connectCommands();
    tabThrough(QWidgetList{m_search, m_find, m_whole, m_pane->grid} + m_pane->moves->buttons() +
               m_boxes->widgets() + QWidgetList{m_add, m_save, m_cancel, m_buy, m_delete});
    setSearchBox(m_search);
    bindKeys();
}

QWidget* dataInputFm1::buildGridSide() {
    auto* side = new QWidget(this);
    m_gridFrame = new QGroupBox(QStringLiteral("客户资料"), side);
    m_gridFrame->setObjectName(QStringLiteral("Frame1"));
    m_pane = new RecordPane({}, QStringLiteral("还没有客户。\n请按“添加新客户”，填好资料后按“保存”。"),
                            m_prompts, side);
    m_pane->grid->setColumnsInFront({QStringLiteral("客户编号"), QStringLiteral("单位名称"),
                                     QStringLiteral("联系人"), QStringLiteral("电话")});
    m_find = makeButton(QStringLiteral("Command2"), QStringLiteral("查询"), m_gridFrame);
    m_whole = makeButton(QStringLiteral("Command4"), QStringLiteral("全库显示"), m_gridFrame);
    m_search = makeSearchBox(QStringLiteral("Text2"),
                             QStringLiteral("查询入口：客户编号、单位名称、联系人、电话、生日"), nullptr,
                             m_gridFrame);
    m_search->installEventFilter(this);
    new EnterGuard(this, {m_search});
    auto* searchRow = new QHBoxLayout;
    searchRow->addWidget(m_search, 1);
    searchRow->addWidget(m_find);
    searchRow->addWidget(m_whole);
    auto* inside = new QVBoxLayout(m_gridFrame);
    inside->addLayout(searchRow);
    inside->addWidget(m_pane->grid);
    const std::pair<const char16_t*, void (dataInputFm1::*)()> gridCommands[] = {
        {u"产品销售显示", &dataInputFm1::showSales},
        {u"打印客户资料", &dataInputFm1::printClients},
        {u"打印订单明细", &dataInputFm1::printOrder},
        {u"近期生日", &dataInputFm1::showBirthdays},
        {u"久未购买", &dataInputFm1::showLapsed}};
    for (const auto& [caption, command] : gridCommands) {
        auto* action = new QAction(QString::fromUtf16(caption), this);
        connect(action, &QAction::triggered, this, command);
        m_pane->grid->addContextAction(action);
    }
    // The buttons stand outside the frame: while a customer is added they answer instead of being dead.
    auto* column = new QVBoxLayout(side);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_gridFrame, 1);
    column->addWidget(m_pane->moves, 0, Qt::AlignHCenter);
    return side;
}

void dataInputFm1::showSales() {
    m_host.openWindow(QStringLiteral("goodsSalesFm1"), ViewHost::MainWindow::Disabled);
}

void dataInputFm1::showBirthdays() {
    m_host.openWindow(QStringLiteral("birthdayFm1"), ViewHost::MainWindow::Stays);
}

void dataInputFm1::showLapsed() {
    m_host.openWindow(QStringLiteral("lapsedFm1"), ViewHost::MainWindow::Stays);
}

void dataInputFm1::printClients() {
    if (!m_session.clientTable->hasRows())
        return;
    m_session.showSource = ShowSource::Clients;
    m_session.periodPurpose = QStringLiteral("打印客户资料");
    m_host.openWindow(QStringLiteral("timeDefineFm22"), ViewHost::MainWindow::Stays);
}

void dataInputFm1::printOrder() {
    if (!m_session.clientTable->hasRows() || !m_session.clientTable->currentRow())
        return;
    m_session.takeCustomer(m_session.clientTable);
    m_session.showSource = ShowSource::Clients;
    chooseOrder(m_host, m_prompts, true);
}

QWidget* dataInputFm1::buildPanel() {
    m_panel = new QGroupBox(QStringLiteral("客户详细资料"), this);
    m_panel->setObjectName(QStringLiteral("Frame2"));
    m_boxes = new RecordBoxes(QStringLiteral("Text3"), boxCaptions(), BoxKeys{Qt::Key_Left, Qt::Key_Right},
                              m_panel);
    m_boxes->limitToNumbers(registerNumberBoxes());
    m_addingLabel = new BlinkingLabel(QStringLiteral("Label4"), QStringLiteral("添加新客户"),
                                      QStringLiteral("Timer2"), m_panel);
    m_add = makeButton(QStringLiteral("Command3"), QStringLiteral("添加新客户"), m_panel);
    m_save = makeButton(QStringLiteral("Command5"), QStringLiteral("保存"), m_panel);
    m_cancel = makeButton(QStringLiteral("Command6"), QStringLiteral("取消"), m_panel);
    m_cancel->setToolTip(QStringLiteral("取消记录修改或取消新客户"));
    m_buy = makeButton(QStringLiteral("Command7"), QStringLiteral("购买"), m_panel);
    m_delete = makeButton(QStringLiteral("Command8"), QStringLiteral("删除"), m_panel);

    auto* grid = new QGridLayout;
    m_boxes->layOut(grid, 2);
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {m_add, m_save, m_cancel, m_buy, m_delete})
        buttons->addWidget(button);
    auto* column = new QVBoxLayout(m_panel);
    column->addWidget(m_addingLabel, 0, Qt::AlignRight);
    column->addLayout(grid);
    column->addStretch(1);
    column->addLayout(buttons);
    return m_panel;
}

void dataInputFm1::connectCommands() {
    m_pane->onMove([this](int button) { move(button); });
    m_pane->setWholeShow([this] { m_whole->click(); });
    connect(m_find, &QPushButton::clicked, this, &dataInputFm1::search);
    connect(m_search, &QLineEdit::returnPressed, this, &dataInputFm1::searchEntered);
    connect(m_whole, &QPushButton::clicked, this, &dataInputFm1::showAll);
    connect(m_add, &QPushButton::clicked, this, &dataInputFm1::addNext);
    connect(m_save, &QPushButton::clicked, this, &dataInputFm1::save);
    connect(m_cancel, &QPushButton::clicked, this, &dataInputFm1::cancel);
    connect(m_buy, &QPushButton::clicked, this, &dataInputFm1::buy);
    connect(m_delete, &QPushButton::clicked, this, &dataInputFm1::deleteCurrent);
    connect(m_boxes, &RecordBoxes::edited, this, [this] { setChanged(true); });
    connect(m_pane->grid, &DataGrid::rowChosen, this, [this] {
        rowChosen();
        m_boxes->focus(1);
    });
    m_pane->onRow([this] { rowChanged(); });
    offerRows(m_search, this, m_host.suggestions().customers,
              [this](RowId row) { goToSuggested(m_session.clientTable, row); });
}

void dataInputFm1::bindKeys() {
    auto* keys = new KeyCommands(this);
    keys->press(Qt::Key_F2, m_buy);
}

void dataInputFm1::load() {
    m_session.viewReturnState = QStringLiteral("Open");
    m_session.openMainCursors();
    m_session.showSource = ShowSource::Clients;
    m_session.clientShowSource = ShowSource::Clients;
    m_session.reopen(m_session.counterCode, QStringLiteral("Select * From counterCode"));
    m_session.readCounters();
    for (int i = 0; i < m_boxes->count(); ++i)
        if (!m_boxes->box(i)->validator())
            m_boxes->box(i)->setMaxLength(m_session.clientTable->Fields(registerColumns()[i]).DefinedSize());
    bindGrid();
    record_Clear();
    showRecord();
}

void dataInputFm1::Fm_Activate_dataInputFm1() {
    if (m_session.viewReturnState == u"Close") {
        m_session.viewReturnState = QStringLiteral("Open");
        return;
    }
    bindGrid();
    record_Clear();
    if (m_session.clientTable->hasRows())
        showRecord();
    else
        m_pane->moves->setPosition(
            QStringLiteral("0")); // after an activation an empty table reads "0", not "0/0"
    set_date1_date2(m_session);
    m_session.viewReturnState = QStringLiteral("Open");
}

void dataInputFm1::bindGrid() {
    m_pane->bind(m_session.clientTable, hiddenColumns());
}

void dataInputFm1::record_Clear() {
    m_boxes->clear();
    setChanged(false);
    m_shownRow.reset();
}

void dataInputFm1::showRecord() {
    m_boxes->setTexts(record_Display(m_session));
    setChanged(false);
    m_shownRow = m_session.clientTable->currentRow();
}

void dataInputFm1::setChanged(bool changed) {
    m_changed = changed;
    setUnsavedBoxes(changed);
}

void dataInputFm1::rowChosen() {
    const RecordsetPtr& clients = m_session.clientTable;
    if (m_adding || m_purchasing || !clients->isOpen())
        return;
    backOntoARow(clients);
    m_pane->showPosition();
    record_Clear();
    if (!clients->hasRows() || !clients->currentRow())
        return;
    showRecord();
    m_session.takeCustomer(clients);
}

void dataInputFm1::rowChanged() {
    const RecordsetPtr& clients = m_session.clientTable;
    // A search that goes leaves the customer in the boxes, and what was typed there.
    if (!m_changed || m_adding || m_purchasing || !clients->isOpen() || !m_shownRow ||
        clients->currentRow() != m_shownRow)
        return rowChosen();
    m_pane->showPosition();
    showTotals();
}

bool dataInputFm1::refuseWhileAdding(const QString& message) {
    if (m_adding)
        m_prompts.tell(message);
    return m_adding;
}

void dataInputFm1::move(int button) {
    if (refuseWhileAdding(QStringLiteral("正在添加新客户，不能执行此操作！")))
        return;
    moveInRecordset(m_session.clientTable, button);
    rowChosen();
    m_boxes->focus(1);
}

void dataInputFm1::search() {
    if (refuseWhileAdding(QStringLiteral("正在添加新客户，不能执行此操作！")))
        return;
    const QString text = trimBlanks(m_search->text());
    if (text.isEmpty())
        return;
    const bool searched = searchClients(m_session, text);
    m_searched = searched ? text : QString();
    if (searched) {
        bindGrid();
        record_Clear();
        m_pane->showPosition();
    }
    if (searched && m_session.clientTable->hasRows())
        showRecord();
    else
        m_prompts.tellAbout(m_search, QStringLiteral("查询结果为零！"));
}

void dataInputFm1::searchEntered() {
    const RecordsetPtr& clients = m_session.clientTable;
    const QString text = trimBlanks(m_search->text());
    // One hit on screen is whom the search meant; among several the arrows choose, and F2 buys.
    if (!m_adding && !text.isEmpty() && text == m_searched && !clients->Filter().isEmpty() &&
        clients->RecordCount() == 1 && clients->currentRow())
        return buy();
    search();
}

/// The arrows of the search box choose among the rows, and the focus stays.
bool dataInputFm1::eventFilter(QObject* watched, QEvent* event) {
    const int key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent*>(event)->key() : 0;
    if (watched != m_search || m_search->isComposing() || (key != Qt::Key_Up && key != Qt::Key_Down))
        return View::eventFilter(watched, event);
    moveInRecordset(m_session.clientTable, key == Qt::Key_Up ? 1 : 2);
    return true;
}

void dataInputFm1::showAll() {
    m_session.clientTable->clearFilter();
    bindGrid();
}

void dataInputFm1::beginAdding() {
    m_addingLabel->start();
    m_buy->setEnabled(false);
    m_delete->setEnabled(false);
    m_gridFrame->setEnabled(false);
    m_boxes->focus(1);
}

void dataInputFm1::endAdding() {
    m_addingLabel->stop();
    m_gridFrame->setEnabled(true);
    m_buy->setEnabled(true);
    m_delete->setEnabled(true);
    m_adding = false;
    setChanged(false);
}

void dataInputFm1::saveAdded() {
    addClient(m_session, m_boxes->texts());
    saySaved();
    m_pane->showPosition();
}

void dataInputFm1::saveShown() {
    saveClient(m_session, m_boxes->texts());
    saySaved();
}

void dataInputFm1::saySaved() {
    m_host.say({QStringLiteral("已保存客户 %1")
                    .arg(captionText(QStringList{m_boxes->text(0), m_boxes->text(8)}.join(u' ').trimmed()))});
}

void dataInputFm1::addNext() {
    beginAdding();
    m_session.clientTable->clearFilter();
    bindGrid();
    if (m_adding && m_changed) {
        saveAdded();
        if (!m_prompts.ask(QStringLiteral("记录已保存，继续添加新客户吗？"))) {
            endAdding();
            record_Clear();
            showRecord();
            return;
        }
        m_adding = false;
    } else if (m_adding) {
        if (!m_prompts.confirm(QStringLiteral("现在是添加记录状态，请输入数据！"))) {
            endAdding();
            record_Clear();
            showRecord();
            m_pane->showPosition();
        }
        return;
    }
    m_adding = true;
    record_Clear();
    m_boxes->setText(0, counterText(m_session.nextClientNum));
}

void dataInputFm1::save() {
    m_host.awaitFigures(); // the boxes hold two of the totals
    m_boxes->focus(1);
    const bool added = m_adding && m_changed;
    if (added)
        saveAdded();
    else if (!m_adding && m_changed && m_session.clientTable->hasRows())
        saveShown();
    if (added)
        m_prompts.tell(QStringLiteral("已保存新记录！"));
    const bool showsRow = m_adding && !m_changed;
    endAdding();
    if (showsRow || added)
        showRecord();
    m_pane->showPosition();
}

void dataInputFm1::cancel() {
    const bool rows = m_session.clientTable->hasRows();
    if (!m_adding || rows)
        record_Clear();
    endAdding();
    if (rows)
        showRecord();
    m_pane->showPosition();
    m_boxes->focus(1);
}

void dataInputFm1::buy() {
    if (refuseWhileAdding(QStringLiteral("请先按’保存‘按钮，保存好客户资料，再执行此操作！")))
        return;
    if (!m_session.clientTable->hasRows() || !m_session.clientTable->currentRow())
        return;
    m_session.currentClientNum = m_session.clientTable->Fields(QStringLiteral("客户编号")).text();
    m_host.closeForPurchase();
    TopWindow* window = m_host.openWindow(QStringLiteral("buyFm1"), ViewHost::MainWindow::Hidden);
    m_purchasing = window != nullptr;
    if (window)
        connect(window, &TopWindow::finished, this, &dataInputFm1::afterPurchase);
}

void dataInputFm1::showTotals() {
    const QStringList texts = record_Display(m_session);
    for (const int box : registerNumberBoxes())
        m_boxes->setText(box, texts[box]);
}

void dataInputFm1::totalsPutRight() {
    if (!m_adding)
        showTotals();
}

void dataInputFm1::afterPurchase() {
    m_purchasing = false;
    bindGrid();
    if (!m_changed)
        return m_boxes->setTexts(record_Display(m_session));
    // What the user has typed and not saved stays; only the two totals follow the purchase.
    showTotals();
}

void dataInputFm1::deleteCurrent() {
    if (refuseWhileAdding(QStringLiteral("正在添加数据不能执行该操作！")))
        return;
    if (!m_session.clientTable->hasRows() || !m_session.clientTable->currentRow())
        return;
    if (!m_prompts.confirmLoss(QStringLiteral("确实要删除该记录吗？"),
                               lossOfClient(m_session.clientTable, linesThatGo(m_session))))
        return;
    deleteClient(m_session);
    record_Clear();
    if (m_session.clientTable->hasRows())
        showRecord();
    m_pane->showPosition();
}
