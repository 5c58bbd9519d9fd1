#include "controls/notice.h"

#include "support/shopWindow.h"

#include <QPushButton>
#include <QStatusTipEvent>

namespace {

using Main = ViewHost::MainWindow;

class Notices : public ShopWindow {
protected:
    Notices() {
        books.addClient("1", "红木家具厂", "张平");
        books.addProduct("p1", "纸", 50, 2, 5);
    }
};

TEST_F(Notices, WhatIsSaidInAViewStandsInTheStatusBar) {
    start();
    drive->choose("show_stock");
    say(main->host().active()->findChild<QWidget*>("DataGrid1"), {"已导出 CSV：/tmp/库存.csv"});
    EXPECT_EQ(status(), u"已导出 CSV：/tmp/库存.csv");
    EXPECT_FALSE(shown("noticeAction"));
    drive->choose("management_client");
    EXPECT_EQ(status(), u"") << "it spoke of the view before";
}

TEST_F(Notices, TheButtonBesideANoticeRunsWhatGoesWithItAndLeavesWithTheNextNotice) {
    start();
    int runs = 0;
    main->host().say({"订单 6705 已结算", "打印", [&] { ++runs; }});
    EXPECT_EQ(drive->find<QPushButton>("noticeAction")->text(), u"打印");
    drive->click("noticeAction");
    drive->click("noticeAction");
    EXPECT_EQ(runs, 2);
    main->host().say({"已保存 2 条"});
    EXPECT_FALSE(shown("noticeAction"));
    main->host().say({"没有按钮的动作", {}, [&] { ++runs; }});
    EXPECT_FALSE(shown("noticeAction"));
}

TEST_F(Notices, AnActionMaySaySomethingItself) {
    start();
    main->host().say({"已结算", "打印", [host = &main->host(), tail = QString("已打印")] {
                          host->say({"开始"});
                          host->say({tail});
                      }});
    drive->click("noticeAction");
    EXPECT_EQ(status(), u"已打印");
}

TEST_F(Notices, AWindowOfItsOwnShowsItsNoticesAtItsFootAndTheMainWindowKeepsThem) {
    start();
    for (const auto& [name, mode] : {std::pair("statisticFm4", Main::Stays),
                                     {"buyFm1", Main::Hidden},
                                     {"showprint_rs3", Main::Disabled}}) {
        TopWindow* opened = main->host().openWindow(QString::fromUtf8(name), mode);
        ASSERT_NE(opened, nullptr) << name;
        const QString text = QStringLiteral("已导出：") + QString::fromUtf8(name);
        say(opened->findChild<QPushButton*>(), {text});
        QCoreApplication::processEvents();
        Driver there(*opened);
        EXPECT_EQ(there.text("noticeText"), text);
        auto* line = there.find<QWidget>("notice");
        EXPECT_TRUE(line->isVisible()) << name;
        EXPECT_GT(line->mapTo(opened, QPoint(0, line->height())).y(), opened->height() - 30) << name;
        say(opened->findChild<QPushButton*>(), {QStringLiteral("再") + text});
        EXPECT_EQ(opened->findChildren<NoticeLine*>().size(), 1) << "the line stays, its text is another";
        opened->finish();
        EXPECT_EQ(status(), QStringLiteral("再") + text) << "what was done is seen when the window is gone";
    }
}

TEST_F(Notices, ALongPathWidensNoWindowAndItsToolTipHasTheWhole) {
    start();
    const int least = main->minimumSizeHint().width();
    const QString path = QStringLiteral("已导出 CSV：/") + QString(2000, u'长') + QStringLiteral(".csv");
    main->host().say({path});
    QCoreApplication::processEvents();
    EXPECT_EQ(main->minimumSizeHint().width(), least);
    EXPECT_EQ(drive->find<QWidget>("noticeText")->toolTip(), path);
    EXPECT_EQ(status(), path);
}

TEST_F(Notices, SeveralLinesAreReadAsOne) {
    start();
    main->host().say({"没有写入\n磁盘已满"});
    EXPECT_EQ(status(), u"没有写入 磁盘已满");
}

TEST_F(Notices, AMenuUnderTheMouseTakesNoNoticeAway) {
    start();
    main->host().say({"已备份"});
    QStatusTipEvent hovered{QString()};
    QCoreApplication::sendEvent(main.get(), &hovered);
    EXPECT_TRUE(shown("noticeText"));
    EXPECT_EQ(status(), u"已备份");
}

} // namespace
