#pragma once

#include <QString>

class BooksLock;

/// What a backup holds, for who chooses one.
struct BackupContents {
    int orders = 0;    // different 订单号
    int customers = 0; // rows of the register
    QString fault;     // why it cannot be read; empty if it can
};

/// Counts without a lock, a journal or a trace beside the file.
BackupContents backupContents(const QString& backup);

/// What came of putting a backup back.
struct Restored {
    QString kept;  // the books that stood there before, under their new name; empty where there were none
    QString fault; // why nothing was put back; empty if it was
};

/// Puts a copy of a backup into the place of the database at `path`. The copy is made beside it, with a
/// journal that is the backup's own rolled in and any other left alone, checked, and takes the name only when
/// it is whole and on the disk; what stood there is kept beside it under another name with its journal. A
/// process that is killed at any moment leaves the old books or the new ones. `lock`: the lock on `path` that
/// this process holds; it holds the new file afterwards.
Restored restoreBackup(const QString& backup, const QString& path, BooksLock& lock);
