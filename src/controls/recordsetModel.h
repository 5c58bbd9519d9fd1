#pragma once

#include "recordset/recordset.h"

#include <QAbstractTableModel>
#include <QTimer>

#include <functional>
#include <optional>

/// Where a column's values stand in their cells: numbers to the right, also those that are kept as texts,
/// dates in the middle.
Qt::Alignment fieldAlignment(const ColumnInfo& column);

/// A recordset as Qt's item views want it: its view row by row, pending edits included. Cells are made into
/// text only when they are painted; of a long text the beginning is, and Qt::EditRole has the whole. Where
/// cells can be edited, those with a pending edit have a colour of their own.
class RecordsetModel : public QAbstractTableModel, private RecordsetObserver {
    Q_OBJECT

public:
    /// What a cell shows in place of its value; painted only, never an edit.
    using Overlay = std::function<std::optional<CellValue>(RowId row, int field)>;

    explicit RecordsetModel(QObject* parent = nullptr);
    ~RecordsetModel() override;

    void setRecordset(RecordsetPtr recordset);
    const RecordsetPtr& recordset() const { return m_recordset; }
    void setOverlay(Overlay overlay);
    void setEditable(bool editable) { m_editable = editable; }
    /// Paints a row again whose overlay changed.
    void refreshRow(RowId row);
    void refreshAll();
    /// Whether rows are leaving at this moment: a view that then looks for another current row does not speak
    /// for its user.
    bool isRemoving() const { return m_removing; }
    /// What a cell shows, the overlay first; Null beyond the last row.
    CellValue cellValue(int row, int field) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

Q_SIGNALS:
    /// The current row or the view is another one.
    void currentRowMoved();

private:
    void viewReset() override;
    void rowsAboutToBeRemoved(int first, int last) override;
    void rowsRemoved() override;
    void rowAboutToBeAppended() override;
    void rowAppended() override;
    void rowChanged(int position) override;
    void currentChanged() override;
    /// Whether the cell holds what was typed into it and is not saved.
    bool isPending(const QModelIndex& index) const;
    QString shownCell(int row, int field) const;
    QString spokenCell(const QModelIndex& index) const;

    RecordsetPtr m_recordset;
    mutable QTimer m_later; // until cells that could not be read are painted again
    Overlay m_overlay;
    bool m_editable = false;
    bool m_removing = false;
    int m_rows = 0;
    int m_columns = 0;
};
