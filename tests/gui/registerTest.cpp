#include "controls/dataGrid.h"
#include "support/shopWindow.h"

#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QtTest/QTest>

namespace {

class Register : public ShopWindow {
protected:
    void startWith(const QStringList& clients) {
        for (const QString& client : clients)
            books.addClient(client, "单位" + client, "联系" + client);
        start();
    }
    QString numbers() { return books.stored("SELECT 客户编号 FROM clientTable ORDER BY rowid"); }
    QString box(int index) { return drive->text(QStringLiteral("Text3(%1)").arg(index)); }
    void type(int index, const QString& text) { drive->type(QStringLiteral("Text3(%1)").arg(index), text); }
};

TEST_F(Register, AnEmptyTableReadsZeroAfterActivationAndZeroOfZeroAfterAMove) {
    start();
    EXPECT_EQ(drive->text("Text1"), u"0");
    drive->click("Command1(3)");
    EXPECT_EQ(drive->text("Text1"), u"0/0");
    drive->click("Command7");
    drive->click("Command8");
    EXPECT_EQ(window("buyFm1"), nullptr);
}

TEST_F(Register, TheThreeColumnsAreHidden) {
    startWith({"1"});
    auto* grid = drive->find<DataGrid>("DataGrid1");
    for (int i = 0; i < grid->model()->columnCount(); ++i) {
        const QString name = grid->model()->headerData(i, Qt::Horizontal, Qt::DisplayRole).toString();
        EXPECT_EQ(grid->isColumnHidden(i), name == u"流水号" || name == u"差额利润" || name == u"差额利润率")
            << name.toStdString();
    }
}

TEST_F(Register, ButtonsAndClicksMoveBoxesPositionAndCustomerInHand) {
    startWith({"1", "2", "3"});
    EXPECT_EQ(drive->text("Text1"), u"1/3");
    drive->click("Command1(2)");
    EXPECT_EQ(drive->text("Text1"), u"2/3");
    EXPECT_EQ(box(0), u"2");
    drive->click("Command1(3)");
    drive->click("Command1(2)");
    EXPECT_EQ(drive->text("Text1"), u"3/3");
    drive->click("Command1(0)");
    drive->click("Command1(1)");
    EXPECT_EQ(drive->text("Text1"), u"1/3");
    drive->clickCell("DataGrid1", 2, "客户编号");
    EXPECT_EQ(box(8), u"单位3");
    EXPECT_EQ(session().clientTable->AbsolutePosition(), 3);
    EXPECT_EQ(session().currentClientNum, u"3");
    EXPECT_EQ(session().currentClientName, u"单位3");
    EXPECT_EQ(session().currentContact, u"联系3");
    EXPECT_EQ(focused(), u"Text3(1)");
}

TEST_F(Register, AddingShowsTheStateAndProposesTheNextNumber) {
    startWith({"1"});
    drive->click("Command3");
    EXPECT_TRUE(shown("Label4"));
    EXPECT_FALSE(enabled("Frame1"));
    EXPECT_FALSE(enabled("Command7"));
    EXPECT_FALSE(enabled("Command8"));
    EXPECT_EQ(box(0), u"1001");
    EXPECT_EQ(box(8), u"");
    prompts.expectMessage("正在添加新客户，不能执行此操作！");
    drive->click("Command1(2)");
    EXPECT_EQ(box(0), u"1001");
}

TEST_F(Register, SaveWhileAddingWritesTheCustomerAndReturns) {
    start();
    drive->click("Command3");
    type(1, "王平");
    type(8, "红木行");
    prompts.expectMessage("已保存新记录！");
    drive->click("Command5");
    EXPECT_EQ(books.stored("SELECT 客户编号, 联系人, 单位名称 FROM clientTable"), u"1001|王平|红木行");
    EXPECT_FALSE(shown("Label4"));
    EXPECT_TRUE(enabled("Frame1"));
    EXPECT_EQ(drive->text("Text1"), u"1/1");
    EXPECT_EQ(counterText(session().nextClientNum), u"1002");
    drive->click("Command5");
    EXPECT_EQ(numbers(), u"1001") << "a second press saves nothing";
}

TEST_F(Register, AddAgainSavesAndGoesOnOrStops) {
    start();
    drive->click("Command3");
    type(1, "甲");
    prompts.expectAsk("记录已保存，继续添加新客户吗？", true);
    drive->click("Command3");
    EXPECT_EQ(box(0), u"1002");
    EXPECT_EQ(box(1), u"");
    EXPECT_TRUE(shown("Label4"));
    type(1, "乙");
    prompts.expectAsk("记录已保存，继续添加新客户吗？", false);
    drive->click("Command3");
    EXPECT_EQ(numbers(), u"1001;1002");
    EXPECT_FALSE(shown("Label4"));
    EXPECT_EQ(box(1), u"乙");
    EXPECT_TRUE(enabled("Command7"));
}

TEST_F(Register, AddAgainWithoutAChangeAsksForData) {
    startWith({"1"});
    drive->click("Command3");
    prompts.expectConfirm("现在是添加记录状态，请输入数据！", true);
    drive->click("Command3");
    EXPECT_TRUE(shown("Label4"));
    EXPECT_EQ(box(0), u"1001");
    prompts.expectConfirm("现在是添加记录状态，请输入数据！", false);
    drive->click("Command3");
    EXPECT_FALSE(shown("Label4"));
    EXPECT_EQ(box(0), u"1");
    EXPECT_EQ(numbers(), u"1");
}

TEST_F(Register, AddingClearsTheFilterOfASearchFirst) {
    startWith({"1", "2"});
    drive->type("Text2", "单位2");
    drive->click("Command2");
    EXPECT_EQ(drive->rows("DataGrid1"), 1);
    drive->click("Command3");
    EXPECT_EQ(session().clientTable->Filter(), u"");
    EXPECT_EQ(drive->rows("DataGrid1"), 2);
}

TEST_F(Register, SaveWithoutAChangeEndsAddingAndWritesNothing) {
    startWith({"1"});
    drive->click("Command3");
    drive->click("Command5");
    EXPECT_EQ(numbers(), u"1");
    EXPECT_FALSE(shown("Label4"));
    EXPECT_EQ(box(0), u"1");
}

TEST_F(Register, OnlyTheUsersOwnInputCountsAsAChange) {
    startWith({"1", "2"});
    books.execute("UPDATE clientTable SET 差额利润率 = '9%'");
    drive->click("Command1(3)");
    drive->click("Command5");
    EXPECT_EQ(books.stored("SELECT 差额利润率 FROM clientTable"), u"9%;9%");
    type(4, "5");
    drive->click("Command5");
    EXPECT_EQ(books.stored("SELECT 传真, 差额利润率 FROM clientTable WHERE 客户编号 = '2'"), u"5|");
}

TEST_F(Register, CancelGivesChangesAndAddingUp) {
    startWith({"1"});
    type(1, "neu");
    drive->click("Command6");
    EXPECT_EQ(box(1), u"联系1");
    drive->click("Command5");
    EXPECT_EQ(books.stored("SELECT 联系人 FROM clientTable"), u"联系1");
    drive->click("Command3");
    type(1, "neu");
    drive->click("Command6");
    EXPECT_EQ(numbers(), u"1");
    EXPECT_EQ(box(0), u"1");
    EXPECT_EQ(focused(), u"Text3(1)");
}

TEST_F(Register, CancelOfTheFirstCustomerOfAllLeavesWhatIsTyped) {
    startWith({});
    drive->click("Command3");
    type(1, "neu");
    drive->click("Command6");
    EXPECT_EQ(numbers(), u"");
    EXPECT_EQ(box(1), u"neu");
    EXPECT_TRUE(enabled("Command7"));
}

TEST_F(Register, BlanksInTheSearchBoxLeaveRowAndTypingAsTheyAre) {
    startWith({"1", "2"});
    drive->click("Command1(3)");
    type(1, "neu");
    drive->type("Text2", "  ");
    drive->click("Command2");
    EXPECT_EQ(drive->text("Text1"), u"2/2");
    EXPECT_EQ(box(1), u"neu");
    EXPECT_EQ(session().clientTable->Filter(), u"");
}

TEST_F(Register, SearchFindsOrTellsZeroAndAnEmptyTextDoesNothing) {
    startWith({"1", "2"});
    drive->type("Text2", "  ");
    drive->click("Command2");
    EXPECT_EQ(drive->rows("DataGrid1"), 2);
    drive->type("Text2", "联系2");
    drive->click("Command2");
    EXPECT_EQ(box(0), u"2");
    EXPECT_EQ(drive->text("Text1"), u"1/1");
    drive->type("Text2", "none");
    prompts.expectMessage("查询结果为零！");
    drive->click("Command2");
    EXPECT_EQ(box(0), u"");
    drive->click("Command4");
    EXPECT_EQ(drive->text("Text1"), u"1/2");
    EXPECT_EQ(box(0), u"1");
    drive->type("Text2", "a%b'c");
    prompts.expectMessage("查询结果为零！");
    drive->click("Command2");
    EXPECT_EQ(drive->rows("DataGrid1"), 2) << "a text that cannot be searched leaves the rows";
}

TEST_F(Register, DeleteAsksAndTakesTheLinesAlong) {
    books.addLine("1", "8", "p", "2004-01-01", 1, 1, 1);
    books.addLine("2", "2", "p", "2004-01-02", 1, 1, 1);
    startWith({"1", "2"});
    drive->clickCell("DataGrid1", 1, "客户编号");
    prompts.expectConfirm("确实要删除该记录吗？", false);
    drive->click("Command8");
    EXPECT_EQ(numbers(), u"1;2");
    prompts.expectConfirm("确实要删除该记录吗？", true);
    drive->click("Command8");
    EXPECT_EQ(numbers(), u"1");
    EXPECT_EQ(books.stored("SELECT 订单号 FROM buyList"), u"1");
    EXPECT_EQ(box(0), u"1");
    EXPECT_EQ(drive->rows("DataGrid1"), 1);
    prompts.expectConfirm("确实要删除该记录吗？", true);
    drive->click("Command8");
    EXPECT_EQ(drive->text("Text1"), u"0/0");
    EXPECT_EQ(box(0), u"");
}

TEST_F(Register, EnterAndControlArrowsMoveRoundTheBoxes) {
    startWith({"1"});
    auto* first = drive->find<QLineEdit>("Text3(0)");
    first->setFocus();
    EXPECT_EQ(first->selectedText(), u"1") << "the focus selects the whole text";
    drive->key("Text3(0)", Qt::Key_Return);
    EXPECT_EQ(focused(), u"Text3(1)");
    drive->key("Text3(16)", Qt::Key_Return);
    EXPECT_EQ(focused(), u"Text3(0)");
    drive->key("Text3(0)", Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(focused(), u"Text3(16)");
    drive->key("Text3(16)", Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(focused(), u"Text3(0)");
}

TEST_F(Register, EnterInsideACompositionMovesNoFocus) {
    startWith({"1"});
    auto* box = drive->find<QLineEdit>("Text3(1)");
    box->setFocus();
    QInputMethodEvent composing("wang", {});
    QCoreApplication::sendEvent(box, &composing);
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(focused(), u"Text3(1)");
    QInputMethodEvent committed;
    committed.setCommitString("王");
    QCoreApplication::sendEvent(box, &committed);
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(focused(), u"Text3(2)");
    EXPECT_TRUE(box->text().contains(u"王"));
    drive->click("Command5");
    EXPECT_TRUE(books.stored("SELECT 联系人 FROM clientTable").contains(u"王"))
        << "composed text is the user's input";
}

TEST_F(Register, TheFlagBlinksInTwoColoursGivenBlueGreenRed) {
    startWith({"1"});
    drive->click("Command3");
    auto* label = drive->find<QLabel>("Label4");
    auto* timer = drive->find<QTimer>("Timer2");
    EXPECT_EQ(timer->interval(), 600);
    EXPECT_TRUE(timer->isActive());
    const auto tick = [&] {
        QTimerEvent event(timer->timerId());
        QCoreApplication::sendEvent(timer, &event);
        return label->palette().color(QPalette::WindowText);
    };
    // 16761024 is 0xFFC0C0 and 9678591 is 0x93AEFF, blue first.
    EXPECT_EQ(tick(), QColor(0xC0, 0xC0, 0xFF));
    EXPECT_EQ(tick(), QColor(0xFF, 0xAE, 0x93));
    EXPECT_EQ(tick(), QColor(0xC0, 0xC0, 0xFF));
}

TEST_F(Register, BoxesTakeNoMoreThanTheirColumnAndNumbersNoMoreThanADouble) {
    startWith({"1"});
    auto* box = drive->find<QLineEdit>("Text3(8)");
    box->setFocus();
    box->selectAll();
    box->insert(QString(100'000, u'长'));
    EXPECT_EQ(box->text().size(), 100);
    auto* total = drive->find<QLineEdit>("Text3(13)");
    total->setFocus();
    total->selectAll();
    total->insert("1e999");
    EXPECT_EQ(total->text(), u"0") << "refused, the old text stands";
    type(13, "12abc");
    drive->click("Command5");
    EXPECT_EQ(books.stored("SELECT 消费合计, length(单位名称) FROM clientTable"), u"12.0|100");
}

TEST_F(Register, TheBoxesFollowTheDatabaseCursorWhoeverMovesIt) {
    startWith({"1", "2", "3"});
    session().clientTable->Find("客户编号 = '3'");
    EXPECT_EQ(box(0), u"3");
    EXPECT_EQ(drive->text("Text1"), u"3/3");
    EXPECT_EQ(drive->find<DataGrid>("DataGrid1")->currentIndex().row(), 2);
    session().clientTable->MoveNext();
    EXPECT_EQ(drive->text("Text1"), u"3/3");
    EXPECT_FALSE(session().clientTable->isEOF());
}

TEST_F(Register, WhileAddingEveryWayOutRefusesEvenWhereItsButtonIsOff) {
    startWith({"1"});
    drive->click("Command3");
    const std::pair<const char*, const char*> refusals[] = {
        {"Command2", "正在添加新客户，不能执行此操作！"},
        {"Command7", "请先按’保存‘按钮，保存好客户资料，再执行此操作！"},
        {"Command8", "正在添加数据不能执行该操作！"}};
    for (const auto& [name, message] : refusals) {
        auto* button = drive->find<QPushButton>(name);
        EXPECT_FALSE(button->isEnabled()) << name;
        prompts.expectMessage(message);
        Q_EMIT button->clicked(); // as nothing but a program can
    }
    EXPECT_EQ(numbers(), u"1");
}

TEST_F(Register, ReturningToTheRegisterPutsItsFirstCustomerInHand) {
    startWith({"1", "2"});
    drive->click("Command1(3)");
    EXPECT_EQ(session().currentClientNum, u"2");
    drive->choose("maintain_product");
    EXPECT_EQ(session().currentClientNum, u"2");
    drive->choose("management_client");
    EXPECT_EQ(box(0), u"1");
    EXPECT_EQ(session().currentClientNum, u"1");
}

TEST_F(Register, AnActivationThatFindsCloseOnlyOpensAgain) {
    startWith({"1"});
    type(1, "neu");
    session().viewReturnState = "Close";
    main->host().active()->activate();
    EXPECT_EQ(box(1), u"neu");
    EXPECT_EQ(session().viewReturnState, u"Open");
    main->host().active()->activate();
    EXPECT_EQ(box(1), u"联系1");
}

} // namespace
