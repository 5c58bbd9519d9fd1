#include "controls/recordsetModel.h"

#include "export/exportTable.h"
#include "recordset/shownText.h"

#include <QAbstractItemView>
#include <QColor>

namespace {

constexpr int kLater = 500; // milliseconds until what could not be read is asked for again
const QColor kPendingColour(0xFF, 0xE3, 0xA3);

} // namespace

Qt::Alignment fieldAlignment(const ColumnInfo& column) {
    if (column.type == ColumnType::Date)
        return Qt::AlignCenter;
    if (column.type == ColumnType::Text && !keepsNumbers(column))
        return Qt::AlignLeft | Qt::AlignVCenter;
    return Qt::AlignRight | Qt::AlignVCenter;
}

RecordsetModel::RecordsetModel(QObject* parent)
    : QAbstractTableModel(parent) {
    m_later.setSingleShot(true);
    m_later.setInterval(kLater);
    // Painted again and not told as changed: an editor that is open would lose what is typed into it.
    connect(&m_later, &QTimer::timeout, this, [this] {
        if (auto* view = qobject_cast<QAbstractItemView*>(QObject::parent()))
            view->viewport()->update();
    });
}

RecordsetModel::~RecordsetModel() {
    if (m_recordset)
        m_recordset->unobserve(this);
}

void RecordsetModel::setRecordset(RecordsetPtr recordset) {
    if (m_recordset)
        m_recordset->unobserve(this);
    m_recordset = std::move(recordset);
    if (m_recordset)
        m_recordset->observe(this);
    viewReset();
}

void RecordsetModel::setOverlay(Overlay overlay) {
    m_overlay = std::move(overlay);
}

void RecordsetModel::refreshRow(RowId row) {
    if (const auto position = m_recordset->positionOf(row))
        rowChanged(*position);
}

void RecordsetModel::refreshAll() {
    if (m_rows > 0)
        Q_EMIT dataChanged(index(0, 0), index(m_rows - 1, m_columns - 1));
}

int RecordsetModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_rows;
}

int RecordsetModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_columns;
}

CellValue RecordsetModel::cellValue(int row, int field) const {
    if (row >= m_rows)
        return {};
    if (m_overlay)
        if (auto shown = m_overlay(m_recordset->rowAt(row), field))
            return *std::move(shown);
    return m_recordset->valueAt(row, field);
}

QString RecordsetModel::shownCell(int row, int field) const {
    if (m_overlay)
        if (const auto shown = m_overlay(m_recordset->rowAt(row), field))
            return shownText(fieldText(*shown));
    // A grid is painted whatever happens: what another program keeps from being read is shown later.
    const auto shown = m_recordset->shownAtOnce(row, field);
    if (!shown)
        m_later.start();
    return shown.value_or(QString());
}

bool RecordsetModel::isPending(const QModelIndex& index) const {
    const PendingEdits& edits = m_recordset->pendingEdits();
    return !edits.empty() &&
           edits.find(m_recordset->rowAt(index.row()), m_recordset->imageColumn(index.column()));
}

/// What a screen reader says of a cell: the caption of its column, what it shows, and whether that is saved.
QString RecordsetModel::spokenCell(const QModelIndex& index) const {
    const QString text = shownCell(index.row(), index.column());
    const QString spoken =
        m_recordset->fieldInfo(index.column()).name + u'：' + (text.isEmpty() ? QStringLiteral("空") : text);
    return m_editable && isPending(index) ? spoken + QStringLiteral("，没有保存") : spoken;
}

QVariant RecordsetModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= m_rows || index.column() >= m_columns)
        return {};
    if (role == Qt::DisplayRole)
        return shownCell(index.row(), index.column());
    if (role == Qt::EditRole)
        return fieldText(cellValue(index.row(), index.column()));
    if (role == Qt::AccessibleTextRole)
        return spokenCell(index);
    if (role == Qt::AccessibleDescriptionRole)
        return QStringLiteral("第 %1 行，共 %2 行").arg(index.row() + 1).arg(m_rows);
    if (role == Qt::BackgroundRole && m_editable)
        return isPending(index) ? QVariant(kPendingColour) : QVariant();
    if (role != Qt::TextAlignmentRole)
        return {};
    return int(fieldAlignment(m_recordset->fieldInfo(index.column())));
}

QVariant RecordsetModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section < m_columns)
        return m_recordset->fieldInfo(section).name;
    if (orientation == Qt::Vertical && role == Qt::DisplayRole)
        return section + 1;
    return {};
}

Qt::ItemFlags RecordsetModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    const bool editable = index.isValid() && m_editable && !m_recordset->isReadOnly() &&
                          m_recordset->fieldInfo(index.column()).type != ColumnType::Serial;
    return editable ? flags | Qt::ItemIsEditable : flags;
}

void RecordsetModel::viewReset() {
    beginResetModel();
    const bool open = m_recordset && m_recordset->isOpen();
    m_rows = open ? m_recordset->RecordCount() : 0;
    m_columns = open ? m_recordset->fieldCount() : 0;
    endResetModel();
}

void RecordsetModel::rowsAboutToBeRemoved(int first, int last) {
    m_removing = true;
    beginRemoveRows({}, first, last);
    m_rows -= last - first + 1;
}

void RecordsetModel::rowsRemoved() {
    endRemoveRows();
    m_removing = false;
}

void RecordsetModel::rowAboutToBeAppended() {
    beginInsertRows({}, m_rows, m_rows);
}

void RecordsetModel::rowAppended() {
    ++m_rows;
    endInsertRows();
}

void RecordsetModel::rowChanged(int position) {
    Q_EMIT dataChanged(index(position, 0), index(position, m_columns - 1));
}

void RecordsetModel::currentChanged() {
    Q_EMIT currentRowMoved();
}
