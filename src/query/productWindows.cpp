#include "query/productWindows.h"

#include "controls/formParts.h"
#include "controls/prompts.h"
#include "controls/recordBoxes.h"
#include "controls/recordPane.h"
#include "data/sourceTable.h"
#include "query/queries.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>

namespace {

/// The boxes of the purchase that a picked product fills.
constexpr std::pair<int, const char16_t*> kFilledBoxes[] = {{1, u"产品编号"}, {2, u"品名"},     {3, u"规格"},
                                                            {4, u"产地"},     {5, u"厂家"},     {6, u"单价"},
                                                            {9, u"折扣"},     {12, u"计量单位"}};

} // namespace

ProductWindow::ProductWindow(const QString& name, const QString& caption, ViewHost& host, Prompts& prompts)
    : Dialog(name, caption)
    , m_host(host)
    , m_session(host.session())
    , m_prompts(prompts) {
    m_pane = new RecordPane({}, QStringLiteral("没有产品。"), prompts, this);
    m_buttons = new QHBoxLayout;
    m_buttons->addWidget(m_pane->moves);
    m_buttons->addStretch(1);
    auto* column = new QVBoxLayout(this);
    column->addWidget(m_pane->grid, 1);
    column->addLayout(m_buttons);
    resize(820, 460);
    m_pane->setWholeShow([this] { showWhole(); });
    rebind();
}

void ProductWindow::showWhole() {
    if (m_session.productTable->isOpen())
        m_session.productTable->clearFilter();
}

void ProductWindow::rebind() {
    m_pane->bind(m_session.productTable);
}

bool ProductWindow::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate)
        rebind();
    return Dialog::event(event);
}

listProductFm2::listProductFm2(ViewHost& host, Prompts& prompts)
    : ProductWindow(QStringLiteral("listProductFm2"), QStringLiteral("产品选择"), host, prompts) {
    const std::tuple<const char16_t*, const char16_t*, void (listProductFm2::*)()> commands[] = {
        {u"Command2", u"确认", &listProductFm2::pick}, {u"Command3", u"查询", &listProductFm2::search}};
    for (const auto& [name, caption, action] : commands) {
        QPushButton* button = makeButton(QString::fromUtf16(name), QString::fromUtf16(caption), this);
        connect(button, &QPushButton::clicked, this, action);
        m_buttons->addWidget(button);
    }
    QPushButton* back = makeButton(QStringLiteral("Command4"), QStringLiteral("返回"), this);
    connect(back, &QPushButton::clicked, this, [this] {
        m_session.report.reportReturned = 1;
        close();
    });
    m_buttons->addWidget(back);
}

void listProductFm2::wayOut() {
    m_session.report.reportReturned = 2;
    finish();
}

void listProductFm2::pick() {
    const RecordsetPtr& products = m_session.productTable;
    if (!products->hasRows() || !products->currentRow())
        return;
    m_session.pickedProduct = {products->Fields(QStringLiteral("产品编号")).text(), products->Bookmark(),
                               products->Fields(QStringLiteral("成本")).number()};
    if (TopWindow* purchase = m_host.window(QStringLiteral("buyFm1")))
        for (const auto& [index, field] : kFilledBoxes)
            if (auto* box = purchase->findChild<RecordBox*>(QStringLiteral("Text4(%1)").arg(index)))
                box->setText(products->Fields(QString::fromUtf16(field)).shown());
    close();
}

void listProductFm2::search() {
    const RecordsetPtr& products = m_session.productTable;
    if (!products->isOpen())
        return;
    const int shown = m_pane->grid->currentIndex().column();
    const QString column = productSearchColumn(shown >= 0 ? products->fieldInfo(shown).name : QString());
    const auto answer =
        m_prompts.input(QStringLiteral("请输入") + column + QStringLiteral("："), QStringLiteral("查询输入"));
    // A canceled question is an empty answer, which shows every product.
    searchProducts(m_session, column, answer.value_or(QString()));
    rebind();
}

product_displayFm1::product_displayFm1(ViewHost& host, Prompts& prompts)
    : ProductWindow(QStringLiteral("product_displayFm1"), QStringLiteral("产品显示"), host, prompts) {
    auto* bar = new QMenuBar(this);
    layout()->setMenuBar(bar);
    const auto add = [this, bar](const char16_t* name, const char16_t* caption, auto action) {
        bar->addAction(QString::fromUtf16(caption), this, action)->setObjectName(QString::fromUtf16(name));
    };
    add(u"whole_show", u"全库显示", [this] { showWhole(); });
    add(u"order", u"排序", [this] {
        if (!m_session.productTable->hasRows())
            return;
        m_session.orderCode = qint16(ShowSource::Products);
        m_host.openWindow(QStringLiteral("orderFm1"), ViewHost::MainWindow::Stays);
    });
    add(u"search", u"查寻", [this] {
        m_session.searchCode = searchCodeOf(ShowSource::Products);
        m_session.searchSource = ShowSource::Products;
        m_host.openWindow(QStringLiteral("searchFm1"), ViewHost::MainWindow::Stays);
    });
    add(u"return", u"返回", [this] { close(); });
}
