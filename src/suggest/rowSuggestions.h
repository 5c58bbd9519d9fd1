#pragma once

#include "recordset/recordset.h"
#include "suggest/nameReadings.h"
#include "suggest/prefixIndex.h"

#include <QObject>

#include <atomic>
#include <thread>

/// A row that is offered.
struct SuggestedRow {
    RowId row;
    QStringList texts; // of the columns, as boxes show them
};

/// Offers the rows of a table whose number, names, or readings of names begin with what was typed. The rows
/// are read and put in order once, in a thread with a connection of its own; what changes in them afterwards
/// is followed. Without such a reading nothing is offered, and nothing else is missing. Its memory is about
/// that of the columns.
class RowSuggestions : public QObject, private ImageClient {
    Q_OBJECT

public:
    /// More changed rows than this are not looked at one by one: the table is read again.
    static constexpr int kMostChanges = 200;

    /// `columns`: the number's, and behind it those of names.
    RowSuggestions(Connection& connection, QString table, QStringList columns);
    ~RowSuggestions() override;

    /// Begins to read the table, which is open; ready() comes when its rows can be offered. What was read
    /// before is offered until then.
    void start();
    bool isReady() const { return m_readings != nullptr; }
    /// At most `most` rows, in the order of what they were found by. Nothing while another program holds the
    /// file.
    std::vector<SuggestedRow> offer(const QString& typed, int most = 10);
    std::size_t memory() const { return m_index.memory(); }

Q_SIGNALS:
    void ready();

private:
    /// What the thread hands over.
    struct Read {
        PrefixIndex index;
        std::unique_ptr<NameReadings> readings;
    };

    void stop();
    void letGo();
    using Texts = std::vector<std::pair<qint64, QStringList>>; // of rows, by rowid
    bool fetch(Statement& statement, qint64 behind, Texts& rows);
    std::shared_ptr<Read> read(const QString& path, const QString& select);
    bool pause() const;
    void take(int reading, const std::shared_ptr<Read>& read);
    /// Puts the rows that changed since into the index. Where there are too many, all are read again.
    void follow();
    std::vector<SuggestedRow> offered(const QString& typed, int most);
    std::optional<QStringList> textsOf(qint64 rowid);

    // ImageClient.
    void rowUpdated(Row row) override { m_changed.push_back(row); }
    void rowAboutToBeDeleted(Row) override {}
    void rowDeleted(Row) override {}
    void allRowsDeleted() override {}

    Connection& m_connection;
    QString m_table;
    QStringList m_columns;
    std::shared_ptr<TableImage> m_image; // that is followed
    std::vector<Row> m_changed;
    Row m_seen = 0; // slots that the index knows or m_changed names
    PrefixIndex m_index;
    std::unique_ptr<NameReadings> m_readings; // once the rows were read
    int m_reading = 0;                        // counts the threads
    bool m_isReading = false;
    std::thread m_thread;
    std::atomic<bool> m_stop = false;
};

/// Makes an offered row the current one of a cursor over its table; a Filter that hides it is cleared. False
/// where the row is gone.
bool goToSuggested(const RecordsetPtr& cursor, RowId row);
