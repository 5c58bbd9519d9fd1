#include "analysis/cutDialog.h"

#include "analysis/cutOnScreen.h"
#include "controls/formParts.h"
#include "controls/prompts.h"
#include "recordset/ignoringErrors.h"
#include "recordset/textNumber.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <algorithm>

namespace {

/// The whole table, or else the period copy as it stands, which may be empty: nobody is chosen then. A cut on
/// screen is neither, so that the copy is asked behind it.
RecordsetPtr clientsOfShowSource(Session& session) {
    if (session.showSource == ShowSource::Clients)
        hasClients(session);
    const RecordsetPtr& clients =
        session.showSource == ShowSource::Clients ? session.clientTable : session.clientTable2;
    return clients->isOpen() ? clients : nullptr;
}

constexpr CutDialogDescription kDialogs[] = {
    {u"clientNumFm1",
     u"选取客户数",
     true,
     {u"最高购买金额客户数", u"最高差额利润客户数", u"最高购买量客户数"},
     u"",
     u"",
     clientsOfShowSource},
    {u"clientPercentFm1",
     u"选择百分率",
     false,
     {u"占总销售额百分率", u"占总利润百分率", u"占总销售量百分率"},
     u"输入小于100的数",
     u"无数字，请输入",
     clientsToCut},
};

const BestClientsQuestion& questionOf(bool ranks, ClientMeasure measure) {
    const auto questions = bestClientsQuestions();
    return *std::find_if(questions.begin(), questions.end(), [&](const BestClientsQuestion& each) {
        return each.ranks == ranks && each.measure == measure;
    });
}

/// Cuts and shows the cut, the evaluation brought to the front; either kind of cut stays until it is ended.
void cut(ViewHost& host, const CutDialogDescription& dialog, ClientMeasure measure, const QString& answer) {
    Session& session = host.session();
    IgnoringErrors errors;
    errors.run([&] {
        host.show(QStringLiteral("statisticFm1"));
        const RecordsetPtr clients = dialog.from(session);
        if (!clients)
            return;
        showCut(host, clients, questionOf(dialog.ranks, measure), answer);
        session.analysisKind = 2;
    });
}

} // namespace

std::span<const CutDialogDescription> cutDialogs() {
    return kDialogs;
}

CutDialog::CutDialog(const CutDialogDescription& description, ViewHost& host, Prompts& prompts)
    : Dialog(QString::fromUtf16(description.name), QString::fromUtf16(description.caption))
    , m_description(description)
    , m_host(host)
    , m_prompts(prompts) {
    auto* column = new QVBoxLayout(this);
    if (*description.advice)
        column->addWidget(makeLabel(QStringLiteral("Label1"), QString::fromUtf16(description.advice), this));
    column->addLayout(buildOptions());
    column->addLayout(buildButtons());
    m_options[0]->setChecked(true);
    choose(0);
}

QLayout* CutDialog::buildOptions() {
    static const QString hint = QStringLiteral("请输入大于零的整数");
    auto* grid = new QGridLayout;
    for (int i = 0; i < kMeasures; ++i) {
        const QString caption = QString::fromUtf16(m_description.options[i]);
        m_options[i] = new QRadioButton(caption, this);
        m_options[i]->setObjectName(QStringLiteral("Option%1").arg(i + 1));
        connect(m_options[i], &QRadioButton::clicked, this, [this, i] { choose(i); });
        m_boxes[i] = new QLineEdit(this);
        m_boxes[i]->setObjectName(QStringLiteral("Text%1").arg(i + 1));
        m_boxes[i]->setAccessibleName(caption);
        m_boxes[i]->setPlaceholderText(hint);
        m_boxes[i]->setToolTip(hint);
        m_boxes[i]->setMinimumWidth(m_boxes[i]->fontMetrics().horizontalAdvance(hint) + 24);
        grid->addWidget(m_options[i], i, 0);
        grid->addWidget(m_boxes[i], i, 1);
    }
    return grid;
}

QLayout* CutDialog::buildButtons() {
    QPushButton* ok = makeButton(QStringLiteral("Command1"), QStringLiteral("确定"), this);
    QPushButton* back = makeButton(QStringLiteral("Command2"), QStringLiteral("返回"), this);
    connect(ok, &QPushButton::clicked, this, &CutDialog::confirm);
    connect(back, &QPushButton::clicked, this, &QWidget::close);
    setDefaultButton(ok);
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    row->addWidget(ok);
    row->addWidget(back);
    return row;
}

void CutDialog::choose(int option) {
    for (int i = 0; i < kMeasures; ++i) {
        m_boxes[i]->clear();
        m_boxes[i]->setEnabled(i == option);
    }
    m_boxes[option]->setFocus();
}

int CutDialog::chosen() const {
    return int(std::find_if(std::begin(m_options), std::end(m_options),
                            [](const QRadioButton* each) { return each->isChecked(); }) -
               std::begin(m_options));
}

void CutDialog::confirm() {
    const int option = chosen();
    const QString answer = m_boxes[option]->text();
    if (trimBlanks(answer).isEmpty() && *m_description.blank)
        return m_prompts.tellAbout(m_boxes[option], QString::fromUtf16(m_description.blank));
    finish(); // before the work behind what is seen
    cut(m_host, m_description, ClientMeasure(option), answer);
}
