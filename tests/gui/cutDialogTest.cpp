// The two dialogs that ask who carries the shop in one form; no command opens them.
#include "controls/figureCard.h"
#include "support/evaluationShop.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>

namespace {

class CutDialogs : public EvaluationShop {
protected:
    /// A shop in which each measure has a customer of its own at the top: 2003 turnover 1, margin 2 and
    /// quantity 3; in 2004 customer 3 is first in everything.
    void fillApart() {
        for (const char* number : {"1", "2", "3"})
            books.addClient(number, "单位" + QString::fromUtf8(number));
        books.addProduct("p1", "纸", 100, 4, 10);
        books.addLine("9001", "1", "p1", "2003-06-01", 1, 100, 90);
        books.addLine("9002", "2", "p1", "2003-06-01", 1, 60, 10);
        books.addLine("9003", "3", "p1", "2003-06-01", 8, 32, 3);
        books.addLine("9004", "3", "p1", "2004-06-01", 1, 8, 2);
    }
    Driver ask(const char* name) {
        main->host().openWindow(QString::fromUtf8(name), ViewHost::MainWindow::Stays);
        return Driver(*window(name));
    }
    /// Opens a dialog, chooses an option and confirms a text.
    void answer(const char* name, int option, const char* text) {
        Driver dialog = ask(name);
        dialog.click(QStringLiteral("Option%1").arg(option));
        if (*text)
            dialog.type(QStringLiteral("Text%1").arg(option), QString::fromUtf8(text));
        dialog.click("Command1");
    }
    QString title() { return view().find<FigureCard>("Picture1")->texts().value(2).text; }
    QString cutInFile() { return books.stored("SELECT 客户编号 FROM clientTable3"); }
    void expectGone(const char* name) { EXPECT_EQ(window(name), nullptr) << name; }
};

constexpr const char* kNumber = "clientNumFm1";
constexpr const char* kPercent = "clientPercentFm1";

TEST_F(CutDialogs, HaveTheirWordsAndNoMenuEntry) {
    open();
    const std::tuple<const char*, const char*, QStringList> dialogs[] = {
        {kNumber, "选取客户数", {"最高购买金额客户数", "最高差额利润客户数", "最高购买量客户数"}},
        {kPercent, "选择百分率", {"占总销售额百分率", "占总利润百分率", "占总销售量百分率"}}};
    for (const auto& [name, caption, options] : dialogs) {
        Driver dialog = ask(name);
        EXPECT_EQ(window(name)->windowTitle(), QString::fromUtf8(caption));
        for (int i = 1; i <= 3; ++i) {
            EXPECT_EQ(dialog.find<QAbstractButton>(QStringLiteral("Option%1").arg(i))->text(),
                      options[i - 1]);
            EXPECT_EQ(dialog.find<QLineEdit>(QStringLiteral("Text%1").arg(i))->placeholderText(),
                      u"请输入大于零的整数");
        }
        EXPECT_EQ(dialog.find<QAbstractButton>("Command1")->text(), u"确定");
        EXPECT_EQ(dialog.find<QAbstractButton>("Command2")->text(), u"返回");
        EXPECT_FALSE(main->commands().names().contains(QString::fromUtf8(name)));
    }
    EXPECT_EQ(Driver(*window(kPercent)).text("Label1"), u"输入小于100的数");
    EXPECT_EQ(window(kNumber)->findChild<QLabel*>(), nullptr);
}

TEST_F(CutDialogs, AnOptionClearsTheBoxesAndEnablesItsOwn) {
    open();
    for (const char* name : {kNumber, kPercent}) {
        Driver dialog = ask(name);
        const auto enabledBoxes = [&] {
            QString all;
            for (int i = 1; i <= 3; ++i)
                if (dialog.find<QLineEdit>(QStringLiteral("Text%1").arg(i))->isEnabled())
                    all += QString::number(i);
            return all;
        };
        EXPECT_EQ(enabledBoxes(), u"1") << "the first option is chosen at the start";
        dialog.type("Text1", "5");
        for (int option : {2, 3, 1, 1}) {
            dialog.click(QStringLiteral("Option%1").arg(option));
            EXPECT_EQ(enabledBoxes(), QString::number(option));
            EXPECT_EQ(dialog.text("Text1") + dialog.text("Text2") + dialog.text("Text3"), u"");
            dialog.type(QStringLiteral("Text%1").arg(option), "5");
        }
    }
}

TEST_F(CutDialogs, EachOptionCutsByItsMeasureUnderItsTitle) {
    fillApart();
    start();
    const std::tuple<const char*, int, const char*, const char*> answers[] = {
        {kNumber, 1, "最高购买金额客户数", "1"},  {kNumber, 2, "最高差额利润客户数", "2"},
        {kNumber, 3, "最高购买量客户数", "3"},    {kPercent, 1, "占总销售额百分率", "1"},
        {kPercent, 2, "占总差额利润百分率", "2"}, {kPercent, 3, "占总销售量百分率", "3"}};
    for (const auto& [name, option, caption, first] : answers) {
        drive->choose("data_statistic1");
        drive->click("Toolbar1(4)");
        answer(name, option, "1");
        expectGone(name);
        EXPECT_EQ(clients(), QString::fromUtf8(first)) << caption;
        EXPECT_EQ(cutInFile(), QString::fromUtf8(first)) << caption;
        EXPECT_EQ(title(), QString::fromUtf8(caption));
        EXPECT_EQ(view().text("Text1"), u"1/1");
        EXPECT_EQ(session().analysisKind, 2) << caption;
        EXPECT_EQ(session().showSource, ShowSource::BestClients);
    }
}

TEST_F(CutDialogs, AShareCutSurvivesAChangeOfViewAsThatOfTheMenuDoesNot) {
    fill();
    open();
    answer(kPercent, 1, "80");
    EXPECT_EQ(clients(), u"1 2");
    EXPECT_EQ(indicators(), u"90 90% 54 90% 9 90% 2 66.66%");
    drive->choose("show_stock");
    drive->choose("data_statistic1");
    EXPECT_EQ(clients(), u"1 2");
    EXPECT_EQ(title(), u"占总销售额百分率");
}

TEST_F(CutDialogs, APeriodIsCutInItsOwnCopy) {
    fillApart();
    books.addLine("9005", "1", "p1", "2004-07-01", 1, 2, 1);
    open();
    for (const char* name : {kNumber, kPercent}) {
        choosePeriod("2004");
        answer(name, 1, "1");
        EXPECT_EQ(clients(), u"3") << name;
        EXPECT_EQ(of("Label6") + u' ' + of("Label7") + u' ' + of("Label19"), u"8 80% 50%") << name;
        EXPECT_EQ(session().clientShowSource, ShowSource::PeriodClients);
    }
}

TEST_F(CutDialogs, ABlankNumberIsNoughtAndABlankShareIsRefused) {
    fill();
    open();
    answer(kNumber, 1, "");
    EXPECT_EQ(clients(), u"1") << "nought takes one customer";
    drive->click("Toolbar1(4)");
    prompts.expectMessage("无数字，请输入");
    answer(kPercent, 1, "");
    ASSERT_NE(window(kPercent), nullptr) << "it stays for the number";
    prompts.expectMessage("无数字，请输入");
    Driver(*window(kPercent)).type("Text1", "  ");
    Driver(*window(kPercent)).click("Command1");
    EXPECT_EQ(clients(), u"1 2 3");
    Driver(*window(kPercent)).type("Text1", "100");
    Driver(*window(kPercent)).keyAtFocus(Qt::Key_Return);
    EXPECT_EQ(clients(), u"1 2 3");
    EXPECT_EQ(title(), u"占总销售额百分率");
}

TEST_F(CutDialogs, ATextThatIsNoNumberTakesTheFirstCustomer) {
    fill();
    open();
    for (const char* name : {kNumber, kPercent}) {
        drive->click("Toolbar1(4)");
        answer(name, 1, "许多");
        EXPECT_EQ(clients(), u"1") << name;
    }
}

TEST_F(CutDialogs, BackChangesNothing) {
    fill();
    open();
    for (const char* name : {kNumber, kPercent}) {
        Driver dialog = ask(name);
        dialog.type("Text1", "1");
        dialog.click("Command2");
        expectGone(name);
        EXPECT_EQ(clients(), u"1 2 3");
        EXPECT_EQ(session().analysisKind, 1);
    }
}

TEST_F(CutDialogs, OfNoCustomersTheNumberIsAnEmptyCutAndTheShareIsNone) {
    open();
    answer(kPercent, 1, "50");
    expectGone(kPercent);
    EXPECT_EQ(title(), u"空库");
    EXPECT_EQ(session().analysisKind, 1) << "nothing is on screen that would have to stay";
    answer(kNumber, 2, "5");
    expectGone(kNumber);
    EXPECT_EQ(view().rows("DataGrid1"), 0);
    EXPECT_EQ(title(), u"最高差额利润客户数");
    EXPECT_EQ(indicators(), u"0 0% 0 0'% 0 0% 0 0%");
}

TEST_F(CutDialogs, ASearchLeftOnTheRegisterHidesNobody) {
    fill();
    open();
    for (const char* name : {kNumber, kPercent}) {
        drive->click("Toolbar1(4)");
        session().clientTable->setFilter("客户编号 = '3'");
        answer(name, 1, name == kNumber ? "2" : "80");
        EXPECT_EQ(clients(), u"1 2") << name;
        EXPECT_EQ(of("Label19"), u"66.66%") << name;
        EXPECT_EQ(session().clientTable->Filter(), u"");
    }
}

TEST_F(CutDialogs, AShareOverACutAsksTheSourceOfTheCut) {
    fill();
    open();
    answer(kPercent, 1, "1");
    EXPECT_EQ(clients(), u"1");
    answer(kPercent, 1, "80");
    EXPECT_EQ(clients(), u"1 2");
}

TEST_F(CutDialogs, ANumberOverACutIsTakenFromThePeriodCopyEvenWhereThatIsEmpty) {
    fill();
    open();
    answer(kNumber, 1, "1");
    answer(kNumber, 1, "2");
    EXPECT_EQ(clients(), u"");
    EXPECT_EQ(title(), u"最高购买金额客户数");
    choosePeriod("2004");
    answer(kNumber, 1, "1");
    answer(kNumber, 1, "2");
    EXPECT_EQ(clients(), u"1 2");
}

TEST_F(CutDialogs, WithoutTheEvaluationTheyBringItToTheFront) {
    fill();
    start();
    for (const char* name : {kNumber, kPercent}) {
        drive->choose("show_stock");
        main->host().Fm_Close("statisticFm1");
        answer(name, 1, "1");
        expectGone(name);
        EXPECT_EQ(inFront(), u"statisticFm1") << name;
        EXPECT_EQ(clients(), u"1") << name;
    }
    drive->choose("show_stock");
    answer(kPercent, 1, "80");
    EXPECT_EQ(clients(), u"1 2") << "it was hidden";
}

} // namespace
