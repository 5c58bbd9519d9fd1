#include "query/fieldDialogs.h"

#include "controls/formParts.h"
#include "controls/prompts.h"
#include "data/sourceTable.h"
#include "query/fieldLists.h"
#include "query/queries.h"
#include "recordset/textNumber.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

FieldDialog::FieldDialog(const QString& name, const QString& caption, const QString& hint, ViewHost& host,
                         Prompts& prompts)
    : Dialog(name, caption)
    , m_host(host)
    , m_session(host.session())
    , m_prompts(prompts) {
    auto* row = new QHBoxLayout(this);
    row->addLayout(buildList(), 1);
    row->addLayout(buildChoice(hint), 2);
    connect(m_list, &QListWidget::itemClicked, this, [this] { choose(); });
    m_list->installEventFilter(this);
    m_list->setFocus();
}

QLayout* FieldDialog::buildList() {
    m_list = new QListWidget(this);
    m_list->setObjectName(QStringLiteral("List1"));
    m_list->setAccessibleName(QStringLiteral("字段名表"));
    m_list->setMinimumSize(150, 260);
    m_empty = makeLabel(QStringLiteral("emptyHint"), QStringLiteral("这里没有可以选择的字段。"), this);
    auto* column = new QVBoxLayout;
    column->addWidget(new QLabel(QStringLiteral("字段名表"), this));
    column->addWidget(m_empty);
    column->addWidget(m_list, 1);
    return column;
}

QLayout* FieldDialog::buildChoice(const QString& hint) {
    m_field = new QLineEdit(this);
    m_field->setObjectName(QStringLiteral("Text1"));
    m_field->setAccessibleName(QStringLiteral("字段名"));
    m_field->setPlaceholderText(hint);
    m_field->setToolTip(hint);
    m_field->setMinimumWidth(220);
    m_confirm = makeButton(QStringLiteral("Command1"), QStringLiteral("确认"), this);
    QPushButton* back = makeButton(QStringLiteral("Command2"), QStringLiteral("返回"), this);
    connect(m_confirm, &QPushButton::clicked, this, [this] { confirm(); });
    connect(back, &QPushButton::clicked, this, &QWidget::close);
    m_form = new QFormLayout;
    m_form->addRow(new QLabel(QStringLiteral("字段名："), this), m_field);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(m_confirm);
    buttons->addWidget(back);
    auto* column = new QVBoxLayout;
    column->addLayout(m_form);
    column->addStretch(1);
    column->addLayout(buttons);
    return column;
}

void FieldDialog::choose() {
    if (!m_list->currentItem())
        return;
    const QString field = m_list->currentItem()->text();
    m_field->setText(field);
    fieldChosen(field);
}

bool FieldDialog::eventFilter(QObject* watched, QEvent* event) {
    if (watched != m_list || event->type() != QEvent::KeyPress || !m_list->currentItem())
        return Dialog::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
    // A second Enter on the field goes on to the default button.
    if ((!enter && key != Qt::Key_Space) || (enter && m_field->text() == m_list->currentItem()->text()))
        return Dialog::eventFilter(watched, event);
    choose();
    return true;
}

void FieldDialog::fillList() {
    m_list->clear();
    m_list->addItems(fields());
    m_empty->setVisible(m_list->count() == 0);
}

searchFm1::searchFm1(ViewHost& host, Prompts& prompts)
    : FieldDialog(QStringLiteral("searchFm1"), QStringLiteral("查寻选择"),
                  QStringLiteral("点击左边字段名表输入"), host, prompts) {
    m_value = new QLineEdit(this);
    m_value->setObjectName(QStringLiteral("Text2"));
    m_value->setAccessibleName(QStringLiteral("查询内容"));
    m_value->setPlaceholderText(QStringLiteral("输入查询内容"));
    m_value->setToolTip(QStringLiteral("输入查询内容"));
    m_form->addRow(makeLabel(QStringLiteral("Label1"), QStringLiteral("查询输入："), this), m_value);
    setTabOrder(m_field, m_value);
    setDefaultButton(m_confirm);
    takeSource();
    fillList();
}

void searchFm1::shownAgain() {
    takeSource();
    FieldDialog::shownAgain();
}

void searchFm1::takeSource() {
    m_source = std::exchange(m_session.searchSource, ShowSource::None);
}

QStringList searchFm1::fields() {
    return searchFields(m_session.searchCode);
}

void searchFm1::fieldChosen(const QString& field) {
    if (field != u"日期") {
        m_value->setFocus();
        return;
    }
    // A search by date is a choice of a period.
    m_host.openWindow(QStringLiteral("timeDefineFm2"), ViewHost::MainWindow::Stays);
    finish();
}

void searchFm1::confirm() {
    if (m_field->text().isEmpty())
        return m_prompts.tellAbout(m_field, QStringLiteral("请选择字段名！"));
    if (m_value->text().isEmpty())
        return m_prompts.tellAbout(m_value, QStringLiteral("请输入查寻内容！"));
    applySearch(m_session, m_source == ShowSource::None ? m_session.showSource : m_source,
                trimBlanks(m_field->text()), trimBlanks(m_value->text()));
    finish();
}

namespace {

void Order_display(const ViewHost& host, const QString& view) {
    if (host.isActive(view))
        host.active()->sorted();
}

} // namespace

void sortView(ViewHost& host, const QString& field) {
    Session& session = host.session();
    // The rows that the sort brings up in between are nobody's choice.
    const RecordsetPtr* sorted = sourceCursor(session, ShowSource(session.orderCode));
    const QuietWalk walk(sorted ? *sorted : session.scratch);
    applySort(session, field);
    Order_display(host, session.activeViewName);
}

orderFm1::orderFm1(ViewHost& host, Prompts& prompts)
    : FieldDialog(QStringLiteral("orderFm1"), QStringLiteral("排序选择"),
                  QStringLiteral("请点击左边字段名输入"), host, prompts) {
    setDefaultButton(m_confirm);
    fillList();
}

QStringList orderFm1::fields() {
    return sortFields(m_session);
}

void orderFm1::confirm() {
    if (m_field->text().isEmpty())
        return m_prompts.tellAbout(m_field, QStringLiteral("请选择排序字段！"));
    sortView(m_host, trimBlanks(m_field->text()));
    finish();
}
