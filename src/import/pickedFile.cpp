#include "import/pickedFile.h"

#include "import/tableReader.h"

#include <QFile>

#include <algorithm>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr qint64 kLargestSource = qint64(1) << 30; // bytes

bool leadsTo(const QString& path, const struct stat& file) {
    struct stat other {};
    return ::stat(QFile::encodeName(path).constData(), &other) == 0 && other.st_dev == file.st_dev &&
           other.st_ino == file.st_ino;
}

/// Why a file is not opened; empty where it is.
QString refusalOf(const struct stat& file, const QStringList& ownFiles) {
    if (!S_ISREG(file.st_mode))
        return QStringLiteral("不是普通的文件，不能读取：%1");
    if (std::any_of(ownFiles.begin(), ownFiles.end(),
                    [&file](const QString& own) { return leadsTo(own, file); }))
        return QStringLiteral("这是本系统正在使用的文件，不能导入：%1");
    return file.st_size > kLargestSource ? QStringLiteral("文件太大：%1") : QString();
}

} // namespace

Descriptor::~Descriptor() {
    if (m_number >= 0)
        ::close(m_number);
}

Descriptor openPicked(const QString& path, const QStringList& ownFiles) {
    // A descriptor of the place alone: with it the file is looked at and not opened, and no other can take
    // its place before it is.
    const Descriptor place(::open(QFile::encodeName(path).constData(), O_PATH | O_CLOEXEC));
    struct stat file {};
    const auto refuse = [&path](const QString& text) { throw ImportError(text.arg(path)); };
    if (!place || ::fstat(place.number(), &file) != 0)
        refuse(QStringLiteral("文件不能打开：%1"));
    if (const QString refusal = refusalOf(file, ownFiles); !refusal.isEmpty())
        refuse(refusal);
    const QByteArray name = "/proc/self/fd/" + QByteArray::number(place.number());
    Descriptor opened(::open(name.constData(), O_RDONLY | O_CLOEXEC));
    if (!opened)
        refuse(QStringLiteral("文件不能打开：%1"));
    return opened;
}
