#pragma once

#include "recordset/distinctTexts.h"
#include "recordset/equalityIndex.h"
#include "recordset/textRanks.h"

#include <QStringList>

#include <memory>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

class Connection;
class Statement;

/// Values for columns of a row, by column index.
using CellChanges = std::vector<std::pair<int, CellValue>>;

/// A cursor over an image, told of what other cursors and statements did to its rows.
class ImageClient {
public:
    virtual ~ImageClient() = default;
    virtual void rowUpdated(Row row) = 0;
    virtual void rowAboutToBeDeleted(Row row) = 0;
    virtual void rowDeleted(Row row) = 0;
    /// Every row was deleted at once.
    virtual void allRowsDeleted() = 0;
};

/// What a thread needs to read columns of an image: its slots as they were then.
struct WarmSource {
    Row size = 0;
    std::vector<qint64> rowids; // by slot; none where slot r holds the row with the rowid r + 1
    std::vector<char> deleted;
};

/// A column that a thread read, and what it made of it.
struct WarmedColumn {
    int column = 0;
    bool read = false; // or taken from the image, whose texts keep their codes
    TextPool original; // of the image's column that was taken
    ColumnStore store;
    std::vector<char> missing; // slots whose rows it did not see
    std::optional<EqualityIndex> index;
    std::optional<TextRanks> ranks;
    std::optional<DistinctTexts> distinct;
};

/// The rows of one open table in memory, a column at a time, shared by all cursors over it and written
/// through to the database. Columns are read on their first use. Without a connection it is the private,
/// fixed picture that a query gave.
class TableImage {
public:
    TableImage(Connection& connection, QString table, const std::vector<ColumnInfo>& columns);
    /// A picture: rows are appended by the query that fills it.
    explicit TableImage(const std::vector<ColumnInfo>& columns);
    /// A picture of whole columns, one cell a row in each.
    explicit TableImage(std::vector<ColumnStore> columns);

    /// Reads the identity and the serial of every row, and these columns with them.
    void loadRows(const QStringList& columns);
    /// Reads those of these columns that are not in memory yet, in one scan.
    void load(const std::vector<int>& columns) const;
    void loadAllColumns() const;
    /// Takes columns that are in memory in `source` over from there, by their names, in place of reading
    /// them; those named in `but` apart. In: row k of this table is a copy of rows[k] of the source.
    void takeColumns(const TableImage& source, const std::vector<Row>& rows, const QStringList& but) const;

    const QString& table() const { return m_table; }
    bool isPicture() const { return m_connection == nullptr; }
    bool isDropped() const { return m_dropped; }
    int columnCount() const { return int(m_columns.size()); }
    const ColumnInfo& info(int column) const { return m_columns[std::size_t(column)].info; }
    /// Index of a column by its name in any case, -1 if there is none.
    int columnIndex(const QString& name) const;

    /// Slots in use, deleted ones included.
    Row size() const { return Row(m_rowids.size()); }
    Row deletedCount() const { return m_deletedCount; }
    bool isDeleted(Row row) const { return m_deletedCount > 0 && m_deleted[row]; }
    /// The deleted slots below `limit`, ascending.
    std::vector<Row> deletedBelow(Row limit) const;
    /// Where the live slots below `limit` stand in the ascending order of a column, which is not one of
    /// texts: the ordinal of the last of them, 0 without any. Nothing where they do not. What was found out
    /// is kept, so that asking again costs a look at the rows that came since.
    std::optional<quint64> ascendsTo(int column, Row limit) const;
    /// The column with its cells, read if it is not in memory yet.
    const ColumnStore& column(int column) const;
    /// Gives texts that no row holds yet a code, for keys of pending edits.
    TextPool::Code internText(int column, const QString& text) const;
    CellValue value(Row row, int column) const;
    /// What is shown of it: fieldText, of a long text its beginning.
    QString shown(Row row, int column) const;
    qint64 rowid(Row row) const { return m_rowids[row]; }
    /// Slots of these rowids, which are in ascending order; unknown ones are left out.
    std::vector<Row> rowsOf(const std::vector<qint64>& rowids) const;
    /// Appends to `rows` the live rows below `limit` whose text has one of these codes, ascending.
    void collectEqual(int column, const std::vector<TextPool::Code>& codes, Row limit,
                      std::vector<Row>& rows) const;
    /// How many rows collectEqual would look at, nothing where it would have to scan the column.
    std::optional<std::size_t> countEqual(int column, const std::vector<TextPool::Code>& codes) const;
    /// Rank of every code of a text column in the order of texts; index 0 is Null's and holds 0.
    const std::vector<quint32>& textRanks(int column) const;

