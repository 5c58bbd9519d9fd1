#pragma once

#include <QStyledItemDelegate>

class DataGrid;

/// Edits a cell of a DataGrid in place. A text that the column refuses is not taken: a hint stands beside the
/// cell and the old value stays.
class CellEditor : public QStyledItemDelegate {
public:
    explicit CellEditor(DataGrid* grid);

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    /// Makes the text a pending edit of the cell; what to tell where that cannot be, else nothing.
    QString take(int row, int field, const QString& text) const;

    DataGrid* m_grid;
};
