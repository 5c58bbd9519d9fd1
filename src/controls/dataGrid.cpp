#include "controls/dataGrid.h"

#include "controls/cellEditor.h"
#include "controls/exportPrompt.h"
#include "controls/longWork.h"
#include "controls/prompts.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QRegularExpression>
#include <QTimer>

#include <algorithm>
namespace {

/// The rows of a selection as runs of first and last, from above.
std::vector<std::pair<int, int>> runsOf(const QItemSelection& selection) {
    std::vector<std::pair<int, int>> ranges;
    for (const QItemSelectionRange& range : selection)
        ranges.emplace_back(range.top(), range.bottom());
    std::sort(ranges.begin(), ranges.end());
    std::vector<std::pair<int, int>> runs;
    for (const auto& [first, last] : ranges)
        if (!runs.empty() && first <= runs.back().second + 1)
            runs.back().second = std::max(runs.back().second, last);
        else
            runs.emplace_back(first, last);
    return runs;
}

/// The text without what would end a cell or a line of a copied table.
QString inOneCell(QString text) {
    static const QRegularExpression ends(QStringLiteral("[\\t\\r\\n]+"));
    return text.replace(ends, QStringLiteral(" "));
}

/// The column that a recordset is sorted by before all others.
std::optional<SortColumn> sortOf(const RecordsetPtr& recordset) {
    if (!recordset || !recordset->isOpen())
        return std::nullopt;
    const std::vector<SortColumn> columns = parseSort(recordset->Sort());
    return columns.empty() ? std::nullopt : std::optional(columns.front());
}

} // namespace

DataGrid::DataGrid(Prompts& prompts, QWidget* parent)
    : QTableView(parent)
    , m_prompts(prompts)
    , m_model(new RecordsetModel(this))
    , m_nothingFoundText(QStringLiteral("没有符合条件的记录，按“全库显示”看全部")) {
    setModel(m_model);
    m_columns = new GridColumns(*this, *m_model);
    setItemDelegate(new CellEditor(this));
    setSelectionBehavior(SelectRows);
    setSelectionMode(ContiguousSelection);
    setEditTriggers(NoEditTriggers);
    setWordWrap(false);
    setAlternatingRowColors(true);
    setVerticalScrollMode(ScrollPerItem);
    setTabKeyNavigation(false);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    verticalHeader()->hide();
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(false);
    setAccessibleName(QStringLiteral("数据表"));
    connect(m_model, &RecordsetModel::currentRowMoved, this, [this] {
        followRecordset();
        if (m_rowHandler)
            m_rowHandler();
    });
    connect(m_model, &QAbstractItemModel::modelReset, this, &DataGrid::fitFirstRows);
    connect(m_model, &QAbstractItemModel::modelReset, this, &DataGrid::showSort);
    connect(m_model, &QAbstractItemModel::rowsInserted, this, &DataGrid::fitFirstRows);
    connect(m_model, &QAbstractItemModel::dataChanged, this, &DataGrid::fitFirstRows);
}

void DataGrid::bind(const RecordsetPtr& recordset, const QStringList& hidden) {
    const bool other = m_model->recordset() != recordset;
    m_restingOn = nullptr;
    m_hidden = hidden;
    if (other)
        m_model->setRecordset(recordset);
    m_columns->arrange(hidden);
    if (other)
        fitToRows();
    followRecordset();
    if (other && m_rowHandler)
        m_rowHandler();
}

void DataGrid::rest() {
    if (!recordset())
        return;
    m_restingOn = recordset();
    unbind();
}

void DataGrid::wake() {
    if (m_restingOn)
        bind(RecordsetPtr(m_restingOn), QStringList(m_hidden));
}

void DataGrid::setEditable(bool editable) {
    m_model->setEditable(editable);
    setEditTriggers(editable ? EditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed) : NoEditTriggers);
    setSelectionBehavior(editable ? SelectItems : SelectRows);
}

void DataGrid::rememberColumns(std::shared_ptr<ColumnsByUser> memory) {
    m_columns->remember(std::move(memory));
}

void DataGrid::fitFirstRows() {
    if (!m_fitted && m_model->rowCount() > 0)
        fitToRows();
}

void DataGrid::fitToRows() {
    m_columns->fit();
    // A row that is still being filled in is measured again with every value, until it is written.
    m_fitted = m_model->rowCount() > 0 && !isNewRow(recordset()->rowAt(0));
}

