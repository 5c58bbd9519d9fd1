#include "controls/dataGrid.h"
#include "maintenance/backup.h"
#include "support/importShop.h"

#include <QDir>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>

#include <cmath>

namespace {

class Import : public ImportShop {};

TEST_F(Import, EveryMainFileComesInAndTheFiguresFollow) {
    const QJsonObject after = readJson(QStringLiteral(SAMPLES "/import/expected/after_import.json"));
    for (const char* kind : {"dbf", "txt", "xls", "mdb", "xlsx"}) {
        books.changeBehind("DELETE FROM clientTable; DELETE FROM buyList; DELETE FROM productTable");
        main.reset();
        start();
        importSample(QStringLiteral("customers.%1").arg(QString::fromUtf8(kind)));
        importSample(QStringLiteral("orders.%1").arg(QString::fromUtf8(kind)));
        importSample(QStringLiteral("products.%1").arg(QString::fromUtf8(kind)));
        EXPECT_EQ(rows("clientTable") + rows("buyList") + rows("productTable"), u"1202000150") << kind;
        for (const QJsonValue& each : after["tables"].toArray()) {
            const QJsonObject table = each.toObject();
            QStringList names;
            for (const QJsonValue& column : table["columns"].toArray())
                names << column.toObject()["name"].toString();
            Statement statement = session().cn.prepare(QStringLiteral("SELECT %1 FROM \"%2\" ORDER BY rowid")
                                                           .arg(names.join(", "), table["name"].toString()));
            const QJsonArray wanted = table["rows"].toArray();
            int row = 0;
            while (statement.step() && row < wanted.size()) {
                for (int i = 0; i < names.size(); ++i) {
                    const QString cell = wanted[row].toArray()[i].toString();
                    const bool number =
                        table["columns"].toArray()[i].toObject()["type"].toString() == u"number";
                    if (number)
                        ASSERT_NEAR(statement.number(i), cell.toDouble(), 1e-6)
                            << kind << row << names[i].toStdString();
                    else
                        ASSERT_EQ(statement.text(i), cell) << kind << row << names[i].toStdString();
                }
                ++row;
            }
            EXPECT_EQ(row, wanted.size()) << kind;
        }
    }
}

TEST_F(Import, EveryEdgeFileComesInWithItsNumberOfRowsAndItsNumbers) {
    const char* names[] = {"gbk.txt",
                           "utf8_bom.txt",
                           "tab.txt",
                           "quotes.txt",
                           "overlong.txt",
                           "overlong.xls",
                           "overlong.mdb",
                           "CUSTOMERS.DBF",
                           "ORDERS.TXT",
                           "PRODUCTS.XLS",
                           "several_sheets.xls",
                           "date_number_cells.xls",
                           "builtin_dates.xls",
                           "formulas.xls",
                           "text_in_number_cells.xls",
                           "empty_text_cells.xls",
                           "deleted_rows.dbf",
                           "several_tables.mdb",
                           "orders_letters_in_numbers.txt"};
    start();
    for (const char* name : names) {
        const SampleFile sample = sampleFile(QStringLiteral("edge/") + QString::fromUtf8(name));
        ASSERT_EQ(sample.outcome(), u"import") << name;
        const QString target = sample.expected["target"].toString();
        const int before = rows(qPrintable(target)).toInt();
        importSample(sample.name);
        EXPECT_EQ(rows(qPrintable(target)).toInt() - before, sample.expected["rows_added"].toInt()) << name;
        const QJsonObject stored = sample.expected["stored"].toObject();
        for (auto column = stored.begin(); column != stored.end(); ++column) {
            const QJsonArray wanted = column.value().toArray();
            Statement statement = session().cn.prepare(
                QStringLiteral("SELECT \"%1\" FROM \"%2\" ORDER BY rowid LIMIT -1 OFFSET %3")
                    .arg(column.key(), target)
                    .arg(before));
            for (int row = 0; row < wanted.size() && statement.step(); ++row)
                EXPECT_NEAR(statement.number(0), wanted[row].toVariant().toDouble(), 1e-9)
                    << name << column.key().toStdString() << row;
        }
    }
    EXPECT_EQ(
        books.stored("SELECT max(length(地址)) || ' ' || max(length(单位名称)) || ' ' || max(length(部门)) "
                     "FROM clientTable"),
        u"100 100 50")
        << "long texts are cut in silence";
}

TEST_F(Import, AnImpossibleDatePassesTheTestAndSilencesTheClosingMessage) {
    importSample("edge/orders_date_impossible.txt", false);
    EXPECT_EQ(rows("buyList"), u"10");
    EXPECT_EQ(books.stored("SELECT count(*) FROM buyList WHERE 日期 IS NULL"), u"1");
}

TEST_F(Import, ABadDateEndsTheRunWithItsRecordBeforeARowIsWritten) {
    start();
    const std::pair<const char*, int> files[] = {{"edge/orders_date_short_year.txt", 4},
                                                 {"edge/orders_date_slash.txt", 7},
                                                 {"edge/orders_date_two_bad.txt", 3}};
    for (const auto& [name, record] : files) {
        const SampleFile sample = sampleFile(QString::fromUtf8(name));
        open(2, sample);
        take(sample.tables().first().toObject()["name"].toString());
        pairAsExpected(sample);
        run();
        prompts.expectMessage(
            QStringLiteral("第%1记录， 日期格式不符，请转换为如下格式\r\n2004-1-1 或 2004-10-10")
                .arg(record));
        QCoreApplication::processEvents();
        EXPECT_EQ(rows("buyList"), u"0") << name;
        EXPECT_NE(window("FileInputFm3"), nullptr) << "the windows stay open";
        window("FileInputFm3")->close();
        EXPECT_EQ(window("FileInputFm2"), nullptr);
    }
}

TEST_F(Import, WrongNamesAreRefusedInTheWordsOfTheirButtons) {
    start();
    for (const char* name :
         {"customers_export.csv", "products_mixed_case.Dbf", "ORDERS_UPPER.MDB", "orders_new.xlsx"}) {
        const SampleFile sample = sampleFile(QStringLiteral("edge/") + QString::fromUtf8(name));
        ASSERT_EQ(sample.outcome(), u"refused_name");
        prompts.expectMessage(sample.expected["message"].toString(), sample.expected["caption"].toString());
        open(1, sample);
        EXPECT_TRUE(form->entries("List5").isEmpty()) << name;
        window("FileInputFm2")->close();
    }
}

TEST_F(Import, TheButtonsOfTodaysSpreadsheetsTakeTheirOwnNamesAlone) {
    start();
    const std::tuple<SourceKind, const char*, const char*> refused[] = {
        {SourceKind::Xlsx, "customers.xls", "不是 .XLSX 数据文件类型，请重新选择！"},
        {SourceKind::Csv, "customers.txt", "不是 .CSV 数据文件类型，请重新选择！"},
        {SourceKind::Xls, "customers.xlsx", "不是 .XLS 数据文件类型，请重新选择！"}};
    drive->choose("Input_Data1");
    Driver opened(*window("FileInputFm2"));
    for (const auto& [kind, name, message] : refused) {
        prompts.openName = sampleFile(QString::fromUtf8(name)).path();
        prompts.expectMessage(QString::fromUtf8(message), "提示信息");
        opened.click(QStringLiteral("Command7(%1)").arg(int(kind)));
        EXPECT_TRUE(opened.entries("List5").isEmpty()) << name;
        EXPECT_FALSE(opened.find<QListWidget>("List5")->isEnabled()) << name;
    }
    EXPECT_EQ(opened.find<QPushButton>("Command7(4)")->text(), u"打开.xlsx文件");
    EXPECT_EQ(opened.find<QPushButton>("Command7(5)")->text(), u"打开.csv文件");
}

TEST_F(Import, ACsvFileComesInAsItsTextDoes) {
    importSample("customers.txt");
    const QString text = books.stored("SELECT 客户编号, 联系人, 地址, Email FROM clientTable ORDER BY rowid");
    books.changeBehind("DELETE FROM clientTable");
    importSample("customers.csv");
    EXPECT_EQ(books.stored("SELECT 客户编号, 联系人, 地址, Email FROM clientTable ORDER BY rowid"), text);
    EXPECT_EQ(rows("clientTable"), u"120");
}

TEST_F(Import, AnXlsxThatIsNoneOrDamagedSaysSoAndTheNextFileIsReadInTheSameWindow) {
    QFile::copy(sampleFile("edge/orders_new.xlsx").path(),
                QDir(books.session().appPath).filePath("old.xlsx"));
    QFile cut(QDir(books.session().appPath).filePath("cut.xlsx"));
    QFile whole(sampleFile("customers.xlsx").path());
    ASSERT_TRUE(cut.open(QIODevice::WriteOnly) && whole.open(QIODevice::ReadOnly));
    cut.write(whole.read(9000));
    cut.close();
    open(1, QDir(session().appPath).filePath("old.xlsx"), SourceKind::Xlsx);
    EXPECT_TRUE(form->entries("List5").isEmpty());
    EXPECT_EQ(form->text("importHint"), u"工作簿有密码，或者是 .xls 文件，不能读取。");
    prompts.openName = cut.fileName();
    form->click("Command7(4)");
    EXPECT_EQ(form->text("importHint"), u"文件已损坏，或者不是 Excel 的 .xlsx 文件。");
    prompts.openName = whole.fileName();
    form->click("Command7(4)");
    EXPECT_EQ(form->text("importHint"), u"");
    take(form->entries("List5").first());
    EXPECT_EQ(form->entries("List1").size(), 16);
}

TEST_F(Import, EmptyTablesLeaveTheListsAndTheNoteAsTheyAre) {
    start();
    for (const char* name : {"empty.txt", "empty.dbf", "empty.xls", "empty.mdb"}) {
        const SampleFile sample = sampleFile(QStringLiteral("edge/") + QString::fromUtf8(name));
        open(1, sample);
        take(sample.tables().first().toObject()["name"].toString());
        for (const char* list : {"List1", "List2", "List3", "List4"})
            EXPECT_TRUE(form->entries(list).isEmpty()) << name << list;
        EXPECT_FALSE(form->find<QWidget>("Picture2")->isVisible()) << name;
        EXPECT_TRUE(form->text("Label2").contains("客户编号、订单号")) << name;
        window("FileInputFm2")->close();
    }
}

TEST_F(Import, FilesThatCannotBeReadListNothingOrNoRows) {
    start();
    for (const char* name :
         {"garbage.dbf", "garbage.xls", "garbage.mdb", "text_inside.xls", "text_inside.mdb",
          "text_inside.dbf", "zero_bytes.dbf", "zero_bytes.xls", "zero_bytes.mdb", "truncated_head.mdb",
          "truncated_half.mdb", "truncated_half.xls", "truncated_tail.xls", "truncated_header.dbf"}) {
        const SampleFile sample = sampleFile(QStringLiteral("edge/") + QString::fromUtf8(name));
        open(3, sample);
        if (!form->entries("List5").isEmpty()) {
            form->clickItem("List5", form->entries("List5").first());
            form->click("Command6");
        }
        EXPECT_TRUE(form->entries("List1").isEmpty() && form->entries("List4").isEmpty()) << name;
        window("FileInputFm2")->close();
    }
}

TEST_F(Import, TheWindowSaysWhereTheRowsGoAndLeavesOutWhatIsDerived) {
    start();
    const std::tuple<int, const char*, const char*, const char*, QStringList> targets[] = {
        {1,
         "数据导入--> 客户资料表(clientTable)",
         "customers.txt",
         "客户编号 是必选字段名！",
         {"差额利润", "消费合计", "差额利润率", "购买数"}},
        {2,
         "数据导入--> 购物明细表(buyList)",
         "orders.txt",
         "日期、产品编号、品名、客户编号、订单号、成本、单价、数量、实付 是必选字段名！",
         {"差额利润"}},
        {3,
         "数据导入--> 销售库存表(productTable)",
         "products.txt",
         "日期、产品编号、品名、成本、单价、数量 是必选字段名！",
         {}}};
    for (const auto& [number, caption, file, note, derived] : targets) {
        open(number, sampleFile(QString::fromUtf8(file)));
        EXPECT_EQ(window("FileInputFm2")->windowTitle(), QString::fromUtf8(caption));
        EXPECT_FALSE(form->find<QWidget>("Picture2")->isVisible());
        take(QString::fromUtf8(file).chopped(4));
        EXPECT_EQ(form->text("Label2"), QString::fromUtf8(note));
        EXPECT_TRUE(form->find<QWidget>("Picture2")->isVisible());
        for (const QString& column : derived)
            EXPECT_FALSE(form->entries("List4").contains(column)) << column.toStdString();
        EXPECT_TRUE(form->entries("List4").contains("流水号"));
        EXPECT_TRUE(main->isEnabled());
        window("FileInputFm2")->close();
    }
}

TEST_F(Import, TheFileDialogsOfferAllFilesBeforeTheirOwnKind) {
    start();
    const std::pair<SourceKind, const char*> filters[] = {
        {SourceKind::Dbf, "所有文件(*.*) (*.*);;数据库文件(*.DBF) (*.dbf *.DBF)"},
        {SourceKind::Txt, "所有文件(*.*) (*.*);;纯文本文件(*.TXT) (*.txt *.TXT)"},
        {SourceKind::Xls, "所有文件(*.*) (*.*);;Excel文件(*.XLS) (*.xls *.XLS)"},
        {SourceKind::Mdb, "所有文件(*.*) (*.*);;数据库文件(*.MDB) (*.mdb)"},
        {SourceKind::Xlsx, "所有文件(*.*) (*.*);;Excel工作簿(*.XLSX) (*.xlsx *.XLSX)"},
        {SourceKind::Csv, "所有文件(*.*) (*.*);;逗号分隔文件(*.CSV) (*.csv *.CSV)"}};
    drive->choose("Input_Data1");
    for (const auto& [kind, filter] : filters) {
        Driver(*window("FileInputFm2")).click(QStringLiteral("Command7(%1)").arg(int(kind)));
        EXPECT_EQ(prompts.fileFilter, QString::fromUtf8(filter));
    }
}

TEST_F(Import, EveryRequiredColumnIsAskedForInItsOrder) {
    start();
    const std::tuple<int, const char*, QStringList> targets[] = {
        {1, "customers.txt", {"客户编号"}},
        {2, "orders.txt", {"日期", "客户编号", "数量", "实付"}},
        {3, "products.txt", {"产品编号", "单价", "成本", "数量"}}};
    for (const auto& [number, file, required] : targets) {
        for (qsizetype given = 0; given < required.size(); ++given) {
            open(number, sampleFile(QString::fromUtf8(file)));
            take(QString::fromUtf8(file).chopped(4));
            const QString other = number == 1 ? "联系人" : "品名";
            pair({{other, other}});
            for (qsizetype i = 0; i < given; ++i)
                pair({{required[i], required[i]}});
            run();
            prompts.expectMessage(required[given] + " 是必选字段名！");
            QCoreApplication::processEvents();
            window("FileInputFm3")->close();
        }
    }
    EXPECT_EQ(rows("clientTable") + rows("buyList") + rows("productTable"), u"000");
}

TEST_F(Import, TheRunDisablesBothWindowsAndEndsOnTheLastRows) {
    const SampleFile sample = sampleFile("customers.txt");
    open(1, sample);
    take("customers");
    pairAsExpected(sample);
    run();
    EXPECT_FALSE(main->isEnabled());
    EXPECT_FALSE(window("FileInputFm2")->isEnabled());
    EXPECT_EQ(window("FileInputFm3")->windowTitle(), u"数据转换");
    prompts.expectMessage("数据导入成功！", "OK");
    QCoreApplication::processEvents();
    EXPECT_EQ(runs->text("Text1") + u' ' + runs->text("Text2"), u"120/120 120/120");
    EXPECT_EQ(runs->text("noticeText"), u"已导入 120 行到 客户资料表(clientTable)");
    EXPECT_EQ(status(), runs->text("noticeText"));
    runs->click("Command1(0)");
    runs->click("Command2(0)");
    EXPECT_EQ(runs->text("Text1") + u' ' + runs->text("Text2"), u"1/120 1/120");
    runs->click("Command3");
    EXPECT_TRUE(main->isEnabled());
    EXPECT_EQ(window("FileInputFm2"), nullptr);
    EXPECT_EQ(drive->text("Text1"), u"1/120") << "the register has read its table again";
}

TEST_F(Import, ClosingByTheBoxReadsTheTableAgainAndRecountsNothing) {
    books.addClient("1001");
    importSample("customers.txt");
    const SampleFile sample = sampleFile("orders.txt");
    open(2, sample);
    take("orders");
    pairAsExpected(sample);
    run();
    prompts.expectMessage("数据导入成功！", "OK");
    QCoreApplication::processEvents();
    window("FileInputFm3")->close();
    EXPECT_EQ(window("FileInputFm2"), nullptr);
    EXPECT_EQ(session().buyList->RecordCount(), 2000);
    EXPECT_EQ(books.stored("SELECT sum(消费合计) FROM clientTable"), u"0.0");
}

TEST_F(Import, ProductsAreNotFollowedByARecount) {
    books.addClient("7");
    books.execute("UPDATE clientTable SET 消费合计 = 5");
    start();
    books.execute("UPDATE clientTable SET 消费合计 = 5");
    importSample("products.txt");
    EXPECT_EQ(session().productTable->RecordCount(), 150);
    EXPECT_EQ(books.stored("SELECT 消费合计 FROM clientTable"), u"5.0");
}

TEST_F(Import, ClosedDuringTheRunTheRestStaysOutAndWhatIsInIsWhole) {
    QFile big(QDir(session().appPath).filePath("big.txt"));
    ASSERT_TRUE(big.open(QIODevice::WriteOnly));
    big.write("客户编号,联系人\r\n");
    for (int i = 0; i < 60000; ++i)
        big.write(QByteArray::number(i) + ",x\r\n");
    big.close();
    open(1, big.fileName(), SourceKind::Txt);
    take("big");
    pair({{"客户编号", "客户编号"}, {"联系人", "联系人"}});
    run();
    QString backedUp;
    QTimer::singleShot(0, main.get(), [&] {
        QTimer::singleShot(0, main.get(), [&] {
            // In the middle of the run a copy of the books holds whole rows, and the window closes.
            backedUp = QDir(session().appPath).filePath("copy.mdb");
            EXPECT_TRUE(backUpDatabase(session().cn.path(), backedUp));
            window("FileInputFm3")->close();
        });
    });
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    EXPECT_EQ(window("FileInputFm3"), nullptr);
    const int came = rows("clientTable").toInt();
    EXPECT_GT(came, 0);
    EXPECT_LT(came, 60000);
    EXPECT_EQ(books.stored("SELECT count(*) FROM clientTable WHERE 联系人 <> 'x' OR 流水号 IS NULL"), u"0");
    ASSERT_FALSE(backedUp.isEmpty());
    EXPECT_EQ(databaseFault(backedUp), u"");
}

} // namespace
