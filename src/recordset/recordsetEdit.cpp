#include "recordset/error.h"
#include "recordset/recordset.h"

#include <algorithm>

void Recordset::requireWritable() const {
    requireOpen();
    if (m_image->isPicture())
        fail(ErrorNumber::ReadOnly, QStringLiteral("查询结果不能修改"), m_source);
    if (m_image->isDropped())
        fail(ErrorNumber::TableMissing, QStringLiteral("表 %1 已不存在").arg(m_image->table()), m_source);
}

void Recordset::assign(int field, const CellValue& value) {
    const RowId row = requireRow();
    requireWritable();
    const ColumnInfo& column = fieldInfo(field);
    if (column.type == ColumnType::Serial && !isNewRow(row))
        fail(ErrorNumber::ReadOnly, QStringLiteral("%1 不能修改").arg(column.name), m_source);
    m_edits.set(row, imageColumn(field), converted(value, column));
    const int position = int(m_view.positionOf(m_position.at));
    notify([position](RecordsetObserver& observer) { observer.rowChanged(position); });
}

void Recordset::AddNew() {
    requireWritable();
    const RowId row = m_nextNewRow++;
    notify([](RecordsetObserver& observer) { observer.rowAboutToBeAppended(); });
    m_added.push_back({row, currentRow(), place()});
    m_edits.addRow(row);
    m_keyset.rows.push_back(row);
    m_view.append(row);
    m_position = {Place::OnRow, m_view.end() - 1};
    ++m_viewVersion;
    notify([](RecordsetObserver& observer) { observer.rowAppended(); });
    settle();
}

CellValue Recordset::storable(int field, const CellValue& value) const {
    return converted(value, fieldInfo(field));
}

void Recordset::AddNew(const std::vector<CellValue>& values) {
    requireWritable();
    CellChanges cells;
    cells.reserve(values.size());
    for (std::size_t i = 0; i < values.size(); ++i)
        if (!isNull(values[i]))
            cells.emplace_back(imageColumn(int(i)), values[i]);
    const Row inserted = m_image->insert(std::move(cells));
    notify([](RecordsetObserver& observer) { observer.rowAboutToBeAppended(); });
    m_keyset.rows.push_back(inserted);
    m_view.append(inserted);
    m_position = {Place::OnRow, m_view.end() - 1};
    ++m_viewVersion;
    notify([](RecordsetObserver& observer) { observer.rowAppended(); });
    settle();
}

void Recordset::writeRow(RowId row) {
    const CellChanges cells = m_edits.cells(row);
    if (!isNewRow(row)) {
        m_image->update(row, cells);
        m_edits.drop(row);
        return;
    }
    const Row inserted = m_image->insert(cells);
    m_edits.drop(row);
    // New rows stand at the end of the keyset.
    if (const auto place = std::find(m_keyset.rows.rbegin(), m_keyset.rows.rend(), row);
        place != m_keyset.rows.rend())
        *place = inserted;
    m_insertedAs[row] = inserted;
    std::erase_if(m_added, [row](const AddedRow& added) { return added.row == row; });
    for (AddedRow& added : m_added)
        if (added.before == row)
            added.before = inserted;
    if (const auto place = m_view.find(row)) {
        m_view.replace(*place, inserted);
        // The same row under its new identity: no change of the current row.
        if (m_told.row == row)
            m_told.row = inserted;
        rowUpdated(inserted);
    }
}

void Recordset::Update() {
    const RowId row = requireRow();
    if (!m_edits.has(row))
        return;
    requireWritable();
    writeRow(row);
    settle();
}

void Recordset::dropNewRow(RowId row) {
    const auto added =
        std::find_if(m_added.begin(), m_added.end(), [row](const AddedRow& each) { return each.row == row; });
    const AddedRow gone = *added;
    m_added.erase(added);
    m_edits.drop(row);
    const auto held = std::find(m_keyset.rows.begin(), m_keyset.rows.end(), row);
    if (held - m_keyset.rows.begin() < std::ptrdiff_t(m_judged))
        --m_judged;
    m_keyset.rows.erase(held);
    const auto place = m_view.find(row);
    if (!place)
        return;
    const bool current = m_position.place == Place::OnRow && m_position.at == *place;
    const int position = int(m_view.positionOf(*place));
    notify([position](RecordsetObserver& observer) { observer.rowsAboutToBeRemoved(position, position); });
    removeFromView(*place);
    if (!current)
        return;
    if (gone.before && m_view.find(*gone.before))
        m_position = {Place::OnRow, *m_view.find(*gone.before)};
    else if (gone.placeBefore == Place::BeforeFirst)
        m_position = {Place::BeforeFirst, 0};
    else
        m_position = {m_view.size() == 0 ? Place::None : Place::AfterLast, m_view.end()};
}

void Recordset::CancelUpdate() {
    requireOpen();
    const auto row = currentRow();
    if (!row || !m_edits.has(*row))
        return;
    if (isNewRow(*row)) {
        dropNewRow(*row);
    } else {
        m_edits.drop(*row);
        rowUpdated(*row);
    }
    settle();
}

void Recordset::Delete() {
    const RowId row = requireRow();
    requireWritable();
    if (isNewRow(row))
        return CancelUpdate();
    m_image->remove(row);
}

std::vector<RowId> Recordset::pendingInBaseOrder() const {
    std::vector<RowId> rows;
    for (const auto& [row, cells] : m_edits.rows())
        if (row < m_keyset.prefix)
            rows.push_back(row);
    for (const RowId row : m_keyset.rows)
        if (m_edits.has(row))
            rows.push_back(row);
    return rows;
}

void Recordset::UpdateBatch(int) {
    requireWritable();
    WriteBatch batch(m_connection);
    std::optional<RuntimeError> refused;
    for (const RowId row : pendingInBaseOrder()) {
        try {
            writeRow(row);
        } catch (const RuntimeError& error) {
            refused = error;
        }
    }
    batch.finish();
    settle();
    if (refused)
        throw *refused;
}

void Recordset::CancelBatch(int) {
    requireOpen();
    const std::map<RowId, CellChanges> rows = m_edits.rows();
    for (auto each = rows.rbegin(); each != rows.rend(); ++each) {
        if (isNewRow(each->first)) {
            dropNewRow(each->first);
        } else {
            m_edits.drop(each->first);
            rowUpdated(each->first);
        }
    }
    settle();
}
