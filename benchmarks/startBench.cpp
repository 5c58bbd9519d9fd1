#include "startBench.h"

#include "app/appearance.h"
#include "app/registry.h"
#include "app/startJobs.h"
#include "app/startUp.h"
#include "controls/prompts.h"
#include "data/books.h"
#include "data/schema.h"
#include "maintenance/dailyBackup.h"
#include "plainSqlite.h"
#include "shell/MDIForm1.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <unistd.h>

namespace {

/// A window that notes when it was first painted.
class PaintClock : public QObject {
public:
    explicit PaintClock(const QElapsedTimer& since)
        : m_since(since) {}
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint && first < 0)
            first = double(m_since.nsecsElapsed()) / 1e6;
        return false;
    }
    double first = -1;

private:
    const QElapsedTimer& m_since;
};

void noteStages(BenchReport& report, const ChildPairs& runs) {
    QStringList stages;
    for (const char* stage : {"appearance", "check", "open", "painted", "cursors", "register"})
        stages << QStringLiteral("%1 %2 ms").arg(QLatin1String(stage)).arg(runs.ours(stage), 0, 'f', 1);
    report.note(QStringLiteral("stages: %1 (painted counts from the start of main)")
                    .arg(stages.join(QStringLiteral(", "))));
}

void benchStart(BenchReport& report, const QString& path) {
    const ChildPairs runs(QStringLiteral("start"), QStringLiteral("bare"), path);
    const double wait = runs.ours("painted") - runs.theirs("painted");
    report.add({QStringLiteral("start: first painted window, beside a bare window"), runs.ours("painted"),
                runs.theirs("painted"), QStringLiteral("ms"), 0});
    report.note(QStringLiteral("behind the bare window by %1 ms (wanted at most 500: %2)")
                    .arg(wait, 0, 'f', 0)
                    .arg(wait <= 500 ? QStringLiteral("ok") : QStringLiteral("MISSED")));
    if (wait > 500)
        report.miss();
    report.add({QStringLiteral("start: register usable / five columns by the C API"), runs.ours("usable"),
                runs.ours("reference"), QStringLiteral("ms"), 1.2});
    noteStages(report, runs);
}

/// The first screen of these books beside that of an empty shop.
void benchFirstScreen(BenchReport& report, const QString& path, const QString& emptyPath) {
    createDatabase(emptyPath);
    std::vector<double> ours, empty;
    constexpr int kRounds = 7;
    for (int i = 0; i < kRounds; ++i) {
        ours.push_back(childFigures(QStringLiteral("start"), path).value(QStringLiteral("total")));
        empty.push_back(childFigures(QStringLiteral("start"), emptyPath).value(QStringLiteral("total")));
    }
    const double behind = median(ours) - median(empty);
    report.add({QStringLiteral("start: first screen / that of an empty shop"), median(ours), median(empty),
                QStringLiteral("ms"), 0});
    report.note(QStringLiteral("behind the empty shop by %1 ms (wanted at most 150: %2)")
                    .arg(behind, 0, 'f', 0)
                    .arg(behind <= 150 ? QStringLiteral("ok") : QStringLiteral("MISSED")));
    if (behind > 150)
        report.miss();
}

void benchSmallStart(BenchReport& report, const QString& path) {
    const ChildPairs runs(QStringLiteral("start"), QStringLiteral("bare"), path);
    report.add({QStringLiteral("start with 2,000 customers, 20,000 lines: register shown"),
                runs.ours("total"), runs.theirs("painted"), QStringLiteral("ms"), 0});
    noteStages(report, runs);
}

/// The program with its empty frame painted, before the tables are read.
struct PaintedFrame {
    explicit PaintedFrame(const QString& path)
        : session(path)
        , main(session, prompts) {
        registerAll(main, prompts);
        main.show();
        QCoreApplication::processEvents();
        main.repaint();
    }
    /// Until the register is painted.
    void open() {
        startShop(main);
        main.repaint();
        QCoreApplication::processEvents();
    }

    Session session;
    WindowPrompts prompts;
    MDIForm1 main;
};

QString copyOf(const QString& path) {
    return path + QStringLiteral(".copy");
}

