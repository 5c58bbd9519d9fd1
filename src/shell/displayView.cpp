#include "shell/displayView.h"

#include "controls/formParts.h"
#include "controls/recordPane.h"
#include "data/sourceTable.h"
#include "recordset/ignoringErrors.h"
#include "shell/captionSort.h"
#include "shell/toolbarTable.h"

#include <QHBoxLayout>

DateSpan datesOfRows(Session& /*session*/, const RecordsetPtr& shown) {
    static const QString noDate = QStringLiteral("0000-0-0");
    return shown->hasRows() ? sortByDate(shown) : DateSpan{noDate, noDate};
}

DateSpan periodTexts(Session& session, const RecordsetPtr& /*shown*/) {
    return {session.periodStart, session.periodEnd};
}

DateSpan datesOfRowsOrPeriod(Session& session, const RecordsetPtr& shown) {
    return shown->hasRows() ? sortByDate(shown) : periodTexts(session, shown);
}

DisplayView::DisplayView(const DisplayDescription& description, ViewHost& host, Prompts& prompts)
    : View(QString::fromUtf16(description.name), QString::fromUtf16(description.caption))
    , m_description(description)
    , m_host(host)
    , m_session(host.session())
    , m_panel(description.panel ? description.panel(host, prompts) : nullptr)
    , m_asker(m_session.showSource) {
    m_pane = new RecordPane({}, QString::fromUtf16(description.emptyText), prompts, this);
    m_pane->grid->setEditable(description.editable);
    m_dates = new DateBoxes(QStringLiteral("Text2"), QStringLiteral("Text3"), m_session,
                            description.dateValues, this);
    m_dates->setVisible(description.showsDates);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_pane->moves);
    bottom->addStretch(1);
    if (m_panel) {
        bottom->addWidget(m_panel);
        connect(m_panel, &DisplayPanel::commandStarts, m_pane->grid, &DataGrid::commitEditor);
        connect(m_panel, &DisplayPanel::commandEnded, this, &DisplayView::showUnsaved);
        connect(m_panel, &DisplayPanel::printAsked, this, &DisplayView::print);
        for (QAction* action : m_panel->gridActions())
            m_pane->grid->addContextAction(action);
    }
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_dates, 0, Qt::AlignLeft);
    column->addWidget(m_pane->grid, 1);
    column->addLayout(bottom);
    tabThrough(m_dates->boxes() + QWidgetList{m_pane->grid} + m_pane->moves->buttons());
    m_pane->setEmptyPosition(QString::fromUtf16(description.emptyPosition));
    m_pane->onMove([this](int button) { move(button); });
    if (const ToolbarRow* row = toolbarRow(name()); row && row->serves(ViewOperation::data_whole_show))
        m_pane->setWholeShow([this] { Q_EMIT wholeAsked(); });
    m_pane->onRow([this] { rowChanged(false); });
    connect(m_pane->grid, &DataGrid::rowChosen, this, [this] {
        rowChanged(true);
        takeCustomer();
    });
    connect(m_pane->grid, &DataGrid::cellEdited, this, [this] {
        m_host.say({}); // what was saved before is not what stands here now
        showUnsaved();
    });
    offerOperations();
    sortByCaptions(*this, *m_pane->grid, host, [this] { return readyToSort(); });
}

void DisplayView::offerOperations() {
    offer(ViewOperation::Time_AA, [this] { Time_AA(); });
    offer(ViewOperation::data_whole_show, [this] { data_whole_show(); });
    offer(ViewOperation::data_order, [this] { data_order(); });
    offer(ViewOperation::data_search, [this] { data_search(); });
    offer(ViewOperation::data_print, [this] { data_print(); });
}

const RecordsetPtr& DisplayView::shownRows() const {
    return m_pane->cursor();
}

void DisplayView::move(int button) {
    if (const RecordsetPtr moved = cursor())
        moveInRecordset(moved, button);
    m_pane->showPosition();
    takeCustomer();
}

void DisplayView::takeCustomer() {
    if (const RecordsetPtr shown = cursor(); m_description.customers && shown && shown->isOpen())
        m_session.takeCustomer(shown);
}

