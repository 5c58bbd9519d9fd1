// The help window on the guide that is delivered.
#include "support/shopWindow.h"

#include "shell/userGuide.h"

#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTextBlock>
#include <QTextBrowser>

#include <QtTest/QTest>

namespace {

class Help : public ShopWindow {
protected:
    void openShop() {
        ASSERT_TRUE(QFile::copy(QStringLiteral(ASSETS "/用户指南(衡商汇).txt"),
                                session().appPath + "/用户指南(衡商汇).txt"));
        start();
    }
    QTextBrowser* page() { return window("manualFm1")->findChild<QTextBrowser*>("RichTextBox1"); }
    std::unique_ptr<Driver> help() { return std::make_unique<Driver>(*window("manualFm1")); }
    /// The uppermost line that is seen.
    QString top() {
        QCoreApplication::processEvents();
        return page()->cursorForPosition(QPoint(4, 12)).block().text();
    }
    /// The marked hit that stands in front, and the colour of the others differs from its own.
    QString hitInFront() {
        const QList<QTextEdit::ExtraSelection> marks = page()->extraSelections();
        for (const auto& mark : marks)
            if (mark.cursor.selectionStart() == page()->textCursor().position())
                return QStringLiteral("%1@%2")
                    .arg(mark.cursor.selectedText())
                    .arg(mark.cursor.selectionStart());
        return {};
    }
};

TEST_F(Help, EveryViewWindowAndReportHasItsSection) {
    openShop();
    QFile file(QStringLiteral(ASSETS "/用户指南(衡商汇).txt"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const UserGuide guide(QString::fromUtf8(file.readAll()));
    const QStringList names = main->host().viewNames() + main->host().windowNames();
    EXPECT_GT(names.size(), 70);
    for (const QString& each : names) {
        const int section = guide.find(helpTopic(each));
        ASSERT_GE(section, 0) << each.toStdString();
        EXPECT_NE(guide.sections()[std::size_t(section)].level, UserGuide::Level::Title);
    }
}

TEST_F(Help, OpensAtTheSectionOfTheViewInFrontAndTurnsToTheNextOnes) {
    openShop();
    drive->click("Toolbar1(8)");
    EXPECT_TRUE(top().startsWith(u"【购买】")) << top().toStdString();
    for (const auto& [view, heading] : {std::pair("stock_CountFm1", "【库存盘点】"),
                                        {"statisticFm3", "【业务员业绩统计】"},
                                        {"maintainFm2", "【客户资料表维护】【购物表维护】"},
                                        {"paybackFm1", "【订单维护】"}}) {
        main->host().show(QString::fromUtf8(view));
        QApplication::setActiveWindow(main.get());
        drive->choose("help");
        EXPECT_TRUE(top().startsWith(QString::fromUtf8(heading))) << top().toStdString();
    }
    EXPECT_EQ(help()->find<QListWidget>("guideHeadings")->currentItem()->text().trimmed(), u"订单维护");
}

TEST_F(Help, F1InAWindowOfItsOwnTellsOfThatWindow) {
    openShop();
    for (const auto& [name, heading] : {std::pair("timeDefineFm2", "【统计时间】"),
                                        {"searchFm1", "【查询和排序】"},
                                        {"buyFm1", "【购买窗口】"},
                                        {"FileInputFm2", "【导入数据】"}}) {
        TopWindow* opened = main->host().openWindow(QString::fromUtf8(name), ViewHost::MainWindow::Stays);
        QApplication::setActiveWindow(opened);
        Driver(*opened).keyAtFocus(Qt::Key_F1);
        ASSERT_NE(window("manualFm1"), nullptr) << name;
        EXPECT_EQ(main->host().helpAbout(), QString::fromUtf8(name));
        EXPECT_TRUE(top().startsWith(QString::fromUtf8(heading))) << name << top().toStdString();
        window("manualFm1")->finish();
        opened->finish();
    }
}

TEST_F(Help, ThePageHoldsTheTextFileSignBySign) {
    openShop();
    drive->choose("help");
    QFile file(QStringLiteral(ASSETS "/用户指南(衡商汇).txt"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(page()->toPlainText(), QString::fromUtf8(file.readAll()));
    EXPECT_TRUE(page()->isReadOnly());
}

TEST_F(Help, AHeadingInTheListLeadsToItsSection) {
    openShop();
    drive->choose("help");
    auto* list = help()->find<QListWidget>("guideHeadings");
    QListWidgetItem* item = list->findItems(QStringLiteral("购买频率"), Qt::MatchEndsWith).value(0);
    ASSERT_NE(item, nullptr);
    list->scrollToItem(item);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(item).center());
    EXPECT_TRUE(top().startsWith(u"【购买频率】")) << top().toStdString();
}

TEST_F(Help, AClickedLinkLeadsToItsSectionAndBackGoesToWhereItStood) {
    openShop();
    drive->choose("help");
    auto* back = help()->find<QPushButton>("guideBack");
    EXPECT_FALSE(back->isEnabled());
    help()->type("guideSearch", "程序的“订单维护”");
    EXPECT_EQ(help()->text("guideHits"), u"没有找到");
    QListWidget* list = help()->find<QListWidget>("guideHeadings");
    list->setCurrentItem(list->findItems(QStringLiteral("查询和排序"), Qt::MatchEndsWith).value(0));
    QTest::keyClick(list, Qt::Key_Return);
    const QString before = top();
    ASSERT_TRUE(before.startsWith(u"【查询和排序】")) << before.toStdString();
    const qsizetype place = page()->toPlainText().indexOf(u"见下面“打印”") + 5;
    QTextCursor on(page()->document());
    on.setPosition(int(place));
    EXPECT_TRUE(page()->anchorAt(page()->cursorRect(on).center()).startsWith(u'#'));
    QTest::mouseClick(page()->viewport(), Qt::LeftButton, {}, page()->cursorRect(on).center());
    EXPECT_EQ(top(), u"打印");
    help()->click("guideBack");
    EXPECT_EQ(top(), before);
    EXPECT_FALSE(back->isEnabled());
}

TEST_F(Help, SearchingMovesFromHitToHitAndRoundAndBack) {
    openShop();
    drive->choose("help");
    ASSERT_TRUE(QTest::qWaitForWindowActive(window("manualFm1")));
    QTest::keyClick(window("manualFm1"), Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(window("manualFm1")->focusWidget()->objectName(), u"guideSearch");
    QTest::keyClicks(window("manualFm1")->focusWidget(), "csv");
    const std::vector<qsizetype> places = UserGuide(page()->toPlainText()).hits("CSV");
    ASSERT_GE(places.size(), 1u);
    help()->type("guideSearch", "导入");
    const std::vector<qsizetype> hits = UserGuide(page()->toPlainText()).hits("导入");
    ASSERT_GT(hits.size(), 3u);
    QStringList seen;
    for (std::size_t i = 0; i < hits.size(); ++i) {
        seen << hitInFront();
        EXPECT_TRUE(page()->viewport()->rect().contains(page()->cursorRect().center()));
        QTest::keyClick(help()->find<QLineEdit>("guideSearch"), Qt::Key_Return);
    }
    EXPECT_EQ(hitInFront(), seen.front()) << "round";
    seen.removeDuplicates();
    EXPECT_EQ(std::size_t(seen.size()), hits.size());
    help()->click("guidePrevious");
    EXPECT_EQ(hitInFront(), seen.back());
    EXPECT_TRUE(help()->text("guideHits").endsWith(QStringLiteral("/%1").arg(hits.size())));
    EXPECT_EQ(page()->extraSelections().size(), qsizetype(hits.size()));
    help()->type("guideSearch", "");
    EXPECT_TRUE(page()->extraSelections().isEmpty());
    EXPECT_EQ(help()->text("guideHits"), u"");
}

TEST_F(Help, NamesTheFileThatIsOpenToBeCopiedAndNotChanged) {
    openShop();
    session().appPath = "/no folder of the books";
    drive->choose("help");
    auto* file = help()->find<QLineEdit>("booksFile");
    EXPECT_EQ(file->text(), session().cn.path());
    EXPECT_TRUE(file->isReadOnly());
    help()->key("booksFile", Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(file->selectedText(), session().cn.path());
}

TEST_F(Help, WithoutItsFileIsEmptyAndItsButtonsDoNothing) {
    start();
    drive->choose("help");
    EXPECT_EQ(top(), u"");
    help()->type("guideSearch", "购买");
    EXPECT_EQ(help()->text("guideHits"), u"没有找到");
    for (const char* button : {"guideNext", "guidePrevious"})
        help()->click(QString::fromUtf8(button));
    EXPECT_EQ(help()->find<QListWidget>("guideHeadings")->count(), 0);
}

} // namespace