/// Drops what a former run made beside the shop.
void clearBackups(const QString& path) {
    QDir(backupFolder(path)).removeRecursively();
    QFile::remove(copyOf(path));
}

void benchStartJobs(BenchReport& report, const QString& path) {
    const ChildPairs runs(QStringLiteral("startjobs"), QStringLiteral("startplain"), path,
                          [&path] { clearBackups(path); });
    clearBackups(path);
    report.add({QStringLiteral("start: register usable, check and backup behind it / without"),
                runs.ours("usable"), runs.theirs("usable"), QStringLiteral("ms"), 1.5});
    report.add({QStringLiteral("start: until a write need not wait / register and a bare check"),
                runs.ours("checked"), runs.theirs("usable") + runs.theirs("check"), QStringLiteral("ms"),
                1.2});
    report.add({QStringLiteral("start: wait of a write or a statistic at once after the first screen"),
                runs.ours("waited"), 300, QStringLiteral("ms"), 1});
    report.add({QStringLiteral("start: until the day's backup is there / plain copy, checked"),
                runs.ours("backup"), runs.theirs("backup"), QStringLiteral("ms"), 0});
}

} // namespace

void measureBare(const QElapsedTimer& since) {
    PaintClock clock(since);
    QWidget window;
    window.installEventFilter(&clock);
    window.resize(1280, 720);
    window.show();
    QCoreApplication::processEvents();
    say("painted", clock.first);
}

void measureStart(QApplication& application, const QElapsedTimer& since, const QString& path) {
    const auto now = [&since] { return double(since.nsecsElapsed()) / 1e6; };
    const double beforeAppearance = now();
    setAppearance(application);
    say("appearance", now() - beforeAppearance);
    say("check", milliseconds([&] { databaseFault(path); }));
    std::unique_ptr<Session> session;
    say("open", milliseconds([&] { session = std::make_unique<Session>(path); }));
    PaintClock clock(since);
    WindowPrompts prompts;
    MDIForm1 main(*session, prompts);
    registerAll(main, prompts);
    main.installEventFilter(&clock);
    main.show();
    QCoreApplication::processEvents();
    main.repaint();
    say("painted", clock.first);
    say("usable", milliseconds([&] {
            say("cursors", milliseconds([&] { openBooks(*session); }));
            say("register", milliseconds([&] {
                    main.host().show(QStringLiteral("dataInputFm1"));
                    main.repaint();
                    QCoreApplication::processEvents();
                }));
        }));
    say("total", now());
    PlainSqlite plain(path);
    say("reference", milliseconds([&] {
            plain.readAll(QStringLiteral("SELECT 客户编号, 日期, 数量, 实付, 差额利润 FROM buyList"));
        }));
}

void measureStartJobs(const QString& path) {
    setAppearance(*qApp);
    PaintedFrame frame(path);
    QElapsedTimer since;
    since.start();
    const auto now = [&since] { return double(since.nsecsElapsed()) / 1e6; };
    {
        StartJobs jobs(frame.session, QDate::currentDate());
        jobs.start();
        frame.open();
        say("usable", now());
        jobs.startRecount();
        say("waited", milliseconds([&] { jobs.finish(); }));
        say("checked", now());
    }
    say("backup", now());
}

void measurePlainStart(const QString& path) {
    setAppearance(*qApp);
    PaintedFrame frame(path);
    say("usable", milliseconds([&] { frame.open(); }));
    const auto check = [](const QString& file) {
        PlainSqlite(file).readAll(QStringLiteral("PRAGMA quick_check"));
    };
    say("check", milliseconds([&] { check(path); }));
    say("backup", milliseconds([&] {
            QFile::copy(path, copyOf(path));
            QFile copy(copyOf(path));
            if (copy.open(QIODevice::ReadWrite))
                fsync(copy.handle());
            check(copyOf(path));
        }));
}

void runStartBench(BenchReport& report, const QString& path, const QString& smallPath) {
    benchStart(report, path);
    benchFirstScreen(report, path, smallPath + QStringLiteral(".empty"));
    benchSmallStart(report, smallPath);
    benchStartJobs(report, path);
}
