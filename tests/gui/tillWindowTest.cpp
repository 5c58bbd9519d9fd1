// The purchase window as a till: its place, its columns, and the basket beside the line.
#include "controls/dataGrid.h"
#include "support/purchaseWindow.h"

#include <QHeaderView>
#include <QScrollArea>
#include <QTableWidget>

#include <QtTest/QTest>

namespace {

class TillWindow : public Purchase {
protected:
    /// The list beside the line: a row's texts, the line in the making in brackets.
    QString listed(int row) {
        const auto* list = buy->find<QTableWidget>("basketList");
        QStringList texts;
        for (int column = 0; column < list->columnCount(); ++column)
            texts << list->item(row, column)->text();
        const QString line = texts.join(u' ');
        return list->item(row, 0)->font().bold() ? u'[' + line + u']' : line;
    }
    int listedRows() { return buy->find<QTableWidget>("basketList")->rowCount(); }
};

TEST_F(TillWindow, TheListHoldsTheBasketAndTheLineInTheMaking) {
    open();
    EXPECT_EQ(listedRows(), 0);
    choose(0);
    type(10, "2");
    ASSERT_EQ(listedRows(), 1);
    EXPECT_EQ(listed(0), u"[打印纸 5 2 10]") << "new, below the others";
    confirm();
    EXPECT_EQ(listed(0), u"打印纸 5 2 10");
    put(1, "1");
    prompts.expectMessage("已选购该产品！");
    choose(0);
    ASSERT_EQ(listedRows(), 2);
    type(10, "3");
    EXPECT_EQ(listed(0), u"[打印纸 5 3 15]") << "in its own row";
    EXPECT_EQ(listed(1), u"硒鼓 30 1 27");
    buy->click("Command13");
    EXPECT_EQ(listed(0), u"打印纸 5 2 10") << "given up";
}

TEST_F(TillWindow, ALineThatIsKeptStandsThereOnceWhileItsMessageIsRead) {
    open();
    put(0, "2");
    choose(1);
    type(10, "1");
    QStringList lines;
    prompts.expectMessage("已记入购物表！");
    prompts.whenShown([&] {
        for (int row = 0; row < listedRows(); ++row)
            lines << listed(row);
    });
    buy->click("Command2");
    EXPECT_EQ(lines.join(u'/'), u"打印纸 5 2 10/[硒鼓 30 1 27]");
}

TEST_F(TillWindow, BackFromTheBasketItsRowIsMarkedInItsOwnPlace) {
    open();
    put(0, "2");
    put(1, "1");
    buy->click("Command9");
    buy->click("Command11");
    ASSERT_EQ(listedRows(), 2);
    EXPECT_EQ(listed(0), u"打印纸 5 2 10");
    EXPECT_EQ(listed(1), u"[硒鼓 30 1 27]");
}

TEST_F(TillWindow, TheListFollowsDeletionEmptyingAndSettlement) {
    open();
    put(0, "2");
    put(1, "1");
    buy->click("Command9");
    buy->clickCell("DataGrid2", 0, "品名");
    prompts.expectConfirm("确认要删除该记录吗？", true);
    buy->click("Command7");
    EXPECT_EQ(listedRows(), 1);
    buy->click("Command8");
    EXPECT_EQ(listedRows(), 0);
    buy->click("Command11");
    put(0, "2");
    prompts.expectConfirm("购买总数量： 2\n总金额：10\n确认结算吗？", true);
    buy->click("Command1");
    EXPECT_EQ(listedRows(), 0);
}

TEST_F(TillWindow, StandsWhereTheMainWindowStood) {
    start();
    main->showNormal();
    main->setGeometry(20, 40, 700, 500);
    QCoreApplication::processEvents();
    drive->click("Command7");
    EXPECT_EQ(window("buyFm1")->geometry(), QRect(20, 40, 700, 500));
    EXPECT_FALSE(window("buyFm1")->isMaximized());
}

/// A screen of 1920 by 1080 at 200 %.
TEST_F(TillWindow, OnASmallScreenItIsScrolledAndNotLargerThanTheMainWindow) {
    start();
    main->showNormal();
    main->setGeometry(0, 0, 960, 480);
    drive->click("Command7");
    buy = std::make_unique<Driver>(*window("buyFm1"));
    QTRY_VERIFY(window("buyFm1")->isActiveWindow());
    put(0, "2");
    prompts.expectConfirm("购买总数量： 2\n总金额：10\n确认结算吗？", true);
    buy->keyAtFocus(Qt::Key_F9);
    EXPECT_EQ(buy->text("noticeText"), u"订单 1001 已结算：2 件，10") << "what is said takes room as well";
    QCoreApplication::processEvents();
    EXPECT_EQ(window("buyFm1")->size(), QSize(960, 480));
    auto* scroller = buy->find<QScrollArea>("lineScroller");
    auto* settle = buy->find<QWidget>("Command1");
    scroller->ensureWidgetVisible(settle);
    const QRect seen(scroller->viewport()->mapToGlobal(QPoint()), scroller->viewport()->size());
    EXPECT_TRUE(seen.contains(QRect(settle->mapToGlobal(QPoint()), settle->size())));
    EXPECT_TRUE(window("buyFm1")->frameGeometry().contains(seen));
}

TEST_F(TillWindow, PriceAndQuantityStandBesideTheName) {
    open();
    const auto* head = buy->find<DataGrid>("DataGrid1")->horizontalHeader();
    QStringList names;
    for (int place = 0; place < 4; ++place)
        names << head->model()->headerData(head->logicalIndex(place), Qt::Horizontal).toString();
    EXPECT_EQ(names.join(u' '), u"产品编号 品名 单价 数量");
    buy->click("Command10");
    EXPECT_EQ(head->model()->headerData(head->logicalIndex(2), Qt::Horizontal).toString(), u"单价");
}

} // namespace
