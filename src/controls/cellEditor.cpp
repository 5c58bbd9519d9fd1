#include "controls/cellEditor.h"

#include "controls/dataGrid.h"
#include "controls/hint.h"
#include "controls/numberLimit.h"
#include "recordset/error.h"
#include "recordset/shownText.h"

#include <QLineEdit>

#include <algorithm>

namespace {

QString refusal(const ColumnInfo& column) {
    switch (column.type) {
    case ColumnType::Date:
        return QStringLiteral("“%1”要填日期，如 2004-2-1；已保留原值").arg(column.name);
    case ColumnType::Text:
        return QStringLiteral("“%1”最多 %2 个字；已保留原值").arg(column.name).arg(column.definedSize);
    default:
        return QStringLiteral("“%1”要填数字；已保留原值").arg(column.name);
    }
}

} // namespace

CellEditor::CellEditor(DataGrid* grid)
    : QStyledItemDelegate(grid)
    , m_grid(grid) {}

void CellEditor::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    if (option->backgroundBrush.style() == Qt::NoBrush)
        return;
    // A cell that has just been typed into is the current one, and its colour must show all the same.
    constexpr int darker = 120;
    option->palette.setColor(QPalette::Highlight, option->backgroundBrush.color().darker(darker));
    option->palette.setColor(QPalette::HighlightedText, option->palette.color(QPalette::Text));
}

QWidget* CellEditor::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                  const QModelIndex& index) const {
    const qsizetype letters = index.data(Qt::EditRole).toString().size();
    if (letters > kShownLetters) {
        showHint(m_grid->viewport(), m_grid->visualRect(index), tooLongHint());
        return nullptr;
    }
    auto* editor = new QLineEdit(parent);
    editor->setObjectName(QStringLiteral("cellEditor"));
    editor->setFrame(false);
    const ColumnInfo& column = m_grid->recordset()->fieldInfo(index.column());
    // A text that is too long for its column is not cut by looking at it; the column refuses it when it is
    // changed.
    if (column.type == ColumnType::Text)
        editor->setMaxLength(std::max(column.definedSize, int(letters)));
    editor->setAlignment(fieldAlignment(column));
    return editor;
}

void CellEditor::setEditorData(QWidget* editor, const QModelIndex& index) const {
    auto* box = static_cast<QLineEdit*>(editor);
    box->setText(index.data(Qt::EditRole).toString());
    box->selectAll();
}

void CellEditor::setModelData(QWidget* editor, QAbstractItemModel*, const QModelIndex& index) const {
    const QString text = static_cast<QLineEdit*>(editor)->text();
    if (text == index.data(Qt::EditRole).toString())
        return;
    const int field = index.column();
    const QString fault = take(index.row(), field, text);
    if (fault.isEmpty())
        Q_EMIT m_grid->cellEdited(field);
    else
        showHint(m_grid->viewport(), m_grid->visualRect(index), fault);
}

QString CellEditor::take(int row, int field, const QString& text) const {
    const RecordsetPtr& recordset = m_grid->recordset();
    const ColumnInfo& column = recordset->fieldInfo(field);
    recordset->moveTo(row);
    if ((column.type == ColumnType::Number && !isReckonable(text)) || !m_grid->canReckonWith(field, text))
        return tooLargeHint();
    try {
        recordset->Fields(field).setValue(text);
        return {};
    } catch (const RuntimeError&) {
        return refusal(column);
    }
}
