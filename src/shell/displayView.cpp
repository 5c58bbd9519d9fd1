#include "shell/displayView.h"

#include "controls/dataGrid.h"
#include "controls/formParts.h"
#include "controls/moveButtons.h"
#include "data/sourceTable.h"
#include "recordset/ignoringErrors.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

namespace {

const QString kNoDate = QStringLiteral("0000-0-0");

} // namespace

DisplayView::DisplayView(const DisplayDescription& description, ViewHost& host, Prompts& prompts,
                         DisplayPanel* panel)
    : View(QString::fromUtf16(description.name), QString::fromUtf16(description.caption))
    , m_description(description)
    , m_host(host)
    , m_session(host.session())
    , m_panel(panel) {
    m_grid = new DataGrid(prompts, this);
    m_grid->setObjectName(QStringLiteral("DataGrid1"));
    m_grid->setEmptyText(QString::fromUtf16(description.emptyText));
    m_grid->setEditable(description.editable);
    m_moves = new MoveButtons(QStringLiteral("Command1"), QStringLiteral("Text1"), this);
    m_first = makeDateBox(QStringLiteral("Text2"), &Session::displayDate1);
    m_last = makeDateBox(QStringLiteral("Text3"), &Session::displayDate2);
    auto* dates = new QHBoxLayout;
    dates->addWidget(new QLabel(QStringLiteral("时间："), this));
    dates->addWidget(m_first);
    dates->addWidget(new QLabel(QStringLiteral("/"), this));
    dates->addWidget(m_last);
    dates->addStretch(1);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_moves);
    bottom->addStretch(1);
    if (panel) {
        bottom->addWidget(panel);
        connect(panel, &DisplayPanel::commandStarts, m_grid, &DataGrid::commitEditor);
    }
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addLayout(dates);
    column->addWidget(m_grid, 1);
    column->addLayout(bottom);
    connect(m_moves, &MoveButtons::pressed, this, [this](int button) {
        if (const RecordsetPtr moved = cursor())
            moveInRecordset(moved, button);
        showPosition();
    });
    m_grid->setRowHandler([this] { rowChanged(false); });
    connect(m_grid, &DataGrid::rowChosen, this, [this] { rowChanged(true); });
    offer(ViewOperation::Time_AA, [this] { Time_AA(); });
    offer(ViewOperation::data_whole_show, [this] { data_whole_show(); });
    offer(ViewOperation::data_order, [this] { data_order(); });
    offer(ViewOperation::data_search, [this] { data_search(); });
    offer(ViewOperation::data_print, [this] { data_print(); });
}

QLineEdit* DisplayView::makeDateBox(const QString& name, QString Session::*shown) {
    QLineEdit* box = makeShownBox(name, QStringLiteral("时间显示"), this);
    connect(box, &QLineEdit::textChanged, this,
            [this, shown](const QString& text) { m_session.*shown = text; });
    return box;
}

bool DisplayView::isMember(int viewNumber) const {
    return viewNumber == m_description.whole || viewNumber == m_description.period;
}

const RecordsetPtr& DisplayView::cursorOf(int viewNumber) const {
    return *sourceCursor(m_session, viewNumber);
}

int DisplayView::viewNumber() const {
    return m_description.ownSource ? m_description.whole : m_session.showSource;
}

RecordsetPtr DisplayView::cursor() const {
    return isMember(viewNumber()) ? cursorOf(viewNumber()) : nullptr;
}

void DisplayView::leave() {
    m_grid->commitEditor();
    if (m_panel)
        m_panel->left(wholeCursor());
}

void DisplayView::load() {
    RecordsetPtr& whole = *sourceCursor(m_session, m_description.whole);
    if (!whole->isOpen())
        m_session.reopenIfThere(whole, QString::fromUtf16(m_description.table));
}

