#include "drilldown/productPanels.h"

#include "controls/formParts.h"
#include "controls/prompts.h"
#include "data/sourceTable.h"
#include "drilldown/drillDown.h"
#include "drilldown/statisticFm5.h"
#include "recordset/ignoringErrors.h"
#include "recordset/shownText.h"
#include "recordset/textNumber.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

SalesPanel::SalesPanel(ViewHost& host, Prompts& prompts)
    : m_host(host)
    , m_session(host.session())
    , m_prompts(prompts)
    , m_title(makeLabel(QStringLiteral("Label1"), {}, this))
    , m_print(new QAction(QStringLiteral("打印销售清单"), this)) {
    connect(m_print, &QAction::triggered, this, &SalesPanel::printList);
    m_title->setFont(boldOf(m_title, 1.2));
    m_title->setAlignment(Qt::AlignCenter);
    auto* figures = new QHBoxLayout;
    m_turnover = addFigure(figures, 4, QStringLiteral("营业额"), this);
    m_margin = addFigure(figures, 6, QStringLiteral("差额利润"), this);
    m_quantity = addFigure(figures, 8, QStringLiteral("销售量"), this);
    m_clients = addFigure(figures, 10, QStringLiteral("客户数"), this);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_title);
    column->addLayout(figures);
    column->addLayout(buildCommands());
}

QLayout* SalesPanel::buildCommands() {
    auto* row = new QHBoxLayout;
    addButtons(row, this,
               {{u"Command3", u"该产品销售显示", [this] { showOneProductSales(m_host, m_prompts); }},
                {u"Command4", u"该产品客户资料显示", [this] { showProductClients(m_host, m_prompts); }},
                {u"orderStatistic", u"按订单号统计", [this] { showOrderStatistic(m_host); }},
                {u"singleCount", u"单项产品统计", [this] { singleCount(); }}});
    return row;
}

const RecordsetPtr& SalesPanel::shown() const {
    return *sourceCursor(m_session, m_source);
}

void SalesPanel::setFigures(const SaleFigures& figures) {
    m_turnover->setText(figures.turnover);
    m_margin->setText(figures.margin);
    m_quantity->setText(figures.quantity);
    m_clients->setText(figures.clients);
    m_filter = shown()->Filter();
}

void SalesPanel::count() {
    if (!shown()->isOpen())
        return;
    if (!shown()->Filter().isEmpty())
        return setFigures(rs2_Count(shown()));
    IgnoringErrors errors;
    errors.run([&] { setFigures(sales_Count(m_session, m_source)); });
}

void SalesPanel::showWhole() {
    m_title->setText(QStringLiteral("已销售产品统计"));
    count();
}

void SalesPanel::sourceShown(const RecordsetPtr& /*cursor*/, ShowSource code) {
    m_source = code;
    showWhole();
}

void SalesPanel::rowChanged(const RecordsetPtr& cursor, bool /*chosen*/) {
    if (cursor == shown() && cursor->Filter() != m_filter)
        showWhole();
    if (cursor->hasRows() && cursor->currentRow())
        m_session.currentProductNum = cursor->Fields(QStringLiteral("产品编号")).text();
}

void SalesPanel::sorted(const RecordsetPtr& cursor) {
    // A window beside may have sorted the other one of the two.
    if (!cursor->isOpen() || cursor != shown() || ShowSource(m_session.orderCode) != m_source)
        return;
    setFigures(rs2_Count(cursor));
    findProduct(cursor, m_session.currentProductNum);
}

void SalesPanel::singleCount() {
    if (!shown()->isOpen())
        return;
    const auto answer = m_prompts.input(QStringLiteral("请输入产品编号："), QStringLiteral("单项产品统计"));
    const QString number = trimBlanks(answer.value_or(QString()));
    if (number.isEmpty())
        return;
    const QuietWalk walk(shown());
    m_title->setText(number + QStringLiteral("号产品销售统计"));
    setFigures(::singleCount(shown(), number));
}

void SalesPanel::printList() {
    Q_EMIT printAsked(m_source == ShowSource::PeriodLines ? QStringLiteral("showprint_rs9")
                                                          : QStringLiteral("showprint_rs2"));
}

void SalesPanel::aboutToPrint(const QString& report) {
    if (report.startsWith(QStringLiteral("showprint")))
        handSalesList(m_session, m_source);
}

ProductLinesPanel::ProductLinesPanel(ViewHost& host, Prompts& /*prompts*/)
    : m_session(host.session()) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    m_number = addFigure(row, 1, QStringLiteral("产品编号："), this);
    m_name = addFigure(row, 3, QStringLiteral("品名"), this);
    m_count = addFigure(row, 5, QStringLiteral("总件数："), this);
    m_amount = addFigure(row, 7, QStringLiteral("营业额："), this);
}

void ProductLinesPanel::sourceShown(const RecordsetPtr& cursor, ShowSource /*code*/) {
    m_number->setText(m_session.currentProductNum);
    m_name->setText(captionText(m_session.currentProductName));
    const SaleTotals totals = saleTotals(cursor);
    m_count->setText(totals.count);
    m_amount->setText(totals.amount);
}

void ProductLinesPanel::aboutToPrint(const QString& /*report*/) {
    m_session.scratch = m_session.productLines;
    m_session.report.reportFormTitle = m_name->text() + QStringLiteral("--产品销售清单");
    m_session.report.totalCount = m_count->text();
    m_session.report.totalAmount = m_amount->text();
}

ProductClientsPanel::ProductClientsPanel(ViewHost& host, Prompts& /*prompts*/)
    : m_session(host.session()) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    m_number = addFigure(row, 1, QStringLiteral("产品编号："), this);
    m_name = addFigure(row, 3, QStringLiteral("品名："), this);
}

void ProductClientsPanel::sourceShown(const RecordsetPtr& /*cursor*/, ShowSource /*code*/) {
    m_number->setText(m_session.currentProductNum);
    m_name->setText(captionText(m_session.currentProductName));
}
