// Books of an old installation: the question at the start, and the shop at work on them.
#include "app/oldBooks.h"
#include "import/importSource.h"
#include "recordset/textDate.h"
#include "reports/reportForm.h"
#include "support/jetFile.h"
#include "support/pdfReader.h"
#include "support/shopWindow.h"
#include "support/smallDisk.h"
#include "support/startAtOnce.h"

#include <QDir>
#include <QFile>

namespace {

class OldBooksTest : public testing::Test {
protected:
    OldBooksTest() { QFile::copy(QStringLiteral(SAMPLES "/legacy/VelmorClientBank.mdb"), path()); }
    QString path() const { return folder.filePath("VelmorClientBank.mdb"); }
    void expectQuestion(bool yes) {
        prompts.expectConfirm(path() + "\n是旧版衡商汇的数据文件。要转换成新的格式吗？\n"
                                       "全部数据都会转过来，旧文件用另一个名字保留。",
                              yes, "衡商汇");
    }
    QTemporaryDir folder;
    ScriptedPrompts prompts;
};

TEST_F(OldBooksTest, AreTakenOverAfterAQuestion) {
    expectQuestion(true);
    prompts.expectMessage("转换完成。旧文件保留为：VelmorClientBank-旧版.mdb", "衡商汇");
    EXPECT_EQ(meetOldBooks(path(), prompts).outcome, OldBooks::TakenOver);
    EXPECT_EQ(databaseFault(path()), u"");
    EXPECT_EQ(meetOldBooks(path(), prompts).outcome, OldBooks::None);
}

TEST_F(OldBooksTest, StayAsTheyAreWhereTheUserDeclines) {
    expectQuestion(false);
    EXPECT_EQ(meetOldBooks(path(), prompts).outcome, OldBooks::Declined);
    EXPECT_NE(databaseFault(path()), u"");
}

TEST_F(OldBooksTest, OfAnotherProgramAreRefusedWithoutAQuestion) {
    QFile::remove(path());
    ASSERT_TRUE(QFile::copy(QStringLiteral(SAMPLES "/import/orders.mdb"), path()));
    const OldBooksResult result = meetOldBooks(path(), prompts);
    EXPECT_EQ(result.outcome, OldBooks::Refused);
    EXPECT_TRUE(result.fault.contains(u"clientTable"));
}

TEST_F(OldBooksTest, OfAFullDiskAreRefusedAndStayWithNothingBesideThem) {
    int refused = 0;
    for (rlim_t room = 4096; room < 400'000; room *= 3, ++refused) {
        expectQuestion(true);
        OldBooksResult result;
        {
            const FileSizeLimit small(room);
            result = meetOldBooks(path(), prompts);
        }
        EXPECT_EQ(result.outcome, OldBooks::Refused) << room;
        EXPECT_TRUE(result.fault.startsWith("不能接收旧数据库 " + path() + "\n"))
            << result.fault.toStdString();
        EXPECT_TRUE(result.fault.endsWith(u'。') && !result.fault.endsWith(u"。。"))
            << result.fault.toStdString();
        EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden),
                  QStringList{"VelmorClientBank.mdb"});
    }
    EXPECT_EQ(refused, 5);
    expectQuestion(true);
    prompts.expectMessage("转换完成。旧文件保留为：VelmorClientBank-旧版.mdb", "衡商汇");
    EXPECT_EQ(meetOldBooks(path(), prompts).outcome, OldBooks::TakenOver);
}

