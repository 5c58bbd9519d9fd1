// What helps before and during an import: pairs by name, a look at the source, a trial, a stop.
#include "maintenance/fileInputFm3.h"
#include "maintenance/importPreview.h"
#include "recordset/fileMark.h"
#include "support/importShop.h"
#include "support/smallDisk.h"

#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QTableView>
#include <QTimer>

#include <QtTest/QTest>

namespace {

class ImportTrialWindow : public ImportShop {
protected:
    QString writeSource(const char* name, const QByteArray& bytes) {
        QFile file(QDir(session().appPath).filePath(QString::fromUtf8(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }
    /// Customers "0", "1" …, each with the contact "x".
    QString manyCustomers(int count) {
        QByteArray bytes("客户编号,联系人\r\n");
        for (int i = 0; i < count; ++i)
            bytes += QByteArray::number(i) + ",x\r\n";
        return writeSource("many.txt", bytes);
    }
    QTableView* table(const char* name) { return form->find<QTableView>(QString::fromUtf8(name)); }
    QString cell(const char* name, int row, int column) {
        return table(name)->model()->index(row, column).data().toString();
    }
    QString head(const char* name, int column) {
        return table(name)->model()->headerData(column, Qt::Horizontal).toString();
    }
    int tableRows(const char* name) { return table(name)->model()->rowCount(); }
    QString pairs() {
        const QStringList source = form->entries("List2");
        const QStringList target = form->entries("List3");
        QStringList all;
        for (int i = 0; i < std::max(source.size(), target.size()); ++i)
            all << source.value(i) + u'=' + target.value(i);
        return all.join(u' ');
    }
    QByteArray fileBytes() {
        QFile file(books.path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// Presses a button of the run as soon as a block of it is in.
    void pressDuringTheRun(const char* button) {
        auto* progress = runs->find<QProgressBar>("importProgress");
        QObject::connect(progress, &QProgressBar::valueChanged, progress, [this, button](int value) {
            if (value > 0 && !std::exchange(m_pressed, true))
                QTimer::singleShot(0, main.get(), [this, button] { runs->click(QString::fromUtf8(button)); });
        });
    }
    bool m_pressed = false;
};

TEST_F(ImportTrialWindow, SameNamesArePairedAllAtOnceAndTheOthersStay) {
    open(3, sampleFile("products.txt"));
    form->click("pairSameNames");
    EXPECT_EQ(pairs(), u"") << "no table is taken yet";
    take("products");
    form->click("pairSameNames");
    const QStringList source = form->entries("List2");
    EXPECT_EQ(source, form->entries("List3"));
    EXPECT_GE(source.size(), 10);
    for (const QString& left : form->entries("List1"))
        EXPECT_FALSE(form->entries("List4").contains(left));
    const QString once = pairs();
    form->click("pairSameNames");
    EXPECT_EQ(pairs(), once) << "pressed twice";
    run();
    prompts.expectMessage("数据导入成功！", "OK");
    finishRun();
    EXPECT_EQ(rows("productTable"), u"150");
}

TEST_F(ImportTrialWindow, SameNamesKeepThePairsThatStandAndPutBackNamesWithoutAPartner) {
    open(1, writeSource("a.txt", "客户编号,姓名,Email,email,电话,多余\r\n1,张,a@b,c@d,5,z\r\n"),
         SourceKind::Txt);
    take("a");
    pair({{"姓名", "联系人"}});
    form->clickItem("List1", "多余");
    form->click("Command2(0)");
    EXPECT_EQ(pairs(), u"姓名=联系人 多余=");
    form->click("pairSameNames");
    EXPECT_TRUE(pairs().startsWith(u"姓名=联系人 ")) << pairs().toStdString();
    EXPECT_TRUE(pairs().contains(u"客户编号=客户编号") && pairs().contains(u"Email=Email"))
        << pairs().toStdString();
    EXPECT_FALSE(pairs().contains(u"多余") || pairs().contains(u"email="));
    EXPECT_TRUE(form->entries("List1").contains("多余") && form->entries("List1").contains("email"));
    // And one of the other side.
    form->clickItem("List4", "地址");
    form->click("Command3(0)");
    form->click("pairSameNames");
    EXPECT_TRUE(form->entries("List4").contains("地址"));
    EXPECT_EQ(form->entries("List2").size(), form->entries("List3").size());
}

TEST_F(ImportTrialWindow, TheFirstRowsOfTheSourceAreShownWithWhereTheyGo) {
    open(1, sampleFile("customers.xls"));
    EXPECT_EQ(tableRows("sourcePreview"), 0);
    take(form->entries("List5").first());
    const QJsonArray wanted = sampleFile("customers.xls").tables().first().toObject()["rows"].toArray();
    EXPECT_EQ(tableRows("sourcePreview"), ImportPreview::kRows);
    for (int row = 0; row < ImportPreview::kRows; ++row)
        EXPECT_EQ(cell("sourcePreview", row, 1), wanted[row].toArray()[1].toString());
    EXPECT_EQ(head("sourcePreview", 0), form->entries("List1").first());
    const QString first = form->entries("List1").first();
    pair({{first, "地址"}});
    EXPECT_EQ(head("sourcePreview", 0), first + " → 地址");
    form->click("Command2(3)");
    EXPECT_EQ(head("sourcePreview", 0), first);
    EXPECT_EQ(tableRows("sourcePreview"), ImportPreview::kRows);
}

TEST_F(ImportTrialWindow, APreviewGoesWithItsSourceAndADamagedOneShowsNone) {
    open(1, sampleFile("edge/several_tables.mdb"));
    take("客户资料");
    EXPECT_GT(tableRows("sourcePreview"), 0);
    take("空表");
    EXPECT_EQ(tableRows("sourcePreview"), 0);
    take("客户资料");
    prompts.openName = sampleFile("edge/garbage.xls").path();
    form->click("Command7(2)");
    EXPECT_EQ(tableRows("sourcePreview"), 0);
    form->click("tryImport");
    EXPECT_EQ(form->text("trialSummary"), u"");
    EXPECT_FALSE(form->text("importHint").isEmpty());
}

TEST_F(ImportTrialWindow, ALongOrForeignCellIsShownByItsBeginning) {
    open(1, writeSource("l.txt", "客户编号,<b>x</b>\r\n" + QByteArray(500000, 'a') + ",<i>y</i>\r\n"),
         SourceKind::Txt);
    take("l");
    EXPECT_LT(cell("sourcePreview", 0, 0).size(), 200);
    EXPECT_EQ(cell("sourcePreview", 0, 1), u"<i>y</i>");
    pair({{"客户编号", "客户编号"}});
    form->click("tryImport");
    EXPECT_EQ(cell("trialTable", 0, 1), QString(20, u'a'));
    EXPECT_EQ(cell("trialTable", 0, 0), u"客户编号太长，截去 499980 个字");
}

TEST_F(ImportTrialWindow, ATrialListsEveryRowAndWritesNothing) {
    open(2, sampleFile("edge/orders_date_two_bad.txt"));
    take(form->entries("List5").first());
    form->click("pairSameNames");
    const QByteArray before = fileBytes();
    form->click("tryImport");
    const int all = tableRows("trialTable");
    EXPECT_EQ(all, form->find<QTableView>("trialTable")->model()->rowCount());
    EXPECT_EQ(cell("trialTable", 2, 0), u"日期格式不符，导入会在这里停下");
    EXPECT_EQ(cell("trialTable", 0, 0), u"");
    EXPECT_EQ(cell("trialTable", 0, 1),
              form->find<QTableView>("sourcePreview")->model()->index(0, 0).data().toString());
    form->find<QCheckBox>("onlyRemarkable")->click();
    EXPECT_EQ(tableRows("trialTable"), 2);
    EXPECT_EQ(table("trialTable")->model()->headerData(0, Qt::Vertical).toInt(), 3) << "its own number";
    EXPECT_TRUE(form->text("trialSummary").contains(u"2 行不合格"))
        << form->text("trialSummary").toStdString();
    EXPECT_EQ(fileBytes(), before);
    EXPECT_EQ(markIn(fileBytes()), markIn(before));
    EXPECT_EQ(rows("buyList"), u"0");
    EXPECT_EQ(window("FileInputFm3"), nullptr);
    EXPECT_TRUE(main->isEnabled());
}

TEST_F(ImportTrialWindow, ATrialAsksForThePairsAsTheRunDoes) {
    open(2, sampleFile("orders.txt"));
    take("orders");
    form->click("tryImport"); // nothing is paired: nothing happens
    pair({{"日期", "日期"}});
    prompts.expectMessage("客户编号 是必选字段名！");
    form->click("tryImport");
    form->clickItem("List1", "数量");
    form->click("Command2(0)");
    prompts.expectMessage("字段对应个数不匹配！");
    form->click("tryImport");
    EXPECT_EQ(form->text("trialSummary"), u"");
}

TEST_F(ImportTrialWindow, ATrialIsNoMoreOnceThePairsOrTheSourceAreOthersAndTheRunFollowsIt) {
    open(1, sampleFile("customers.txt"));
    take("customers");
    form->click("pairSameNames");
    form->click("tryImport");
    EXPECT_EQ(tableRows("trialTable"), 120);
    form->click("Command3(3)");
    EXPECT_EQ(tableRows("trialTable"), 0) << "other pairs";
    form->click("pairSameNames");
    form->click("tryImport");
    EXPECT_EQ(tableRows("trialTable"), 120);
    drive->choose("Input_Data3");
    EXPECT_EQ(tableRows("trialTable"), 0) << "another target";
    drive->choose("Input_Data1");
    form->click("pairSameNames");
    form->click("tryImport");
    take("customers");
    EXPECT_EQ(tableRows("trialTable"), 0) << "read again";
    prompts.openName = sampleFile("customers.dbf").path();
    form->click("Command7(0)");
    take(form->entries("List5").first());
    form->click("pairSameNames");
    form->click("tryImport");
    EXPECT_EQ(tableRows("trialTable"), 120);
    run();
    prompts.expectMessage("数据导入成功！", "OK");
    finishRun();
    EXPECT_EQ(rows("clientTable"), u"120");
    // And a second import after it.
    importSample("orders.txt");
    EXPECT_EQ(rows("buyList"), u"2000");
}

TEST_F(ImportTrialWindow, ATrialLeavesAFilterASortAndUnsavedEditsAlone) {
    for (const char* number : {"1", "2", "3"})
        books.addClient(QString::fromUtf8(number));
    open(1, sampleFile("customers.txt"));
    session().clientTable->setSort("客户编号 desc");
    session().clientTable->setFilter("客户编号 <> '2'");
    session().clientTable->MoveFirst();
    session().clientTable->Fields("电话").setValue(QStringLiteral("5"));
    take("customers");
    form->click("pairSameNames");
    form->click("tryImport");
    EXPECT_EQ(session().clientTable->Filter(), u"客户编号 <> '2'");
    EXPECT_EQ(session().clientTable->Sort(), u"客户编号 desc");
    EXPECT_EQ(session().clientTable->pendingCount(), 1);
    EXPECT_EQ(session().clientTable->RecordCount(), 2);
    session().clientTable->CancelUpdate();
}

TEST_F(ImportTrialWindow, TheStopButtonEndsAtABlocksEndAndSaysHowManyRowsAreIn) {
    open(1, manyCustomers(60000), SourceKind::Txt);
    take("many");
    form->click("pairSameNames");
    run();
    auto* stop = runs->find<QPushButton>("stopImport");
    EXPECT_FALSE(stop->isEnabled()) << "before the run";
    const int commits = session().cn.commits();
    pressDuringTheRun("stopImport");
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    EXPECT_FALSE(stop->isEnabled());
    const int came = rows("clientTable").toInt();
    EXPECT_GT(came, 0);
    EXPECT_LT(came, 60000);
    EXPECT_LE(came, 2000 * (session().cn.commits() - commits)) << "whole blocks, one transaction each";
    EXPECT_EQ(runs->text("Label3"),
              QStringLiteral("已停止：已导入 %1 行，其余 %2 行没有导入。").arg(came).arg(60000 - came));
    EXPECT_TRUE(runs->find<QWidget>("Picture2")->isVisible());
    EXPECT_NE(window("FileInputFm3"), nullptr) << "the windows stay open";
    EXPECT_EQ(runs->text("Text2"), QStringLiteral("%1/%1").arg(came));
    EXPECT_EQ(runs->text("Text1"), QStringLiteral("%1/60000").arg(came)) << "the last row that came in";
    EXPECT_EQ(books.stored("SELECT max(CAST(客户编号 AS INTEGER)), sum(联系人 <> 'x'), count(流水号) FROM "
                           "clientTable"),
              QStringLiteral("%1|0|%2").arg(came - 1).arg(came))
        << "the first rows, each whole";
    runs->click("Command3");
    EXPECT_TRUE(main->isEnabled());
    EXPECT_EQ(window("FileInputFm2"), nullptr);
    EXPECT_EQ(drive->text("Text1"), QStringLiteral("1/%1").arg(came)) << "the register shows them";
    session().clientTable->setFilter(QStringLiteral("客户编号 = '%1'").arg(came - 1));
    EXPECT_EQ(session().clientTable->RecordCount(), 1) << "and finds the last";
    session().clientTable->setFilter(QStringLiteral("客户编号 = '%1'").arg(came));
    EXPECT_EQ(session().clientTable->RecordCount(), 0);
    session().clientTable->clearFilter();
    EXPECT_EQ(books.stored("PRAGMA integrity_check"), u"ok");
}

TEST_F(ImportTrialWindow, WhatAStoppedImportOfLinesBroughtInIsReckonedAndTheRestCanFollow) {
    books.addClient("7");
    QByteArray bytes("日期,客户编号,产品编号,订单号,成本,数量,实付\r\n");
    for (int i = 0; i < 30000; ++i)
        bytes += "2004-1-5,7,p1," + QByteArray::number(i) + ",2,3,10\r\n";
    const QString path = writeSource("lines.txt", bytes);
    open(2, path, SourceKind::Txt);
    take("lines");
    form->click("pairSameNames");
    run();
    pressDuringTheRun("stopImport");
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    const int came = rows("buyList").toInt();
    ASSERT_GT(came, 0);
    ASSERT_LT(came, 30000);
    runs->click("Command3");
    QCoreApplication::processEvents();
    EXPECT_EQ(books.stored("SELECT 消费合计, 差额利润, 购买数 FROM clientTable"),
              QStringLiteral("%1.0|%2.0|%3.0").arg(10 * came).arg(4 * came).arg(3 * came));
    EXPECT_EQ(books.stored("SELECT count(*) FROM buyList WHERE 差额利润 = 4"), QString::number(came));
    EXPECT_EQ(session().buyList->RecordCount(), came);
    // The same file once more, to its end: as told, rows are only added.
    m_pressed = true;
    open(2, path, SourceKind::Txt);
    take("lines");
    form->click("pairSameNames");
    run();
    prompts.expectMessage("数据导入成功！", "OK");
    finishRun();
    EXPECT_EQ(rows("buyList"), QString::number(came + 30000));
    EXPECT_EQ(books.stored("SELECT 购买数 FROM clientTable"), QStringLiteral("%1.0").arg(3 * (came + 30000)));
}

TEST_F(ImportTrialWindow, StoppedAndThenClosedByTheBoxTheRowsAreInAndNothingIsReckoned) {
    open(1, manyCustomers(60000), SourceKind::Txt);
    take("many");
    form->click("pairSameNames");
    run();
    pressDuringTheRun("stopImport");
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    window("FileInputFm3")->close();
    EXPECT_EQ(window("FileInputFm2"), nullptr);
    EXPECT_EQ(QString::number(session().clientTable->RecordCount()), rows("clientTable"));
}

TEST_F(ImportTrialWindow, AFullDiskDuringTheRunTellsItselfAndTheStopHasNothingLeftToDo) {
    open(1, manyCustomers(60000), SourceKind::Txt);
    take("many");
    form->click("pairSameNames");
    const QByteArray before = fileBytes();
    {
        const FileSizeLimit small(rlim_t(before.size()) + 40000);
        form->click("tryImport");
        EXPECT_EQ(tableRows("trialTable"), 60000) << "a trial needs no room";
        run();
        QCoreApplication::processEvents();
    }
    EXPECT_FALSE(runs->text("Label3").isEmpty());
    EXPECT_FALSE(runs->text("Label3").startsWith(u"已停止"));
    EXPECT_FALSE(runs->find<QPushButton>("stopImport")->isEnabled());
    const int came = rows("clientTable").toInt();
    EXPECT_LT(came, 60000);
    runs->click("Command3");
    EXPECT_EQ(session().clientTable->RecordCount(), came);
    EXPECT_EQ(books.stored("PRAGMA integrity_check"), u"ok");
}

} // namespace
