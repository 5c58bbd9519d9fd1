#pragma once

#include "reports/reportPage.h"
#include "support/pdfReader.h"
#include "support/reportRows.h"

#include <gtest/gtest.h>

/// Reports over invented rows, on their way to files of a folder of their own.
class ReportPaper : public testing::Test {
protected:
    Session& session() { return books.session(); }
    QString path(const char* name = "out.pdf") { return folder.filePath(QString::fromUtf8(name)); }
    /// Puts `count` rows below the report's cursor in place of those there.
    const RecordsetPtr& open(const ReportDescription& report, int count, int pageSize = 40) {
        const QString table = tableOf(report);
        books.changeBehind(QStringLiteral("DELETE FROM \"%1\"").arg(table));
        fillTable(books, table, count);
        RecordsetPtr& slot = session().*report.cursor;
        session().reopen(slot, rowsOf(report));
        slot->setPageSize(pageSize);
        return slot;
    }
    ReportDrawing drawing(const ReportDescription& report) {
        return {report, layout, session().*report.cursor, heads(report)};
    }
    static QStringList heads(const ReportDescription& report) {
        QStringList texts;
        for (std::size_t i = 0; i < report.head.size(); ++i)
            texts << QStringLiteral("头%1").arg(i);
        return texts;
    }
    /// What one page of the report has on it, by its millimetres.
    std::vector<PageRecording::Item> recorded(const ReportDescription& report, int pageIndex) {
        PageRecording page;
        const ReportDrawing drawn = drawing(report);
        ReportPageDrawing(drawn, page).drawTable(pageIndex);
        return page.items();
    }

    TestBooks books;
    QTemporaryDir folder;
    ReportLayout layout;
};
