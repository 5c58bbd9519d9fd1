#include "recordset/connection.h"
#include "recordset/error.h"
#include "recordset/tableImage.h"

#include <QScopeGuard>

#include <sqlite3.h>

#include <algorithm>
#include <utility>

void Connection::write(Statement& statement) {
    refuseWhileAsking();
    if (!m_untold.isEmpty())
        throw DatabaseLost(std::exchange(m_untold, {}));
    // What the engine has rolled back by itself would go on as if nothing had been before it.
    if (m_open && !inTransaction()) {
        m_failed = true;
        throw DatabaseLost(QStringLiteral("写入失败，本次操作已全部撤回。"));
    }
    if (m_batchDepth == 0)
        passGate();
    try {
        if (!m_open)
            begin();
        statement.run();
    } catch (const DatabaseLost& lost) {
        m_failed = true;
        endFailedStatement(statement);
        throw DatabaseLost(QStringLiteral("写入失败，本次操作已全部撤回。%1").arg(lost.text()),
                           Outcome::TakenBack, lost.isOfTheFile());
    } catch (...) {
        endFailedStatement(statement);
        throw;
    }
    if (m_batchDepth == 0)
        commit();
}

/// Outside a batch the statement was a transaction of its own, and nothing in memory has followed it yet.
void Connection::endFailedStatement(Statement& statement) {
    statement.reset();
    if (m_batchDepth == 0)
        rollBack();
}

void Connection::write(const QString& sql) {
    Statement statement = prepare(sql);
    write(statement);
}

/// What the gate itself writes goes past it.
void Connection::passGate() {
    if (!beforeFirstWrite)
        return;
    const std::function<void()> wait = std::exchange(beforeFirstWrite, nullptr);
    try {
        wait();
    } catch (...) {
        beforeFirstWrite = wait;
        throw;
    }
}

void Connection::begin() {
    m_gate.beginWriting();
    try {
        runWhenFree("BEGIN IMMEDIATE");
    } catch (...) {
        m_gate.endWriting();
        throw;
    }
    m_open = true;
    ++m_writeCount;
    m_mark = writeFreshMark(m_db);
}

/// Runs a statement that another program's lock can keep waiting.
void Connection::runWhenFree(const char* sql) {
    while (sqlite3_exec(m_db, sql, nullptr, nullptr, nullptr) != SQLITE_OK) {
        if ((sqlite3_errcode(m_db) & 0xff) != SQLITE_BUSY)
            failEngine(m_db, QString::fromLatin1(sql), &m_failed);
        if (askAgain && asked())
            continue;
        m_failed = true;
        throw ActionEnded(askAgain ? QString() : lockedByAnother());
    }
}

/// Asks the user. Nothing is written while his answer is waited for.
bool Connection::asked() {
    m_asking = true;
    const auto done = qScopeGuard([this] { m_asking = false; });
    return askAgain();
}

void Connection::refuseWhileAsking() const {
    if (m_asking)
        throw ActionEnded(lockedByAnother());
}

void Connection::commit() {
    try {
        runWhenFree("COMMIT");
    } catch (const ActionEnded&) {
        takeBack();
        throw;
    } catch (const std::exception& error) {
        endFailedCommit(QString::fromUtf8(error.what()));
    }
    closeTransaction();
    forgetBefore();
}

/// The engine may fail when the action is in the file already: the file's mark tells.
void Connection::endFailedCommit(const QString& words) {
    rollBack();
    std::optional<FileMark> mark;
    try {
        mark = readMark(m_db);
    } catch (const std::exception&) { // said below
    }
    if (mark == m_mark) {
        if (!m_noted)
            forgetImages(); // the rows in memory do not follow a statement that fails
        forgetBefore();
        throw DatabaseLost(QStringLiteral("写入磁盘时出错，但本次操作已经全部记入。%1").arg(words),
                           Outcome::Booked);
    }
    restore();
    if (mark)
        throw DatabaseLost(QStringLiteral("写入磁盘失败，本次操作已全部撤回。%1").arg(words));
    throw DatabaseLost(
        QStringLiteral("写入磁盘失败，也读不出本次操作是否已经记入，请重新打开后查看。%1").arg(words),
        Outcome::Unknown);
}

