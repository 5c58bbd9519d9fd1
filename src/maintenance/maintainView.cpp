#include "maintenance/maintainView.h"

#include "controls/formParts.h"
#include "controls/prompts.h"
#include "controls/recordBoxes.h"
#include "controls/recordPane.h"
#include "data/losses.h"
#include "data/searchTexts.h"
#include "data/workTable.h"
#include "recordset/error.h"
#include "shell/captionSort.h"
#include "shell/editWords.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

MaintainView::MaintainView(const MaintainedTable& table, ViewHost& host, Prompts& prompts)
    : View(QString::fromUtf16(table.view), QString::fromUtf16(table.caption))
    , m_table(table)
    , m_host(host)
    , m_session(host.session())
    , m_prompts(prompts) {
    m_pane = new RecordPane({}, QStringLiteral("没有记录。"), prompts, this);
    m_pane->grid->setEditable(true);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addLayout(buildSearch());
    column->addWidget(m_pane->grid, 1);
    column->addLayout(buildCommands());
    QWidgetList order = QWidgetList{m_search, command(u"Command6"), m_pane->grid} + m_pane->moves->buttons();
    for (const char16_t* name : {m_table.save, m_table.discard, m_table.remove, m_table.removeAll})
        order << command(name);
    tabThrough(order);
    m_pane->setWholeShow([this] { Q_EMIT wholeAsked(); });
    m_pane->onRow([this] {
        m_pane->showPosition();
        showUnsaved();
    });
    connect(m_pane->grid, &DataGrid::cellEdited, this, [this] {
        m_host.say({}); // what was saved before is not what stands here now
        showUnsaved();
    });
    m_pane->onMove([this](int button) {
        m_pane->grid->commitEditor();
        moveInRecordset(cursor(), button);
        m_pane->showPosition();
    });
    offer(ViewOperation::data_order, [this] { data_order(); });
    offer(ViewOperation::data_whole_show, [this] { data_whole_show(); });
    sortByCaptions(*this, *m_pane->grid, host, [this] { return readyToSort(); });
}

QPushButton* MaintainView::addCommand(const char16_t* name, const char16_t* caption,
                                      void (MaintainView::*action)()) {
    QPushButton* button = makeButton(QString::fromUtf16(name), QString::fromUtf16(caption), this);
    connect(button, &QPushButton::clicked, this, [this, action] {
        m_pane->grid->commitEditor();
        (this->*action)();
        showUnsaved();
    });
    return button;
}

QPushButton* MaintainView::command(const char16_t* name) const {
    return findChild<QPushButton*>(QString::fromUtf16(name));
}

QLayout* MaintainView::buildSearch() {
    QLabel* title = makeLabel(QStringLiteral("Label1"), QString::fromUtf16(m_table.title), this);
    QPushButton* find = addCommand(u"Command6", u"查询", &MaintainView::search);
    m_search = makeSearchBox(QStringLiteral("Text2"), QString::fromUtf16(m_table.searchHint), find, this);
    setSearchBox(m_search);
    if (*m_table.searchFields)
        m_search->setToolTip(m_search->toolTip() + u'\n' + QString::fromUtf16(m_table.searchFields));
    auto* row = new QHBoxLayout;
    row->addWidget(title);
    row->addWidget(m_search, 1);
    row->addWidget(find);
    return row;
}

QLayout* MaintainView::buildCommands() {
    auto* row = new QHBoxLayout;
    row->addWidget(m_pane->moves);
    row->addStretch(1);
    row->addWidget(addCommand(m_table.save, m_table.saveCaption, &MaintainView::save));
    row->addWidget(addCommand(m_table.discard, u"取消修改", &MaintainView::discard));
    row->addWidget(addCommand(m_table.remove, u"删除", &MaintainView::removeRow));
    row->addWidget(addCommand(m_table.removeAll, m_table.removeAllCaption, &MaintainView::removeAll));
    return row;
}

void MaintainView::bind() {
    m_pane->bind(cursor(), QString::fromUtf16(m_table.hidden).split(u' '));
}

void MaintainView::showUnsaved() {
    setUnsavedRows(cursor()->pendingCount());
}

void MaintainView::activate() {
    if (std::exchange(m_session.viewReturnState, QStringLiteral("Open")) == u"Close")
        return;
    bind();
    if (m_table.sortsAtActivation && cursor()->hasRows())
        cursor()->setSort(QString::fromUtf16(m_table.sort));
}

void MaintainView::leave() {
    m_pane->grid->commitEditor();
    const int before = cursor()->pendingCount();
    dropEdits(cursor());
    if (before > 0)
        m_host.say({droppedWords(before, cursor()->pendingCount())});
}

bool MaintainView::readyToSort() {
    m_pane->grid->commitEditor();
    m_session.orderCode = qint16(m_table.code);
    return cursor()->hasRows();
}

void MaintainView::data_order() {
    if (readyToSort())
        m_host.openWindow(QStringLiteral("orderFm1"), ViewHost::MainWindow::Stays);
}

void MaintainView::data_whole_show() {
    m_pane->grid->commitEditor();
    const int before = cursor()->pendingCount();
    if (m_table.readsAfresh)
        m_session.reopen(m_session.*m_table.cursor,
                         QStringLiteral("Select * From ") + QString::fromUtf16(m_table.table));
    if (!cursor()->isOpen())
        return;
    cursor()->clearFilter();
    if (*m_table.sort && cursor()->hasRows())
        cursor()->setSort(QString::fromUtf16(m_table.sort));
    bind();
    if (cursor()->pendingCount() < before)
        m_host.say({droppedWords(before, cursor()->pendingCount())});
    showUnsaved();
}

bool MaintainView::applySearch(const QString& text) {
    if (m_table.broken == BrokenSearch::FindsNothing)
        return setTypedFilter(cursor(), m_table.condition, text);
    try {
        cursor()->setFilter(m_table.condition(text));
    } catch (const RuntimeError&) {
        m_prompts.tellAbout(m_search, QStringLiteral("日期格式错误，请按 2004-1-5 或 2004-10-15 格式输入！"));
    }
    return true;
}

void MaintainView::search() {
    if (m_search->text().isEmpty() || !cursor()->isOpen())
        return;
    const bool searched = applySearch(m_search->text());
    bind();
    if (*m_table.nothingFound && (!searched || !cursor()->hasRows()))
        m_prompts.tellAbout(m_search, QString::fromUtf16(m_table.nothingFound));
}

void MaintainView::save() {
    const int before = cursor()->pendingCount();
    const QString fault = saveQuietly(m_session, cursor());
    m_host.say({fault.isEmpty() ? savedWords(before, cursor()->pendingCount()) : fault});
}

void MaintainView::discard() {
    const int before = cursor()->pendingCount();
    discardEdits(cursor());
    m_host.say({droppedWords(before, cursor()->pendingCount())});
}

void MaintainView::removeRow() {
    if (!cursor()->hasRows() || !cursor()->currentRow() ||
        !m_prompts.confirmLoss(QString::fromUtf16(m_table.question), lossOfRow(m_session, m_table),
                               QString::fromUtf16(m_table.questionTitle)))
        return;
    m_table.removeRow(m_session, [] { QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents); });
    m_pane->showPosition();
}

void MaintainView::removeAll() {
    if (!cursor()->isOpen() ||
        !m_prompts.confirmLoss(QStringLiteral("确实要删除全库记录吗？"),
                               lossOfTable(m_session.cn, QString::fromUtf16(m_table.table))))
        return;
    removeAllRows(m_session, m_table);
    m_pane->showPosition();
}
