#include "analysis/analysisPanels.h"

#include "analysis/clerks.h"
#include "controls/formParts.h"
#include "controls/indicatorCard.h"
#include "recordset/ignoringErrors.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace {

/// An indicator with the numbers of its three labels.
struct IndicatorLabels {
    const char16_t* caption;
    const char16_t* meaning; // of the caption's own label
    int captionLabel;
    int valueLabel;
    int shareLabel;
};
constexpr IndicatorLabels kIndicators[] = {{u"购买金额：", u"购买额", 4, 6, 7},
                                           {u"差额利润：", u"差额利润", 5, 10, 11},
                                           {u"购买数：", u"购买量", 8, 14, 15},
                                           {u"客户数：", u"客户数", 16, 18, 19}};

QLabel* hiddenLabel(int number, const QString& text, QWidget* parent) {
    QLabel* label = makeLabel(QStringLiteral("Label%1").arg(number), text, parent);
    label->hide();
    return label;
}

} // namespace

EvaluationPanel::EvaluationPanel(ViewHost& host, Prompts& /*prompts*/)
    : m_session(host.session())
    , m_stock(new QAction(QStringLiteral("库存统计"), this))
    , m_card(new IndicatorCard(QStringLiteral("Picture1"), int(std::size(kIndicators)), this)) {
    connect(m_stock, &QAction::triggered, this,
            [&host] { host.openWindow(QStringLiteral("statisticFm4"), ViewHost::MainWindow::Stays); });
    for (std::size_t i = 0; i < std::size(kIndicators); ++i) {
        hiddenLabel(kIndicators[i].captionLabel, QString::fromUtf16(kIndicators[i].meaning), this);
        m_values[i] = hiddenLabel(kIndicators[i].valueLabel, {}, this);
        m_shares[i] = hiddenLabel(kIndicators[i].shareLabel, {}, this);
    }
    m_card->setAccessibleName(QStringLiteral("客户评估指标"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_card);
}

void EvaluationPanel::sourceShown(const RecordsetPtr& /*cursor*/, ShowSource code) {
    // A cut speaks of the dates of the customers that it was made from.
    if (code != ShowSource::BestClients)
        m_dates = {m_session.periodDate1, m_session.periodDate2};
    if (code == ShowSource::Clients) {
        m_session.evaluationDate1 = m_dates.first;
        m_session.evaluationDate2 = m_dates.last;
    }
    for (std::size_t i = 0; i < std::size(kIndicators); ++i) {
        m_values[i]->setText(m_session.evaluation[i].value);
        m_shares[i]->setText(m_session.evaluation[i].share);
    }
    statistic_show();
}

void EvaluationPanel::statistic_show() {
    const std::pair<QString, CardText::Style> lefts[std::size(kIndicators)] = {
        {m_dates.first + u'/' + m_dates.last, CardText::Style::Caption},
        {QStringLiteral("分析显示(按指标)："), CardText::Style::Caption},
        {m_session.analysisCaption, CardText::Style::Figure}};
    QList<IndicatorRow> rows;
    for (std::size_t i = 0; i < std::size(kIndicators); ++i)
        rows << IndicatorRow{lefts[i].first,
                             QString::fromUtf16(kIndicators[i].caption),
                             m_values[i]->text(),
                             m_shares[i]->text(),
                             {},
                             lefts[i].second};
    m_card->setRows(rows);
}

ClerkPanel::ClerkPanel(ViewHost& host, Prompts& /*prompts*/)
    : m_host(host) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    m_turnover = addFigure(row, 4, QStringLiteral("营业额总合"), this);
    m_clients = addFigure(row, 6, QStringLiteral("客户数总合"), this);
    auto* clients = makeButton(QStringLiteral("Command4"), QStringLiteral("该业务员客户资料"), this);
    connect(clients, &QPushButton::clicked, this, [this] { showClerkClients(m_host); });
    row->addWidget(clients);
}

void ClerkPanel::sourceShown(const RecordsetPtr& /*cursor*/, ShowSource code) {
    IgnoringErrors errors;
    errors.run([&] {
        const ClerkFigures figures = clerkFigures(m_host.session(), code);
        m_turnover->setText(figures.turnover);
        m_clients->setText(figures.clients);
    });
}

IntervalClientsPanel::IntervalClientsPanel(ViewHost& /*host*/, Prompts& /*prompts*/)
    : m_print(new QAction(QStringLiteral("打印这些客户"), this)) {
    connect(m_print, &QAction::triggered, this,
            [this] { Q_EMIT printAsked(QStringLiteral("showprint_rs8")); });
}

void showClerkClients(ViewHost& host) {
    if (!takeClerk(host.session()))
        return;
    openClerkClients(host.session());
    host.showOrActivate(QStringLiteral("userInfoFm2"));
}
