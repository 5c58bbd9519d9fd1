#include "analysis/callListWindow.h"

#include "controls/formParts.h"
#include "controls/recordPane.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

CallListWindow::CallListWindow(const CallKind& kind, ViewHost& host, Prompts& prompts)
    : StatisticWindow(QString::fromUtf16(kind.window), QString::fromUtf16(kind.caption))
    , m_kind(kind)
    , m_host(host)
    , m_days(kind.days.front())
    , m_pane(new RecordPane({}, QString::fromUtf16(kind.empty), prompts, this)) {
    m_head = makeLabel(QStringLiteral("Label1"), {}, this);
    m_head->setFont(boldOf(m_head));
    m_scope = makeLabel(QStringLiteral("Label2"), {}, this);
    m_pane->grid->sortByCaptions();
    connect(m_pane->grid, &DataGrid::sortAsked, this, [this](const QString& field, bool descending) {
        m_pane->cursor()->setSort(descending ? field + QStringLiteral(" Desc") : field);
        m_pane->cursor()->MoveFirst();
    });
    auto* head = new QHBoxLayout;
    head->addWidget(m_head);
    head->addWidget(m_scope);
    head->addStretch(1);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_pane->moves);
    bottom->addStretch(1);
    addButtons(bottom, this,
               {{u"print", u"打印", [this] { print(); }}, {u"return", u"返回", [this] { close(); }}});
    auto* column = new QVBoxLayout(this);
    if (kind.days.size() > 1)
        column->addLayout(buildChoice());
    column->addLayout(head);
    column->addWidget(m_pane->grid, 1);
    column->addLayout(bottom);
    tabThrough(m_choice + QWidgetList{m_pane->grid});
    resize(980, 560);
    list();
}

QLayout* CallListWindow::buildChoice() {
    auto* row = new QHBoxLayout;
    row->addWidget(new QLabel(QStringLiteral("没有购买的天数："), this));
    for (std::size_t i = 0; i < m_kind.days.size(); ++i) {
        const int days = m_kind.days[i];
        auto* choice = new QRadioButton(QStringLiteral("%1 天").arg(days), this);
        choice->setObjectName(QStringLiteral("Option%1").arg(i + 1));
        choice->setChecked(i == 0);
        connect(choice, &QRadioButton::clicked, this, [this, days] {
            m_days = days;
            list();
        });
        row->addWidget(choice);
        m_choice << choice;
    }
    row->addStretch(1);
    return row;
}

void CallListWindow::list() {
    const QDate today = m_host.session().today();
    const CallList list = m_kind.make(m_host.session(), today, m_days);
    auto rows = std::make_shared<Recordset>(m_host.session().cn);
    rows->OpenPicture(list.rows);
    m_head->setText(m_kind.head(list, today, m_days));
    m_scope->setText(m_kind.scope(list));
    m_pane->bind(rows);
}

void CallListWindow::print() {
    if (!m_pane->cursor()->hasRows())
        return;
    Session& session = m_host.session();
    session.scratch = m_pane->cursor();
    session.report.caller = objectName();
    session.report.period.clear();
    m_host.openWindow(QString::fromUtf16(m_kind.report), ViewHost::MainWindow::Disabled);
}
