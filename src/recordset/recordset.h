#pragma once

#include "recordset/condition.h"
#include "recordset/connection.h"
#include "recordset/rowView.h"
#include "recordset/transactionClient.h"

#include <QString>
#include <QStringList>

#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

class Predicate;
class Recordset;
using RecordsetPtr = std::shared_ptr<Recordset>;

/// What happens to a recordset's view and position, for whoever shows it. Positions count from 0.
class RecordsetObserver {
public:
    virtual ~RecordsetObserver() = default;
    /// Rows or their order are others now.
    virtual void viewReset() {}
    virtual void rowsAboutToBeRemoved(int /*first*/, int /*last*/) {}
    virtual void rowsRemoved() {}
    virtual void rowAboutToBeAppended() {}
    virtual void rowAppended() {}
    /// Cells of a row of the view changed, here or through another cursor.
    virtual void rowChanged(int /*position*/) {}
    /// The current row or the view changed; held back during a QuietWalk and then told once.
    virtual void currentChanged() {}
};

/// A place to come back to, valid until the next Requery or reopen.
struct Bookmark {
    quint64 opening = 0;
    RowId row = 0;
};

/// A column of the current row.
class Field {
public:
    Field(Recordset& recordset, int index)
        : m_recordset(&recordset)
        , m_index(index) {}

    QString Name() const;
    ColumnType type() const;
    /// Characters of a text column; number 8, integers 4, date 19.
    int DefinedSize() const;
    /// What this cursor shows, its pending edit included. Throws NoCurrentRow.
    CellValue Value() const;
    /// Makes a pending edit, converted to the column's type. Throws NoCurrentRow, ReadOnly, TypeMismatch,
    /// TextTooLong.
    void setValue(const CellValue& value);
    void setValue(const QString& text) { setValue(CellValue(text)); }
    void setValue(double number) { setValue(CellValue(number)); }
    /// Whether a box of this text shows, untouched, a text that is too long for its column, which another
    /// program put there, or its beginning. Writing the box would cut it.
    bool isTooLongFor(const QString& boxText) const;
    /// Writes what a box shows, blanks off both ends, unless the text there is to stay whole.
    void setFromBox(const QString& boxText);
    /// What the table holds, without this cursor's pending edits; Null on a new row.
    CellValue OriginalValue() const;
    CellValue UnderlyingValue() const { return OriginalValue(); }
    /// Value as boxes show it: Null "", blanks off both ends.
    QString text() const { return fieldText(Value()); }
    /// The same where it is only looked at: of a long text its beginning.
    QString shown() const;
    /// Value in arithmetic: Null is 0.
    double number() const { return toNumber(Value()); }

private:
    Recordset* m_recordset;
    int m_index;
};

/// A cursor over a table or a query result: a keyset of rows, a view of it under Filter and Sort, a position,
/// and pending edits that only Update and UpdateBatch write. All cursors over a table share its image, so
/// that an update or a deletion is seen by all at once; a row inserted elsewhere is seen after Requery or
/// reopen. Where a transaction is taken back, rows, pending edits, Filter, Sort and position are as before
/// it.
class Recordset : private ImageClient, private TransactionClient {
public:
    enum class Direction { Forward, Backward };

    explicit Recordset(Connection& connection);
    ~Recordset() override;
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    /// Runs a statement of the dialect. One that gives no rows leaves the recordset closed. Throws IsOpen,
    /// BadText, TableMissing, NoSuchField, TableExists, DropMissing, Engine.
    void Open(const QString& source);
    /// Opens on rows that another reader gave, as a fixed picture. Throws IsOpen.
    void OpenPicture(std::shared_ptr<TableImage> picture);
    /// Opens on these rows of another cursor, in this order, over the same image. For a look at them until a
    /// copy of them stands in a table. Throws IsOpen.
    void OpenRows(const Recordset& other, std::vector<RowId> rows);
    void Close();
    /// 0 closed, 1 open.
    int State() const { return m_image ? 1 : 0; }
    bool isOpen() const { return m_image != nullptr; }
    /// The statement that it was opened with.
    const QString& source() const { return m_source; }
    /// Open with at least one row in the view.
    bool hasRows() const { return m_image && m_view.size() > 0; }
    /// Runs the statement again: pending edits dropped, Filter off, Sort kept and applied.
    void Requery();

