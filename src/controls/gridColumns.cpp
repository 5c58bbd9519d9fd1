#include "controls/gridColumns.h"

#include "controls/recordsetModel.h"
#include "export/exportTable.h"

#include <QHeaderView>
#include <QScopedValueRollback>
#include <QTableView>

namespace {

constexpr int kSampledRows = 60;
constexpr int kWidestColumn = 260;
constexpr int kRoomBesideText = 22;
constexpr int kRoomForSortSign = 16; // beside a caption, which stands in the middle of its column

} // namespace

GridColumns::GridColumns(QTableView& grid, RecordsetModel& model)
    : QObject(&grid)
    , m_grid(grid)
    , m_model(model) {
    QHeaderView* head = grid.horizontalHeader();
    head->setSectionsMovable(true);
    connect(head, &QHeaderView::sectionResized, this, &GridColumns::noteWidth);
    connect(head, &QHeaderView::sectionMoved, this, &GridColumns::noteOrder);
}

QString GridColumns::nameOf(int column) const {
    return m_model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
}

void GridColumns::noteWidth(int column, int before, int width) {
    if (m_laying || before == 0 || width == 0) // a column that is hidden or shown keeps its width
        return;
    m_byUser->widths[nameOf(column)] = width;
    if (column == m_fill)
        m_fill = -1;
}

void GridColumns::noteOrder() {
    if (m_laying)
        return;
    m_byUser->order.clear();
    for (int place = 0; place < m_model.columnCount(); ++place)
        m_byUser->order << nameOf(m_grid.horizontalHeader()->logicalIndex(place));
}

void GridColumns::remember(std::shared_ptr<ColumnsByUser> memory) {
    m_byUser = std::move(memory);
    putInOrder();
    fit();
}

void GridColumns::arrange(const QStringList& hidden) {
    const QScopedValueRollback laying(m_laying, true);
    for (int column = 0; column < m_model.columnCount(); ++column)
        m_grid.setColumnHidden(column, hidden.contains(nameOf(column)));
    putInOrder();
}

void GridColumns::putInOrder() {
    const QScopedValueRollback laying(m_laying, true);
    QStringList names = m_byUser->order.isEmpty() ? m_inFront : m_byUser->order;
    for (int column = 0; column < m_model.columnCount(); ++column)
        if (const QString name = nameOf(column); !names.contains(name))
            names << name;
    QHeaderView* head = m_grid.horizontalHeader();
    int place = 0;
    for (const QString& name : std::as_const(names))
        for (int column = 0; column < m_model.columnCount(); ++column)
            if (nameOf(column) == name)
                head->moveSection(head->visualIndex(column), place++);
}

int GridColumns::neededWidth(int column) const {
    const QFontMetrics metrics = m_grid.fontMetrics();
    const int signs = m_grid.horizontalHeader()->isSortIndicatorShown() ? kRoomForSortSign : 0;
    int width = metrics.horizontalAdvance(nameOf(column)) + signs;
    if (!m_grid.isColumnHidden(column))
        for (int row = 0; row < std::min(m_model.rowCount(), kSampledRows); ++row)
            width =
                std::max(width, metrics.horizontalAdvance(
                                    m_model.data(m_model.index(row, column), Qt::DisplayRole).toString()));
    return std::min(width + kRoomBesideText, kWidestColumn);
}

void GridColumns::fit() {
    const QScopedValueRollback laying(m_laying, true);
    m_fill = -1;
    m_fillNeeds = 0;
    for (int column = 0; column < m_model.columnCount(); ++column) {
        const auto byUser = m_byUser->widths.constFind(nameOf(column));
        const bool his = byUser != m_byUser->widths.constEnd();
        const int width = his ? *byUser : neededWidth(column);
        m_grid.setColumnWidth(column, width);
        const ColumnInfo& info = m_model.recordset()->fieldInfo(column);
        const bool text = info.type == ColumnType::Text && !keepsNumbers(info);
        if (his || !text || m_grid.isColumnHidden(column) || width <= m_fillNeeds)
            continue;
        m_fill = column;
        m_fillNeeds = width;
    }
    fill();
}

void GridColumns::fill() {
    if (m_fill < 0 || m_fill >= m_model.columnCount() || m_grid.isColumnHidden(m_fill))
        return;
    const QScopedValueRollback laying(m_laying, true);
    int others = 0;
    for (int column = 0; column < m_model.columnCount(); ++column)
        if (column != m_fill)
            others += m_grid.columnWidth(column); // 0 where it is hidden
    m_grid.setColumnWidth(m_fill, std::max(m_fillNeeds, m_grid.viewport()->width() - others));
}

std::vector<int> GridColumns::shown() const {
    std::vector<int> columns;
    for (int place = 0; place < m_model.columnCount(); ++place)
        if (const int column = m_grid.horizontalHeader()->logicalIndex(place); !m_grid.isColumnHidden(column))
            columns.push_back(column);
    return columns;
}
