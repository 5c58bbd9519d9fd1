#include "recordset/dialect.h"
#include "recordset/recordsetBefore.h"

void Recordset::transactionBegun() {
    m_before.reset();
    if (m_image && m_image->isPicture())
        return; // nothing that a transaction changes
    m_before = std::make_unique<Before>(Before{
        m_source, m_image, m_fields, m_opening, m_keyset, m_filterText, m_sortText, m_sort, m_pageSize,
        m_edits, m_added, m_insertedAs, m_position, currentRow(), std::nullopt, m_judged, m_viewVersion});
    if (!m_filterText.isEmpty() || !m_sort.empty())
        m_before->view = m_view;
}

void Recordset::transactionKept() {
    m_before.reset();
}

void Recordset::transactionTakenBack() noexcept {
    const auto before = std::exchange(m_before, nullptr);
    m_untold = true;
    try {
        if (before)
            restore(*before);
        else if (m_image && !m_image->isPicture())
            readAgain();
    } catch (const std::exception&) {
        // What cannot be read now either: a cursor that is closed tells nothing wrong.
        takeImage(nullptr);
    }
}

/// Stands on another image, or closed, with nothing of what it stood on before.
void Recordset::takeImage(std::shared_ptr<TableImage> image) {
    if (m_image)
        m_image->detach(this);
    m_image = std::move(image);
    if (m_image)
        m_image->attach(this);
    m_keyset = {};
    m_edits.clear();
    m_added.clear();
    m_insertedAs.clear();
    m_view.clear();
    m_position = {};
    ++m_viewVersion;
}

void Recordset::restore(Before& before) {
    takeImage(before.image);
    m_source = before.source;
    m_opening = before.opening;
    m_filterText = before.filterText;
    m_sortText = before.sortText;
    m_sort = std::move(before.sort);
    m_pageSize = before.pageSize;
    if (!m_image)
        return;
    if (m_image->hasVanished())
        return readAgain();
    m_fields = std::move(before.fields);
    m_keyset = std::move(before.keyset);
    m_edits = std::move(before.edits);
    m_added = std::move(before.added);
    m_insertedAs = std::move(before.insertedAs);
    // The same rows in the same order: boxes beside the row that is current keep what is typed into them.
    m_viewVersion = before.viewVersion;
    if (before.view) {
        m_view = std::move(*before.view);
        m_judged = before.judged;
        m_position = before.position;
        return;
    }
    viewAgain();
    if (const auto place = before.row ? m_view.find(*before.row) : std::nullopt)
        m_position = {Place::OnRow, *place};
    else if (before.position.place == Place::BeforeFirst)
        m_position = before.position;
    else if (before.position.place == Place::AfterLast)
        m_position = {Place::AfterLast, m_view.end()};
}

/// Reads the rows of its statement from the file as it is; a table that is not there leaves it closed.
void Recordset::readAgain() {
    const QString source = m_source;
    takeImage(nullptr);
    if (source.isEmpty())
        return;
    const SqlStatement statement = parseStatement(source);
    if (statement.isResult() || !m_connection.hasTable(statement.table))
        return;
    openTable(statement);
    viewAgain();
}

void Recordset::viewAgain() {
    m_view = viewOf(m_filterText, m_sort);
    m_judged = m_keyset.rows.size();
    goFirst();
}

void Recordset::tellTakenBack() {
    if (!std::exchange(m_untold, false))
        return;
    notify([](RecordsetObserver& observer) { observer.viewReset(); });
    settle();
}
