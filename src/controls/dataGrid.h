#pragma once

#include "controls/gridColumns.h"
#include "controls/recordsetModel.h"
#include "export/exportTable.h"

#include <QAccessible>
#include <QPointer>
#include <QStringList>
#include <QTableView>

#include <functional>
#include <memory>

class Prompts;
struct ExportKind;

/// A table bound to a recordset. It follows the recordset's rows, filter, sort and position, and a row chosen
/// in it becomes the recordset's current row. Rows all have one height; no row costs a widget.
class DataGrid : public QTableView {
    Q_OBJECT

public:
    explicit DataGrid(Prompts& prompts, QWidget* parent = nullptr);

    /// Binds the grid and hides the named columns, so far as the recordset has them.
    void bind(const RecordsetPtr& recordset, const QStringList& hidden = {});
    /// Lets go of the recordset: an empty grid that hears of nothing.
    void unbind() { m_model->setRecordset(nullptr); }
    /// Hears of nothing while nobody sees the grid; wake() binds it again to what it was bound to.
    void rest();
    void wake();
    const RecordsetPtr& recordset() const { return m_model->recordset(); }
    RecordsetModel& recordsetModel() { return *m_model; }

    /// Runs after every change of the recordset's current row or view, whoever made it (a move of the user's,
    /// a Find, Filter, Sort, a deletion), but not inside a QuietWalk;
    /// also when another recordset is bound.
    void setRowHandler(std::function<void()> handler) { m_rowHandler = std::move(handler); }
    /// Lets cells be edited in place; a changed cell is a pending edit.
    void setEditable(bool editable);
    /// Whether the row can be reckoned with after `text` has been typed into `field` of the current row.
    using CellCheck = std::function<bool(int field, const QString& text)>;
    /// A typed value that the check refuses leaves its cell as it was, with a hint.
    void setCellCheck(CellCheck check) { m_cellCheck = std::move(check); }
    bool canReckonWith(int field, const QString& text) const {
        return !m_cellCheck || m_cellCheck(field, text);
    }
    /// Lets a key choose a row only with Enter or the space bar; moving to it by the arrows does not.
    void setChosenByEnter() { m_chosenByEnter = true; }
    /// What stands in the middle of the grid of an empty table.
    void setEmptyText(const QString& text) { m_emptyText = text; }
    /// The same where a filter leaves no row.
    void setNothingFoundText(const QString& text) { m_nothingFoundText = text; }
    /// What an empty grid says: that its table is empty, that its filter finds nothing, or that it has no
    /// table.
    QString emptyText() const;
    /// Shows these columns before the others, in this order.
    void setColumnsInFront(const QStringList& names) { m_columns->setInFront(names); }
    /// Takes up what the user has made of the columns before, and notes what he will.
    void rememberColumns(std::shared_ptr<ColumnsByUser> memory);
    /// A click on a caption asks for the rows in the order of its column, and a sign in the captions tells
    /// how they are sorted, whoever sorted them.
    void sortByCaptions();
    /// An entry of the context menu above copy and export.
    void addContextAction(QAction* action) { m_actions << action; }
    /// Makes the columns as wide as the first rows need.
    void fitColumns() { m_columns->fit(); }
    /// Ends an open cell editor, its text taken over.
    void commitEditor();
    /// The shown columns, as they stand, and all rows of the view.
    ExportTable exportTable() const;
    /// Captions and rows of what is selected as text, columns parted by tabs; "" where it was stopped.
    QString selectedText(const ExportSteps& steps = {}) const;

Q_SIGNALS:
    /// The user clicked into a row, also into the current one, or moved there by a key.
    void rowChosen();
    /// A cell of the current row was given another value by the user.
    void cellEdited(int field);
    /// The rows are asked for in the order of a field, the other way round where they are in it already.
    void sortAsked(const QString& field, bool descending);

protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void focusInEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    /// Typed letters go to no row: who types has a box in mind.
    void keyboardSearch(const QString&) override {}
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void followRecordset();
    void fitToRows();
    void fitFirstRows();
    void copySelection();
    void exportRows(const ExportKind& kind);
    void askSort(int column);
    void showSort();
    void tellReader(QAccessible::Event type, const QModelIndex& cell);

    Prompts& m_prompts;
    RecordsetModel* m_model;
    GridColumns* m_columns;
    std::function<void()> m_rowHandler;
    CellCheck m_cellCheck;
    QString m_emptyText;
    QString m_nothingFoundText;
    RecordsetPtr m_restingOn; // while the grid rests
    QStringList m_hidden;     // names of the columns that are not shown
    QList<QAction*> m_actions;
    QPointer<QWidget> m_focusAfterPress;
    bool m_chosenByEnter = false;
    bool m_sortsByCaptions = false;
    bool m_fitted = false; // the columns' widths suit rows, not only their heads
    bool m_following = false;
    bool m_pressing = false;
};
