// Every figure beside its reference from the same run. bench [CUSTOMERS PRODUCTS LINES]
#include "engineBench.h"
#include "importBench.h"
#include "latencyBench.h"
#include "longTextBench.h"
#include "periodBench.h"
#include "recordset/error.h"
#include "reportBench.h"
#include "saleBench.h"
#include "startBench.h"
#include "statisticsBench.h"
#include "suggestBench.h"
#include "support/sampleData.h"
#include "windowBench.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <cstdio>
#include <cstring>

int main(int argc, char** argv) {
    if (argc > 2 && std::strcmp(argv[1], "--measure") == 0)
        return measureInThisProcess(argc, argv);
    QCoreApplication app(argc, argv);
    const QStringList words = app.arguments();
    SampleSize size{100'000, 10'000, 1'000'000};
    if (words.size() == 4)
        size = {words[1].toInt(), words[2].toInt(), words[3].toInt()};
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("bench.mdb"));
    const QString smallPath = folder.filePath(QStringLiteral("small.mdb"));
    std::printf("%d customers, %d products, %d order lines; medians\n", size.customers, size.products,
                size.lines);
    std::printf("%-58s %10s %10s\n", "work", "ours", "reference");
    BenchReport report;
    try {
        makeSample(path, size);
        makeSample(smallPath, SampleSize());
        runEngineBench(report, path, folder.path());
        runSaleBench(report, path, folder.path());
        runPeriodBench(report, path, folder.path());
        runReportBench(report, path);
        runSuggestBench(report, path);
        runStatisticsBench(report, path);
        runImportBench(report, folder.path());
        runLongTextBench(report, folder.path());
        runWindowBench(report, path);
        runLatencyBench(report, path, folder.path());
        runStartBench(report, path, smallPath);
    } catch (const RuntimeError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    std::printf("%d missed\n", report.misses());
    return 0;
}
