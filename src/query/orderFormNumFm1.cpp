#include "query/orderFormNumFm1.h"

#include "controls/formParts.h"
#include "query/queries.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

namespace {

/// Puts a Filter back on the lines, if they still have the one that is to go.
void restoreFilter(Session& session, const QString& gone, const QString& before) {
    if (session.buyList->isOpen() && session.buyList->Filter() == gone)
        session.buyList->setFilter(before);
}

} // namespace

order_Form_NumFm1::order_Form_NumFm1(ViewHost& host)
    : Dialog(QStringLiteral("order_Form_NumFm1"), QStringLiteral("选择订单"))
    , m_host(host)
    , m_session(host.session())
    , m_filterBefore(m_session.buyList->Filter()) {
    m_list = new QListWidget(this);
    m_list->setObjectName(QStringLiteral("List1"));
    m_list->setAccessibleName(QStringLiteral("订单号"));
    auto* record = new QAction(QStringLiteral("打印购物记录"), m_list);
    connect(record, &QAction::triggered, this, &order_Form_NumFm1::printRecord);
    m_list->addAction(record);
    m_list->setContextMenuPolicy(Qt::ActionsContextMenu);
    QPushButton* confirmButton = makeButton(QStringLiteral("Command1"), QStringLiteral("确认"), this);
    QPushButton* cancelButton = makeButton(QStringLiteral("Command2"), QStringLiteral("取消"), this);
    connect(confirmButton, &QPushButton::clicked, this, &order_Form_NumFm1::confirm);
    connect(cancelButton, &QPushButton::clicked, this, &QWidget::close);
    connect(m_list, &QListWidget::itemDoubleClicked, confirmButton, &QPushButton::click);
    m_none = makeLabel(QStringLiteral("emptyHint"), QStringLiteral("该时间段内没有订单。"), this);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(confirmButton);
    buttons->addWidget(cancelButton);
    auto* column = new QVBoxLayout(this);
    column->addWidget(makeLabel(QStringLiteral("Label1"), QStringLiteral("订单号"), this));
    column->addWidget(m_none);
    column->addWidget(m_list, 1);
    column->addLayout(buttons);
    setDefaultButton(confirmButton);
    fill();
}

void order_Form_NumFm1::fill() {
    m_client = m_session.currentClientNum;
    m_list->clear();
    m_list->addItems(ordersOfClient(m_session));
    m_list->setCurrentRow(0);
    m_none->setVisible(m_list->count() == 0);
    m_filter = m_session.buyList->Filter();
}

void order_Form_NumFm1::takeListed() {
    m_session.currentClientNum = m_client;
    m_session.refreshCustomer();
}

void order_Form_NumFm1::wayOut() {
    restoreFilter(m_session, m_filter, m_filterBefore);
    finish();
}

void order_Form_NumFm1::confirm() {
    const QListWidgetItem* chosen = m_list->currentItem();
    if (!chosen)
        return;
    takeListed();
    takeOrder(m_session, chosen->text());
    if (m_session.orderIsPrinted)
        printOrder();
    else
        showOrder();
}

void order_Form_NumFm1::showOrder() {
    finish();
    m_session.activeViewName = QStringLiteral("tempTable2Fm22");
    m_host.showOrActivate(m_session.activeViewName);
}

void order_Form_NumFm1::printOrder() {
    // The dialog is gone before the report closes, so it leaves behind what it would put back itself.
    Session& session = m_session;
    const QString before = m_filterBefore;
    const QString order = session.buyList->Filter();
    finish();
    session.report.caller = QStringLiteral("dataInputFm1");
    TopWindow* report = m_host.openWindow(QStringLiteral("showprint_rs22"), ViewHost::MainWindow::Disabled);
    if (report)
        connect(report, &TopWindow::finished, &m_host,
                [&session, order, before] { restoreFilter(session, order, before); });
}

void order_Form_NumFm1::printRecord() {
    takeListed();
    takePurchaseRecord(m_session);
    if (!m_session.orderTotals->hasRows())
        return;
    m_session.report.caller = objectName();
    m_host.openWindow(QStringLiteral("print_rs_total"), ViewHost::MainWindow::Disabled);
}
