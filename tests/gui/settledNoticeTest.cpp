// What is said after a settlement, and the order printed from there.
#include "reports/paperView.h"
#include "reports/reportForm.h"
#include "support/purchaseWindow.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QMenu>
#include <QRegularExpression>

namespace {

class SettledNotices : public Purchase {
protected:
    void settle(const QString& question) {
        prompts.expectConfirm(question, true);
        buy->click("Command1");
        QCoreApplication::processEvents(); // the line at the foot comes up
    }
    void settleOne() {
        put(0, "2");
        settle("购买总数量： 2\n总金额：10\n确认结算吗？");
    }
    /// Presses the button and chooses from its menu.
    ReportForm* print(Driver& from, const char* report) {
        from.click("noticeAction");
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        EXPECT_NE(menu, nullptr);
        menu->findChild<QAction*>(QString::fromUtf8(report))->trigger();
        menu->close();
        return qobject_cast<ReportForm*>(window(report));
    }
    static QStringList page(ReportForm* form) {
        QStringList texts;
        for (const PageRecording::Item& item : form->findChild<PaperSheet*>("Picture2")->recording().items())
            if (item.font && item.text != u"|")
                texts << item.text;
        return texts;
    }
    void writeShopLines(const char* text) {
        QFile file(QFileInfo(books.path()).absolutePath() + "/小票抬头.txt");
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
};

TEST_F(SettledNotices, StandInThePurchaseAndInTheStatusBarUntilAnotherViewComes) {
    open();
    settleOne();
    EXPECT_EQ(buy->text("noticeText"), u"订单 1001 已结算：2 件，10");
    EXPECT_TRUE(buy->find<QWidget>("noticeAction")->isVisible());
    put(1, "1");
    settle("购买总数量： 1\n总金额：27\n确认结算吗？");
    EXPECT_EQ(buy->text("noticeText"), u"订单 1002 已结算：1 件，27");
    buy->click("Command4");
    EXPECT_EQ(drive->text("noticeText"), u"订单 1002 已结算：1 件，27");
    EXPECT_TRUE(shown("noticeAction"));
    drive->choose("maintain_product");
    EXPECT_EQ(drive->text("noticeText"), u"");
    EXPECT_FALSE(shown("noticeAction"));
}

TEST_F(SettledNotices, WithoutASettlementNothingIsSaid) {
    open();
    put(0, "2");
    prompts.expectConfirm("购买总数量： 2\n总金额：10\n确认结算吗？", false);
    buy->click("Command1");
    EXPECT_EQ(window("buyFm1")->findChild<QWidget*>("noticeText"), nullptr);
    buy->click("Command9");
    buy->click("Command8");
    buy->click("Command11");
    buy->click("Command4");
    EXPECT_EQ(drive->text("noticeText"), u"");
}

TEST_F(SettledNotices, TheSlipHoldsTheShopTheOrderItsLinesAndItsAmountAndThePurchaseWaits) {
    session().appPath = "/no folder of the books";
    writeShopLines("\n红木文具店\n  中山路 8 号\r\n电话 62781234\n第四行\n");
    open();
    put(0, "2");
    put(1, "1");
    settle("购买总数量： 3\n总金额：37\n确认结算吗？");
    const QString filter = session().buyList->Filter();
    ReportForm* slip = print(*buy, "slip_roll");
    ASSERT_NE(slip, nullptr);
    EXPECT_FALSE(window("buyFm1")->isEnabled());
    EXPECT_FALSE(main->isVisible());
    const QStringList texts = page(slip);
    EXPECT_EQ(
        texts.mid(0, 8).join(u'|'),
        u"红木文具店|中山路 8 号|电话 62781234|订单号：1001|日期：2004-11-21|客户：红木行|件数：3|合计：37");
    EXPECT_EQ(texts.mid(8, 12).join(u'|'), u"品名|单价|数量|实付|打印纸|5|2|10|硒鼓|30|1|27");
    slip->close();
    EXPECT_TRUE(window("buyFm1")->isEnabled());
    EXPECT_FALSE(main->isVisible());
    EXPECT_EQ(session().buyList->Filter(), filter) << "the lines are the customer's again";
}

TEST_F(SettledNotices, WithoutWordsOfTheShopTheSlipSaysWhatItIs) {
    open();
    settleOne();
    EXPECT_EQ(page(print(*buy, "slip_A5")).mid(0, 2).join(u'|'), u"购物小票|订单号：1001");
}

TEST_F(SettledNotices, TheRollIsAsLongAsTheOrderAndTheHalfSheetHoldsPages) {
    open();
    settleOne();
    QTemporaryDir folder;
    const auto sheets = [&](const char* report) {
        ReportForm* slip = print(*buy, report);
        const QString path = folder.filePath(QString::fromUtf8(report));
        slip->exportPdf(path);
        slip->close();
        QFile pdf(path);
        pdf.open(QIODevice::ReadOnly);
        std::vector<std::pair<double, double>> sizes;
        static const QRegularExpression box("/MediaBox \\[0 0 ([0-9.]+) ([0-9.]+)\\]");
        for (auto each = box.globalMatch(QString::fromLatin1(pdf.readAll())); each.hasNext();) {
            const auto found = each.next();
            sizes.emplace_back(found.captured(1).toDouble() / 72 * 25.4,
                               found.captured(2).toDouble() / 72 * 25.4);
        }
        return sizes;
    };
    const auto shortRoll = sheets("slip_roll");
    ASSERT_EQ(shortRoll.size(), 1U);
    EXPECT_NEAR(shortRoll[0].first, 80, 0.5);
    const auto half = sheets("slip_A5");
    ASSERT_EQ(half.size(), 1U);
    EXPECT_NEAR(half[0].first, 148, 0.5);
    EXPECT_NEAR(half[0].second, 210, 0.5);
    for (int i = 0; i < 60; ++i)
        books.addLine("1001", "7", "p1", "2004-11-21", 1, 5, 2);
    session().reopen(session().buyList, "Select * From buyList");
    const auto longRoll = sheets("slip_roll");
    ASSERT_EQ(longRoll.size(), 1U);
    EXPECT_GT(longRoll[0].second, shortRoll[0].second + 60 * 2.5);
    EXPECT_EQ(sheets("slip_A5").size(), 2U);
}

TEST_F(SettledNotices, ALongNameEndsInItsBoxOnTheSlip) {
    books.addProduct("p4", QString(40, u'长'), 5, 1, 1);
    open();
    put(3, "1");
    settle("购买总数量： 1\n总金额：1\n确认结算吗？");
    ReportForm* slip = print(*buy, "slip_roll");
    double separator = 0;
    for (const PageRecording::Item& item : slip->findChild<PaperSheet*>("Picture2")->recording().items()) {
        if (item.font && item.text.startsWith(u"长")) {
            EXPECT_LT(item.text.size(), 40);
            EXPECT_GT(item.text.size(), 5);
            separator = item.x + item.font->textWidth(item.text);
        }
    }
    EXPECT_LE(separator, 4 + 33);
    EXPECT_GT(separator, 4 + 33 - 4) << "as much of it as there is room for";
}

TEST_F(SettledNotices, TheOrderIsPrintedFromTheRegisterWhoseCustomerStaysInHand) {
    books.addClient("8", "红叶行", "李平");
    open();
    settleOne();
    buy->click("Command4");
    drive->clickCell("DataGrid1", 1, "客户编号");
    ASSERT_EQ(session().currentClientNum, u"8");
    ReportForm* report = print(*drive, "showprint_rs22");
    ASSERT_NE(report, nullptr);
    const QStringList texts = page(report);
    for (const char* text :
         {"订单号：1001", "时间：2004-11-21", "单位名称：红木行", "合计件数：2", "合计金额：10"})
        EXPECT_TRUE(texts.contains(QString::fromUtf8(text))) << text;
    report->close();
    EXPECT_EQ(session().currentClientNum, u"8");
    EXPECT_EQ(session().currentClientName, u"红叶行");
    EXPECT_TRUE(main->isEnabled());
}

TEST_F(SettledNotices, AnOrderThatWasDeletedSinceIsToldAndNotPrinted) {
    open();
    settleOne();
    buy->click("Command4");
    session().buyList->setFilter("订单号 = '1001'");
    session().buyList->Delete();
    prompts.expectMessage("订单 1001 已经没有记录。");
    EXPECT_EQ(print(*drive, "slip_roll"), nullptr);
}

} // namespace
