#pragma once

#include "controls/recordsetModel.h"

#include <QStringList>
#include <QTableView>

#include <functional>

class Prompts;

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
    /// What stands in the middle of an empty grid.
    void setEmptyText(const QString& text) { m_emptyText = text; }
    /// An entry of the context menu above copy and export.
    void addContextAction(QAction* action) { m_actions << action; }
    /// Makes the columns as wide as the first rows need.
    void fitColumns();
    /// Ends an open cell editor, its text taken over.
    void commitEditor();
    /// Writes the shown columns and all rows of the view as CSV in UTF-8. False if the file cannot be
    /// written.
    bool exportCsv(const QString& path) const;
    /// The selected cells' rows as text, columns parted by tabs.
    QString selectedText() const;

Q_SIGNALS:
    /// The user clicked into a row, also into the current one, or moved there by a key.
    void rowChosen();
    /// A cell of the current row was given another value by the user.
    void cellEdited(int field);

protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void followRecordset();
    void askExport();

    Prompts& m_prompts;
    RecordsetModel* m_model;
    std::function<void()> m_rowHandler;
    QString m_emptyText;
    RecordsetPtr m_restingOn; // while the grid rests
    QStringList m_hidden;     // names of the columns that are not shown
    QList<QAction*> m_actions;
    bool m_following = false;
    bool m_pressing = false;
};
