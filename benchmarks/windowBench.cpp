#include "windowBench.h"

#include "controls/dataGrid.h"
#include "controls/prompts.h"
#include "importMemory.h"
#include "latencyBench.h"
#include "longTextBench.h"
#include "recordset/tableImage.h"
#include "reportBench.h"
#include "startBench.h"
#include "statisticsBench.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QHeaderView>
#include <QScrollBar>
#include <QSqlDatabase>
#include <QSqlTableModel>
#include <QTableView>

namespace {

constexpr int kScrollSteps = 200;

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
    else if (what == u"latency")
        measureLatency(path);
    else if (what == u"statistics")
        measureStatistics(path);
    else if (what == u"bare")
        measureBare(since);
    else if (what == u"startjobs")
        measureStartJobs(path);
    else if (what == u"startplain")
        measurePlainStart(path);
    else if (what == u"import-memory")
        measureImportMemory(path);
    else
        measureStart(application, since, path);
    return 0;
}

void runWindowBench(BenchReport& report, const QString& path) {
    const ChildPairs grids(QStringLiteral("grid"), QStringLiteral("sqlgrid"), path);
    report.add({QStringLiteral("grid to its last row / QSqlTableModel, fetchMore"), grids.ours("reach"),
                grids.theirs("reach"), QStringLiteral("ms"), 0.05});
    report.add({QStringLiteral("memory of that grid with its image / QSqlTableModel"), grids.ours("memory"),
                grids.theirs("memory"), QStringLiteral("MiB"), 0.25});
    report.add({QStringLiteral("200 scroll steps, both loaded"), grids.ours("scroll"), grids.theirs("scroll"),
                QStringLiteral("ms"), 1.2});
    report.note(QStringLiteral("rows: %1 and %2").arg(grids.ours("rows")).arg(grids.theirs("rows")));
}
