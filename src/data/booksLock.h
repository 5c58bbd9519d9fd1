#pragma once

#include <QLockFile>
#include <QString>

#include <memory>

/// Keeps a second copy of the program off the same file, by whatever name or link it comes: a lock of the
/// open file on a byte far beyond those that the storage engine locks. The one descriptor behind it is opened
/// before the engine opens the file and stays open to the end, since closing any descriptor of a file drops
/// the engine's own locks on it. Where the file system knows no such locks, a lock file beside the database
/// keeps them off; otherwise that only says who holds it, and never blocks.
class BooksLock {
public:
    /// Takes the lock; fault() says why it could not.
    explicit BooksLock(const QString& databasePath);
    ~BooksLock();
    BooksLock(const BooksLock&) = delete;
    BooksLock& operator=(const BooksLock&) = delete;

    /// Empty where the lock is held. A path with no regular file behind it holds nothing and is told.
    const QString& fault() const { return m_fault; }
    /// Whether another program has the file open for reading or writing at this moment.
    bool isUsedByOthers() const;
    /// Puts the file at `made` into the place of the locked one, `path` naming both afterwards; the new one
    /// is locked before the old is let go. False where the file could not be locked or renamed; nothing has
    /// changed then.
    bool replaceBy(const QString& made);
    void release();

private:
    bool takeByteLock(int descriptor, bool& known);
    void takeLockFile();
    bool tryLockFile();
    bool putInPlace(const QString& made) const;
    void sayWhoHolds();
    QString heldText() const;

    QString m_path;
    int m_descriptor = -1;
    std::unique_ptr<QLockFile> m_fallback;
    QString m_fault;
};

/// Whether both names lead to one file, through links of either kind. Opens neither.
bool isSameFile(const QString& one, const QString& other);

/// Why what a path leads to cannot be a database: missing, a folder, a device or a pipe; empty for a regular
/// file. Opens nothing.
QString kindFault(const QString& path);
