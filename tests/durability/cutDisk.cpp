#include "durability/cutDisk.h"

#include <sqlite3.h>

#include <cstring>
#include <new>

namespace {

constexpr qint64 kSector = 512;

CutDisk* diskOf(sqlite3_vfs* vfs) {
    return static_cast<CutDisk*>(vfs->pAppData);
}

struct Handle {
    sqlite3_file base;
    CutDisk* disk;
    CutDisk::File* file;
    int lock;
};

Handle& handle(sqlite3_file* file) {
    return *reinterpret_cast<Handle*>(file);
}

int closeFile(sqlite3_file*) {
    return SQLITE_OK;
}

int readFile(sqlite3_file* file, void* to, int size, sqlite3_int64 offset) {
    const QByteArray& bytes = handle(file).file->now;
    if (handle(file).disk->isCut())
        return SQLITE_IOERR_READ;
    std::memset(to, 0, std::size_t(size));
    const qint64 there = std::min<qint64>(size, std::max<qint64>(0, bytes.size() - offset));
    if (there > 0)
        std::memcpy(to, bytes.constData() + offset, std::size_t(there));
    return there == size ? SQLITE_OK : SQLITE_IOERR_SHORT_READ;
}

int writeFile(sqlite3_file* file, const void* from, int size, sqlite3_int64 offset) {
    const QByteArray bytes(static_cast<const char*>(from), size);
    return handle(file).disk->write(*handle(file).file, offset, bytes) ? SQLITE_OK : SQLITE_IOERR_WRITE;
}

int truncateFile(sqlite3_file* file, sqlite3_int64 size) {
    return handle(file).disk->truncate(*handle(file).file, size) ? SQLITE_OK : SQLITE_IOERR_TRUNCATE;
}

int syncFile(sqlite3_file* file, int) {
    return handle(file).disk->sync(*handle(file).file) ? SQLITE_OK : SQLITE_IOERR_FSYNC;
}

int fileSize(sqlite3_file* file, sqlite3_int64* size) {
    *size = handle(file).file->now.size();
    return SQLITE_OK;
}

// One connection at a time: locks are granted as they are asked for.
int lockFile(sqlite3_file* file, int level) {
    handle(file).lock = std::max(handle(file).lock, level);
    return SQLITE_OK;
}

int unlockFile(sqlite3_file* file, int level) {
    handle(file).lock = level;
    return SQLITE_OK;
}

int checkReserved(sqlite3_file* file, int* reserved) {
    *reserved = handle(file).lock >= SQLITE_LOCK_RESERVED;
    return SQLITE_OK;
}

int fileControl(sqlite3_file*, int, void*) {
    return SQLITE_NOTFOUND;
}

int sectorSize(sqlite3_file*) {
    return 4096;
}

int characteristics(sqlite3_file*) {
    return SQLITE_IOCAP_POWERSAFE_OVERWRITE;
}

const sqlite3_io_methods kMethods = {1,           closeFile,  readFile,        writeFile,  truncateFile,
                                     syncFile,    fileSize,   lockFile,        unlockFile, checkReserved,
                                     fileControl, sectorSize, characteristics, nullptr,    nullptr,
                                     nullptr,     nullptr,    nullptr,         nullptr};

int openFile(sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    const QString key = name ? QString::fromUtf8(name) : QStringLiteral("temporary");
    CutDisk::File* opened = diskOf(vfs)->open(key, (flags & SQLITE_OPEN_CREATE) != 0);
    new (file) Handle{{opened ? &kMethods : nullptr}, diskOf(vfs), opened, 0};
    if (outFlags)
        *outFlags = flags;
    return opened ? SQLITE_OK : SQLITE_CANTOPEN;
}

int deleteFile(sqlite3_vfs* vfs, const char* name, int) {
    if (diskOf(vfs)->isCut())
        return SQLITE_IOERR_DELETE;
    diskOf(vfs)->remove(QString::fromUtf8(name));
    return SQLITE_OK;
}

int accessFile(sqlite3_vfs* vfs, const char* name, int, int* result) {
    *result = diskOf(vfs)->exists(QString::fromUtf8(name));
    return SQLITE_OK;
}

int fullPath(sqlite3_vfs*, const char* name, int size, char* out) {
    sqlite3_snprintf(size, out, "%s", name);
    return SQLITE_OK;
}

sqlite3_vfs& vfs() {
    static sqlite3_vfs made = [] {
        sqlite3_vfs real = *sqlite3_vfs_find("unix");
        real.zName = "cut";
        real.szOsFile = int(sizeof(Handle));
        real.pNext = nullptr;
        real.xOpen = openFile;
        real.xDelete = deleteFile;
        real.xAccess = accessFile;
        real.xFullPathname = fullPath;
        return real;
    }();
    return made;
}

} // namespace

CutDisk::CutDisk() {
    sqlite3_initialize();
    vfs().pAppData = this;
    sqlite3_vfs_register(&vfs(), 1);
}

CutDisk::~CutDisk() {
    sqlite3_vfs_unregister(&vfs());
    sqlite3_vfs_register(sqlite3_vfs_find("unix"), 1);
}

CutDisk::File* CutDisk::open(const QString& name, bool create) {
    const auto found = m_files.find(name);
    if (found != m_files.end())
        return &found->second;
    return create ? &m_files[name] : nullptr;
}

bool CutDisk::spend() {
    if (m_cut)
        return false;
    ++m_operations;
    if (m_untilCut >= 0 && m_untilCut-- == 0)
        m_cut = true;
    return !m_cut;
}

bool CutDisk::write(File& file, qint64 offset, const QByteArray& bytes) {
    if (m_cut)
        return false;
    // The write under way when the power goes may reach the disk in part.
    file.unsynced.push_back({false, offset, bytes});
    if (!spend())
        return false;
    if (file.now.size() < offset + bytes.size())
        file.now.append(QByteArray(offset + bytes.size() - file.now.size(), '\0'));
    file.now.replace(offset, bytes.size(), bytes);
    return true;
}

bool CutDisk::truncate(File& file, qint64 size) {
    if (m_cut)
        return false;
    file.unsynced.push_back({true, size, {}});
    if (!spend())
        return false;
    file.now.resize(size);
    return true;
}

bool CutDisk::sync(File& file) {
    if (!spend())
        return false;
    if (m_liar)
        return true;
    file.synced = file.now;
    file.unsynced.clear();
    file.entrySynced = true;
    return true;
}

void CutDisk::apply(QByteArray& to, const Change& change, std::mt19937& random) {
    if (change.truncates) {
        if (random() % 2 == 0 && to.size() > change.offset)
            to.resize(change.offset);
        return;
    }
    // Each sector of a write reaches the disk or not, by itself.
    for (qint64 at = 0; at < change.bytes.size();) {
        const qint64 end =
            std::min(change.bytes.size(), ((change.offset + at) / kSector + 1) * kSector - change.offset);
        if (random() % 2 == 0) {
            if (to.size() < change.offset + end)
                to.append(QByteArray(change.offset + end - to.size(), '\0'));
            to.replace(change.offset + at, end - at, change.bytes.mid(at, end - at));
        }
        at = end;
    }
}

void CutDisk::powerOn(std::mt19937& random) {
    for (auto file = m_files.begin(); file != m_files.end();) {
        if (!file->second.entrySynced && random() % 2 == 0) {
            file = m_files.erase(file);
            continue;
        }
        QByteArray bytes = file->second.synced;
        for (const Change& change : file->second.unsynced)
            apply(bytes, change, random);
        file->second = {bytes, bytes, {}, true};
        ++file;
    }
    m_cut = false;
    m_untilCut = -1;
}
