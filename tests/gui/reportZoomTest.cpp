// What the report form offers beside its own commands: the zoom, boxes that fit, its rows as files.
#include "support/reportWindow.h"
#include "support/workbook.h"

#include <QMenuBar>
#include <QScrollBar>
#include <QWheelEvent>
#include <QtTest/QTest>

namespace {

class ReportExtras : public ReportWindow {
protected:
    PaperView& view() { return *form->findChild<PaperView*>(); }
    PaperSheet& sheet() { return view().sheet(); }
    QWidget& ground() { return *report->find<QWidget>("Picture1"); }
    /// Turns the wheel over a point of the ground.
    void turn(int delta, Qt::KeyboardModifiers keys, const QPoint& at) {
        QWheelEvent event(at, ground().mapToGlobal(at), {}, {0, delta}, Qt::NoButton, keys, Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(&ground(), &event);
    }
};

TEST_F(ReportExtras, AtAHundredPercentAllIsAsItWas) {
    openHistory(81);
    const QSize size = sheet().size();
    report->find<QScrollBar>("VScroll1")->setValue(30);
    const QPoint place = sheet().pos();
    const auto items = preview().items().size();
    report->click("zoomIn");
    report->click("zoomPage");
    report->click("zoomTrue");
    EXPECT_EQ(report->text("zoomPercent"), u"100%");
    EXPECT_EQ(sheet().size(), size);
    report->find<QScrollBar>("HScroll1")->setValue(0);
    report->find<QScrollBar>("VScroll1")->setValue(30);
    EXPECT_EQ(sheet().pos(), place);
    EXPECT_EQ(preview().items().size(), items);
    EXPECT_EQ(report->find<QScrollBar>("VScroll1")->maximum(), 204);
    EXPECT_EQ(report->find<QScrollBar>("VScroll1")->minimum(), -20);
    form->resize(2000, 1500);
    QCoreApplication::processEvents();
    EXPECT_EQ(sheet().x(), 0) << "also where the page is smaller than the window";
}

TEST_F(ReportExtras, AFittedPageIsWholeInTheMiddleAndFollowsTheWindow) {
    openHistory(81);
    report->click("zoomPage");
    for (const QSize size : {QSize(800, 600), QSize(1200, 700), QSize(700, 900)}) {
        form->resize(size);
        QCoreApplication::processEvents();
        EXPECT_TRUE(ground().rect().contains(sheet().geometry()));
        EXPECT_NEAR(sheet().geometry().center().x(), ground().rect().center().x(), 1);
        EXPECT_NEAR(sheet().geometry().center().y(), ground().rect().center().y(), 1);
        EXPECT_FALSE(report->find<QScrollBar>("VScroll1")->isVisible());
        EXPECT_FALSE(report->find<QScrollBar>("HScroll1")->isVisible());
    }
}

TEST_F(ReportExtras, AFittedWidthShowsTheWholeWidthAndScrollsDown) {
    openHistory(81);
    form->resize(1500, 560);
    report->click("zoomWidth");
    QCoreApplication::processEvents();
    EXPECT_FALSE(report->find<QScrollBar>("HScroll1")->isVisible());
    EXPECT_TRUE(report->find<QScrollBar>("VScroll1")->isVisible());
    EXPECT_GE(sheet().x(), 1);
    EXPECT_LT(sheet().geometry().right(), ground().width());
    EXPECT_GT(sheet().width(), ground().width() - 20);
    report->find<QScrollBar>("VScroll1")->setValue(50);
    EXPECT_NEAR(sheet().y(), -50 * sheet().dotsPerMillimetre(), 1) << "the bars still count in millimetres";
}

TEST_F(ReportExtras, CtrlWithTheWheelZoomsAroundTheMouseAndTheWheelAloneScrolls) {
    openHistory(81);
    const QPoint at(300, 200);
    const QPointF before = QPointF(sheet().mapFrom(&ground(), at)) / sheet().dotsPerMillimetre();
    turn(120, Qt::ControlModifier, at);
    EXPECT_EQ(report->text("zoomPercent"), u"110%");
    turn(240, Qt::ControlModifier, at);
    EXPECT_EQ(report->text("zoomPercent"), u"150%");
    const QPointF now = QPointF(sheet().mapFrom(&ground(), at)) / sheet().dotsPerMillimetre();
    EXPECT_NEAR(now.x(), before.x(), 1.5) << "what is under the mouse stays there";
    EXPECT_NEAR(now.y(), before.y(), 1.5);
    const int value = report->find<QScrollBar>("VScroll1")->value();
    turn(-120, {}, at);
    EXPECT_EQ(report->text("zoomPercent"), u"150%");
    EXPECT_GT(report->find<QScrollBar>("VScroll1")->value(), value);
    for (int i = 0; i < 30; ++i)
        turn(120, Qt::ControlModifier, at);
    EXPECT_EQ(report->text("zoomPercent"), u"400%");
    for (int i = 0; i < 30; ++i)
        turn(-120, Qt::ControlModifier, at);
    EXPECT_EQ(report->text("zoomPercent"), u"25%");
}

TEST_F(ReportExtras, SmallTurnsOfAWheelAddUpToAStep) {
    openHistory(1);
    for (int i = 0; i < 7; ++i)
        turn(15, Qt::ControlModifier, {50, 50});
    EXPECT_EQ(report->text("zoomPercent"), u"100%");
    turn(15, Qt::ControlModifier, {50, 50});
    EXPECT_EQ(report->text("zoomPercent"), u"110%");
}

TEST_F(ReportExtras, TheZoomHasKeys) {
    openHistory(1);
    form->activateWindow();
    QCoreApplication::processEvents();
    QTest::keyClick(form, Qt::Key_Equal, Qt::ControlModifier);
    EXPECT_EQ(report->text("zoomPercent"), u"110%");
    QTest::keyClick(form, Qt::Key_Minus, Qt::ControlModifier);
    QTest::keyClick(form, Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_EQ(report->text("zoomPercent"), u"90%");
    QTest::keyClick(form, Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(report->text("zoomPercent"), u"100%");
}

TEST_F(ReportExtras, TheNextReportOfThisRunIsShownAsLarge) {
    openHistory(81);
    report->click("zoomPage");
    const double percent = sheet().percent();
    form->close();
    drive->click("Toolbar1(7)");
    take("showprint_rs15");
    QCoreApplication::processEvents();
    EXPECT_NEAR(sheet().percent(), percent, 0.01);
    EXPECT_EQ(view().zoom().fit, PaperZoom::Fit::Page);
}

TEST_F(ReportExtras, FittedBoxesShowEveryTextWholeAndOnlyWhenAsked) {
    books.changeBehind("DELETE FROM product_Bank");
    fillStockTable(books, "product_Bank", 41);
    books.changeBehind(
        "UPDATE product_Bank SET 品名 = '一个很长很长很长很长很长很长的品名' WHERE 流水号 = 41");
    start();
    drive->choose("whole_show_product");
    drive->click("Toolbar1(7)");
    take("showprint_rs15");
    const auto before = form->reportLayout().boxShift;
    EXPECT_EQ(before[2], 0);
    const int page = session().report.pageFrom;
    report->click("fitBoxes");
    EXPECT_NE(form->reportLayout().boxShift, before);
    EXPECT_EQ(session().report.pageFrom, page) << "the page on show stays";
    report->click("Command4(3)");
    const PageRecording::Item name = item("一个很长很长很长很长很长很长的品名");
    double next = 1e9;
    for (const PageRecording::Item& each : preview().items())
        if (each.font && each.text == u"|" && each.y == name.y && each.x > name.x)
            next = std::min(next, each.x);
    EXPECT_LE(name.x + name.font->textWidth(name.text), next + 1e-6);
    const auto fitted = form->reportLayout().boxShift;
    report->click("fitBoxes");
    for (std::size_t i = 0; i < fitted.size(); ++i)
        EXPECT_NEAR(form->reportLayout().boxShift[i], fitted[i], 1e-6) << "a second time changes nothing";
}

TEST_F(ReportExtras, WhatTheTableHasNoRoomForIsTold) {
    fillStockTable(books, "product_Bank", 2);
    books.changeBehind("UPDATE product_Bank SET 品名 = '" + QString(90, u'长') + "' WHERE 流水号 = 2");
    start();
    drive->choose("whole_show_product");
    drive->click("Toolbar1(7)");
    take("showprint_rs15");
    prompts.expectMessage(
        "表的宽度不够，这些列放不下最长的内容：品名。\n可以在“字体选择”里把字号改小，再按“自动列宽”。");
    report->click("fitBoxes");
    EXPECT_TRUE(prompts.done());
}

TEST_F(ReportExtras, ItsRowsAreExportedUnderTitleAndHead) {
    openHistory(81);
    const int page = session().report.pageFrom;
    const int position = session().product_Bank->AbsolutePosition();
    prompts.saveName = folder.filePath("a.xlsx");
    report->choose("exportXlsx");
    EXPECT_EQ(session().report.pageFrom, page);
    EXPECT_EQ(session().product_Bank->AbsolutePosition(), position);
    const Workbook book(*prompts.saveName);
    const auto sheet = book.sheet();
    EXPECT_EQ(sheet.at("A1").text, form->reportLayout().reportTitle);
    EXPECT_TRUE(previewShows(sheet.at("A2").text));
    QStringList labels;
    for (char column = 'A'; sheet.count(QString(QLatin1Char(column)) + u'3'); ++column)
        labels << sheet.at(QString(QLatin1Char(column)) + u'3').text;
    for (const QString& label : labels)
        EXPECT_TRUE(previewShows(label)) << label.toStdString();
    const QChar quantity(u'A' + int(labels.indexOf("数量")));
    EXPECT_EQ(sheet.at(QString(quantity) + u'4').type, u"number");
    EXPECT_TRUE(sheet.count("A84")) << "all rows, not those of the page";
    EXPECT_FALSE(sheet.count("A85"));
    EXPECT_EQ(book.widths().size(), labels.size());
    prompts.saveName = folder.filePath("a.csv");
    report->choose("exportCsv");
    QFile csv(*prompts.saveName);
    ASSERT_TRUE(csv.open(QIODevice::ReadOnly));
    const QStringList lines = QString::fromUtf8(csv.readAll().mid(3)).split("\r\n");
    EXPECT_EQ(lines.size(), 1 + 81 + 1);
    EXPECT_EQ(lines[0].split(u','), labels);
}

TEST_F(ReportExtras, WithoutRowsThereIsNothingToExportOrToFit) {
    openHistory(1);
    session().product_Bank->setFilter("产品编号 = 'x'");
    for (const char* action : {"exportCsv", "exportXlsx"}) {
        prompts.expectMessage("没有可以导出的记录。");
        report->choose(action);
    }
    report->click("fitBoxes");
    EXPECT_EQ(prompts.saveQuestions, 0);
}

} // namespace
