// The report that ends the program, and the way back it offers.
#include "app/reportDialog.h"
#include "app/errorReport.h"
#include "maintenance/dailyBackup.h"
#include "recordset/error.h"
#include "support/driver.h"
#include "support/testBooks.h"

#include <QCoreApplication>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QtTest/QTest>

#include <gtest/gtest.h>

namespace {

class ReportDialogTest : public testing::Test {
protected:
    void backUp(const QDate& day) {
        ASSERT_EQ(backUpDaily(
                      books.path(), day, [] { return 0U; }, freeBytesOf),
                  u"");
    }
    static QString row(const QTableWidget* list, int row) {
        QStringList cells;
        for (int column : {0, 2, 3})
            cells << list->item(row, column)->text();
        return cells.join(u' ');
    }

    TestBooks books;
    ReportDialog dialog{QStringLiteral("数据库 /店/VelmorClientBank.mdb 已损坏。")};
};

TEST_F(ReportDialogTest, WithoutAWayBackHasOneButtonWhichEnds) {
    dialog.show();
    EXPECT_EQ(dialog.findChildren<QPushButton*>().size(), 1);
    Driver(dialog).click("end");
    EXPECT_EQ(dialog.answer(), ReportDialog::Answer::End);
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(ReportDialogTest, OffersToOpenAgain) {
    dialog.offerReopen();
    dialog.show();
    Driver(dialog).click("reopen");
    EXPECT_EQ(dialog.answer(), ReportDialog::Answer::Reopen);
}

TEST_F(ReportDialogTest, ListsTheBackupsWithWhatTheyHoldTheLatestChosen) {
    books.addClient("7", "甲");
    books.addLine("1", "7", "p1", "2004-01-05", 1, 5, 2);
    backUp(QDate(2026, 11, 20));
    books.addClient("8", "乙");
    books.addLine("2", "8", "p1", "2004-01-05", 1, 5, 2);
    books.addLine("2", "8", "p2", "2004-01-05", 1, 5, 2);
    backUp(QDate(2026, 11, 21));
    dialog.offerBackups(books.path());
    dialog.show();
    const auto* list = dialog.findChild<QTableWidget*>("backups");
    for (int i = 0; i < 100 && row(list, 1).contains(u'…'); ++i)
        QCoreApplication::processEvents();
    EXPECT_EQ(row(list, 0), u"2026-11-21 2 2");
    EXPECT_EQ(row(list, 1), u"2026-11-20 1 1");
    EXPECT_TRUE(dialog.chosenBackup().endsWith("备份/VelmorClientBank-2026-11-21.mdb"));
    dialog.findChild<QTableWidget*>("backups")->selectRow(1);
    if (qEnvironmentVariableIsSet("SHOP_PICTURES"))
        dialog.grab().save(qEnvironmentVariable("SHOP_PICTURES") + "/reportDialog.png");
    Driver(dialog).click("restore");
    EXPECT_EQ(dialog.answer(), ReportDialog::Answer::Restore);
    EXPECT_TRUE(dialog.chosenBackup().endsWith("2026-11-20.mdb"));
}

TEST_F(ReportDialogTest, TheBackupIsChosenAndRestoredByTheKeyboardAlone) {
    backUp(QDate(2026, 11, 20));
    backUp(QDate(2026, 11, 21));
    dialog.offerBackups(books.path());
    dialog.show();
    auto* list = dialog.findChild<QTableWidget*>("backups");
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Down);
    for (int i = 0; i < 3 && dialog.focusWidget()->objectName() != u"restore"; ++i)
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
    ASSERT_EQ(dialog.focusWidget()->objectName(), u"restore");
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Space);
    EXPECT_EQ(dialog.answer(), ReportDialog::Answer::Restore);
    EXPECT_TRUE(dialog.chosenBackup().endsWith("2026-11-20.mdb"));
}

TEST_F(ReportDialogTest, SaysWhetherTheFileMayHaveSuffered) {
    const QString path = QStringLiteral("/店/VelmorClientBank.mdb");
    EXPECT_TRUE(reportText(DatabaseLost(QStringLiteral("x"), Outcome::TakenBack, true), path)
                    .startsWith(QStringLiteral("数据文件读不出来或者已损坏，程序必须结束。")));
    const QString unknown = reportText(DatabaseLost(QStringLiteral("x"), Outcome::Unknown), path);
    EXPECT_TRUE(unknown.startsWith(QStringLiteral("程序遇到错误，必须结束。\n")))
        << "what was saved is not known";
    for (const QString& text : {reportText(DatabaseLost(QStringLiteral("x")), path),
                                reportText(RuntimeError(6, QStringLiteral("溢出")), path)})
        EXPECT_TRUE(text.startsWith(QStringLiteral("程序遇到错误，必须结束。已保存的数据不受影响。")));
}

TEST_F(ReportDialogTest, ABackupThatCannotBeReadSaysSo) {
    backUp(QDate(2026, 11, 20));
    QFile file(keptBackups(books.path())[0].path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("damaged") == 7);
    file.close();
    dialog.offerBackups(books.path());
    dialog.show();
    const auto* list = dialog.findChild<QTableWidget*>("backups");
    for (int i = 0; i < 100 && row(list, 0).contains(u'…'); ++i)
        QCoreApplication::processEvents();
    EXPECT_EQ(row(list, 0), u"2026-11-20 不能读取 ");
}

TEST_F(ReportDialogTest, WithoutBackupsThereIsNothingToRestore) {
    dialog.offerBackups(books.path());
    EXPECT_EQ(dialog.findChild<QPushButton*>("restore"), nullptr);
    EXPECT_EQ(dialog.chosenBackup(), u"");
}

} // namespace
