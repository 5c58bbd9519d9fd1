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
    m_pane->setWholeShow([this] { whole_show(); });
    resize(980, 560);
    connect(&host, &ViewHost::windowGone, this, [this](const QString& name) {
        if (name == u"timeDefineFm2")
            Fm_Activate_goodsSalesFm1();
        // A period that is being asked for here is that of the lines.
        if (!m_host.window(QStringLiteral("timeDefineFm2")))
            m_host.giveBackSource();
    });
    // A search that another view has left would hide lines of the whole.
    if (source() == ShowSource::Lines)
        clearAnyFilter(lines());
    m_session.showSource = source();
    Fm_Activate_goodsSalesFm1();
}

QLayout* goodsSalesFm1::buildToolbar() {
    auto* row = new QHBoxLayout;
    addButtons(row, this,
               {{u"client_show", u"该产品客户资料", [this] { client_show(); }},
                {u"show_sales", u"该产品销售", [this] { show_sales(); }},
                {u"select_time", u"统计时间", [this] { askSalesPeriod(m_host); }},
                {u"whole_show", u"全库显示", [this] { whole_show(); }},
                {u"search", u"查询", [this] { search(); }},
                {u"order", u"排序", [this] { order(); }},
                {u"print", u"打印", [this] { print(); }},
                {u"return", u"返回", [this] { close(); }}});
    row->addStretch(1);
    return row;
}

const RecordsetPtr& goodsSalesFm1::lines() const {
    return *sourceCursor(m_session, source());
}

void goodsSalesFm1::Fm_Activate_goodsSalesFm1() {
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

void goodsSalesFm1::follow() {
    m_session.showSource = source();
    if (m_pane->cursor() != lines())
        Fm_Activate_goodsSalesFm1();
}

void goodsSalesFm1::goTo(const std::function<void()>& show) {
    m_host.bringBackMain(objectName());
    show();
    m_host.mainWindow().raise();
    m_host.mainWindow().activateWindow();
}

void goodsSalesFm1::client_show() {
    if (const auto product = productOfRow(m_pane->cursor()))
        goTo([&] { showClientsOf(m_host, *product, source()); });
}

void goodsSalesFm1::show_sales() {
    if (const auto product = productOfRow(m_pane->cursor()))
        goTo([&] { showSalesOf(m_host, m_prompts, *product, source()); });
}

void goodsSalesFm1::whole_show() {
    showWholeLines(m_session);
    m_session.showSource = source();
    Fm_Activate_goodsSalesFm1();
}

void goodsSalesFm1::search() {
    follow();
    if (!lines()->hasRows())
        return;
    m_session.searchCode = searchCodeOf(source());
    m_session.searchSource = source();
    m_host.openWindow(QStringLiteral("searchFm1"), ViewHost::MainWindow::Stays);
}

void goodsSalesFm1::order() {
    follow();
    if (!lines()->hasRows())
        return;
    m_session.sortDirection = 1;
    m_session.orderCode = qint16(source());
    m_host.openWindow(QStringLiteral("orderFm1"), ViewHost::MainWindow::Stays);
}

void goodsSalesFm1::print() {
    follow();
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
