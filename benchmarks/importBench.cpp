#include "importBench.h"

#include "bigFiles.h"
#include "data/schema.h"
#include "importMemory.h"
#include "maintenance/importTransfer.h"
#include "maintenance/takeOver.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>

#include <cstdio>

namespace {

constexpr int kTextRows = 200'000;
constexpr int kDbfRows = 100'000;
constexpr int kXlsRows = 65'000;
constexpr int kXlsxRows = 100'000;

void runShell(const QString& command) {
    QProcess shell;
    shell.start(QStringLiteral("bash"), {QStringLiteral("-c"), command});
    shell.waitForFinished(-1);
    if (shell.exitCode() != 0)
        std::fprintf(stderr, "reference: %s\n", shell.readAllStandardError().constData());
}

bool has(const char* program) {
    return !QStandardPaths::findExecutable(QString::fromLatin1(program)).isEmpty();
}

void importText(const QString& source, const QString& books) {
    QFile::remove(books);
    createDatabase(books);
    Session session(books);
    session.open_rs();
    ImportPlan plan;
    plan.target = findImportTarget(1);
    const auto reader = openImportSource(SourceKind::Txt, source);
    plan.rows = reader->read(reader->tables().first());
    plan.sourceColumns = plan.targetColumns = plan.rows.columns;
    const RecordsetPtr target = targetRecordset(session, plan);
    ImportTransfer transfer(session, plan, target);
    while (!transfer.finished())
        transfer.run(66);
}

void benchText(BenchReport& report, const QString& folder) {
    const QString source = folder + QStringLiteral("/big.txt");
    const QString books = folder + QStringLiteral("/import.mdb");
    const QString plain = folder + QStringLiteral("/plain.db");
    writeBigText(source, kTextRows);
    alternate(
        report, QStringLiteral("text import of 200,000 rows / sqlite3 .import"), 2.5,
        [&] { importText(source, books); },
        [&] {
            QFile::remove(plain);
            runShell(QStringLiteral("sqlite3 '%1' '.mode csv' '.import %2 t'").arg(plain, source));
        },
        3);
    for (const QString& name : {source, books, plain})
        QFile::remove(name);
}

void readAll(SourceKind kind, const QString& path, const QString& table = {}) {
    const auto source = openImportSource(kind, path);
    source->read(table.isEmpty() ? source->tables().first() : table);
}

/// The same reader in this process, which no wall protects.
void readHere(SourceKind kind, const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return;
    const SourceFile source(file.handle());
    const auto reader = kind == SourceKind::Dbf   ? dbfReader(source)
                        : kind == SourceKind::Txt ? textReader(source)
                        : kind == SourceKind::Xls ? xlsReader(source)
                                                  : xlsxReader(source);
    SourceRows rows;
    reader->read(reader->tables().first(), rows);
}

void benchWalls(BenchReport& report, const QString& folder) {
    struct BigFile {
        SourceKind kind;
        const char* name;
        void (*write)(const QString&, int);
        int rows;
    };
    constexpr BigFile files[] = {{SourceKind::Txt, "txt", writeBigText, kTextRows},
                                 {SourceKind::Dbf, "dbf", writeBigDbf, kDbfRows},
                                 {SourceKind::Xls, "xls", writeBigXls, kXlsRows},
                                 {SourceKind::Xlsx, "xlsx", writeBigXlsx, kXlsxRows}};
    for (const BigFile& file : files) {
        const QString kind = QString::fromLatin1(file.name);
        const QString path = folder + QStringLiteral("/walled.") + kind;
        file.write(path, file.rows);
        alternate(
            report,
            QStringLiteral("%1 of %2 rows behind the wall / in this process").arg(kind).arg(file.rows), 1.3,
            [&] { readAll(file.kind, path); }, [&] { readHere(file.kind, path); });
        QFile::remove(path);
    }
}

void benchReaders(BenchReport& report, const QString& folder) {
    const QString dbf = folder + QStringLiteral("/big.dbf");
    writeBigDbf(dbf, kDbfRows);
    alternate(
        report, QStringLiteral("dbf of 100,000 rows / dbfdump"), 0.5, [&] { readAll(SourceKind::Dbf, dbf); },
        [&] { runShell(QStringLiteral("dbfdump '%1' > /dev/null").arg(dbf)); }, 3);
    const QString mdb = QStringLiteral(SAMPLES "/import/orders.mdb");
    alternate(
        report, QStringLiteral("mdb of 2,000 rows, opened and read / mdb-export"), 1.5,
        [&] { readAll(SourceKind::Mdb, mdb, QStringLiteral("销售明细")); },
        [&] { runShell(QStringLiteral("mdb-export '%1' 销售明细 > /dev/null").arg(mdb)); });
    const QString xls = folder + QStringLiteral("/big.xls");
    writeBigXls(xls, kXlsRows);
    if (has("soffice"))
        alternate(
            report, QStringLiteral("xls of 65,000 rows / LibreOffice to csv"), 0,
            [&] { readAll(SourceKind::Xls, xls); },
            [&] {
                runShell(QStringLiteral("soffice --headless --convert-to csv --outdir '%1' '%2'")
                             .arg(folder, xls));
            },
            1);
    else
        report.add({QStringLiteral("xls of 65,000 rows"),
                    milliseconds([&] { readAll(SourceKind::Xls, xls); }), 0, QStringLiteral("ms"), 0});
    const QString xlsx = folder + QStringLiteral("/big.xlsx");
    writeBigXlsx(xlsx, kXlsxRows);
    if (has("xlsx2csv"))
        alternate(
            report, QStringLiteral("xlsx of 100,000 rows / xlsx2csv"), 0.3,
            [&] { readAll(SourceKind::Xlsx, xlsx); },
            [&] { runShell(QStringLiteral("xlsx2csv '%1' /dev/null").arg(xlsx)); }, 3);
    for (const QString& name : {dbf, xls, xlsx})
        QFile::remove(name);
}

void benchTakeOver(BenchReport& report, const QString& folder) {
    QDir(folder).mkpath(QStringLiteral("old"));
    const QString path = folder + QStringLiteral("/old/VelmorClientBank.mdb");
    QFile::copy(QStringLiteral(SAMPLES "/legacy/VelmorClientBank.mdb"), path);
    report.add({QStringLiteral("taking over the old installation's file"),
                milliseconds([&] { takeOver(path); }), 0, QStringLiteral("ms"), 0});
}

} // namespace

void runImportBench(BenchReport& report, const QString& scratchFolder) {
    benchText(report, scratchFolder);
    benchReaders(report, scratchFolder);
    benchWalls(report, scratchFolder);
    benchImportMemory(report, scratchFolder);
    benchTakeOver(report, scratchFolder);
}