void DisplayView::showEvent(QShowEvent* event) {
    View::showEvent(event);
    // While a window stood in the main window's place, the cursor may have been opened anew.
    if (const RecordsetPtr now = cursor(); now && m_pane->cursor() && now != m_pane->cursor())
        rowsReplaced();
}

ShowSource DisplayView::source() const {
    if (m_description.keepsAsker)
        return m_asker;
    if (m_description.tells)
        return m_description.tells(m_session, m_shown);
    if (m_shown != ShowSource::None)
        return m_shown;
    return m_description.family ? m_session.*m_description.family : m_description.whole();
}

bool DisplayView::shows(ShowSource code) const {
    return m_shown == (m_description.present ? present() : code);
}

ShowSource DisplayView::present() const {
    return m_description.present ? m_description.present(m_session) : m_session.showSource;
}

const DisplaySource* DisplayView::find(ShowSource code) const {
    for (const DisplaySource& source : m_description.sources)
        if (source.code == code)
            return &source;
    return nullptr;
}

RecordsetPtr& DisplayView::cursorOf(ShowSource code) const {
    return *sourceCursor(m_session,
                         m_description.queryCode == ShowSource::None ? code : m_description.queryCode);
}

RecordsetPtr DisplayView::cursor() const {
    return find(m_shown) ? cursorOf(m_shown) : nullptr;
}

void DisplayView::leave() {
    m_pane->grid->commitEditor();
    if (m_panel)
        m_panel->left(wholeCursor());
}

void DisplayView::load() {
    if (m_description.atLoad)
        return m_description.atLoad(m_session);
    if (*m_description.table)
        m_session.reopenIfClosed(cursorOf(m_description.whole()), QString::fromUtf16(m_description.table));
}

bool DisplayView::hasNewRows() {
    if (find(present()))
        return true;
    m_session.showSource = source();
    return !m_pane->cursor() || m_pane->cursor() != cursor();
}

void DisplayView::activate() {
    if (std::exchange(m_session.viewReturnState, QStringLiteral("Open")) == u"Close")
        return;
    if (m_description.begin && !m_description.begin(m_session))
        return;
    if (!hasNewRows())
        return;
    if (m_description.prepare)
        m_description.prepare(m_session, present());
    const DisplaySource* source = find(present());
    if (!source)
        return;
    const ShowSource code = source->code;
    if (m_description.family && !m_description.present)
        m_session.*m_description.family = code;
    const RecordsetPtr shown = cursorOf(code);
    {
        const QuietWalk walk(shown);
        bindRows(shown, *source);
        if (m_description.closedKeepsFigures && !shown->isOpen())
            return m_pane->showPosition();
        if (m_description.clearsFilter && code == m_description.whole() && shown->isOpen())
            shown->clearFilter();
        if (source->dates)
            m_dates->setDates(source->dates(m_session, shown));
        m_dates->setTips(m_description.dateTips, m_period);
        if (m_panel)
            m_panel->sourceShown(shown, code);
    }
    m_pane->showPosition();
    showUnsaved();
}

void DisplayView::bindRows(const RecordsetPtr& shown, const DisplaySource& source) {
    m_shown = source.code;
    m_period = periodShown();
    const bool whole = source.code == m_description.whole();
    m_pane->grid->setEmptyText(QString::fromUtf16(whole ? m_description.emptyText : source.emptyText));
    m_pane->bind(shown, QString::fromUtf16(m_description.hidden).split(u' '));
}

QString DisplayView::periodShown() const {
    if (m_description.showsPeriod)
        return m_description.showsPeriod(m_session) ? m_session.periodExact : QString();
    const ShowSource base = m_shown == ShowSource::BestClients ? m_session.clientShowSource : m_shown;
    return base == m_description.whole() ? QString() : m_session.periodExact;
}

void DisplayView::rowsReplaced() {
    const DisplaySource* source = find(present());
    if (!source)
        return;
    const RecordsetPtr shown = cursorOf(source->code);
    bindRows(shown, *source);
    if (m_panel)
        m_panel->sourceShown(shown, source->code);
    m_pane->showPosition();
}