void Connection::rollBack() {
    if (inTransaction())
        sqlite3_exec(m_db, "ROLLBACK", nullptr, nullptr, nullptr);
    if (m_open)
        closeTransaction();
}

void Connection::closeTransaction() {
    m_open = false;
    m_gate.endWriting();
    ++m_writeCount;
}

void Connection::takeBack() {
    rollBack();
    restore();
}

void Connection::noteBefore() {
    m_failed = false;
    m_imagesBefore = m_images;
    for (const auto& image : std::as_const(m_imagesBefore))
        image->transactionBegun();
    for (TransactionClient* client : m_clients)
        client->transactionBegun();
    m_noted = true;
}

/// Each of those that are there now, and still there when their turn comes: one may let go of another.
template <typename Call> void Connection::forEachClient(Call&& call) {
    for (TransactionClient* client : std::vector(m_clients))
        if (std::find(m_clients.begin(), m_clients.end(), client) != m_clients.end())
            call(*client);
}

void Connection::forgetBefore() {
    if (!std::exchange(m_noted, false))
        return;
    for (const auto& image : std::as_const(m_imagesBefore))
        image->transactionKept();
    forEachClient([](TransactionClient& client) { client.transactionKept(); });
    m_imagesBefore.clear();
}

/// Puts what is in memory back as it was when the batch began.
void Connection::restore() {
    if (!std::exchange(m_noted, false))
        return; // a statement of its own: memory follows it only when it is in the file
    // An image that was made meanwhile read rows that are gone; a table that was dropped stands again.
    for (auto made = m_images.cbegin(); made != m_images.cend(); ++made)
        if (m_imagesBefore.value(made.key()) != made.value())
            (*made)->vanish();
    m_images = std::exchange(m_imagesBefore, {});
    for (const auto& image : std::as_const(m_images))
        image->transactionTakenBack();
    tellClientsOfRollback();
}

/// Every table will be read anew.
void Connection::forgetImages() {
    for (const auto& image : std::as_const(m_images))
        image->vanish();
    m_images.clear();
    tellClientsOfRollback();
}

void Connection::tellClientsOfRollback() {
    forEachClient([](TransactionClient& client) { client.transactionTakenBack(); });
}

void Connection::tellTakenBack() {
    forEachClient([](TransactionClient& client) { client.tellTakenBack(); });
}

void Connection::beginBatch() {
    refuseWhileAsking();
    if (m_batchDepth == 0) {
        passGate();
        noteBefore();
    }
    ++m_batchDepth;
}

void Connection::endBatch() {
    if (--m_batchDepth > 0)
        return;
    if (!m_failed && m_open && inTransaction())
        return commit();
    if (!m_failed && !m_open)
        return forgetBefore();
    takeBack();
    throw DatabaseLost(QStringLiteral("写入失败，本次操作已全部撤回。"));
}

WriteBatch::~WriteBatch() noexcept(false) {
    if (!m_connection)
        return;
    // While another exception is on its way the rows written so far are kept, unless the disk failed. A
    // commit that fails as well is told by the next write, since two exceptions cannot be on their way at
    // once.
    const bool known = m_connection->m_failed;
    try {
        m_connection->endBatch();
    } catch (const std::exception& error) {
        if (std::uncaught_exceptions() == m_exceptions)
            throw;
        if (!known)
            m_connection->m_untold = QString::fromUtf8(error.what());
    }
}

void WriteBatch::finish() {
    Connection* connection = std::exchange(m_connection, nullptr);
    if (connection)
        connection->endBatch();
}