    /// BOF and EOF under names that the C library leaves free.
    bool isBOF() const;
    bool isEOF() const;
    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();
    int RecordCount() const;
    /// Rows without the Filter.
    int wholeCount() const;
    /// From 1; -1 without a row, -2 before the first, -3 after the last.
    int AbsolutePosition() const;
    void setAbsolutePosition(int position);
    int PageSize() const;
    void setPageSize(int rows);
    int PageCount() const;
    int AbsolutePage() const;
    void setAbsolutePage(int page);
    ::Bookmark Bookmark() const;
    void setBookmark(const ::Bookmark& bookmark);

    QString Filter() const;
    /// "" shows all rows. Throws BadText, and leaves everything as it was.
    void setFilter(const QString& text);
    void clearFilter() { setFilter({}); }
    QString Sort() const;
    void setSort(const QString& text);
    /// Searches from `skip` rows behind the current one, which is the first one looked at; no match: EOF (BOF
    /// backward).
    void Find(const QString& text, int skip = 0, Direction direction = Direction::Forward);

    Field Fields(const QString& name);
    Field Fields(int index);
    int fieldCount() const;
    /// Index of a field by its name in any case. Throws NoSuchField.
    int fieldIndex(const QString& name) const;
    QStringList fieldNames() const;

    void AddNew();
    /// What a column stores for a value, as an assignment to the field would. Throws TypeMismatch,
    /// TextTooLong.
    CellValue storable(int field, const CellValue& value) const;
    /// Adds a row with these values, one a field and storable, and writes it at once: the short way of
    /// AddNew, assignments and Update.
    void AddNew(const std::vector<CellValue>& values);
    void Update();
    void CancelUpdate();
    void Delete();
    /// 3 (all rows) is the one option that the system uses.
    void UpdateBatch(int affected = 3);
    void CancelBatch(int affected = 3);
    /// Rows with edits that are not updated yet.
    int pendingCount() const { return int(m_edits.size()); }

    // For grids and walks, which read other rows than the current one.

    /// Value of a field at a position of the view, from 0.
    CellValue valueAt(int position, int field) const;
    /// What is shown of it: fieldText, of a long text its beginning.
    QString shownAt(int position, int field) const { return shownOf(rowAt(position), field); }
    /// The same where it can be had without waiting for another program that holds the file.
    std::optional<QString> shownAtOnce(int position, int field) const;
    double numberAt(int position, int field) const { return toNumber(valueAt(position, field)); }
    /// Calls `visit(row)` for every row of the view in order, the fast way for walks over all of them.
    template <typename Visit> void eachRow(Visit&& visit) const { m_view.each(visit); }
    RowId rowAt(int position) const { return m_view.at(m_view.placeAt(RowView::Place(position))); }
    /// Makes the row at a position of the view current.
    void moveTo(int position) { setAbsolutePosition(position + 1); }
    const ColumnInfo& fieldInfo(int field) const;
    /// Image and image column behind a field, for loops over whole columns.
    const TableImage& image() const { return *m_image; }
    int imageColumn(int field) const { return m_fields[std::size_t(field)]; }
    const PendingEdits& pendingEdits() const { return m_edits; }
    bool isReadOnly() const { return !m_image || m_image->isPicture(); }
    /// Reads these columns in one scan before a loop needs them.
    void prefetch(const QStringList& fields) const;
    /// Identity of the current row, nothing without one. Unlike a bookmark it outlives a Requery.
    std::optional<RowId> currentRow() const;
    /// Where a row stands in the view, from 0; nothing where it does not.
    std::optional<int> positionOf(RowId row) const;
    /// Makes a row current by its identity; false if it is not in the view.
    bool moveToRow(RowId row);

    void observe(RecordsetObserver* observer) { m_observers.push_back(observer); }
    void unobserve(RecordsetObserver* observer) { std::erase(m_observers, observer); }

private:
    friend class Field;
    friend class QuietWalk;

    enum class Place { OnRow, BeforeFirst, AfterLast, None, Gone };
    struct Position {
        Place place = Place::None;
        RowView::Place at = 0; // OnRow: its place; Gone: the place behind the row that is gone
    };
    struct CurrentMark {
        Place place = Place::None;
        RowId row = 0;
        quint64 view = 0;
        bool operator==(const CurrentMark&) const = default;
    };
    struct AddedRow {
        RowId row;
        std::optional<RowId> before; // the row that was current before AddNew
        Place placeBefore;
    };

