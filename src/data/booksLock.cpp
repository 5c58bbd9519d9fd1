#include "data/booksLock.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSysInfo>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Beyond every byte of a database of this system's size, and of the range that the engine locks, which ends
// 512 bytes behind 1 GiB.
constexpr off_t kLockedByte = off_t(1) << 40;
constexpr off_t kEngineLocks = 0x40000000;
constexpr off_t kEngineLocksLength = 512;
constexpr int kMostTries = 100;

QByteArray encoded(const QString& path) {
    return QFile::encodeName(path);
}

/// Whether a path still leads to the file that is open.
bool isBehind(const QString& path, int descriptor) {
    struct stat opened {};
    struct stat named {};
    return fstat(descriptor, &opened) == 0 && stat(encoded(path).constData(), &named) == 0 &&
           opened.st_ino == named.st_ino && opened.st_dev == named.st_dev;
}

/// The file behind a path may be replaced between its opening and its locking: then the new one is opened.
int openRegular(const QString& path) {
    for (int tries = 0; tries < kMostTries; ++tries) {
        const int descriptor = ::open(encoded(path).constData(), O_RDWR | O_CLOEXEC | O_NONBLOCK);
        if (descriptor < 0)
            return ::open(encoded(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
        if (isBehind(path, descriptor))
            return descriptor;
        ::close(descriptor);
    }
    return -1;
}

struct flock lockOf(off_t start, off_t length) {
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = start;
    lock.l_len = length;
    return lock;
}

QString lockFileName(const QString& path) {
    return QFileInfo(path).canonicalFilePath() + QStringLiteral(".lock");
}

} // namespace

bool isSameFile(const QString& one, const QString& other) {
    struct stat first {};
    struct stat second {};
    return stat(encoded(one).constData(), &first) == 0 && stat(encoded(other).constData(), &second) == 0 &&
           first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

QString kindFault(const QString& path) {
    struct stat found {};
    if (stat(encoded(path).constData(), &found) != 0)
        return errno == ENOENT || errno == ENOTDIR || errno == ELOOP ? QStringLiteral("文件不存在")
                                                                     : QStringLiteral("没有读取此文件的权限");
    if (S_ISREG(found.st_mode))
        return {};
    return S_ISDIR(found.st_mode) ? QStringLiteral("这不是文件")
                                  : QStringLiteral("这不是普通文件（是管道或设备）");
}

BooksLock::BooksLock(const QString& databasePath)
    : m_path(databasePath) {
    const QString notThere = kindFault(m_path);
    if (!notThere.isEmpty()) {
        m_fault = QStringLiteral("不能打开数据库 %1\n%2。").arg(m_path, notThere);
        return;
    }
    m_descriptor = openRegular(m_path);
    bool known = false;
    if (m_descriptor < 0)
        return; // a file that cannot be opened is told by who looks at it closer
    if (!takeByteLock(m_descriptor, known)) {
        if (!known)
            takeLockFile();
    } else if (isBehind(m_path, m_descriptor)) {
        sayWhoHolds();
    } else {
        m_fault = heldText(); // another copy has just put a file in its place
    }
}

BooksLock::~BooksLock() {
    release();
}

/// `known`: whether the file system has such locks, so that a refusal means another copy.
bool BooksLock::takeByteLock(int descriptor, bool& known) {
    struct flock lock = lockOf(kLockedByte, 1);
    if (fcntl(descriptor, F_OFD_SETLK, &lock) == 0)
        return true;
    known = errno == EAGAIN || errno == EACCES;
    if (known)
        m_fault = heldText();
    return false;
}

bool BooksLock::tryLockFile() {
    constexpr int patience = 100; // milliseconds
    if (!m_fallback->tryLock(patience))
        return false;
    // A file system that knows no rights keeps its own.
    QFile::setPermissions(lockFileName(m_path), QFile::ReadOwner | QFile::WriteOwner);
    return true;
}

void BooksLock::takeLockFile() {
    m_fallback = std::make_unique<QLockFile>(lockFileName(m_path));
    m_fallback->setStaleLockTime(0); // only a lock whose process is gone is stale, however old it is
    if (tryLockFile())
        return;
    qint64 process = 0;
    QString host;
    QString program;
    const bool garbled = m_fallback->error() == QLockFile::LockFailedError &&
                         !m_fallback->getLockInfo(&process, &host, &program);
    if (garbled && QFile::remove(lockFileName(m_path)) && tryLockFile())
        return;
    m_fault = m_fallback->error() == QLockFile::LockFailedError
                  ? heldText()
                  : QStringLiteral("不能打开数据库 %1\n所在的文件夹不能写入锁文件。").arg(m_path);
}

/// Who cannot write the name of its holder holds the file all the same.
void BooksLock::sayWhoHolds() {
    if (isSameFile(lockFileName(m_path), m_path))
        return;
    const int file = ::open(encoded(lockFileName(m_path)).constData(),
                            O_WRONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600);
    if (file < 0)
        return;
    const QByteArray text = QByteArray::number(QCoreApplication::applicationPid()) + '\n' +
                            QCoreApplication::applicationName().toUtf8() + '\n' +
                            QSysInfo::machineHostName().toUtf8() + '\n';
    struct stat found {};
    if (fstat(file, &found) == 0 && S_ISREG(found.st_mode) && fchmod(file, 0600) == 0 &&
        ftruncate(file, 0) == 0 && ::write(file, text.constData(), size_t(text.size())) < 0)
        std::fprintf(stderr, "%s\n", qUtf8Printable(lockFileName(m_path))); // it holds without a name
    ::close(file);
}

QString BooksLock::heldText() const {
    return QStringLiteral("不能打开数据库 %1\n衡商汇已经在使用这个文件，不能同时打开两次。").arg(m_path);
}

bool BooksLock::isUsedByOthers() const {
    struct flock lock = lockOf(kEngineLocks, kEngineLocksLength);
    return m_descriptor >= 0 && fcntl(m_descriptor, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

/// Where no file stood when the lock was asked for, one that came meanwhile keeps the name.
bool BooksLock::putInPlace(const QString& made) const {
    if (m_descriptor >= 0)
        return std::rename(encoded(made).constData(), encoded(m_path).constData()) == 0;
    return ::link(encoded(made).constData(), encoded(m_path).constData()) == 0 && QFile::remove(made);
}

bool BooksLock::replaceBy(const QString& made) {
    const int fresh = openRegular(made);
    bool known = false;
    if (fresh < 0 || (!takeByteLock(fresh, known) && known) || !putInPlace(made)) {
        if (fresh >= 0)
            ::close(fresh);
        return false;
    }
    if (m_descriptor >= 0)
        ::close(m_descriptor);
    m_descriptor = fresh;
    m_fault.clear();
    sayWhoHolds();
    return true;
}

void BooksLock::release() {
    if (m_descriptor < 0)
        return;
    if (m_fault.isEmpty() && !m_fallback)
        QFile::remove(lockFileName(m_path));
    m_fallback.reset();
    ::close(m_descriptor);
    m_descriptor = -1;
}
