#include "analysis/turnoverView.h"

#include "controls/barChart.h"
#include "controls/formParts.h"
#include "controls/longWork.h"
#include "controls/prompts.h"
#include "controls/recordPane.h"
#include "data/workTable.h"
#include "recordset/ignoringErrors.h"

#include <QLabel>
#include <QSplitter>
#include <QVBoxLayout>

saleroom_statistic::saleroom_statistic(ViewHost& host, Prompts& prompts)
    : View(QStringLiteral("saleroom_statistic"), QStringLiteral("营业额统计"))
    , m_host(host)
    , m_session(host.session())
    , m_title(makeLabel(QStringLiteral("Label1"), {}, this))
    , m_pane(new RecordPane({}, QStringLiteral("没有营业额。"), prompts, this))
    , m_chart(new BarChart({QStringLiteral("MSChart1"), QStringLiteral("营业额统计"), QStringLiteral("时间"),
                            QStringLiteral("营业额")},
                           prompts, this)) {
    m_pane->setEmptyPosition(QStringLiteral("0"));
    m_title->setFont(boldOf(m_title, 1.2));
    m_title->setAlignment(Qt::AlignCenter);
    auto* halves = new QSplitter(Qt::Horizontal, this);
    halves->setChildrenCollapsible(false);
    halves->addWidget(m_pane->grid);
    halves->addWidget(m_chart);
    halves->setStretchFactor(0, 1);
    halves->setStretchFactor(1, 3);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_title);
    column->addWidget(halves, 1);
    column->addWidget(m_pane->moves, 0, Qt::AlignLeft);
    m_pane->onMove([this](int button) {
        moveInRecordset(m_session.saleTable, button);
        m_pane->showPosition();
    });
    offer(ViewOperation::data_print, [this] { data_print(); });
}

void saleroom_statistic::Fm_Activate_saleroom_statistic() {
    m_title->setText(m_session.turnoverTitle);
    QList<Bar> bars;
    for (const SpanTurnover& span : lastSpans(m_session.saleTable))
        bars << Bar{span.label, span.value};
    m_chart->setBars(bars);
    if (m_session.saleTable->hasRows())
        m_session.saleTable->MoveLast();
    m_pane->bind(m_session.saleTable);
}

void saleroom_statistic::data_print() {
    if (!m_session.saleTable->hasRows())
        return;
    m_session.report.reportFormTitle = m_session.turnoverTitle;
    m_session.report.caller = name();
    m_host.openWindow(QStringLiteral("print_rs_statistic"), ViewHost::MainWindow::Hidden);
}

void showTurnover(const TurnoverStatistic& statistic, ViewHost& host, Prompts& prompts) {
    Session& session = host.session();
    if (session.clientTable->isOpen())
        session.clientTable->clearFilter();
    const auto rows = countTurnover(session, statistic);
    if (!rows)
        return;
    if (!session.saleTable->hasRows())
        return prompts.tell(QStringLiteral("无数据！"));
    host.showOrActivate(QStringLiteral("saleroom_statistic"));
    workAfterPainting(QStringLiteral("正在保存营业额统计…"), [&](const Steps& steps) {
        fillTable(session.cn, QStringLiteral("saleTable"), *rows, steps);
    });
}
