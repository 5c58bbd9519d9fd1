#pragma once

#include <QByteArray>
#include <QFile>

#include <csignal>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <unistd.h>

/// While it lives no file of this process can grow beyond a size; a write beyond it fails.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes)
        : m_handler(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit small{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    void (*m_handler)(int);
    rlimit m_before{};
};

/// Writes into a file of the system. False where that is not allowed.
inline bool setInSystem(const char* name, const QByteArray& value) {
    QFile file(QString::fromLatin1(name));
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(value) == value.size();
}

/// Puts a disk of its own, of so many bytes, into a folder, seen by this process alone and gone with it. Only
/// for a process of one thread, as after a fork. False where the machine does not allow it.
inline bool mountSmallDisk(const QByteArray& folder, qint64 bytes) {
    const QByteArray user = QByteArray::number(getuid());
    const QByteArray group = QByteArray::number(getgid());
    if (unshare(CLONE_NEWNS) != 0) // as another than root
        if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0 ||
            !setInSystem("/proc/self/uid_map", user + ' ' + user + " 1") ||
            !setInSystem("/proc/self/setgroups", "deny") ||
            !setInSystem("/proc/self/gid_map", group + ' ' + group + " 1"))
            return false;
    return mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount("none", folder.constData(), "tmpfs", 0, "size=" + QByteArray::number(bytes)) == 0;
}
