#include "analysis/periodDialog.h"

#include "analysis/periodCopies.h"
#include "controls/formParts.h"
#include "controls/prompts.h"
#include "recordset/ignoringErrors.h"
#include "recordset/textNumber.h"
#include "shell/toolbarTable.h"

#include <QApplication>
#include <QButtonGroup>
#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace {

QString formName(PeriodPurpose purpose) {
    switch (purpose) {
    case PeriodPurpose::Views:
        return QStringLiteral("timeDefineFm2");
    case PeriodPurpose::Register:
        return QStringLiteral("timeDefineFm22");
    default:
        return QStringLiteral("timeDefineFm1");
    }
}

QStringList numbersUpTo(int last) {
    QStringList numbers;
    for (int i = 1; i <= last; ++i)
        numbers << QString::number(i);
    return numbers;
}

constexpr int kRegisterPage = 40; // rows a page of the register

} // namespace

PeriodDialog::PeriodDialog(PeriodPurpose purpose, ViewHost& host, Prompts& prompts)
    : Dialog(formName(purpose), QStringLiteral("时间选择"))
    , m_purpose(purpose)
    , m_host(host)
    , m_session(host.session())
    , m_prompts(prompts) {
    QPushButton* confirmButton = makeButton(QStringLiteral("Command1"), QStringLiteral("确认"), this);
    QPushButton* cancelButton = makeButton(QStringLiteral("Command2"), QStringLiteral("取消"), this);
    connect(confirmButton, &QPushButton::clicked, this, &PeriodDialog::confirm);
    connect(cancelButton, &QPushButton::clicked, this, &QWidget::close);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(confirmButton);
    buttons->addWidget(cancelButton);
    auto* column = new QVBoxLayout(this);
    column->addLayout(buildBounds());
    column->addLayout(buildBoxes());
    column->addWidget(buildComparisons());
    column->addLayout(buttons);
    setDefaultButton(confirmButton);
    fillBoxes();
}

QLayout* PeriodDialog::buildBounds() {
    static const QString captions[] = {QStringLiteral("起始时间"), QStringLiteral("终止时间")};
    auto* grid = new QGridLayout;
    auto* group = new QButtonGroup(this);
    for (int i = 0; i < 2; ++i) {
        m_bounds[i] = new QRadioButton(captions[i], this);
        m_bounds[i]->setObjectName(QStringLiteral("Option%1").arg(i + 1));
        group->addButton(m_bounds[i]);
        m_shown[i] = new QLineEdit(this);
        m_shown[i]->setObjectName(QStringLiteral("Text%1").arg(i + 1));
        m_shown[i]->setReadOnly(true);
        m_shown[i]->setFocusPolicy(Qt::NoFocus);
        m_shown[i]->setAccessibleName(captions[i]);
        grid->addWidget(m_bounds[i], 0, i);
        grid->addWidget(m_shown[i], 1, i);
    }
    m_bounds[0]->setChecked(true);
    // The end side starts from blank boxes; what is picked already stays.
    connect(m_bounds[1], &QRadioButton::clicked, this, [this] {
        for (QComboBox* box : m_boxes)
            box->setCurrentIndex(-1);
    });
    return grid;
}

QLayout* PeriodDialog::buildBoxes() {
    static const QString hints[] = {QStringLiteral("年份选择"), QStringLiteral("月份选择"),
                                    QStringLiteral("季度选择"), QStringLiteral("日期选择")};
    static const QString units[] = {QStringLiteral("年"), QStringLiteral("月"), QStringLiteral("季"),
                                    QStringLiteral("日")};
    auto* row = new QHBoxLayout;
    for (int i = 0; i < 4; ++i) {
        auto* box = m_boxes[i] = new QComboBox(this);
        box->setObjectName(QStringLiteral("Combo%1").arg(i + 1));
        box->setPlaceholderText(hints[i]);
        box->setAccessibleName(hints[i]);
        box->setSizeAdjustPolicy(QComboBox::AdjustToContents);
        box->setMinimumWidth(box->fontMetrics().horizontalAdvance(hints[i]) + 44);
        connect(box, &QComboBox::activated, this, [this, i] { pick(PeriodBox(i + 1)); });
        row->addWidget(box, 1);
        row->addWidget(makeLabel(QStringLiteral("Label1(%1)").arg(i), units[i], this));
    }
    return row;
}

QRadioButton* PeriodDialog::addComparison(QGridLayout* grid, int row, const QString& name,
                                          const QString& caption) {
    auto* option = new QRadioButton(caption, this);
    option->setObjectName(name);
    connect(option, &QRadioButton::clicked, this, [this, row] { echo(row); });
    grid->addWidget(option, row, 0);
    m_options.push_back(option);
    return option;
}

QWidget* PeriodDialog::buildComparisons() {
    auto* box = new QGroupBox(QStringLiteral("比较范围"), this);
    auto* grid = new QGridLayout(box);
    static const QString captions[] = {QStringLiteral("> 大于"), QStringLiteral("< 小于"),
                                       QStringLiteral("= 等于")};
    for (int i = 0; i < 3; ++i) {
        addComparison(grid, i, QStringLiteral("Option%1").arg(i + 3), captions[i]);
        m_echoes[i] = makeLabel(QStringLiteral("Label2(%1)").arg(i), {}, box);
        grid->addWidget(m_echoes[i], i, 1);
    }
    addComparison(grid, 3, QStringLiteral("Option6"), {})->setAccessibleName(QStringLiteral("时间范围"));
    m_from = makeLabel(QStringLiteral("Label3"), QStringLiteral("起始时间"), box);
    m_to = makeLabel(QStringLiteral("Label5"), QStringLiteral("终止时间"), box);
    auto* range = new QHBoxLayout;
    range->addWidget(m_from);
    range->addWidget(makeLabel(QStringLiteral("Label4"), QStringLiteral("<= 时间范围 <="), box));
    range->addWidget(m_to);
    range->addStretch(1);
    grid->addLayout(range, 3, 1);
    grid->setColumnStretch(1, 1);
    return box;
}