    // Opening.
    void openTable(const SqlStatement& statement);
    void openResult(const SqlStatement& statement);
    void selectFields(const SqlStatement& statement);
    void attach(std::shared_ptr<TableImage> image);
    void attachPicture(std::shared_ptr<TableImage> picture);
    void startAfresh();
    void readKeyset(const SqlStatement& statement);

    // View and position.
    void requireOpen() const;
    RowId requireRow() const;
    void show(RowView view);
    /// The rows that a Filter lets through in the order of these keys. Where that is the base order of all of
    /// them, their number does not count.
    RowView viewOf(const QString& filter, const std::vector<SortKey>& keys) const;
    bool standsInOrder(const std::vector<SortKey>& keys) const;
    void showAllRows();
    std::vector<RowId> rowsUnderFilter() const;
    /// The rows of the keyset that a Filter lets through; all of them without a text.
    std::vector<RowId> rowsOfFilter(const QString& text) const;
    std::vector<RowId> sorted(std::vector<RowId> rows, const std::vector<SortKey>& keys) const;
    std::vector<SortKey> sortKeys(const QString& text) const;
    void goFirst();
    void moveToEnd(bool last);
    Place place() const { return m_position.place; }
    int searchStart(int skip, Direction direction) const;
    std::optional<int> firstShown(const std::vector<Row>& rows, RowId from) const;
    std::optional<int> findIndexed(const Predicate& predicate, int from, bool forward) const;
    void settle();
    template <typename Notice> void notify(Notice&& notice) {
        const std::vector<RecordsetObserver*> observers = m_observers;
        for (RecordsetObserver* observer : observers)
            if (std::find(m_observers.begin(), m_observers.end(), observer) != m_observers.end())
                notice(*observer);
    }

    // Editing.
    void requireWritable() const;
    void writeRow(RowId row);
    void removeFromView(RowView::Place place);
    void dropNewRow(RowId row);
    CellValue valueOf(RowId row, int field) const;
    QString shownOf(RowId row, int field) const;
    CellValue originalOf(RowId row, int field) const;
    void assign(int field, const CellValue& value);
    std::vector<RowId> pendingInBaseOrder() const;

    // TransactionClient.
    void transactionBegun() override;
    void transactionKept() override;
    void transactionTakenBack() noexcept override;
    void tellTakenBack() override;
    struct Before;
    void restore(Before& before);
    void takeImage(std::shared_ptr<TableImage> image);
    void readAgain();
    void viewAgain();

    // ImageClient.
    void rowUpdated(Row row) override;
    void rowAboutToBeDeleted(Row row) override;
    void rowDeleted(Row row) override;
    void allRowsDeleted() override;

    Connection& m_connection;
    QString m_source;
    std::shared_ptr<TableImage> m_image;
    std::vector<int> m_fields; // image column of each field
    quint64 m_opening = 0;
    Keyset m_keyset;
    std::size_t m_judged = 0; // rows of the keyset behind its prefix that the Filter has seen
    RowView m_view;
    Position m_position;
    QString m_filterText;
    QString m_sortText;
    std::vector<SortKey> m_sort;
    int m_pageSize = 10;
    PendingEdits m_edits;
    std::vector<AddedRow> m_added;
    RowId m_nextNewRow = kNewRowBit;
    std::map<RowId, Row> m_insertedAs; // new rows that were updated, for bookmarks taken before
    std::vector<RecordsetObserver*> m_observers;
    int m_quiet = 0;
    quint64 m_viewVersion = 0;
    CurrentMark m_told;
    std::optional<RowView::Place> m_beingDeleted;
    std::unique_ptr<Before> m_before; // what a transaction under way may have to bring back
    bool m_untold = false;            // taken back, and nobody who shows it knows yet
};

/// While it lives, observers hear nothing of the current row; they are told once at its end if the row or the
/// view is another one. For routines that walk, Find or test the ends.
class QuietWalk {
public:
    explicit QuietWalk(RecordsetPtr recordset);
    ~QuietWalk() noexcept(false);
    QuietWalk(const QuietWalk&) = delete;
    QuietWalk& operator=(const QuietWalk&) = delete;

private:
    RecordsetPtr m_recordset;
    int m_exceptions;
};

/// Puts a new recordset into the slot and opens it there; where that fails, the slot holds a closed one.
void reopen(RecordsetPtr& slot, Connection& connection, const QString& source);

/// Runs a statement that gives no rows.
void runStatement(Connection& connection, const QString& source);

/// "position/count" of a cursor; beyond an end the row of that end; "0/0" without rows or closed.
QString positionText(const RecordsetPtr& recordset);