TEST_F(OldBooksTest, WhatCannotBeKeptIsToldBeforeTheEnd) {
    constexpr int lines = 37; // page of the definition of buyList
    JetFile books(path());
    const auto places = books.rows(lines);
    const SourceRows rows = openImportSource(SourceKind::Mdb, path())->read("buyList");
    QStringList told;
    for (int i = 0; i < 22; ++i) {
        const auto date = parseDate(rows.cell(i, int(rows.columns.indexOf("日期"))));
        ASSERT_TRUE(date);
        ASSERT_TRUE(books.replaceDouble(places[std::size_t(i)], double(date->seconds) / 86400, 3000000));
        told << QStringLiteral("buyList 第 %1 行 日期：3000000").arg(i + 1);
    }
    ASSERT_TRUE(books.write(path()));
    expectQuestion(true);
    prompts.expectMessage("旧数据库里有 22 处内容不能照原样保存，原来的内容只在旧文件里：\n" +
                              told.mid(0, 20).join(u'\n') + "\n……以及另外 2 处",
                          "衡商汇");
    prompts.expectMessage("转换完成。旧文件保留为：VelmorClientBank-旧版.mdb", "衡商汇");
    EXPECT_EQ(meetOldBooks(path(), prompts).outcome, OldBooks::TakenOver);
}

TEST_F(OldBooksTest, TheShopSellsStocksInAndPrintsOnThem) {
    expectQuestion(true);
    prompts.expectMessage("转换完成。旧文件保留为：VelmorClientBank-旧版.mdb", "衡商汇");
    meetOldBooks(path(), prompts);
    Session session(path());
    session.appPath = folder.path();
    MDIForm1 main(session, prompts);
    registerAll(main, prompts);
    main.show();
    startAtOnce(main);
    Driver drive(main);
    const auto figure = [&session](const char* sql) {
        Statement statement = session.cn.prepare(QString::fromUtf8(sql));
        return statement.step() ? statement.number(0) : -1;
    };
    EXPECT_EQ(drive.rows("DataGrid1"), 120) << "the register";

    const char* stockOfAll = "SELECT sum(数量) FROM productTable";
    const double stock = figure(stockOfAll);
    drive.clickCell("DataGrid1", 0, "客户编号");
    drive.click("Command7");
    TopWindow* window = main.host().window("buyFm1");
    ASSERT_NE(window, nullptr);
    Driver buy(*window);
    int row = 0;
    while (buy.cell("DataGrid1", row, "数量").toDouble() < 1)
        ++row;
    buy.clickCell("DataGrid1", row, "品名");
    const QString price = buy.text("Text4(8)");
    buy.type("Text4(10)", "1");
    buy.type("Text4(12)", "100");
    prompts.expectMessage("已记入购物表！");
    buy.click("Command2");
    prompts.expectConfirm("购买总数量： 1\n总金额：" + price + "\n确认结算吗？", true);
    buy.click("Command1");
    buy.click("Command4");
    EXPECT_EQ(figure("SELECT count(*) FROM buyList"), 2001);
    EXPECT_EQ(figure("SELECT 订单号 FROM buyList ORDER BY rowid DESC"), 5584) << "the old counter goes on";
    EXPECT_EQ(figure(stockOfAll), stock - 1);

    drive.choose("maintain_product");
    drive.clickCell("DataGrid1", 0, "品名");
    prompts.expectInput("请输入产品数量：", "输入数字", "4");
    prompts.expectConfirm("该产品将增加数：4", true);
    drive.click("Command4");
    EXPECT_EQ(figure(stockOfAll), stock + 3);
    EXPECT_EQ(figure("SELECT count(*) FROM product_Bank"), 811);

    drive.choose("show_stock");
    EXPECT_EQ(drive.rows("DataGrid1"), 150);
    drive.click("Toolbar1(7)");
    auto* form = qobject_cast<ReportForm*>(main.host().window("print_rs3"));
    ASSERT_NE(form, nullptr);
    const QString pdf = folder.filePath("list.pdf");
    form->exportPdf(pdf);
    EXPECT_EQ(pdfPages(pdf), 4) << "150 products, 40 a page";
    EXPECT_TRUE(pdfText(pdf, 1).contains(drive.cell("DataGrid1", 0, "产品编号")));
    form->close();
}

} // namespace
