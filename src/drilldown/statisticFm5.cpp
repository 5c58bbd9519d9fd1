#include "drilldown/statisticFm5.h"

#include "controls/formParts.h"
#include "controls/longWork.h"
#include "controls/recordPane.h"
#include "data/sourceTable.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace {

ShowSource salesOnShow(const Session& session) {
    return session.showSource == ShowSource::PeriodLines ? ShowSource::PeriodLines : ShowSource::Lines;
}

} // namespace

statisticFm5::statisticFm5(ViewHost& host, Prompts& prompts)
    : StatisticWindow(QStringLiteral("statisticFm5"), QStringLiteral("按订单号统计购买额"))
    , m_host(host)
    , m_session(host.session())
    , m_pane(new RecordPane({}, QStringLiteral("没有订单。"), prompts, this)) {
    auto* toolbar = new QHBoxLayout;
    const std::tuple<const char16_t*, const char16_t*, std::function<void()>> commands[] = {
        {u"select_time", u"统计时间", [this] { select_time(); }},
        {u"print", u"打印", [this] { print(); }},
        {u"return", u"返回", [this] { close(); }}};
    for (const auto& [name, caption, command] : commands) {
        QPushButton* button = makeButton(QString::fromUtf16(name), QString::fromUtf16(caption), this);
        connect(button, &QPushButton::clicked, this, command);
        toolbar->addWidget(button);
    }
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
}

void statisticFm5::Fm_Activate_statisticFm5() {
    const ShowSource source = salesOnShow(m_session);
    if (!(*sourceCursor(m_session, source))->isOpen())
        return;
    const OrderStatistic statistic = calculation_order(m_session, source);
    openOrders(m_session, statistic);
    m_figures[0]->setText(statistic.figures.turnover);
    m_figures[1]->setText(statistic.figures.margin);
    m_figures[2]->setText(statistic.figures.quantity);
    m_pane->bind(m_session.orderTable);
    const QPointer<statisticFm5> self(this);
    workAfterPainting(QStringLiteral("正在保存订单统计…"),
                      [&](const Steps& steps) { writeOrders(m_session, statistic, steps); });
    if (self)
        m_pane->bind(m_session.orderTable);
}

void statisticFm5::select_time() {
    if (!m_session.buyList->hasRows())
        return;
    m_session.showSource = m_session.saleShowSource = ShowSource::Lines;
    TopWindow* dialog = m_host.openWindow(QStringLiteral("timeDefineFm2"), ViewHost::MainWindow::Stays);
    connect(dialog, &TopWindow::finished, this, &statisticFm5::Fm_Activate_statisticFm5);
}

void statisticFm5::print() {
    if (!m_session.orderTable->hasRows())
        return;
    const QString sales = QStringLiteral("statisticFm2");
    m_session.periodDate1 = m_host.controlText(sales, QStringLiteral("Text2"));
    m_session.periodDate2 = m_host.controlText(sales, QStringLiteral("Text3"));
    const bool period = salesOnShow(m_session) == ShowSource::PeriodLines;
    m_session.report.period = period ? m_session.periodExact : QString();
    m_session.report.caller = objectName();
    m_host.openWindow(QStringLiteral("print_rs_order"), ViewHost::MainWindow::Disabled);
}

void showOrderStatistic(ViewHost& host) {
    Session& session = host.session();
    if (!(*sourceCursor(session, salesOnShow(session)))->hasRows())
        return;
    host.openWindow(QStringLiteral("statisticFm5"), ViewHost::MainWindow::Hidden);
    if (auto* window = qobject_cast<statisticFm5*>(host.window(QStringLiteral("statisticFm5"))))
        window->Fm_Activate_statisticFm5();
}