void DisplayView::activate() {
    if (std::exchange(m_session.viewReturnState, QStringLiteral("Open")) == u"Close")
        return;
    const RecordsetPtr shown = cursor();
    if (!shown)
        return;
    m_shown = viewNumber();
    {
        const QuietWalk walk(shown);
        m_grid->bind(shown, {QStringLiteral("流水号")});
        if (m_description.clearsFilter && m_shown == m_description.whole && shown->isOpen())
            shown->clearFilter();
        showDates(shown, m_shown);
        m_session.displayDate1 = m_first->text();
        m_session.displayDate2 = m_last->text();
        if (m_panel)
            m_panel->sourceShown(shown, m_shown);
    }
    showPosition();
}

void DisplayView::showDates(const RecordsetPtr& cursor, int viewNumber) {
    const bool isPeriod = viewNumber != m_description.whole;
    if (cursor->hasRows() && (!isPeriod || m_description.periodDatesFromRows)) {
        cursor->setSort(QStringLiteral("日期"));
        m_first->setText(cursor->Fields(QStringLiteral("日期")).text());
        cursor->MoveLast();
        m_last->setText(cursor->Fields(QStringLiteral("日期")).text());
        return;
    }
    m_first->setText(isPeriod ? m_session.periodStart : kNoDate);
    m_last->setText(isPeriod ? m_session.periodEnd : kNoDate);
}

void DisplayView::showPosition() {
    const RecordsetPtr shown = cursor();
    m_moves->setPosition(shown ? positionText(shown) : QStringLiteral("0/0"));
}

void DisplayView::rowChanged(bool chosen) {
    // Whatever fails while the row changes is passed over.
    IgnoringErrors errors;
    errors.run([&] {
        if (const RecordsetPtr shown = cursor(); shown && m_panel && shown->isOpen())
            m_panel->rowChanged(shown, chosen);
    });
    showPosition();
}

void DisplayView::setSource(int viewNumber) {
    m_session.showSource = viewNumber;
    if (m_description.family)
        m_session.*m_description.family = viewNumber;
}

void DisplayView::Time_AA() {
    if (!wholeCursor()->hasRows())
        return;
    setSource(m_description.whole);
    m_host.openWindow(QStringLiteral("timeDefineFm2"), ViewHost::MainWindow::Stays);
}

void DisplayView::data_whole_show() {
    m_grid->commitEditor();
    setSource(m_description.ownSource ? m_description.ownSource : m_description.whole);
    const RecordsetPtr& whole = wholeCursor();
    if (!whole->isOpen())
        return;
    whole->clearFilter();
    if (whole->hasRows())
        whole->setSort(QString::fromUtf16(m_description.sort));
    showPosition();
}

void DisplayView::openDialog(const QString& name, qint16 Session::*code, int value) {
    m_grid->commitEditor();
    const RecordsetPtr shown = cursor();
    if (m_description.family && shown)
        m_session.*m_description.family = m_session.showSource;
    if (!shown || !shown->hasRows())
        return;
    m_session.showSource = viewNumber();
    m_session.*code = qint16(value);
    m_host.openWindow(name, ViewHost::MainWindow::Stays);
}

void DisplayView::data_order() {
    openDialog(QStringLiteral("orderFm1"), &Session::orderCode, viewNumber());
}

void DisplayView::data_search() {
    openDialog(QStringLiteral("searchFm1"), &Session::searchCode, searchCodeOf(viewNumber()));
}

void DisplayView::data_print() {
    m_grid->commitEditor();
    const RecordsetPtr asked = m_description.asksWholeForRows ? wholeCursor() : cursor();
    if (!asked || !asked->hasRows())
        return;
    m_session.reportFormTitle = QString::fromUtf16(m_description.reportTitle);
    const bool isWhole = viewNumber() == m_description.whole;
    m_host.openWindow(QString::fromUtf16(isWhole ? m_description.wholeReport : m_description.periodReport),
                      ViewHost::MainWindow::Hidden);
}
