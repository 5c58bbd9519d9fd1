// What the search boxes offer while something is typed into them.
#include "support/purchaseWindow.h"

#include <QInputMethodEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QtTest/QTest>

namespace {

class Offers : public Purchase {
protected:
    Offers() {
        books.addClient("8", "红叶行", "张平");
        books.addClient("9", "百货店", "李四");
    }
    void read() {
        main->host().suggestions().start();
        QTRY_VERIFY(main->host().suggestions().customers.isReady());
        QTRY_VERIFY(main->host().suggestions().products.isReady());
    }
    void startRead() {
        start();
        read();
    }
    void openRead() {
        open();
        read();
    }
    void openStockIn() {
        startRead();
        drive->choose("maintain_product");
    }
    static QLineEdit* box(const Driver& form, const char* name) { return form.find<QLineEdit>(name); }
    static QListWidget* list(const Driver& form, const char* name) {
        return form.find<QListWidget>(QString::fromUtf8(name) + "_offers");
    }
    static void write(QLineEdit* box, const char* text) {
        box->setFocus();
        QTest::keyClicks(box, QString::fromUtf8(text));
    }
    static QString shownIn(const QListWidget* list) {
        QStringList texts;
        for (int i = 0; list->isVisible() && i < list->count(); ++i)
            texts << list->item(i)->text();
        return texts.join(u'|');
    }
    static void compose(QLineEdit* box, const QString& preedit, const QString& commit = {}) {
        QInputMethodEvent event(preedit, {});
        event.setCommitString(commit);
        QCoreApplication::sendEvent(box, &event);
    }
};

TEST_F(Offers, TheRegisterOffersCustomersAndGoesToTheOneTaken) {
    startRead();
    write(box(*drive, "Text2"), "zp");
    EXPECT_EQ(shownIn(list(*drive, "Text2")), u"8  红叶行  张平");
    QTest::keyClick(box(*drive, "Text2"), Qt::Key_Down);
    QTest::keyClick(box(*drive, "Text2"), Qt::Key_Return);
    EXPECT_EQ(drive->text("Text3(0)"), u"8");
    EXPECT_EQ(drive->text("Text1"), u"2/3") << "no Filter is put on";
    EXPECT_EQ(focused(), u"Text2");
    EXPECT_EQ(drive->text("Text2"), u"8");
    EXPECT_FALSE(list(*drive, "Text2")->isVisible());
    EXPECT_EQ(window("buyFm1"), nullptr);
    QTest::keyClick(box(*drive, "Text2"), Qt::Key_F2);
    EXPECT_EQ(session().currentClientNum, u"8");
}

TEST_F(Offers, AFilterThatHidesTheOneTakenIsCleared) {
    startRead();
    drive->type("Text2", "百货");
    drive->click("Command2");
    drive->type("Text2", "hyx");
    drive->key("Text2", Qt::Key_Down);
    drive->key("Text2", Qt::Key_Return);
    EXPECT_EQ(drive->text("Text3(0)"), u"8");
    EXPECT_EQ(session().clientTable->Filter(), u"");
}

TEST_F(Offers, AClickTakesOneAndTheFocusStaysInTheBox) {
    startRead();
    write(box(*drive, "Text2"), "h");
    QListWidget* offers = list(*drive, "Text2");
    ASSERT_EQ(shownIn(offers), u"7  红木行  王平|8  红叶行  张平");
    QTest::mouseClick(offers->viewport(), Qt::LeftButton, {},
                      offers->visualItemRect(offers->item(1)).center());
    EXPECT_EQ(drive->text("Text3(0)"), u"8");
    EXPECT_EQ(focused(), u"Text2");
}

TEST_F(Offers, WhileNoneIsChosenEnterSearchesAsItAlwaysDid) {
    startRead();
    write(box(*drive, "Text2"), "8");
    ASSERT_TRUE(list(*drive, "Text2")->isVisible());
    QTest::keyClick(box(*drive, "Text2"), Qt::Key_Return);
    EXPECT_FALSE(list(*drive, "Text2")->isVisible());
    EXPECT_NE(session().clientTable->Filter(), u"");
    EXPECT_EQ(window("buyFm1"), nullptr);
    QTest::keyClick(box(*drive, "Text2"), Qt::Key_Down);
    EXPECT_EQ(drive->text("Text3(0)"), u"8") << "closed, the arrows are those of the rows";
}

TEST_F(Offers, TheArrowUpLeavesTheListTheWayItCame) {
    startRead();
    QLineEdit* search = box(*drive, "Text2");
    write(search, "h");
    QTest::keyClick(search, Qt::Key_Down);
    QTest::keyClick(search, Qt::Key_Up);
    EXPECT_EQ(list(*drive, "Text2")->currentRow(), -1);
    prompts.expectMessage("查询结果为零！");
    QTest::keyClick(search, Qt::Key_Return);
    EXPECT_EQ(drive->text("Text2"), u"h") << "nothing was taken: it searched";
}

TEST_F(Offers, EscapeClosesTheListAndNotTheWindow) {
    openRead();
    write(box(*buy, "Text3"), "dyz");
    ASSERT_EQ(shownIn(list(*buy, "Text3")), u"p1  打印纸");
    QTest::keyClick(box(*buy, "Text3"), Qt::Key_Escape);
    ASSERT_NE(window("buyFm1"), nullptr);
    EXPECT_FALSE(list(*buy, "Text3")->isVisible());
    EXPECT_EQ(buy->text("Text3"), u"dyz");
    QTest::keyClick(box(*buy, "Text3"), Qt::Key_Escape);
    EXPECT_EQ(window("buyFm1"), nullptr) << "the next one is the window's";
}

TEST_F(Offers, ThePurchaseTakesTheProductUp) {
    openRead();
    session().productTable->setFilter("品名 = '打印纸'");
    buy->type("Text3", "xi");
    EXPECT_EQ(shownIn(list(*buy, "Text3")), u"p2  硒鼓");
    buy->key("Text3", Qt::Key_Down);
    buy->key("Text3", Qt::Key_Return);
    EXPECT_EQ(line(2), u"p2");
    EXPECT_EQ(session().productTable->Filter(), u"");
    EXPECT_EQ(window("buyFm1")->focusWidget()->objectName(), u"Text4(10)");
    type(10, "1");
    prompts.expectMessage("已记入购物表！");
    buy->key("Text4(10)", Qt::Key_Return);
    EXPECT_EQ(buy->text("Text3"), u"");
    EXPECT_FALSE(list(*buy, "Text3")->isVisible()) << "the program's own text opens nothing";
}

TEST_F(Offers, ASoldOutProductIsToldAndTheLineStays) {
    openRead();
    choose(0);
    buy->type("Text3", "mh");
    prompts.expectMessage("该产品已售完！");
    buy->key("Text3", Qt::Key_Down);
    buy->key("Text3", Qt::Key_Return);
    EXPECT_EQ(line(2), u"p1");
}

TEST_F(Offers, StockInGoesToTheProductButNotWhileOneIsAdded) {
    openStockIn();
    drive->type("Text3", "xg");
    drive->key("Text3", Qt::Key_Down);
    drive->key("Text3", Qt::Key_Return);
    EXPECT_EQ(drive->text("Text2(1)"), u"p2");
    EXPECT_EQ(drive->text("Text1"), u"2/3");
    drive->click("Command8");
    drive->type("Text3", "dy");
    prompts.expectMessage("正在添加新产品，不能执行此操作！");
    drive->key("Text3", Qt::Key_Down);
    drive->key("Text3", Qt::Key_Return);
    EXPECT_EQ(session().productTable->AbsolutePosition(), 2);
}

TEST_F(Offers, WhileAnInputMethodComposesTheListIsGoneAndTakesNoKey) {
    startRead();
    QLineEdit* search = box(*drive, "Text2");
    write(search, "h");
    ASSERT_TRUE(list(*drive, "Text2")->isVisible());
    compose(search, "zhang");
    EXPECT_FALSE(list(*drive, "Text2")->isVisible());
    QTest::keyClick(search, Qt::Key_Down);
    QTest::keyClick(search, Qt::Key_Return);
    EXPECT_EQ(drive->text("Text3(0)"), u"7") << "no arrow chose a row, and nothing was searched";
    EXPECT_EQ(session().clientTable->Filter(), u"");
    search->clear();
    compose(search, {}, "张");
    EXPECT_EQ(shownIn(list(*drive, "Text2")), u"8  红叶行  张平");
}

TEST_F(Offers, TheTabKeyGoesWhereItAlwaysWent) {
    startRead();
    write(box(*drive, "Text2"), "h");
    ASSERT_TRUE(list(*drive, "Text2")->isVisible());
    QTest::keyClick(box(*drive, "Text2"), Qt::Key_Tab);
    EXPECT_EQ(focused(), u"Command2");
    EXPECT_FALSE(list(*drive, "Text2")->isVisible());
}

TEST_F(Offers, FollowACustomerThatIsAdded) {
    startRead();
    drive->click("Command3");
    drive->type("Text3(1)", "赵八");
    prompts.expectMessage("已保存新记录！");
    drive->click("Command5");
    write(box(*drive, "Text2"), "zb");
    EXPECT_EQ(list(*drive, "Text2")->count(), 1);
}

TEST_F(Offers, TenRowsAtMost) {
    for (int i = 10; i < 30; ++i)
        books.addClient(QStringLiteral("5%1").arg(i), "商行");
    startRead();
    write(box(*drive, "Text2"), "5");
    EXPECT_EQ(list(*drive, "Text2")->count(), 10);
    EXPECT_TRUE(main->rect().contains(
        QRect(list(*drive, "Text2")->mapTo(main.get(), QPoint()), list(*drive, "Text2")->size())));
    write(box(*drive, "Text2"), "x");
    EXPECT_FALSE(list(*drive, "Text2")->isVisible()) << "nothing begins so";
}

} // namespace
