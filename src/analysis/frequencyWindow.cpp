#include "analysis/frequencyWindow.h"

#include "controls/barChart.h"
#include "controls/dataGrid.h"
#include "controls/formParts.h"
#include "controls/longWork.h"
#include "data/cursorMoves.h"
#include "recordset/textNumber.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMainWindow>

buy_FrequenceFm1::buy_FrequenceFm1(ViewHost& host, Prompts& prompts)
    : StatisticWindow(QStringLiteral("buy_FrequenceFm1"), QStringLiteral("购买频率统计"))
    , m_host(host)
    , m_session(host.session())
    , m_latest(makeLabel(QStringLiteral("Label3"), {}, this))
    , m_grid(new DataGrid(prompts, this))
    , m_chart(new BarChart({QStringLiteral("MSChart1"), QStringLiteral("购买频率统计"),
                            QStringLiteral("时间间隔"), QStringLiteral("客户数")},
                           prompts, this)) {
    m_latest->setFont(boldOf(m_latest));
    m_grid->setObjectName(QStringLiteral("DataGrid3"));
    m_grid->setAccessibleName(QStringLiteral("时间间隔（按月）：客户数和百分率，点一格看这些客户"));
    m_grid->setToolTip(QStringLiteral("点一格（或用方向键选中后按回车），看这个间隔的客户"));
    m_grid->setSelectionBehavior(QAbstractItemView::SelectItems);
    connect(m_grid, &DataGrid::clicked, this,
            [this](const QModelIndex& cell) { showClients(cell.column()); });
    m_grid->installEventFilter(this);
    auto* top = new QHBoxLayout;
    top->addWidget(makeLabel(QStringLiteral("Label1"), QStringLiteral("时间起点："), this));
    top->addWidget(m_latest);
    top->addStretch(1);
    auto* column = new QVBoxLayout(this);
    column->addLayout(top);
    column->addWidget(m_chart, 1);
    column->addWidget(makeLabel(QStringLiteral("Label2"), QStringLiteral("时间间隔（按月）"), this));
    column->addWidget(m_grid);
    column->addWidget(
        new QLabel(QStringLiteral("上一行是客户数，下一行是百分率。点一格看这个间隔的客户。"), this));
    resize(1240, 620);
    load();
}

void buy_FrequenceFm1::load() {
    const DateSpan dates = sortByDate(m_session.buyList);
    m_latest->setText(m_session.buyList->hasRows() ? dates.last : QStringLiteral("0000-00-00"));
    const RecordsetPtr& months = m_session.month_Table;
    m_grid->bind(months, {months->fieldNames().value(0)});
    m_grid->horizontalHeader()->setMinimumSectionSize(
        m_grid->fontMetrics().horizontalAdvance(QStringLiteral("00.00%")) + 8);
    m_grid->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_grid->setFixedHeight(m_grid->horizontalHeader()->sizeHint().height() +
                           3 * m_grid->verticalHeader()->defaultSectionSize() + 24);
    QList<Bar> bars;
    for (int interval = 1; interval <= PurchaseIntervals::kLongest; ++interval) {
        const bool there = months->hasRows() && interval < months->fieldCount();
        bars << Bar{QString::number(interval), there ? val(fieldText(months->valueAt(0, interval))) : 0};
    }
    m_chart->setBars(bars);
}

bool buy_FrequenceFm1::eventFilter(QObject* watched, QEvent* event) {
    if (watched != m_grid || event->type() != QEvent::KeyPress)
        return StatisticWindow::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if ((key != Qt::Key_Return && key != Qt::Key_Enter && key != Qt::Key_Space) ||
        !m_grid->currentIndex().isValid())
        return StatisticWindow::eventFilter(watched, event);
    showClients(m_grid->currentIndex().column());
    return true;
}

void buy_FrequenceFm1::showClients(int interval) {
    if (!showIntervalClients(m_session, interval))
        return;
    m_session.showSource = ShowSource::Clients;
    if (m_session.clientTable->isOpen())
        m_session.clientTable->clearFilter();
    m_host.bringBackMain(objectName());
    m_host.showOrActivate(QStringLiteral("userInfoFm3"));
    m_host.mainWindow().raise();
    m_host.mainWindow().activateWindow();
}

void showFrequency(ViewHost& host) {
    Session& session = host.session();
    session.reopen(session.buyList, QStringLiteral("Select * From buyList "));
    if (!session.buyList->hasRows())
        return;
    const FrequencyTables tables = countFrequency(session);
    if (tables.counted)
        host.openWindow(QStringLiteral("buy_FrequenceFm1"), ViewHost::MainWindow::Hidden);
    workAfterPainting(QStringLiteral("正在保存购买频率统计…"),
                      [&](const Steps& steps) { writeFrequency(session, tables, steps); });
}
