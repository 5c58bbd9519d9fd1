#include "reports/reportDescription.h"
#include "support/pdfReader.h"
#include "support/printQt.h"
#include "support/printService.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

struct End {
    int code;
    QString report;
    QString told;
};

End printed(const char* report, const char* table, int rows, const QString& pdf,
            const QString& printService = {}) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!printService.isEmpty())
        environment.insert("CUPS_SERVER", printService);
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(REPORT_WORKER), {report, table, QString::number(rows), pdf});
    process.waitForFinished(60000);
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardError()),
            QString::fromUtf8(process.readAllStandardOutput()).trimmed()};
}

constexpr std::pair<const char*, const char*> kStopping[] = {{"print_rs3", "productTable"},
                                                             {"showprint_rs3", "productTable"},
                                                             {"showprint_rs4", "productTable2"},
                                                             {"showprint_rs16", "product_Bank2"},
                                                             {"print_rs_sum", "clientTable"}};

int fullPage(const char* report) {
    return findReport(QString::fromUtf8(report))->rows;
}

TEST(PrintStop, AFullPageEndsTheProcessWithItsReportAndThePageIsInTheFile) {
    for (const auto& [report, table] : kStopping) {
        for (const int rows : {fullPage(report), fullPage(report) + 1, 500}) {
            const QTemporaryDir folder;
            const QString pdf = folder.filePath("out.pdf");
            const End end = printed(report, table, rows, pdf);
            EXPECT_EQ(end.code, 1) << report << rows;
            EXPECT_TRUE(end.report.contains(QStringLiteral("错误 3704"))) << end.report.toStdString();
            EXPECT_EQ(pdfPages(pdf), 1) << report << rows;
            EXPECT_TRUE(pdfText(pdf, 1).endsWith(QStringLiteral("第 1 页"))) << report << rows;
        }
    }
}

TEST(PrintStop, AShortReportOfTheSameMembersPrintsAndTheProgramLives) {
    for (const auto& [report, table] : kStopping) {
        const QTemporaryDir folder;
        const QString pdf = folder.filePath("out.pdf");
        const End end = printed(report, table, fullPage(report) - 1, pdf);
        EXPECT_EQ(end.code, 0) << report << end.report.toStdString();
        EXPECT_EQ(pdfPages(pdf), 1) << report;
    }
}

TEST(PrintStop, AReportThatReadsItsOwnCursorPrintsOnBehindAFullPage) {
    const QTemporaryDir folder;
    const QString pdf = folder.filePath("out.pdf");
    EXPECT_EQ(printed("showprint_rs15", "product_Bank", 41, pdf).code, 0);
    EXPECT_EQ(pdfPages(pdf), 2);
}

TEST(Printer, AJobThatItRefusesIsToldAndTheProgramLives) {
    const PrintService service(PrintService::Jobs::Refused);
    const End end = printed("showprint_rs15", "product_Bank", 39, {}, service.server());
    EXPECT_EQ(end.code, 0) << end.report.toStdString();
    EXPECT_EQ(service.jobs(), 1);
    EXPECT_TRUE(end.told.startsWith(QStringLiteral("打印失败！打印机没有接受："))) << end.told.toStdString();
}

TEST(Printer, AJobThatItTakesBearsTheCaptionAndTheDayAndNothingIsTold) {
    const PrintService service(PrintService::Jobs::Taken);
    const End end = printed("showprint_rs15", "product_Bank", 39, {}, service.server());
    EXPECT_EQ(end.code, 0) << end.report.toStdString();
    EXPECT_EQ(service.jobs(), 1);
    EXPECT_EQ(end.told, QString());
    EXPECT_EQ(QString::fromUtf8(service.title()), QStringLiteral("产品入库清单打印 2004-11-21"));
}

} // namespace
