// How much an import holds, the reader program included.
#include "import/importSource.h"
#include "support/printQt.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace {

/// Bytes that a process holds.
double heldBy(const QString& process) {
    QFile status(QStringLiteral("/proc/%1/status").arg(process));
    if (status.open(QIODevice::ReadOnly))
        for (const QByteArray& line : status.readAll().split('\n'))
            if (line.startsWith("VmRSS:"))
                return line.simplified().split(' ')[1].toDouble() * 1024;
    return 0;
}

/// The same of this process and all that it started.
double heldTogether() {
    double sum = heldBy(QStringLiteral("self"));
    const QDir threads(QStringLiteral("/proc/self/task"));
    for (const QString& thread : threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile children(threads.filePath(thread + "/children"));
        if (children.open(QIODevice::ReadOnly))
            for (const QByteArray& child : children.readAll().simplified().split(' '))
                sum += child.isEmpty() ? 0 : heldBy(QString::fromLatin1(child));
    }
    return sum;
}

/// The most that is held while a text file is read, above what was held before.
double growthOfReading(const QString& path) {
    const double idle = heldTogether();
    std::atomic<bool> done = false;
    double most = 0;
    std::thread watch([&] {
        while (!done) {
            most = std::max(most, heldTogether());
            std::this_thread::yield();
        }
    });
    const auto source = openImportSource(SourceKind::Txt, path);
    EXPECT_EQ(source->read(source->tables().first()).rowCount(), 400'000);
    done = true;
    watch.join();
    return most - idle;
}

TEST(ImportMemory, ALongTextTakesNotMuchMoreThanItsLength) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer holds memory of its own";
#endif
    const QTemporaryDir folder;
    const auto fileOf = [&folder](const char* name, const std::function<QByteArray(int)>& customer) {
        QFile file(folder.filePath(QString::fromUtf8(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("编号,客户,地址,数量\n");
        for (int row = 0; row < 400'000; ++row)
            file.write(QByteArray::number(row) + "," + customer(row) + ",北京市朝阳区建国路" +
                       QByteArray::number(row) + "号," + QByteArray::number(row % 100) + '\n');
        return file.fileName();
    };
    const QString different =
        fileOf("different.txt", [](int row) { return "客户" + QByteArray::number(row); });
    const QString alike = fileOf("alike.txt", [](int row) { return "客户" + QByteArray::number(row % 50); });
    for (const QString& path : {different, alike}) {
        const double size = double(QFile(path).size());
        const double growth = growthOfReading(path);
        std::printf("a text of %.1f MiB: %.1f MiB more held, the reader included\n", size / 1048576,
                    growth / 1048576);
        EXPECT_LT(growth, 4 * size);
    }
}

} // namespace
