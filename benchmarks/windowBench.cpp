#include "windowBench.h"

#include "app/appearance.h"
#include "app/registry.h"
#include "controls/dataGrid.h"
#include "controls/prompts.h"
#include "data/books.h"
#include "data/schema.h"
#include "importMemory.h"
#include "longTextBench.h"
#include "plainSqlite.h"
#include "recordset/tableImage.h"
#include "reportBench.h"
#include "shell/MDIForm1.h"
#include "statisticsBench.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QHeaderView>
#include <QMap>
#include <QScrollBar>
#include <QSqlDatabase>
#include <QSqlTableModel>
#include <QTableView>

#include <cstdio>

namespace {

constexpr int kScrollSteps = 200;
constexpr int kRounds = 5;

/// Most memory that the process has held so far, in MiB.
double peakMemory() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').first().toDouble() / 1024;
    return 0;
}

double scroll(QTableView& view) {
    const int last = view.verticalScrollBar()->maximum();
    return milliseconds([&] {
        for (int i = 0; i < kScrollSteps; ++i) {
            view.verticalScrollBar()->setValue(int(qint64(last) * ((i * 37) % kScrollSteps) / kScrollSteps));
            view.viewport()->repaint();
        }
    });
}

void measureGrid(const QString& path) {
    const double before = peakMemory();
    WindowPrompts prompts;
    DataGrid grid(prompts);
    grid.resize(1200, 800);
    grid.show();
    QCoreApplication::processEvents();
    Connection connection(path);
    RecordsetPtr lines;
    say("reach", milliseconds([&] {
            reopen(lines, connection, QStringLiteral("Select * From buyList"));
            grid.bind(lines);
            grid.scrollToBottom();
            grid.viewport()->repaint();
        }));
    connection.image(QStringLiteral("buyList"))->loadAllColumns();
    say("memory", peakMemory() - before);
    say("rows", grid.model()->rowCount());
    // The same cells on both sides: this grid fits its columns to their content, the other one does not.
    for (int i = 0; i < grid.model()->columnCount(); ++i)
        grid.setColumnWidth(i, grid.horizontalHeader()->defaultSectionSize());
    say("scroll", scroll(grid));
    grid.unbind();
}

void measureSqlGrid(const QString& path) {
    const double before = peakMemory();
    QTableView view;
    view.resize(1200, 800);
    view.verticalHeader()->setDefaultSectionSize(view.fontMetrics().height() + 8);
    view.show();
    QCoreApplication::processEvents();
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"));
    database.setDatabaseName(path);
    database.open();
    QSqlTableModel model(nullptr, database);
    say("reach", milliseconds([&] {
            model.setTable(QStringLiteral("buyList"));
            model.select();
            while (model.canFetchMore())
                model.fetchMore();
            view.setModel(&model);
            view.scrollToBottom();
            view.viewport()->repaint();
        }));
    say("memory", peakMemory() - before);
    say("rows", model.rowCount());
    say("scroll", scroll(view));
    view.setModel(nullptr);
}

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
            say("recount", milliseconds([&] { recountTotals(*session); }));
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

/// Figures of several alternating runs of two kinds of child, the medians of each.
class ChildPairs {
public:
    ChildPairs(const QString& ours, const QString& theirs, const QString& path) {
        for (int i = 0; i < kRounds; ++i) {
            collect(m_ours, childFigures(ours, path));
            collect(m_theirs, childFigures(theirs, path));
        }
    }
    double ours(const char* name) const { return median(m_ours.value(QString::fromLatin1(name))); }
    double theirs(const char* name) const { return median(m_theirs.value(QString::fromLatin1(name))); }

private:
    using Figures = QMap<QString, std::vector<double>>;
    static void collect(Figures& to, const QMap<QString, double>& from) {
        for (auto figure = from.begin(); figure != from.end(); ++figure)
            to[figure.key()].push_back(figure.value());
    }
    Figures m_ours;
    Figures m_theirs;
};

void noteStages(BenchReport& report, const ChildPairs& runs) {
    QStringList stages;
    for (const char* stage : {"appearance", "check", "open", "painted", "cursors", "recount", "register"})
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

void benchSmallStart(BenchReport& report, const QString& path) {
    const ChildPairs runs(QStringLiteral("start"), QStringLiteral("bare"), path);
    report.add({QStringLiteral("start with 2,000 customers, 20,000 lines: register shown"),
                runs.ours("total"), runs.theirs("painted"), QStringLiteral("ms"), 0});
    noteStages(report, runs);
}

} // namespace

int measureInThisProcess(int argc, char** argv) {
    QElapsedTimer since;
    since.start();
    QApplication application(argc, argv);
    const QString what = application.arguments().value(2);
    const QString path = application.arguments().value(3);
    if (what == u"grid")
        measureGrid(path);
    else if (what == u"sqlgrid")
        measureSqlGrid(path);
    else if (what == u"reports")
        measureReports(path);
    else if (what == u"everywindow")
        measureEveryWindow(path);
    else if (what == u"statistics")
        measureStatistics(path);
    else if (what == u"bare")
        measureBare(since);
    else if (what == u"import-memory")
        measureImportMemory(path);
    else
        measureStart(application, since, path);
    return 0;
}

void runWindowBench(BenchReport& report, const QString& path, const QString& smallPath) {
    const ChildPairs grids(QStringLiteral("grid"), QStringLiteral("sqlgrid"), path);
    report.add({QStringLiteral("grid to its last row / QSqlTableModel, fetchMore"), grids.ours("reach"),
                grids.theirs("reach"), QStringLiteral("ms"), 0.05});
    report.add({QStringLiteral("memory of that grid with its image / QSqlTableModel"), grids.ours("memory"),
                grids.theirs("memory"), QStringLiteral("MiB"), 0.25});
    report.add({QStringLiteral("200 scroll steps, both loaded"), grids.ours("scroll"), grids.theirs("scroll"),
                QStringLiteral("ms"), 1.2});
    report.note(QStringLiteral("rows: %1 and %2").arg(grids.ours("rows")).arg(grids.theirs("rows")));
    benchStart(report, path);
    benchSmallStart(report, smallPath);
}
