#pragma once

#include <QLockFile>
#include <QString>

class MDIForm1;

/// The lock that keeps a second copy of the program off the same file.
class DatabaseLock {
public:
    /// Takes the lock beside the file; fault() says why it could not.
    explicit DatabaseLock(const QString& databasePath);
    void release() { m_lock.unlock(); }
    /// Empty where the lock is held.
    const QString& fault() const { return m_fault; }

private:
    QLockFile m_lock;
    QString m_fault;
};

/// Opens the books, recounts the customers' totals and shows the register. In: called once, after the main
/// window is shown. Throws RuntimeError.
void startShop(MDIForm1& main);

/// Name of the database file beside the program.
QString databaseFileName();
