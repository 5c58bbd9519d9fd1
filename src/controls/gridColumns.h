#pragma once

#include <QHash>
#include <QObject>
#include <QStringList>

#include <memory>

class QTableView;
class RecordsetModel;

/// What a user has made of a table's columns, by their names.
struct ColumnsByUser {
    QStringList order; // from left to right; empty: as the program puts them
    QHash<QString, int> widths;
};

/// Order and widths of a grid's columns. Columns are as wide as their first rows need, and a text column
/// takes the space that is left; what the user has moved or widened stays as he left it.
class GridColumns : public QObject {
    Q_OBJECT

public:
    GridColumns(QTableView& grid, RecordsetModel& model);

    /// These columns stand before the others, in this order.
    void setInFront(const QStringList& names) { m_inFront = names; }
    /// Takes up what the user has made of these columns before, and notes what he will.
    void remember(std::shared_ptr<ColumnsByUser> memory);
    /// Puts the columns of another table in order; `hidden` names those that are not shown.
    void arrange(const QStringList& hidden);
    /// Makes the columns as wide as the first rows need.
    void fit();
    /// Gives the space that is left to a text column.
    void fill();
    /// The columns that are shown, from left to right.
    std::vector<int> shown() const;

private:
    QString nameOf(int column) const;
    int neededWidth(int column) const;
    void noteWidth(int column, int before, int width);
    void noteOrder();
    void putInOrder();

    QTableView& m_grid;
    RecordsetModel& m_model;
    std::shared_ptr<ColumnsByUser> m_byUser = std::make_shared<ColumnsByUser>();
    QStringList m_inFront;
    int m_fill = -1;       // the column that takes the space left
    int m_fillNeeds = 0;   // its width without that space
    bool m_laying = false; // the program moves and widens, not the user
};
