#include "stock/stockWindows.h"

#include "controls/formParts.h"
#include "controls/recordPane.h"
#include "data/cursorMoves.h"
#include "data/sourceTable.h"
#include "recordset/shownText.h"
#include "stock/stockDisplay.h"
#include "stock/stockPanels.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

namespace {

QLineEdit* makeReadOnlyBox(const QString& name, const QString& toolTip, QWidget* parent) {
    QLineEdit* box = makeShownBox(name, toolTip, parent);
    box->setReadOnly(true);
    return box;
}

} // namespace

StockFm2::StockFm2(ViewHost& host, Prompts& prompts)
    : View(QStringLiteral("StockFm2"), QStringLiteral("底于库存安全数的商品"))
    , m_host(host)
    , m_session(host.session()) {
    const QString nothing = QStringLiteral("没有需要补充库存的产品。");
    m_pane = new RecordPane({}, nothing, prompts, this);
    m_pane->grid->setNothingFoundText(nothing); // a Filter is what the list is made by
    m_threshold = makeReadOnlyBox(QStringLiteral("Text4"), QStringLiteral("库存安全数"), this);
    auto* more = makeButton(QStringLiteral("Command3(0)"), QStringLiteral("库存安全数加"), this);
    auto* less = makeButton(QStringLiteral("Command3(1)"), QStringLiteral("减"), this);
    connect(more, &QPushButton::clicked, this, [this] { changeThreshold(1); });
    connect(less, &QPushButton::clicked, this, [this] { changeThreshold(-1); });
    QLabel* heading = makeLabel(QStringLiteral("Label1"), QStringLiteral("需 补 充 库 存 产 品 清 单"), this);
    heading->setAlignment(Qt::AlignCenter);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_pane->moves);
    bottom->addStretch(1);
    bottom->addWidget(new QLabel(QStringLiteral("库存安全数"), this));
    bottom->addWidget(m_threshold);
    bottom->addWidget(more);
    bottom->addWidget(less);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(heading);
    column->addWidget(m_pane->grid, 1);
    column->addLayout(bottom);
    offer(ViewOperation::data_print, [this] { data_print(); });
}

RecordsetPtr StockFm2::cursor() const {
    return m_shown == ShowSource::None ? nullptr : *sourceCursor(m_session, m_shown);
}

void StockFm2::activate() {
    if (std::exchange(m_session.viewReturnState, QStringLiteral("Open")) == u"Close")
        return;
    m_threshold->setText(QString::number(m_session.safetyStock));
    const ShowSource code = m_session.showSource;
    if (code == ShowSource::Products || code == ShowSource::PeriodProducts)
        m_shown = code;
    const RecordsetPtr shown = cursor();
    if (!shown)
        return;
    if (shown->isOpen())
        filterShortfall(m_session, shown);
    m_pane->bind(shown);
}

void StockFm2::changeThreshold(int by) {
    changeSafetyStock(m_session, by);
    m_session.viewReturnState = QStringLiteral("Open");
    activate();
}

void StockFm2::data_print() {
    const RecordsetPtr shown = cursor();
    if (!shown || !shown->hasRows())
        return;
    m_session.report.reportFormTitle = QStringLiteral("需 补 充 库 存 产 品 清 单 ");
    const bool whole = m_shown == ShowSource::Products;
    m_host.openWindow(whole ? QStringLiteral("showprint_rs3") : QStringLiteral("showprint_rs4"),
                      ViewHost::MainWindow::Disabled);
}

