#include "importMemory.h"

#include "bigFiles.h"
#include "data/schema.h"
#include "maintenance/importTransfer.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <atomic>
#include <chrono>
#include <thread>
#include <unistd.h>

namespace {

constexpr double kMega = 1024.0 * 1024.0;

/// A value of a process, in MiB.
double statusOf(const QByteArray& process, const char* name) {
    QFile status(QStringLiteral("/proc/%1/status").arg(QString::fromLatin1(process)));
    if (status.open(QIODevice::ReadOnly))
        for (const QByteArray& line : status.readAll().split('\n'))
            if (line.startsWith(name))
                return line.mid(qsizetype(qstrlen(name)) + 1).trimmed().split(' ').first().toDouble() / 1024;
    return 0;
}

/// What this process and the readers that it started hold.
double heldTogether() {
    double sum = statusOf("self", "VmRSS");
    const QDir threads(QStringLiteral("/proc/self/task"));
    for (const QString& thread : threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile children(threads.filePath(thread + QStringLiteral("/children")));
        if (children.open(QIODevice::ReadOnly))
            for (const QByteArray& child : children.readAll().simplified().split(' '))
                if (!child.isEmpty())
                    sum += statusOf(child, "VmRSS");
    }
    return sum;
}

/// Looks again and again at what is held, from a thread of its own.
class Watch {
public:
    Watch()
        : m_idle(heldTogether())
        , m_thread([this] {
            while (!m_done) {
                m_most = std::max(m_most.load(), heldTogether());
                std::this_thread::sleep_for(std::chrono::milliseconds(2));
            }
        }) {}
    ~Watch() {
        m_done = true;
        m_thread.join();
    }
    Q_DISABLE_COPY_MOVE(Watch)

    /// The highest growth so far, in MiB.
    double growth() const { return m_most - m_idle; }

private:
    double m_idle;
    std::atomic<double> m_most = 0;
    std::atomic<bool> m_done = false;
    std::thread m_thread;
};

SourceKind kindOf(const QString& path) {
    return path.endsWith(u"txt")   ? SourceKind::Txt
           : path.endsWith(u"dbf") ? SourceKind::Dbf
                                   : SourceKind::Xls;
}

} // namespace

void measureImportMemory(const QString& path) {
    const QString books = path + QStringLiteral(".books");
    createDatabase(books);
    Session session(books);
    session.open_rs();
    ImportPlan plan;
    plan.target = findImportTarget(1);
    const Watch watch;
    {
        const auto source = openImportSource(kindOf(path), path);
        SourceRows rows = source->read(source->tables().first());
        plan.sourceColumns = rows.columns;
        // The columns of a dbf have other names than those of the customers.
        plan.targetColumns = pairableColumns(session, *plan.target).mid(1, rows.columns.size());
        std::vector<int> places;
        for (int i = 0; i < rows.columns.size(); ++i)
            places.push_back(i);
        say("reading", watch.growth());
        plan.rows = rows.takeColumns(places);
    }
    RecordsetPtr source = sourceRecordset(session, plan);
    const RecordsetPtr target = targetRecordset(session, plan);
    say("shown", watch.growth());
    ImportTransfer transfer(session, plan, target);
    while (!transfer.finished())
        transfer.run(66);
    say("transfer", watch.growth());
    source.reset();
    plan.rows = {};
    refreshAfterImport(session, *plan.target, {});
    say("whole", watch.growth());
    say("rows", target->RecordCount());
    QFile::remove(books);
}

void benchImportMemory(BenchReport& report, const QString& folder) {
    struct BigFile {
        const char* name;
        void (*write)(const QString&, int);
        int rows;
        double wanted;
    };
    constexpr BigFile files[] = {{"million.txt", writeBigText, 1'000'000, 6},
                                 {"million.dbf", writeBigDbf, 1'000'000, 6},
                                 {"sheet.xls", writeBigXls, 65'000, 8}};
    for (const BigFile& file : files) {
        const QString path = folder + u'/' + QString::fromLatin1(file.name);
        file.write(path, file.rows);
        const double size = double(QFileInfo(path).size()) / kMega;
        const auto figures = childFigures(QStringLiteral("import-memory"), path);
        const auto add = [&](const char* stage, const QString& name) {
            report.add(
                {QStringLiteral("memory of %1, %2 / the file").arg(QString::fromLatin1(file.name), name),
                 figures[QString::fromLatin1(stage)], size, QStringLiteral("MiB"), file.wanted});
        };
        add("reading", QStringLiteral("reading"));
        add("whole", QStringLiteral("whole import"));
        report.note(QStringLiteral("%1 rows came in; %2 MiB until the grids stand, %3 until the last row")
                        .arg(figures[QStringLiteral("rows")])
                        .arg(figures[QStringLiteral("shown")])
                        .arg(figures[QStringLiteral("transfer")]));
        QFile::remove(path);
    }
}
