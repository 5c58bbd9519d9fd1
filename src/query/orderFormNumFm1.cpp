#include "query/orderFormNumFm1.h"

#include "controls/formParts.h"
#include "query/queries.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

order_Form_NumFm1::order_Form_NumFm1(ViewHost& host)
    : Dialog(QStringLiteral("order_Form_NumFm1"), QStringLiteral("选择订单"))
    , m_host(host) {
    m_list = new QListWidget(this);
    m_list->setObjectName(QStringLiteral("List1"));
    m_list->setAccessibleName(QStringLiteral("订单号"));
    m_list->addItems(ordersOfClient(host.session()));
    QPushButton* confirmButton = makeButton(QStringLiteral("Command1"), QStringLiteral("确认"), this);
    QPushButton* cancelButton = makeButton(QStringLiteral("Command2"), QStringLiteral("取消"), this);
    connect(confirmButton, &QPushButton::clicked, this, &order_Form_NumFm1::confirm);
    connect(cancelButton, &QPushButton::clicked, this, &QWidget::close);
    connect(m_list, &QListWidget::itemDoubleClicked, confirmButton, &QPushButton::click);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(confirmButton);
    buttons->addWidget(cancelButton);
    auto* column = new QVBoxLayout(this);
    column->addWidget(makeLabel(QStringLiteral("Label1"), QStringLiteral("订单号"), this));
    column->addWidget(m_list, 1);
    column->addLayout(buttons);
    setDefaultButton(confirmButton);
}

void order_Form_NumFm1::confirm() {
    static const QString view = QStringLiteral("tempTable2Fm22");
    Session& session = m_host.session();
    if (!m_host.knows(view))
        return m_host.tellNotYet(QStringLiteral("该客户订单明细显示"));
    const QListWidgetItem* chosen = m_list->currentItem();
    takeOrder(session, chosen ? chosen->text() : session.currentOrderNum);
    session.activeViewName = view;
    finish();
    m_host.show(view);
}
