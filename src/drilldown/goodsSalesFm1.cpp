#include "drilldown/goodsSalesFm1.h"

#include "controls/formParts.h"
#include "controls/prompts.h"
#include "controls/recordPane.h"
#include "data/cursorMoves.h"
#include "data/sourceTable.h"
#include "drilldown/drillDown.h"
#include "recordset/ignoringErrors.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMainWindow>
#include <QPushButton>

goodsSalesFm1::goodsSalesFm1(ViewHost& host, Prompts& prompts)
    : StatisticWindow(QStringLiteral("goodsSalesFm1"), QStringLiteral("产品销售显示"))
    , m_host(host)
    , m_session(host.session())
    , m_prompts(prompts)
    , m_pane(new RecordPane({}, QStringLiteral("没有销售记录。\n销售在“营销管理”—“购买”中进行。"), prompts,
                            this)) {
    auto* figures = new QHBoxLayout;
    m_count = addFigure(figures, 1, QStringLiteral("合计数："), this);
    m_turnover = addFigure(figures, 3, QStringLiteral("营业额："), this);
    figures->addStretch(1);
    auto* column = new QVBoxLayout(this);
    column->addLayout(buildToolbar());
    column->addWidget(m_pane->grid, 1);
    column->addLayout(figures);
    column->addWidget(m_pane->moves, 0, Qt::AlignLeft);
    resize(980, 560);
    Fm_Activate_goodsSalesFm1();
}

QLayout* goodsSalesFm1::buildToolbar() {
    const std::tuple<const char16_t*, const char16_t*, std::function<void()>> commands[] = {
        {u"client_show", u"该产品客户资料", [this] { client_show(); }},
        {u"show_sales", u"该产品销售", [this] { show_sales(); }},
        {u"select_time", u"统计时间", [this] { select_time(); }},
        {u"whole_show", u"全库显示", [this] { whole_show(); }},
        {u"search", u"查询", [this] { search(); }},
        {u"order", u"排序", [this] { order(); }},
        {u"print", u"打印", [this] { print(); }},
        {u"return", u"返回", [this] { close(); }}};
    auto* row = new QHBoxLayout;
    for (const auto& [name, caption, command] : commands) {
        QPushButton* button = makeButton(QString::fromUtf16(name), QString::fromUtf16(caption), this);
        connect(button, &QPushButton::clicked, this, command);
        row->addWidget(button);
    }
    row->addStretch(1);
    return row;
}

ShowSource goodsSalesFm1::source() const {
    const bool period = m_session.saleShowSource == ShowSource::PeriodLines && m_session.buyList2->isOpen();
    return period ? ShowSource::PeriodLines : ShowSource::Lines;
}

const RecordsetPtr& goodsSalesFm1::lines() const {
    return *sourceCursor(m_session, source());
}

void goodsSalesFm1::Fm_Activate_goodsSalesFm1() {
    m_session.showSource = source();
    m_pane->bind(lines(), {QStringLiteral("流水号"), QStringLiteral("成本")});
    calculation_L2_L4();
}

void goodsSalesFm1::calculation_L2_L4() {
    IgnoringErrors errors;
    errors.run([&] {
        const SaleTotals totals = ::calculation_L2_L4(m_session, source());
        m_count->setText(totals.count);
        m_turnover->setText(totals.amount);
    });
}

void goodsSalesFm1::goTo(const std::function<void()>& show) {
    m_host.bringBackMain(objectName());
    show();
    m_host.mainWindow().raise();
    m_host.mainWindow().activateWindow();
}

void goodsSalesFm1::client_show() {
    if (const auto product = productOfRow(lines()))
        goTo([&] { showClientsOf(m_host, *product, source()); });
}

void goodsSalesFm1::show_sales() {
    if (const auto product = productOfRow(lines()))
        goTo([&] { showSalesOf(m_host, m_prompts, *product, source()); });
}

void goodsSalesFm1::select_time() {
    if (!m_session.buyList->hasRows())
        return;
    m_session.showSource = m_session.saleShowSource = ShowSource::Lines;
    TopWindow* dialog = m_host.openWindow(QStringLiteral("timeDefineFm2"), ViewHost::MainWindow::Stays);
    connect(dialog, &TopWindow::finished, this, &goodsSalesFm1::Fm_Activate_goodsSalesFm1);
}

void goodsSalesFm1::whole_show() {
    m_session.saleShowSource = ShowSource::Lines;
    m_session.reopen(m_session.buyList, QStringLiteral("Select * From buyList "));
    Fm_Activate_goodsSalesFm1();
}

void goodsSalesFm1::search() {
    if (!lines()->hasRows())
        return;
    m_session.searchCode = searchCodeOf(source());
    m_session.searchSource = source();
    m_host.openWindow(QStringLiteral("searchFm1"), ViewHost::MainWindow::Stays);
}

void goodsSalesFm1::order() {
    if (!lines()->hasRows())
        return;
    m_session.sortDirection = 1;
    m_session.orderCode = qint16(source());
    m_host.openWindow(QStringLiteral("orderFm1"), ViewHost::MainWindow::Stays);
}

void goodsSalesFm1::print() {
    if (!lines()->hasRows())
        return;
    const bool period = source() == ShowSource::PeriodLines;
    handSalesList(m_session, source());
    const DateSpan dates =
        period ? DateSpan{m_session.periodStart, m_session.periodEnd} : dateSpanOf(*m_session.buyList);
    m_session.periodDate1 = dates.first;
    m_session.periodDate2 = dates.last;
    m_session.report.period = period ? m_session.periodExact : QString();
    m_session.report.caller = objectName();
    m_host.openWindow(period ? QStringLiteral("showprint_rs9") : QStringLiteral("showprint_rs2"),
                      ViewHost::MainWindow::Disabled);
}
