// What the import window has paired when another target, file or table is chosen.
#include "controls/dataGrid.h"
#include "maintenance/fileInputFm2.h"
#include "maintenance/fileInputFm3.h"
#include "support/importShop.h"
#include "support/jetFile.h"

#include <QDir>
#include <QProgressBar>

namespace {

class ImportPairs : public ImportShop {};

TEST_F(ImportPairs, AnotherMenuCommandTurnsTheOpenWindowToItsTarget) {
    const SampleFile sample = sampleFile("orders.txt");
    open(1, sample);
    take("orders");
    pair({{"客户编号", "客户编号"}, {"日期", "地址"}});
    drive->choose("Input_Data2");
    EXPECT_EQ(window("FileInputFm2")->windowTitle(), u"数据导入--> 购物明细表(buyList)");
    EXPECT_EQ(form->text("Label2"), QString::fromUtf16(findImportTarget(2)->note));
    EXPECT_TRUE(form->entries("List2").isEmpty() && form->entries("List3").isEmpty());
    EXPECT_EQ(form->entries("List4"), pairableColumns(session(), *findImportTarget(2)));
    pairAsExpected(sample);
    drive->choose("Input_Data2");
    EXPECT_EQ(form->entries("List2").size(), sample.expected["pairs"].toArray().size())
        << "the same command once more leaves the pairs";
    run();
    prompts.expectMessage("数据导入成功！", "OK");
    finishRun();
    EXPECT_EQ(rows("clientTable") + u' ' + rows("buyList"), u"0 2000");
}

TEST_F(ImportPairs, AnotherMenuCommandBeforeATableIsTakenIsTheOneThatCounts) {
    open(1, sampleFile("customers.txt"));
    drive->choose("Input_Data3");
    EXPECT_EQ(lists(), u"");
    EXPECT_FALSE(form->find<QWidget>("Picture2")->isVisible());
    EXPECT_EQ(window("FileInputFm2")->windowTitle(), u"数据导入--> 销售库存表(productTable)");
    take("customers");
    EXPECT_EQ(form->entries("List4"), session().productTable->fieldNames());
    EXPECT_EQ(form->text("Label2"), QString::fromUtf16(findImportTarget(3)->note));
}

TEST_F(ImportPairs, AnEmptyOrDamagedTableLeavesNoPairOfTheOneBefore) {
    JetFile damaged(QStringLiteral(SAMPLES "/import/products.mdb"));
    damaged.setRowCount(JetFile::kFirstTable, 151);
    const QString path = QDir(session().appPath).filePath("damaged.mdb");
    ASSERT_TRUE(damaged.write(path));
    const std::tuple<SourceKind, QString, QString> bad[] = {
        {SourceKind::Txt, sampleFile("edge/empty.txt").path(), "empty"},
        {SourceKind::Mdb, sampleFile("edge/several_tables.mdb").path(), "空表"},
        {SourceKind::Mdb, path, "商品库存"},
        {SourceKind::Xls, sampleFile("edge/garbage.xls").path(), {}}};
    for (const auto& [kind, file, table] : bad) {
        open(1, sampleFile("customers.txt"));
        take("customers");
        pair({{"客户编号", "客户编号"}});
        prompts.openName = file;
        form->click(QStringLiteral("Command7(%1)").arg(int(kind)));
        EXPECT_EQ(lists(), u"") << "the columns are not those of this file";
        if (!table.isEmpty())
            take(table);
        EXPECT_EQ(lists(), u"") << file.toStdString();
        EXPECT_EQ(form->text("Label2"), u"客户编号 是必选字段名！") << "as it was";
        EXPECT_TRUE(form->find<QWidget>("Picture2")->isVisible()) << "as it was";
        form->click("Command4");
        EXPECT_EQ(window("FileInputFm3"), nullptr);
        window("FileInputFm2")->close();
    }
    EXPECT_EQ(rows("clientTable"), u"0");
}

TEST_F(ImportPairs, AnEmptyTableOfTheSameFileEmptiesTheListsAndAFullOneFillsThem) {
    open(1, sampleFile("edge/several_tables.mdb"));
    take("客户资料");
    pair({{"客户编号", "客户编号"}});
    take("空表");
    EXPECT_EQ(lists(), u"");
    take("Products");
    EXPECT_EQ(form->entries("List1").size(), 11);
    EXPECT_TRUE(form->entries("List2").isEmpty());
}

TEST_F(ImportPairs, ARefusedNameOrNoTableChosenLeavesNothingToBringIn) {
    open(1, sampleFile("edge/several_tables.mdb"));
    form->click("Command6");
    EXPECT_EQ(lists(), u"") << "several tables, none chosen";
    take("客户资料");
    const QString before = lists();
    prompts.openName.reset();
    form->click("Command7(0)");
    EXPECT_EQ(lists(), before) << "a dialog that is given up changes nothing";
    prompts.openName = sampleFile("edge/customers_export.csv").path();
    prompts.expectMessage("不是 .TXT 数据文件类型，请重新选择！", "提示");
    form->click("Command7(1)");
    EXPECT_EQ(lists(), u"");
}

/// The customers of a kind, with the column 传真 named 电话 as another one is.
QByteArray customersWithTwoTelephones(const QString& kind) {
    QFile file(QStringLiteral(SAMPLES "/import/customers.") + kind);
    QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    const auto utf16 = [](const QString& text) {
        return QByteArray(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
    };
    const bool gbk = kind == u"dbf" || kind == u"txt";
    const QByteArray from = gbk ? "\xB4\xAB\xD5\xE6" : utf16(QStringLiteral("传真"));
    EXPECT_EQ(bytes.count(from), 1) << kind.toStdString();
    return bytes.replace(from, gbk ? "\xB5\xE7\xBB\xB0" : utf16(QStringLiteral("电话")));
}

TEST_F(ImportPairs, TwoColumnsOfOneNameGiveEachItsOwnData) {
    const SampleFile sample = sampleFile("customers.mdb");
    const QJsonArray wanted = sample.tables().first().toObject()["rows"].toArray();
    start();
    for (const auto& [kind, name] : {std::pair(SourceKind::Dbf, "dbf"), std::pair(SourceKind::Txt, "txt"),
                                     std::pair(SourceKind::Xls, "xls"), std::pair(SourceKind::Mdb, "mdb")}) {
        const QString path = QDir(session().appPath).filePath(QStringLiteral("twice.%1").arg(name));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(customersWithTwoTelephones(QString::fromUtf8(name)));
        file.close();
        const int before = rows("clientTable").toInt();
        open(1, path, kind);
        take(form->entries("List5").first());
        EXPECT_EQ(form->entries("List1").count("电话"), 2) << name;
        pair({{"客户编号", "客户编号"}, {"电话", "传真"}, {"电话", "电话"}});
        // Back and there again, so that the second one stands before the first.
        form->click("Command2(3)");
        form->clickItem("List1", "客户编号");
        form->click("Command2(0)");
        EXPECT_EQ(form->entries("List1").count("电话"), 2) << name;
        form->clickItem("List1", "电话");
        form->click("Command2(0)");
        form->clickItem("List1", "电话");
        form->click("Command2(0)");
        run();
        prompts.expectMessage("数据导入成功！", "OK");
        QCoreApplication::processEvents();
        const auto* shown = runs->find<DataGrid>("DataGrid1")->model();
        EXPECT_EQ(shown->index(119, 1).data().toString(), wanted[119].toArray()[4].toString()) << name;
        EXPECT_EQ(shown->index(119, 2).data().toString(), wanted[119].toArray()[5].toString()) << name;
        finishRun();
        Statement stored = session().cn.prepare(
            QStringLiteral("SELECT 传真, 电话 FROM clientTable ORDER BY rowid LIMIT -1 OFFSET %1")
                .arg(before));
        for (int row = 0; row < wanted.size(); ++row) {
            ASSERT_TRUE(stored.step()) << name << row;
            EXPECT_EQ(stored.text(0), wanted[row].toArray()[4].toString()) << name << row;
            EXPECT_EQ(stored.text(1), wanted[row].toArray()[5].toString()) << name << row;
        }
    }
}

TEST_F(ImportPairs, NamesMoveBetweenTheListsOneByOneOrAllTogether) {
    open(1, sampleFile("customers.txt"));
    take("customers");
    const QStringList all = form->entries("List1");
    form->click("Command2(1)");
    EXPECT_EQ(form->entries("List2"), all);
    EXPECT_TRUE(form->entries("List1").isEmpty());
    form->clickItem("List2", all[1]);
    form->click("Command2(2)");
    EXPECT_EQ(form->entries("List1"), QStringList{all[1]});
    form->click("Command2(3)");
    EXPECT_EQ(form->entries("List1").size(), all.size());
    EXPECT_TRUE(form->entries("List2").isEmpty());
    form->click("Command3(1)");
    EXPECT_TRUE(form->entries("List4").isEmpty());
}

TEST_F(ImportPairs, UnequalPairsAreToldAndAnEmptySideDoesNothing) {
    open(1, sampleFile("customers.txt"));
    take("customers");
    form->click("Command4");
    form->clickItem("List1", "客户编号");
    form->click("Command2(0)");
    form->click("Command4");
    form->click("Command3(1)");
    prompts.expectMessage("字段对应个数不匹配！");
    form->click("Command4");
    form->click("Command3(3)");
    form->clickItem("List4", "客户编号");
    form->click("Command3(0)");
    prompts.expectConfirm("确实要导入数据吗？ ", false);
    form->click("Command4");
    EXPECT_EQ(window("FileInputFm3"), nullptr);
}

TEST_F(ImportPairs, TheRowsAreGivenUpBeforeTheTotalsAreReckoned) {
    start();
    ImportPlan plan;
    plan.importTarget = 1;
    main->host().registerWindow("FileInputFm2",
                                [this, &plan] { return new FileInputFm2(plan, main->host(), prompts); });
    main->host().registerWindow("FileInputFm3",
                                [this, &plan] { return new FileInputFm3(plan, main->host(), prompts); });
    for (const bool byBox : {false, true}) {
        const SampleFile sample = sampleFile("customers.txt");
        open(1, sample);
        take("customers");
        pairAsExpected(sample);
        run();
        EXPECT_EQ(plan.rows.rowCount(), 120);
        prompts.expectMessage("数据导入成功！", "OK");
        prompts.whenShown([&] { EXPECT_TRUE(plan.rows.columns.isEmpty()); });
        QCoreApplication::processEvents();
        const std::weak_ptr<Recordset> shown = runs->find<DataGrid>("DataGrid1")->recordset();
        EXPECT_FALSE(shown.expired());
        int steps = 0;
        QObject::connect(runs->find<QProgressBar>("importProgress"), &QProgressBar::valueChanged,
                         [&steps, &shown] {
                             ++steps;
                             EXPECT_TRUE(shown.expired()) << "while the totals are reckoned";
                         });
        if (byBox)
            window("FileInputFm3")->close();
        else
            runs->click("Command3");
        EXPECT_EQ(steps, byBox ? 0 : 1);
        EXPECT_TRUE(shown.expired());
    }
    QCoreApplication::processEvents();
    main.reset();
}

} // namespace
