#include "support/failingDisk.h"

#include <sqlite3.h>

#include <cstdlib>
#include <new>

namespace {

FailingDisk* disk = nullptr;

sqlite3_vfs* realVfs() {
    return sqlite3_vfs_find("unix");
}

struct Handle {
    sqlite3_file base;
    sqlite3_file* real;
};

sqlite3_file* real(sqlite3_file* file) {
    return reinterpret_cast<Handle*>(file)->real;
}

/// Does a change or lets it fail, as the disk says.
template <typename Change> int change(int brokenCode, Change&& doIt) {
    const FailingDisk::Verdict verdict = disk ? disk->judge() : FailingDisk::Verdict::Do;
    if (verdict == FailingDisk::Verdict::Do)
        return doIt();
    if (verdict == FailingDisk::Verdict::DoAndFail)
        doIt();
    return disk->kind() == FailingDisk::Kind::Full && brokenCode == SQLITE_IOERR_WRITE ? SQLITE_FULL
                                                                                       : brokenCode;
}

int closeFile(sqlite3_file* file) {
    const int code = real(file)->pMethods->xClose(real(file));
    std::free(real(file));
    return code;
}

int readFile(sqlite3_file* file, void* to, int size, sqlite3_int64 offset) {
    return real(file)->pMethods->xRead(real(file), to, size, offset);
}

int writeFile(sqlite3_file* file, const void* from, int size, sqlite3_int64 offset) {
    return change(SQLITE_IOERR_WRITE,
                  [&] { return real(file)->pMethods->xWrite(real(file), from, size, offset); });
}

int truncateFile(sqlite3_file* file, sqlite3_int64 size) {
    return change(SQLITE_IOERR_TRUNCATE, [&] { return real(file)->pMethods->xTruncate(real(file), size); });
}

int syncFile(sqlite3_file* file, int flags) {
    return change(SQLITE_IOERR_FSYNC, [&] { return real(file)->pMethods->xSync(real(file), flags); });
}

int fileSize(sqlite3_file* file, sqlite3_int64* size) {
    return real(file)->pMethods->xFileSize(real(file), size);
}

int lockFile(sqlite3_file* file, int level) {
    return real(file)->pMethods->xLock(real(file), level);
}

int unlockFile(sqlite3_file* file, int level) {
    return real(file)->pMethods->xUnlock(real(file), level);
}

int checkReserved(sqlite3_file* file, int* reserved) {
    return real(file)->pMethods->xCheckReservedLock(real(file), reserved);
}

int fileControl(sqlite3_file* file, int operation, void* argument) {
    return real(file)->pMethods->xFileControl(real(file), operation, argument);
}

int sectorSize(sqlite3_file* file) {
    return real(file)->pMethods->xSectorSize(real(file));
}

int characteristics(sqlite3_file* file) {
    return real(file)->pMethods->xDeviceCharacteristics(real(file));
}

const sqlite3_io_methods kMethods = {1,           closeFile,  readFile,        writeFile,  truncateFile,
                                     syncFile,    fileSize,   lockFile,        unlockFile, checkReserved,
                                     fileControl, sectorSize, characteristics, nullptr,    nullptr,
                                     nullptr,     nullptr,    nullptr,         nullptr};

int openFile(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    auto* opened = static_cast<sqlite3_file*>(std::calloc(1, std::size_t(realVfs()->szOsFile)));
    const int code = realVfs()->xOpen(realVfs(), name, opened, flags, outFlags);
    if (code != SQLITE_OK) {
        std::free(opened);
        opened = nullptr;
    }
    new (file) Handle{{opened ? &kMethods : nullptr}, opened};
    return code;
}

sqlite3_vfs& vfs() {
    static sqlite3_vfs made = [] {
        sqlite3_vfs copy = *realVfs();
        copy.zName = "failing";
        copy.szOsFile = int(sizeof(Handle));
        copy.pNext = nullptr;
        copy.xOpen = openFile;
        return copy;
    }();
    return made;
}

} // namespace

FailingDisk::FailingDisk() {
    sqlite3_initialize();
    disk = this;
    sqlite3_vfs_register(&vfs(), 1);
}

FailingDisk::~FailingDisk() {
    disk = nullptr;
    sqlite3_vfs_unregister(&vfs());
    sqlite3_vfs_register(realVfs(), 1);
}

void FailingDisk::failAt(int change, Kind kind, bool forGood) {
    m_failAt = change;
    m_changes = 0;
    m_kind = kind;
    m_forGood = forGood;
    m_failed = m_lies = false;
}

FailingDisk::Verdict FailingDisk::judge() {
    const int number = m_changes++;
    if (beforeChange)
        beforeChange(number);
    if (m_failAt < 0 || number < m_failAt || (number > m_failAt && !m_forGood))
        return Verdict::Do;
    m_failed = true;
    return m_lies ? Verdict::DoAndFail : Verdict::Fail;
}
