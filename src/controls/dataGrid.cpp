#include "controls/dataGrid.h"

#include "controls/cellEditor.h"
#include "controls/csvFile.h"
#include "controls/notice.h"
#include "controls/prompts.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>

#include <algorithm>
#include <set>

namespace {

constexpr int kSampledRows = 60;
constexpr int kWidestColumn = 260;

} // namespace

DataGrid::DataGrid(Prompts& prompts, QWidget* parent)
    : QTableView(parent)
    , m_prompts(prompts)
    , m_model(new RecordsetModel(this))
    , m_nothingFoundText(QStringLiteral("没有符合条件的记录，按“全库显示”看全部")) {
    setModel(m_model);
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
    setAccessibleName(QStringLiteral("数据表"));
    connect(m_model, &RecordsetModel::currentRowMoved, this, [this] {
        followRecordset();
        if (m_rowHandler)
            m_rowHandler();
    });
    connect(m_model, &QAbstractItemModel::modelReset, this, &DataGrid::fitFirstRows);
    connect(m_model, &QAbstractItemModel::rowsInserted, this, &DataGrid::fitFirstRows);
    connect(m_model, &QAbstractItemModel::dataChanged, this, &DataGrid::fitFirstRows);
}

void DataGrid::bind(const RecordsetPtr& recordset, const QStringList& hidden) {
    const bool other = m_model->recordset() != recordset;
    m_restingOn = nullptr;
    m_hidden = hidden;
    if (other)
        m_model->setRecordset(recordset);
    for (int i = 0; i < m_model->columnCount(); ++i)
        setColumnHidden(i, hidden.contains(recordset->fieldInfo(i).name));
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

void DataGrid::fitColumns() {
    const QFontMetrics metrics = fontMetrics();
    const int rows = std::min(m_model->rowCount(), kSampledRows);
    for (int column = 0; column < m_model->columnCount(); ++column) {
        int width = metrics.horizontalAdvance(
            m_model->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
        if (!isColumnHidden(column))
            for (int row = 0; row < rows; ++row)
                width = std::max(width,
                                 metrics.horizontalAdvance(
                                     m_model->data(m_model->index(row, column), Qt::DisplayRole).toString()));
        setColumnWidth(column, std::min(width + 22, kWidestColumn));
    }
}

void DataGrid::fitFirstRows() {
    if (!m_fitted && m_model->rowCount() > 0)
        fitToRows();
}

void DataGrid::fitToRows() {
    fitColumns();
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
    QAction* copy = menu.addAction(QStringLiteral("复制所选行"),
                                   [this] { QApplication::clipboard()->setText(selectedText()); });
    QAction* save = menu.addAction(QStringLiteral("导出 CSV…"), [this] { askExport(); });
    copy->setEnabled(selectionModel()->hasSelection());
    save->setEnabled(m_model->rowCount() > 0);
    menu.exec(event->globalPos());
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

QString DataGrid::selectedText() const {
    std::set<int> rows;
    for (const QModelIndex& index : selectionModel()->selectedIndexes())
        rows.insert(index.row());
    QStringList lines;
    for (const int row : rows) {
        QStringList cells;
        for (int column = 0; column < m_model->columnCount(); ++column)
            if (!isColumnHidden(column))
                cells << m_model->index(row, column).data(Qt::EditRole).toString();
        lines << cells.join(u'\t');
    }
    return lines.join(u'\n');
}

bool DataGrid::exportCsv(const QString& path) const {
    std::vector<int> shown;
    for (int column = 0; column < m_model->columnCount(); ++column)
        if (!isColumnHidden(column))
            shown.push_back(column);
    return writeCsv(path, *m_model, shown);
}

void DataGrid::askExport() {
    const auto path = m_prompts.saveFile(QStringLiteral("导出 CSV"), QStringLiteral("导出.csv"),
                                         QStringLiteral("CSV (*.csv)"));
    if (!path)
        return;
    if (exportCsv(*path))
        say(this, {QStringLiteral("已导出 CSV，%1 行：%2").arg(m_model->rowCount()).arg(*path)});
    else
        m_prompts.tell(QStringLiteral("文件不能写入：%1").arg(*path));
}
