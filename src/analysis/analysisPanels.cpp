#include "analysis/analysisPanels.h"

#include "analysis/clerks.h"
#include "controls/figureCard.h"
#include "controls/formParts.h"
#include "recordset/ignoringErrors.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace {

/// An indicator's place on the card, and the numbers of its three labels.
struct IndicatorRow {
    const char16_t* caption;
    const char16_t* meaning; // of the caption's own label
    int captionLabel;
    double y;
    int valueLabel;
    int shareLabel;
};
constexpr IndicatorRow kIndicators[] = {{u"购买金额：", u"购买额", 4, 2, 6, 7},
                                        {u"差额利润：", u"差额利润", 5, 7, 10, 11},
                                        {u"购买数：", u"购买量", 8, 12, 14, 15},
                                        {u"客户数：", u"客户数", 16, 17, 18, 19}};
constexpr double kLeft = 5;
constexpr double kCaptionAt = 70;
constexpr double kValueAt = 90;
constexpr double kShareAt = 130;
constexpr double kRuleEnd = 140;
constexpr double kUnderText = 4; // from a text's top to the rule below it

QList<CardRule> rules() {
    QList<CardRule> all;
    for (const IndicatorRow& row : kIndicators)
        all << CardRule{kCaptionAt, kRuleEnd, row.y + kUnderText};
    return all;
}

QLabel* hiddenLabel(int number, const QString& text, QWidget* parent) {
    QLabel* label = makeLabel(QStringLiteral("Label%1").arg(number), text, parent);
    label->hide();
    return label;
}

} // namespace

EvaluationPanel::EvaluationPanel(ViewHost& host, Prompts& /*prompts*/)
    : m_session(host.session())
    , m_card(new FigureCard(QStringLiteral("Picture1"), {145, 23}, rules(), this)) {
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
    if (code != ShowSource::BestClients)
        m_dates = {m_session.periodDate1, m_session.periodDate2};
    for (std::size_t i = 0; i < std::size(kIndicators); ++i) {
        m_values[i]->setText(m_session.evaluation[i].value);
        m_shares[i]->setText(m_session.evaluation[i].share);
    }
    statistic_show();
}

void EvaluationPanel::statistic_show() {
    using Style = CardText::Style;
    QList<CardText> texts{{kLeft, 2, m_dates.first + u'/' + m_dates.last, Style::Caption},
                          {kLeft, 7, QStringLiteral("分析显示(按指标)："), Style::Caption},
                          {kLeft, 12, m_session.analysisCaption, Style::Figure}};
    for (std::size_t i = 0; i < std::size(kIndicators); ++i) {
        const IndicatorRow& row = kIndicators[i];
        texts << CardText{kCaptionAt, row.y, QString::fromUtf16(row.caption), Style::Caption}
              << CardText{kValueAt, row.y, m_values[i]->text(), Style::Figure}
              << CardText{kShareAt, row.y, m_shares[i]->text(), Style::Caption};
    }
    m_card->setTexts(texts);
}

ClerkPanel::ClerkPanel(ViewHost& host, Prompts& /*prompts*/)
    : m_host(host)
    , m_turnover(makeFigure(QStringLiteral("Label5"), QStringLiteral("营业额总合"), this))
    , m_clients(makeFigure(QStringLiteral("Label7"), QStringLiteral("客户数总合"), this)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    const std::pair<const char16_t*, QLabel*> figures[] = {{u"Label4", m_turnover}, {u"Label6", m_clients}};
    for (const auto& [name, figure] : figures) {
        row->addWidget(makeLabel(QString::fromUtf16(name), figure->accessibleName(), this));
        row->addWidget(figure);
    }
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

IntervalClientsPanel::IntervalClientsPanel(ViewHost& host, Prompts& /*prompts*/)
    : m_host(host)
    , m_print(new QAction(QStringLiteral("打印这些客户"), this)) {
    connect(m_print, &QAction::triggered, this, &IntervalClientsPanel::print);
}

void IntervalClientsPanel::print() {
    Session& session = m_host.session();
    if (!session.clientTable3->hasRows())
        return;
    session.report.caller = QStringLiteral("userInfoFm3");
    m_host.openWindow(QStringLiteral("showprint_rs8"), ViewHost::MainWindow::Hidden);
}

void showClerkClients(ViewHost& host) {
    if (!takeClerk(host.session()))
        return;
    openClerkClients(host.session());
    host.showOrActivate(QStringLiteral("userInfoFm2"));
}