void PeriodDialog::fillBoxes() {
    m_boxes[0]->addItems(yearsOfLines(m_session));
    m_boxes[1]->addItems(numbersUpTo(12));
    m_boxes[2]->addItems(numbersUpTo(4));
    m_boxes[3]->addItems(numbersUpTo(31));
    for (QComboBox* box : m_boxes)
        box->setCurrentIndex(-1);
}

void PeriodDialog::pick(PeriodBox box) {
    const auto bound = m_bounds[1]->isChecked() ? PeriodBound::End : PeriodBound::Start;
    const auto boxOf = [this](PeriodBox each) { return m_boxes[int(each) - 1]; };
    const PickResult result = pickPeriod(m_picks, bound, box, trimBlanks(boxOf(box)->currentText()),
                                         trimBlanks(boxOf(PeriodBox::Month)->currentText()));
    if (!result.refusal.isEmpty())
        return m_prompts.tellAbout(boxOf(box), result.refusal);
    for (const PeriodBox each : result.cleared)
        boxOf(each)->setCurrentIndex(-1);
    showPicks();
}

void PeriodDialog::showPicks() {
    m_shown[0]->setText(m_picks.start.shown);
    m_shown[1]->setText(m_picks.end.shown);
}

void PeriodDialog::echo(int option) {
    if (option < 3)
        return m_echoes[option]->setText(m_picks.start.shown);
    m_from->setText(m_picks.start.shown);
    m_to->setText(m_picks.end.shown);
}

Comparison PeriodDialog::comparison() const {
    static const Comparison kinds[] = {Comparison::Greater, Comparison::Less, Comparison::Equal,
                                       Comparison::Range};
    for (std::size_t i = 0; i < m_options.size(); ++i)
        if (m_options[i]->isChecked())
            return kinds[i];
    return Comparison::None;
}

void PeriodDialog::confirm() {
    const bool cursorOnly = m_purpose == PeriodPurpose::Cursor;
    const PeriodFilter filter =
        cursorOnly ? cursorPeriodFilter(m_picks, comparison()) : periodFilter(m_picks, comparison());
    if (!filter.refusal.isEmpty())
        return m_prompts.tell(filter.refusal);
    if (filter.condition.isEmpty())
        return;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    if (m_purpose == PeriodPurpose::Register) {
        buildForRegister(filter.condition);
    } else if (cursorOnly) {
        IgnoringErrors errors;
        errors.run([&] { filterShownCursor(m_session, filter.condition); });
        finish();
    } else {
        buildForViews(filter.condition);
    }
    QApplication::restoreOverrideCursor();
}

void PeriodDialog::take(const QString& condition) {
    const QString exact = exactPeriod(condition);
    takePeriod(m_session, m_picks.start.text, m_picks.end.text, exact);
    if (!exact.isEmpty())
        m_host.say({QStringLiteral("统计时间：") + exact});
}

void PeriodDialog::buildForViews(const QString& condition) {
    buildPeriodCopies(m_session, condition, PeriodCopies::All);
    take(condition);
    IgnoringErrors errors;
    errors.run([&] { search_display(); });
    finish();
}

void PeriodDialog::buildForRegister(const QString& condition) {
    buildPeriodCopies(m_session, condition, PeriodCopies::ForTheRegister);
    take(condition);
    if (m_session.periodPurpose != u"打印客户资料") {
        if (m_session.clientTable2->isOpen())
            m_session.clientTable2->setPageSize(kRegisterPage);
        return finish();
    }
    if (!m_session.clientTable2->hasRows())
        return m_prompts.tell(QStringLiteral("该时间段内无客户数据！"));
    m_session.report.period = m_session.periodExact;
    m_host.openWindow(QStringLiteral("showprint_rs7"), ViewHost::MainWindow::Disabled);
    finish();
}

void PeriodDialog::search_display() {
    m_session.viewReturnState = QStringLiteral("Open");
    if (m_session.activeViewName == u"statisticFm2")
        m_host.Fm_Close(QStringLiteral("userInfoFm1"));
    // A view without a period of its own has nothing new to show; a window beside it has asked.
    View* view = m_host.active();
    const ToolbarRow* row = view ? toolbarRow(view->name()) : nullptr;
    const bool takesPeriods =
        row && (row->serves(ViewOperation::Time_AA) || row->serves(ViewOperation::data_search));
    if (takesPeriods && view->name() == m_session.activeViewName)
        view->activate();
}

void PeriodDialog::wayOut() {
    // The asker has set its marker to the whole table already; a view that still shows a period follows it.
    View* view = m_host.active();
    if (m_purpose == PeriodPurpose::Views && view && !view->shows(m_session.showSource)) {
        m_session.viewReturnState = QStringLiteral("Open");
        view->activate();
    }
    finish();
}