void DataGrid::followRecordset() {
    const RecordsetPtr& bound = recordset();
    if (!bound || !bound->isOpen())
        return;
    m_following = true;
    const int position = bound->AbsolutePosition();
    if (position <= 0) {
        setCurrentIndex({});
        clearSelection();
    } else if (currentIndex().row() != position - 1 || !selectionModel()->hasSelection()) {
        const int column =
            currentIndex().isValid() ? currentIndex().column() : horizontalHeader()->logicalIndexAt(0);
        setCurrentIndex(m_model->index(position - 1, std::max(0, column)));
    }
    m_following = false;
}

void DataGrid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    if (m_following || m_model->isRemoving() || !current.isValid() || !recordset() || !recordset()->isOpen())
        return;
    if (recordset()->AbsolutePosition() != current.row() + 1)
        recordset()->moveTo(current.row());
    else if (current.row() == previous.row())
        return;
    if (!m_pressing && !m_chosenByEnter)
        Q_EMIT rowChosen();
}

void DataGrid::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    // Not the table's own way: with a screen reader on it makes an index of every cell that was selected, of
    // all rows at once, to tell of the first one. NOLINTNEXTLINE(bugprone-parent-virtual-call)
    QAbstractItemView::selectionChanged(selected, deselected);
    for (const auto& [type, cells] :
         {std::pair(QAccessible::SelectionAdd, &selected), {QAccessible::SelectionRemove, &deselected}})
        if (!cells->isEmpty())
            tellReader(type, cells->first().topLeft());
}

void DataGrid::focusInEvent(QFocusEvent* event) {
    QTableView::focusInEvent(event);
    // Behind the table itself, which is told of when this event has ended.
    QTimer::singleShot(0, this, [this] {
        if (hasFocus())
            tellReader(QAccessible::Focus, currentIndex());
    });
}

/// Tells a screen reader, where one is on, of a cell.
void DataGrid::tellReader(QAccessible::Event type, const QModelIndex& cell) {
    QAccessibleInterface* table =
        QAccessible::isActive() && cell.isValid() ? QAccessible::queryAccessibleInterface(this) : nullptr;
    if (!table || !table->tableInterface())
        return;
    QAccessibleEvent event(this, type);
    event.setChild(table->indexOfChild(table->tableInterface()->cellAt(cell.row(), cell.column())));
    QAccessible::updateAccessibility(&event);
}

void DataGrid::mousePressEvent(QMouseEvent* event) {
    m_pressing = true;
    m_focusAfterPress = nullptr;
    QTableView::mousePressEvent(event);
    m_pressing = false;
    const QModelIndex index = indexAt(event->pos());
    if (!index.isValid() || event->button() != Qt::LeftButton)
        return;
    // The row may stand under the mouse already while the cursor is on no row at all.
    if (recordset()->AbsolutePosition() != index.row() + 1)
        recordset()->moveTo(index.row());
    Q_EMIT rowChosen();
    m_focusAfterPress = window()->focusWidget();
}

void DataGrid::mouseDoubleClickEvent(QMouseEvent* event) {
    QTableView::mouseDoubleClickEvent(event);
    // Its first click has chosen the row; the second has only brought the focus back here.
    if (m_focusAfterPress && m_focusAfterPress != this && state() != EditingState)
        m_focusAfterPress->setFocus(Qt::OtherFocusReason);
}

void DataGrid::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy))
        return copySelection();
    const bool chooses =
        event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space;
    if (!m_chosenByEnter || !chooses || event->modifiers() & ~Qt::KeypadModifier)
        return QTableView::keyPressEvent(event);
    if (currentIndex().isValid())
        Q_EMIT rowChosen();
}

QString DataGrid::emptyText() const {
    if (!recordset())
        return m_emptyText;
    if (!recordset()->isOpen())
        return QStringLiteral("该时间段没有数据");
    return recordset()->Filter().isEmpty() ? m_emptyText : m_nothingFoundText;
}

void DataGrid::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    if (m_model->rowCount() > 0)
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect().adjusted(16, 16, -16, -16), Qt::AlignCenter | Qt::TextWordWrap,
                     emptyText());
}

