#pragma once

#include "recordset/error.h"
#include "recordset/fileMark.h"
#include "recordset/statement.h"
#include "recordset/transactionClient.h"
#include "recordset/writeGate.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <atomic>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

class TableImage;
struct ColumnInfo;

/// The one connection to the database file: runs SQLite statements, keeps the table images that are open, and
/// holds the transaction of a WriteBatch. A transaction that fails is taken back in the file, in the images
/// and in the cursors. Used from the user-interface thread only.
class Connection {
public:
    /// Opens an existing file for reading and writing, and asserts its pragmas (rollback journal in mode
    /// TRUNCATE, full synchronous, no foreign keys). Throws RuntimeError(Engine) with the engine's words.
    explicit Connection(const QString& path);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    const QString& path() const { return m_path; }
    sqlite3* handle() const { return m_db; }

    Statement prepare(const QString& sql) { return Statement(m_db, sql, &m_failed); }
    /// A statement that is prepared once and kept. It must be reset after its use.
    Statement& cached(const QString& sql);
    /// Runs SQLite statements that give no rows, one after the other, past transactions and images.
    void execute(const QString& sql);
    /// Runs a statement that writes: inside a batch, the first one opens the transaction; outside, it is a
    /// transaction of its own. Throws RuntimeError where the engine refuses the statement, DatabaseLost where
    /// the disk or the file fails, ActionEnded where another program holds the file and nobody waits for it.
    void write(Statement& statement);
    void write(const QString& sql);

    bool hasTable(const QString& table);
    QStringList tables();
    /// The columns of a table in their order. Throws TableMissing.
    std::vector<ColumnInfo> columns(const QString& table);
    /// The image that all cursors on `table` share; made on the first call. Throws TableMissing.
    /// `columns` are read in the same scan as the rows where the image is new.
    std::shared_ptr<TableImage> image(const QString& table, const QStringList& columns = {});
    /// The image if it stands already, else null.
    std::shared_ptr<TableImage> standingImage(const QString& table) const;
    /// Forgets the image of a table that is dropped.
    void forgetImage(const QString& table);

    bool inTransaction() const;
    /// Neither in an action nor asking the user about one.
    bool isIdle() const { return m_batchDepth == 0 && !m_open && !m_asking; }
    /// Held by every transaction.
    WriteGate& gate() { return m_gate; }
    /// Commits so far, counted by the commit hook.
    int commits() const { return m_commits; }
    /// Counts up when a transaction begins and when it has ended: odd while one is under way. For a thread
    /// that reads the file without a lock and wants to know whether it stood still.
    const std::atomic<unsigned>& writeCount() const { return m_writeCount; }

    /// Runs before the first action that may write, in no transaction and able to write itself, and again
    /// before the next where it throws; unset, or after it has come to its end, there is nothing to wait for.
    std::function<void()> beforeFirstWrite;
    /// Asked where another program holds the file: true to try once more. Unset is never.
    std::function<bool()> askAgain;

    void enrol(TransactionClient* client) { m_clients.push_back(client); }
    void leave(TransactionClient* client) { std::erase(m_clients, client); }
    /// Lets everybody who shows a cursor follow what the last actions took back.
    void tellTakenBack();
    /// What `read` gives, or nothing where another program holds the file: it is not waited for, and an
    /// action under way goes on.
    template <typename Read> auto atOnce(Read&& read) -> std::optional<decltype(read())> {
        const bool failed = m_failed;
        const QuickAnswer quick(*this);
        try {
            return read();
        } catch (const ActionEnded&) {
            m_failed = failed;
            return std::nullopt;
        }
    }
    /// The disk or the file failed while rows were read: what the action under way wrote will not stay.
    void markFailed() { m_failed = true; }

private:
    /// While one lives, nothing waits for another program.
    class QuickAnswer {
    public:
        explicit QuickAnswer(const Connection& connection);
        ~QuickAnswer();
        QuickAnswer(const QuickAnswer&) = delete;
        QuickAnswer& operator=(const QuickAnswer&) = delete;

    private:
        sqlite3* m_db;
    };

    friend class WriteBatch;
    void openHandle();
    void setPragmas();

    // The file.
    void passGate();
    void begin();
    void commit();
    void rollBack();
    void closeTransaction();
    void runWhenFree(const char* sql);
    bool asked();
    void refuseWhileAsking() const;
    void endFailedStatement(Statement& statement);
    [[noreturn]] void endFailedCommit(const QString& words);

    // What goes with it in memory.
    void beginBatch();
    void endBatch();
    void noteBefore();
    void forgetBefore();
    void restore();
    void takeBack();
    void forgetImages();
    void tellClientsOfRollback();
    template <typename Call> void forEachClient(Call&& call);

    QString m_path;
    sqlite3* m_db = nullptr;
    QHash<QString, std::shared_ptr<Statement>> m_cached;
    QHash<QString, std::shared_ptr<TableImage>> m_images;       // by lower-case name
    QHash<QString, std::shared_ptr<TableImage>> m_imagesBefore; // when the batch began
    std::vector<TransactionClient*> m_clients;
    int m_batchDepth = 0;
    int m_commits = 0;
    std::atomic<unsigned> m_writeCount = 0;
    WriteGate m_gate;
    bool m_noted = false;  // images and cursors know how they were when the batch began
    bool m_open = false;   // a transaction of ours, whatever the engine has made of it since
    bool m_asking = false; // the user is asked whether to wait
    bool m_failed = false; // the disk or the file failed since the batch began, or nobody waits for another
    FileMark m_mark;       // that the transaction writes
    QString m_untold;      // a commit that failed while another exception was on its way
};

/// One user action, one transaction: everything written while the outermost batch lives becomes durable
/// together at finish(), or at the end of its scope where an exception leaves it. Where the disk fails, or
/// the user will not wait for another program, nothing of it is done: file, images and cursors are as they
/// were when the batch began.
class WriteBatch {
public:
    explicit WriteBatch(Connection& connection)
        : m_connection(&connection)
        , m_exceptions(std::uncaught_exceptions()) {
        connection.beginBatch();
    }
    ~WriteBatch() noexcept(false);
    WriteBatch(const WriteBatch&) = delete;
    WriteBatch& operator=(const WriteBatch&) = delete;

    /// Commits, if this is the outermost batch. Throws DatabaseLost where the commit fails, ActionEnded where
    /// another program holds the file.
    void finish();

private:
    Connection* m_connection;
    int m_exceptions;
};

/// Orders texts as the system sorts them (digits, Chinese by pinyin, letters, without case).
void registerSqlFunctions(sqlite3* db);
