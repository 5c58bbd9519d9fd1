#include "support/pdfReader.h"
#include "support/printQt.h"
#include "support/printService.h"
#include "support/reportTable.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using namespace table;

struct End {
    int code;
    QString report;
    QString told;
};

End printed(const QString& report, int rows, const QString& pdf, const QString& printService = {}) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!printService.isEmpty())
        environment.insert("CUPS_SERVER", printService);
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(REPORT_WORKER), {report, QString::number(rows), pdf});
    process.waitForFinished(60000);
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardError()),
            QString::fromUtf8(process.readAllStandardOutput()).trimmed()};
}

constexpr const char16_t* kSome[] = {u"print_rs3", u"print_rs_sum", u"showprint_rs2"};

void expectStop(const ReportRow& row, int rows) {
    const QTemporaryDir folder;
    const QString pdf = folder.filePath("out.pdf");
    const End end = printed(QString::fromUtf16(row.name), rows, pdf);
    EXPECT_EQ(end.code, 1) << nameOf(row) << rows;
    EXPECT_TRUE(end.report.contains(QStringLiteral("错误 3704"))) << end.report.toStdString();
    EXPECT_EQ(pdfPages(pdf), 1) << nameOf(row) << rows;
    EXPECT_TRUE(pdfText(pdf, 1).endsWith(QStringLiteral("第 1 页"))) << nameOf(row) << rows;
}

TEST(PrintStop, AFullPageEndsTheProcessWithItsReportAndThePageIsInTheFile) {
    for (const ReportRow& row : kRows)
        if (row.traits & StopsInPrint)
            expectStop(row, row.rows + 1);
}

TEST(PrintStop, SoDoesAReportThatIsOneFullPageOrMany) {
    for (const char16_t* name : kSome) {
        const ReportRow& row = *rowOf(*findReport(name));
        for (const int rows : {row.rows, 500})
            expectStop(row, rows);
    }
}

TEST(PrintStop, AShortReportOfTheSameMembersPrintsAndTheProgramLives) {
    for (const char16_t* name : kSome) {
        const ReportRow& row = *rowOf(*findReport(name));
        const QTemporaryDir folder;
        const QString pdf = folder.filePath("out.pdf");
        const End end = printed(QString::fromUtf16(row.name), row.rows - 1, pdf);
        EXPECT_EQ(end.code, 0) << nameOf(row) << end.report.toStdString();
        EXPECT_EQ(pdfPages(pdf), 1) << nameOf(row);
    }
}

TEST(PrintStop, AReportThatReadsItsOwnCursorPrintsOnBehindAFullPage) {
    const QTemporaryDir folder;
    const QString pdf = folder.filePath("out.pdf");
    EXPECT_EQ(printed("showprint_rs15", 41, pdf).code, 0);
    EXPECT_EQ(pdfPages(pdf), 2);
}

TEST(Printer, AJobThatItRefusesIsToldAndTheProgramLives) {
    const PrintService service(PrintService::Jobs::Refused);
    const End end = printed("showprint_rs15", 39, {}, service.server());
    EXPECT_EQ(end.code, 0) << end.report.toStdString();
    EXPECT_EQ(service.jobs(), 1);
    EXPECT_TRUE(end.told.startsWith(QStringLiteral("打印失败！打印机没有接受："))) << end.told.toStdString();
}

TEST(Printer, AJobThatItTakesBearsTheCaptionAndTheDayAndNothingIsTold) {
    const PrintService service(PrintService::Jobs::Taken);
    const End end = printed("showprint_rs15", 39, {}, service.server());
    EXPECT_EQ(end.code, 0) << end.report.toStdString();
    EXPECT_EQ(service.jobs(), 1);
    EXPECT_EQ(end.told, QString());
    EXPECT_EQ(QString::fromUtf8(service.title()), QStringLiteral("产品入库清单打印 2004-11-21"));
}

} // namespace