void DataGrid::contextMenuEvent(QContextMenuEvent* event) {
    QMenu menu(this);
    menu.addActions(m_actions);
    if (!m_actions.isEmpty())
        menu.addSeparator();
    QAction* copy = menu.addAction(QStringLiteral("复制所选行"), [this] { copySelection(); });
    copy->setShortcut(QKeySequence::Copy);
    copy->setEnabled(selectionModel()->hasSelection());
    for (const ExportKind* kind : {&kCsvExport, &kXlsxExport})
        menu.addAction(QString::fromUtf16(kind->caption) + u'…', [this, kind] { exportRows(*kind); })
            ->setEnabled(m_model->rowCount() > 0);
    menu.exec(event->globalPos());
}

void DataGrid::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    m_columns->fill();
}

void DataGrid::commitEditor() {
    if (state() != EditingState)
        return;
    // An editor closed before may still wait for its deletion: the last one is open.
    const auto editors = viewport()->findChildren<QWidget*>(QStringLiteral("cellEditor"));
    if (editors.isEmpty())
        return;
    commitData(editors.last());
    closeEditor(editors.last(), QAbstractItemDelegate::NoHint);
}

QString DataGrid::selectedText(const ExportSteps& steps) const {
    const std::vector<int> columns = m_columns->shown();
    const auto lineOf = [&columns](auto&& textOf) {
        QStringList cells;
        for (const int column : columns)
            cells << textOf(column);
        return cells.join(u'\t');
    };
    QStringList lines(lineOf([this](int column) {
        return m_model->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    }));
    for (const auto& [first, last] : runsOf(selectionModel()->selection()))
        for (int row = first; row <= last; ++row) {
            lines << lineOf(
                [&](int column) { return inOneCell(fieldText(m_model->cellValue(row, column))); });
            if (const int done = int(lines.size()) - 1; steps && isStep(done) && !steps(done))
                return {};
        }
    return lines.join(u'\n');
}

void DataGrid::copySelection() {
    int rows = 0;
    for (const auto& [first, last] : runsOf(selectionModel()->selection()))
        rows += last - first + 1;
    if (rows == 0)
        return;
    LongWork work(QStringLiteral("正在复制…"), rows);
    if (const QString text = selectedText([&work](int done) { return work.step(done); }); !text.isEmpty())
        QApplication::clipboard()->setText(text);
}

ExportTable DataGrid::exportTable() const {
    ExportTable table;
    const std::vector<int> columns = m_columns->shown();
    const double digit = fontMetrics().horizontalAdvance(u'0');
    for (const int column : columns)
        table.columns.push_back({m_model->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString(),
                                 columnWidth(column) / digit});
    table.rows = m_model->rowCount();
    table.cell = [this, columns](int row, int column) {
        const int field = columns[std::size_t(column)];
        return exportedValue(recordset()->fieldInfo(field), m_model->cellValue(row, field));
    };
    return table;
}

void DataGrid::exportRows(const ExportKind& kind) {
    askExport(this, m_prompts, kind, exportTable());
}

void DataGrid::sortByCaptions() {
    m_sortsByCaptions = true;
    QHeaderView* head = horizontalHeader();
    head->setSectionsClickable(true);
    head->setSortIndicatorShown(true);
    head->setToolTip(QStringLiteral("点一下列名按这一列排序，再点一下倒过来"));
    // A press on a caption chooses no rows.
    disconnect(head, &QHeaderView::sectionPressed, this, nullptr);
    disconnect(head, &QHeaderView::sectionEntered, this, nullptr);
    connect(head, &QHeaderView::sectionClicked, this, &DataGrid::askSort);
    showSort();
}

void DataGrid::askSort(int column) {
    const QString name = recordset()->fieldInfo(column).name;
    const auto order = sortOf(recordset());
    Q_EMIT sortAsked(name, order && order->column == name && !order->descending);
    // The header has turned its sign by itself, whatever came of the click.
    showSort();
}

void DataGrid::showSort() {
    if (!m_sortsByCaptions)
        return;
    int column = -1;
    const auto order = sortOf(recordset());
    for (int i = 0; order && i < m_model->columnCount(); ++i)
        if (recordset()->fieldInfo(i).name.compare(order->column, Qt::CaseInsensitive) == 0)
            column = i;
    horizontalHeader()->setSortIndicator(column, order && order->descending ? Qt::DescendingOrder
                                                                            : Qt::AscendingOrder);
}
