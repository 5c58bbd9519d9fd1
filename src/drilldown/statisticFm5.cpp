#include "drilldown/statisticFm5.h"

#include "controls/formParts.h"
#include "controls/longWork.h"
#include "controls/recordPane.h"
#include "drilldown/drillDown.h"
#include "shell/displayView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

statisticFm5::statisticFm5(ViewHost& host, Prompts& prompts)
    : StatisticWindow(QStringLiteral("statisticFm5"), QStringLiteral("按订单号统计购买额"))
    , m_host(host)
    , m_session(host.session())
    , m_pane(new RecordPane({}, QStringLiteral("没有订单。"), prompts, this)) {
    auto* toolbar = new QHBoxLayout;
    addButtons(toolbar, this,
               {{u"select_time", u"统计时间", [&host] { askSalesPeriod(host); }},
                {u"print", u"打印", [this] { print(); }},
                {u"return", u"返回", [this] { close(); }}});
    toolbar->addStretch(1);
    auto* figures = new QHBoxLayout;
    m_figures[0] = addFigure(figures, 4, QStringLiteral("营业额(合计)"), this);
    m_figures[1] = addFigure(figures, 6, QStringLiteral("差额利润(合计)"), this);
    m_figures[2] = addFigure(figures, 8, QStringLiteral("销售量(合计)"), this);
    figures->addStretch(1);
    auto* column = new QVBoxLayout(this);
    column->addLayout(toolbar);
    column->addWidget(m_pane->grid, 1);
    column->addLayout(figures);
    column->addWidget(m_pane->moves, 0, Qt::AlignLeft);
    resize(900, 600);
    connect(&host, &ViewHost::windowGone, this, [this](const QString& name) {
        if (name == u"timeDefineFm2")
            Fm_Activate_statisticFm5();
    });
}

ShowSource statisticFm5::source() const {
    const auto* sales = qobject_cast<const DisplayView*>(m_host.active());
    // A window beside may have put another view behind this one.
    const bool there = sales && sales->name() == u"statisticFm2";
    const bool period = (there ? sales->shownSource() : salesSource(m_session)) == ShowSource::PeriodLines;
    return period ? ShowSource::PeriodLines : ShowSource::Lines;
}

void statisticFm5::Fm_Activate_statisticFm5() {
    const ShowSource code = source();
    const OrderStatistic statistic = calculation_order(m_session, code);
    m_dates = dates(code);
    m_period = code == ShowSource::PeriodLines ? m_session.periodExact : QString();
    openOrders(m_session, statistic);
    show(statistic);
    const QPointer<statisticFm5> self(this);
    workAfterPainting(QStringLiteral("正在保存订单统计…"),
                      [&](const Steps& steps) { writeOrders(m_session, statistic, steps); });
    if (self)
        show(statistic);
}

DateSpan statisticFm5::dates(ShowSource code) const {
    const QString sales = QStringLiteral("statisticFm2");
    const QString first = m_host.controlText(sales, QStringLiteral("Text2"));
    if (!first.isEmpty())
        return {first, m_host.controlText(sales, QStringLiteral("Text3"))};
    if (code == ShowSource::PeriodLines)
        return {m_session.periodStart, m_session.periodEnd};
    return m_session.buyList->isOpen() ? dateSpanOf(*m_session.buyList) : DateSpan();
}

void statisticFm5::show(const OrderStatistic& statistic) {
    m_figures[0]->setText(statistic.figures.turnover);
    m_figures[1]->setText(statistic.figures.margin);
    m_figures[2]->setText(statistic.figures.quantity);
    m_pane->bind(m_session.orderTable);
}

void statisticFm5::print() {
    if (!m_session.orderTable->hasRows())
        return;
    m_session.periodDate1 = m_dates.first;
    m_session.periodDate2 = m_dates.last;
    m_session.report.period = m_period;
    m_session.report.caller = objectName();
    m_host.openWindow(QStringLiteral("print_rs_order"), ViewHost::MainWindow::Disabled);
}

void showOrderStatistic(ViewHost& host) {
    const auto* sales = qobject_cast<const DisplayView*>(host.active());
    if (!sales || !sales->shownRows() || !sales->shownRows()->hasRows())
        return;
    host.openWindow(QStringLiteral("statisticFm5"), ViewHost::MainWindow::Hidden);
    if (auto* window = qobject_cast<statisticFm5*>(host.window(QStringLiteral("statisticFm5"))))
        window->Fm_Activate_statisticFm5();
}
