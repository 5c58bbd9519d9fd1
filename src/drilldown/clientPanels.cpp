#include "drilldown/clientPanels.h"

#include "controls/formParts.h"
#include "controls/indicatorCard.h"
#include "drilldown/drillDown.h"
#include "recordset/shownText.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace {

/// A sum of the customer's lines: what it is called, and whose share it is.
struct Measure {
    const char16_t* caption;
    const char16_t* shareTip;
};
constexpr Measure kMeasureLabels[] = {{u"消费合计：", u"占总消费额比率"},
                                      {u"差额利润：", u"占总差额利润比率"},
                                      {u"购买数：", u"占总销售量比率"}};

/// Label2, Label5 and Label8 for the values, Label3, Label6 and Label9 for the shares.
QString valueName(int measure) {
    return QStringLiteral("Label%1").arg(2 + 3 * measure);
}
QString shareName(int measure) {
    return QStringLiteral("Label%1").arg(3 + 3 * measure);
}

QLabel* makeShare(int measure, QWidget* parent) {
    QLabel* share = makeLabel(shareName(measure), {}, parent);
    share->setToolTip(QString::fromUtf16(kMeasureLabels[measure].shareTip));
    return share;
}

void showShares(const ClientShares& shares, QLabel* const (&values)[3], QLabel* const (&labels)[3]) {
    for (std::size_t i = 0; i < shares.size(); ++i) {
        values[i]->setText(shares[i].value);
        // From 100 % on the text that stands stays: that is meant.
        if (shares[i].share)
            labels[i]->setText(*shares[i].share);
    }
}

QLabel* addText(QBoxLayout* row, int number, const QString& caption, QWidget* parent) {
    QLabel* figure = addFigure(row, number, caption, parent);
    figure->clear();
    return figure;
}

} // namespace

ClientLinesPanel::ClientLinesPanel(ViewHost& host, Prompts& /*prompts*/)
    : m_session(host.session()) {
    auto* who = new QHBoxLayout;
    m_company = addText(who, 10, QStringLiteral("单位名称："), this);
    m_contact = addText(who, 12, QStringLiteral("联系人："), this);
    who->addStretch(1);
    auto* sums = new QHBoxLayout;
    for (int i = 0; i < 3; ++i) {
        m_values[i] = addFigure(sums, 1 + 3 * i, QString::fromUtf16(kMeasureLabels[i].caption), this);
        m_shares[i] = makeShare(i, this);
        m_shares[i]->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("00.00%")));
        sums->addWidget(m_shares[i]);
    }
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addLayout(who);
    column->addLayout(sums);
}

void ClientLinesPanel::sourceShown(const RecordsetPtr& cursor, ShowSource /*code*/) {
    m_client = m_session.currentClientNum;
    m_company->setText(captionText(m_session.currentClientName));
    m_contact->setText(captionText(m_session.currentContact));
    if (cursor->isOpen())
        showShares(statisticA(m_session), m_values, m_shares);
}

void ClientLinesPanel::aboutToPrint(const QString& /*report*/) {
    m_session.currentClientNum = m_client;
}

ClientStatisticPanel::ClientStatisticPanel(ViewHost& host, Prompts& /*prompts*/)
    : m_session(host.session())
    , m_card(new IndicatorCard(QStringLiteral("Picture1"), int(std::size(kMeasureLabels)), this)) {
    for (int i = 0; i < 3; ++i) {
        m_values[i] = makeLabel(valueName(i), {}, this);
        m_shares[i] = makeShare(i, this);
        m_values[i]->hide();
        m_shares[i]->hide();
    }
    m_card->setAccessibleName(QStringLiteral("购物分析统计"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_card);
}

void ClientStatisticPanel::sourceShown(const RecordsetPtr& cursor, ShowSource /*code*/) {
    if (cursor->isOpen())
        showShares(statisticA(m_session), m_values, m_shares);
    statistic_show();
}

void ClientStatisticPanel::statistic_show() {
    const QString lefts[] = {m_session.currentClientNum + QStringLiteral("号客户"),
                             m_session.periodDate1 + u'/' + m_session.periodDate2,
                             QStringLiteral("购物分析统计")};
    QList<IndicatorRow> rows;
    for (int i = 0; i < 3; ++i)
        rows << IndicatorRow{lefts[i], QString::fromUtf16(kMeasureLabels[i].caption), m_values[i]->text(),
                             m_shares[i]->text(), QString::fromUtf16(kMeasureLabels[i].shareTip)};
    m_card->setRows(rows);
}

OrderPanel::OrderPanel(ViewHost& host, Prompts& /*prompts*/)
    : m_session(host.session()) {
    auto* who = new QHBoxLayout;
    m_company = addText(who, 10, QStringLiteral("单位名称："), this);
    m_contact = addText(who, 12, QStringLiteral("联系人："), this);
    who->addStretch(1);
    auto* sums = new QHBoxLayout;
    m_order = addText(sums, 5, QStringLiteral("订单号："), this);
    m_count = addText(sums, 1, QStringLiteral("购物数："), this);
    m_amount = addText(sums, 3, QStringLiteral("购物金额："), this);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addLayout(who);
    column->addLayout(sums);
}

void OrderPanel::sourceShown(const RecordsetPtr& cursor, ShowSource /*code*/) {
    m_date = m_session.periodDate1;
    m_filter = cursor->isOpen() ? cursor->Filter() : QString();
    m_company->setText(captionText(m_session.currentClientName));
    m_contact->setText(captionText(m_session.currentContact));
    m_count->setText(m_session.orderQuantity);
    m_amount->setText(m_session.orderAmount);
    rowChanged(cursor, false);
}

void OrderPanel::rowChanged(const RecordsetPtr& cursor, bool /*chosen*/) {
    // While another order is being chosen, the lines are not those of this one.
    if (cursor->hasRows() && cursor->currentRow() && cursor->Filter() == m_filter)
        m_order->setText(cursor->Fields(QStringLiteral("订单号")).shown());
}

void OrderPanel::aboutToPrint(const QString& /*report*/) {
    if (m_session.buyList->Filter() != m_filter)
        m_session.buyList->setFilter(m_filter);
    m_session.periodDate1 = m_date;
    m_session.currentOrderNum = m_order->text();
    m_session.currentClientName = m_company->text();
    m_session.orderQuantity = m_count->text();
    m_session.orderAmount = m_amount->text();
}

void OrderPanel::left(const RecordsetPtr& cursor) {
    if (cursor->isOpen())
        cursor->clearFilter();
}

ClientWaysPanel::ClientWaysPanel(ViewHost& host, Prompts& prompts) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    addButtons(
        row, this,
        {{u"Command8", u"该客户购物显示", [&host] { showClientLines(host); }},
         {u"Command9", u"该客户订单明细显示", [&host, &prompts] { showClientOrders(host, prompts); }}});
}