void DisplayView::sorted() {
    if (const RecordsetPtr shown = cursor(); shown && m_panel) {
        const QuietWalk walk(shown);
        m_panel->sorted(shown);
    }
    m_pane->showPosition();
}

void DisplayView::rowChanged(bool chosen) {
    // Whatever fails while the row changes is passed over.
    IgnoringErrors errors;
    errors.run([&] {
        if (const RecordsetPtr shown = cursor(); shown && m_panel && shown->isOpen())
            m_panel->rowChanged(shown, chosen);
    });
    m_pane->showPosition();
    showUnsaved();
}

void DisplayView::showUnsaved() {
    if (const RecordsetPtr shown = cursor(); shown && m_description.editable)
        setUnsavedRows(shown->pendingCount());
}

void DisplayView::setSource(ShowSource code) {
    m_session.showSource = code;
    if (m_description.family)
        m_session.*m_description.family = code;
}

void DisplayView::Time_AA() {
    if (m_description.toWhole)
        m_description.toWhole(m_session);
    if (!wholeCursor()->hasRows())
        return;
    setSource(m_description.whole());
    m_host.openWindow(QStringLiteral("timeDefineFm2"), ViewHost::MainWindow::Stays);
}

void DisplayView::data_whole_show() {
    m_pane->grid->commitEditor();
    if (m_description.toWhole)
        m_description.toWhole(m_session);
    if (!m_description.keepsSource)
        setSource(m_description.wholeShowCode == ShowSource::None ? m_description.whole()
                                                                  : m_description.wholeShowCode);
    if (const RecordsetPtr whole = wholeCursor(); whole->isOpen()) {
        const QuietWalk walk(whole);
        whole->clearFilter();
        if (whole->hasRows())
            whole->setSort(QString::fromUtf16(m_description.sort));
    }
    m_pane->showPosition();
}

bool DisplayView::readyFor(qint16 Session::*code, qint16 (*codeOf)(ShowSource)) {
    m_pane->grid->commitEditor();
    const RecordsetPtr shown = cursor();
    if (m_description.family && !m_description.present && shown)
        m_session.*m_description.family = m_shown;
    if (!shown || !shown->hasRows())
        return false;
    const bool own = m_description.queryCode == ShowSource::None;
    if (own)
        m_session.showSource = m_shown;
    const ShowSource queried = own ? m_shown : m_description.queryCode;
    m_session.*code = codeOf(queried);
    m_session.searchSource = m_description.queryCode;
    return true;
}

bool DisplayView::readyToSort() {
    return readyFor(&Session::orderCode, [](ShowSource code) { return qint16(code); });
}

void DisplayView::data_order() {
    if (readyToSort())
        m_host.openWindow(QStringLiteral("orderFm1"), ViewHost::MainWindow::Stays);
}

void DisplayView::data_search() {
    if (readyFor(&Session::searchCode, searchCodeOf))
        m_host.openWindow(QStringLiteral("searchFm1"), ViewHost::MainWindow::Stays);
}

void DisplayView::data_print() {
    if (const DisplaySource* source = find(m_shown))
        print(QString::fromUtf16(source->report));
}

void DisplayView::print(const QString& report) {
    m_pane->grid->commitEditor();
    const RecordsetPtr asked = m_description.asksWholeForRows ? wholeCursor() : cursor();
    const DisplaySource* source = find(m_shown);
    if (!source || !asked || !asked->hasRows())
        return;
    handOver(*source, report);
    m_host.openWindow(report, ViewHost::MainWindow::Hidden);
}

void DisplayView::handOver(const DisplaySource& source, const QString& report) {
    m_session.report.reportFormTitle = QString::fromUtf16(m_description.reportTitle);
    m_session.report.caller = name();
    m_session.report.period = m_period;
    // A window beside the view may have told its own dates since.
    if (source.dates)
        m_dates->tell();
    if (m_panel)
        m_panel->aboutToPrint(report);
}

void registerDisplays(ViewHost& host, Prompts& prompts, std::span<const DisplayDescription> displays) {
    for (const DisplayDescription& each : displays)
        host.registerView(QString::fromUtf16(each.name),
                          [&host, &prompts, &each] { return new DisplayView(each, host, prompts); });
}