    /// The distinct texts of a text column over all live rows in their order, Null first; null where texts
    /// differ in case alone or share a rank. Kept from the first call on while rows come and go.
    const std::vector<TextPool::Code>* distinctTexts(int column) const;

    Row insert(CellChanges cells);
    void update(Row row, const CellChanges& cells);
    void remove(Row row);
    void removeAll();
    /// From here on every change is noted, until the batch is kept or taken back.
    void transactionBegun();
    void transactionKept() { m_undo.reset(); }
    /// Puts every row back as it was when the batch began. Cursors are not told.
    void transactionTakenBack();
    /// The table is gone from the database: the rows stay for reading, writing fails.
    void markDropped() { m_dropped = true; }
    /// The rows are not those of the file: cursors over them close when they are told of it.
    void vanish() { m_vanished = m_dropped = true; }
    bool hasVanished() const { return m_vanished; }
    void appendPictureRow(const std::vector<CellValue>& cells);

    /// From here on rows that change are noted, until the columns that a thread reads meanwhile are adopted.
    WarmSource beginWarming();
    /// A column in memory for a thread, with texts of its own under the same codes.
    ColumnStore columnCopy(int column) const;
    bool isLoaded(int column) const { return m_columns[std::size_t(column)].loaded; }
    /// Takes over what a thread made, with the rows noted put right. A column that came into memory by
    /// another way stays as it is, and false is given. Throws RuntimeError where a row cannot be read.
    bool adopt(WarmedColumn&& warmed);
    void endWarming();

    void attach(ImageClient* client) { m_clients.push_back(client); }
    bool hasClients() const { return !m_clients.empty(); }
    void detach(ImageClient* client) { std::erase(m_clients, client); }

    /// Bytes of the cells in memory; indexes and ranks apart.
    std::size_t memory() const;
    std::size_t indexMemory() const;

private:
    /// What a transaction has changed so far.
    struct Undo {
        struct Cell {
            Row row;
            int column;
            CellValue value;
        };
        Row size = 0;                         // slots when it began
        std::vector<char> loaded;             // columns in memory then
        std::vector<Cell> cells;              // as they were, the latest last
        std::vector<Row> deleted;             // one by one
        std::optional<std::vector<char>> all; // marks of all rows before they went at once
    };

    /// A row that was read by itself. Of a text longer than is shown it holds the beginning.
    struct ReadRow {
        std::vector<CellValue> cells;
        std::vector<char> cut; // by column
    };

    void requireWritable() const;
    void noteCells(Row row, const CellChanges& cells);
    void unload(int column);
    std::vector<Row> rowsToPutRight(Row known) const;
    void putRight(WarmedColumn& warmed, Row row) const;
    Statement& insertStatement(const CellChanges& cells);
    void fillColumn(ColumnStore& column, const ColumnStore& loaded, const std::vector<qint64>& rowids) const;
    /// Whether the column is in memory; while it is not, its rows are read one by one.
    bool isHeld(int column) const;
    const ReadRow& readRow(Row row) const;
    void readCell(const Statement& statement, int column, ReadRow& read) const;
    void setCell(Row row, int column, const CellValue& value);
    template <typename Notice> void tell(Notice&& notice);

    Connection* m_connection = nullptr;
    QString m_table;
    mutable std::vector<ColumnStore> m_columns;
    std::vector<qint64> m_rowids;
    std::vector<char> m_deleted;
    Row m_deletedCount = 0;
    int m_serialColumn = -1;
    qint32 m_lastSerial = 0;
    qint64 m_lastRowid = 0;
    bool m_dropped = false;
    bool m_vanished = false;
    std::unique_ptr<Undo> m_undo;
    std::optional<std::vector<Row>> m_changedRows; // while a thread reads columns: changed or deleted since
    std::vector<ImageClient*> m_clients;
    mutable std::vector<EqualityIndex> m_indexes;
    mutable std::vector<TextRanks> m_ranks;
    mutable std::vector<DistinctTexts> m_distinct;
    mutable std::vector<Row> m_ascending; // by column: the slots below stand in its order
    /// Rows read one by one while their columns are not in memory: what a grid shows before anything else is
    /// asked.
    mutable std::unordered_map<Row, ReadRow> m_readRows;
    mutable int m_rowReads = 0;
    std::vector<int> m_insertedColumns; // of the statement that inserted last
    Statement* m_insertStatement = nullptr;
};