stockFm3::stockFm3(ViewHost& host)
    : TopWindow(QStringLiteral("stockFm3"), QStringLiteral("某项产品库存显示"))
    , m_session(host.session()) {
    m_list = new QListWidget(this);
    m_list->setObjectName(QStringLiteral("List1"));
    m_list->setAccessibleName(QStringLiteral("产品资料"));
    m_quantity = makeLabel(QStringLiteral("Label2"), {}, this);
    m_name = makeLabel(QStringLiteral("Label4"), {}, this);
    auto* row = new QHBoxLayout;
    row->addWidget(makeLabel(QStringLiteral("Label1"), QStringLiteral("库存数："), this));
    row->addWidget(m_quantity, 1);
    row->addWidget(makeLabel(QStringLiteral("Label3"), QStringLiteral("品名："), this));
    row->addWidget(m_name, 1);
    auto* column = new QVBoxLayout(this);
    column->addLayout(row);
    column->addWidget(m_list, 1);
    resize(420, 420);
    fill();
}

bool stockFm3::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate)
        fill();
    return TopWindow::event(event);
}

void stockFm3::fill() {
    m_list->clear();
    m_list->addItems(oneProductLines(m_session.oneProduct));
    const bool any = m_session.oneProduct->hasRows();
    m_quantity->setText(any ? m_session.oneProduct->Fields(QStringLiteral("数量")).text() : QString());
    m_name->setText(any ? captionText(m_session.oneProduct->Fields(QStringLiteral("品名")).shown())
                        : QString());
}

statisticFm4::statisticFm4(ViewHost& host, Prompts& prompts)
    : TopWindow(QStringLiteral("statisticFm4"), QStringLiteral("库存统计"))
    , m_host(host)
    , m_session(host.session()) {
    m_pane = new RecordPane({}, QStringLiteral("没有库存。"), prompts, this);
    m_first = makeReadOnlyBox(QStringLiteral("Text2"), QStringLiteral("时间显示"), this);
    m_last = makeReadOnlyBox(QStringLiteral("Text3"), QStringLiteral("时间显示"), this);
    m_sums = new StockSumsBox(this);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_pane->moves);
    bottom->addStretch(1);
    bottom->addWidget(m_sums);
    auto* column = new QVBoxLayout(this);
    column->addLayout(buildToolbar());
    column->addWidget(m_pane->grid, 1);
    column->addLayout(bottom);
    m_pane->setWholeShow([this] { whole_show(); });
    m_pane->onRow([this] {
        m_pane->showPosition();
        m_sums->follow(m_session.productTable);
    });
    resize(980, 560);
    Fm_Activate_statisticFm4();
}

QLayout* statisticFm4::buildToolbar() {
    auto* row = new QHBoxLayout;
    addButtons(row, this,
               {{u"select_time", u"统计时间", [this] { select_time(); }},
                {u"whole_show", u"全库统计", [this] { whole_show(); }},
                {u"print", u"打印", [this] { print(); }},
                {u"return", u"返回", [this] { close(); }}});
    row->addStretch(1);
    row->addWidget(m_first);
    row->addWidget(m_last);
    return row;
}

bool statisticFm4::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate)
        Fm_Activate_statisticFm4();
    return TopWindow::event(event);
}

void statisticFm4::Fm_Activate_statisticFm4() {
    m_session.showSource = stockSource(m_session);
    const RecordsetPtr& products = m_session.productTable;
    if (products->hasRows()) {
        const DateSpan dates = sortByDate(products);
        m_first->setText(dates.first);
        m_last->setText(dates.last);
    } else {
        m_first->setText(m_session.periodStart);
        m_last->setText(m_session.periodEnd);
    }
    m_pane->bind(products);
    m_sums->count(products);
    m_pane->showPosition();
}

void statisticFm4::select_time() {
    m_session.showSource = m_session.stockShowSource = ShowSource::Products;
    m_host.openWindow(QStringLiteral("timeDefineFm2"), ViewHost::MainWindow::Stays);
}

void statisticFm4::whole_show() {
    if (m_session.productTable->isOpen())
        m_session.productTable->clearFilter();
    m_session.showSource = ShowSource::Products;
    Fm_Activate_statisticFm4();
}

void statisticFm4::print() {
    if (!m_session.productTable->hasRows())
        return;
    m_session.report.caller = objectName();
    m_host.openWindow(QStringLiteral("print_rs3"), ViewHost::MainWindow::Disabled);
}
