// The bar chart by its pixels, keys and mouse.
#include "recordset/textNumber.h"
#include "support/chartWindow.h"

#include <algorithm>

namespace {

TEST_F(Chart, BarsAreAsHighAsTheirValuesAndTheGreatestIsTheHighest) {
    const QList<Bar> bars = quarters();
    show(bars);
    const QImage image = grabbed();
    const double unit = paintedHeight(image, 23) / bars[23].value;
    EXPECT_GT(paintedHeight(image, 23), chart.place(0).height() / 2);
    for (int i = 0; i < 24; ++i)
        EXPECT_NEAR(paintedHeight(image, i), bars[i].value * unit, 3) << i;
}

TEST_F(Chart, BarsOfEqualLabelsStandSideBySideAndEmptyPlacesStayEmpty) {
    show({{"2004-1", 50}, {"2004-1", 100}, {"2004-1", 25}, {"", 0}, {"", 0}});
    const QImage image = grabbed();
    EXPECT_NEAR(paintedHeight(image, 0), paintedHeight(image, 1) / 2.0, 2);
    EXPECT_NEAR(paintedHeight(image, 2), paintedHeight(image, 1) / 4.0, 2);
    EXPECT_EQ(paintedHeight(image, 3), 0);
    EXPECT_EQ(paintedHeight(image, 4), 0);
    EXPECT_EQ(written().count("2004-1"), 3);
    EXPECT_NEAR(chart.place(4).right() - chart.place(0).left(), 5 * chart.place(0).width(), 0.01);
}

TEST_F(Chart, ALineGoesAcrossBesideEachNumberOfTheAxis) {
    show({{"1", 60}, {"2", -40}});
    window.resize(1280, 720);
    ASSERT_TRUE(QTest::qWaitFor([&] { return chart.place(1).right() > 1200; }));
    const QImage image = grabbed();
    QList<int> numbers;
    for (const QGraphicsSimpleTextItem* item : texts())
        if (isNumeric(item->text()) && item->sceneBoundingRect().right() < chart.place(0).left())
            numbers << int(item->sceneBoundingRect().center().y());
    std::sort(numbers.begin(), numbers.end());
    ASSERT_EQ(numbers.size(), 6) << "-40 to 60";
    for (const int x : {int(chart.place(0).left()) + 2, int(chart.place(1).right()) - 2}) {
        QList<int> lines;
        for (int y = int(chart.place(0).top()) - 2; y < int(chart.place(0).bottom()) + 2; ++y)
            if (image.pixel(x, y) != kPaper && (lines.isEmpty() || y > lines.last() + 2))
                lines << y;
        ASSERT_EQ(lines.size(), numbers.size()) << x;
        for (qsizetype i = 0; i < lines.size(); ++i)
            EXPECT_NEAR(lines[i], numbers[i], 1.5);
    }
}

TEST_F(Chart, NegativeBarsHangBelowZero) {
    show({{"1", 60}, {"2", -40}, {"3", 0}});
    const QImage image = grabbed();
    const auto up = painted(image, 0);
    const auto down = painted(image, 1);
    ASSERT_TRUE(up && down);
    EXPECT_NEAR(up->second, down->first, 3) << "both begin at the line at 0";
    EXPECT_GT(down->second, down->first + 50);
    EXPECT_FALSE(painted(image, 2));
    EXPECT_TRUE(written().contains("-40"));
}

TEST_F(Chart, WithoutAnyTurnoverTheAxisStands) {
    show({{"2004-1", 0}, {"2004-2", 0}});
    EXPECT_FALSE(painted(grabbed(), 0));
    EXPECT_TRUE(written().contains("0") && written().contains("1"));
    show({});
    EXPECT_TRUE(written().contains("营业额"));
    key(Qt::Key_Home);
    EXPECT_EQ(chart.chosen(), -1);
}

TEST_F(Chart, AnotherSetOfBarsTakesThePlaceOfTheFirst) {
    show(quarters());
    chart.setBars(kThree);
    EXPECT_EQ(paintedHeight(grabbed(), 2), paintedHeight(chart.grab().toImage(), 2));
    EXPECT_NEAR(paintedHeight(grabbed(), 1), paintedHeight(grabbed(), 0) * 80 / 120.0, 3);
    EXPECT_EQ(written().filter("季度"), QStringList());
    EXPECT_EQ(chart.bars().size(), 3);
}

TEST_F(Chart, AllCaptionsOfTwentyFourPeriodsAreReadable) {
    QList<Bar> halves;
    QList<Bar> intervals;
    for (int i = 0; i < 24; ++i) {
        halves << Bar{QStringLiteral("%1-%2半年").arg(1990 + i / 2).arg(i % 2 ? "下" : "上"), 1.5 * i};
        intervals << Bar{QString::number(i + 1), 123456789.01 * i};
    }
    for (const QSize size : {QSize(1280, 720), QSize(800, 600)})
        for (const QList<Bar>& bars : {quarters(), halves, intervals}) {
            show(bars, size);
            expectNoTextOnAnother();
            for (const Bar& bar : bars)
                EXPECT_TRUE(written().contains(bar.label))
                    << bar.label.toStdString() << " at " << size.width();
        }
}

TEST_F(Chart, WhereThereIsNoRoomEverySecondOrThirdCaptionIsWritten) {
    show(quarters(), {360, 300});
    expectNoTextOnAnother();
    const QStringList captions = written().filter("季度");
    EXPECT_GE(captions.size(), 8);
    EXPECT_LT(captions.size(), 24);
    EXPECT_TRUE(captions.contains("1998-1季度"));
}

TEST_F(Chart, NumbersOfTheAxisAreWrittenInFull) {
    show({{"2004年", 123456789.01}});
    EXPECT_TRUE(written().contains("100000000"));
    EXPECT_EQ(written().filter("…") + written().filter("E"), QStringList());
    EXPECT_TRUE(written().contains("时间") && written().contains("营业额"));
}

TEST_F(Chart, KeysChooseABarAndShowItsValue) {
    show(kThree + QList<Bar>{{"", 0}, {"2004-5", 7}, {"", 0}});
    before.setFocus();
    key(Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget(), &chart);
    EXPECT_EQ(chart.shownText(), QString());
    key(Qt::Key_Right);
    EXPECT_EQ(chart.shownText(), u"2004-1：120");
    key(Qt::Key_Left);
    EXPECT_EQ(chart.shownText(), u"2004-1：120") << "the first one stays";
    key(Qt::Key_End);
    EXPECT_EQ(chart.shownText(), u"2004-5：7") << "empty places are passed over";
    key(Qt::Key_Right);
    EXPECT_EQ(chart.chosen(), 4);
    key(Qt::Key_Left);
    EXPECT_EQ(chart.shownText(), u"2004-3：160.5");
    key(Qt::Key_Home);
    EXPECT_EQ(chart.chosen(), 0);
    EXPECT_EQ(written().count("2004-1：120"), 1);
}

TEST_F(Chart, TheChosenBarIsMarkedAlsoWhereItHasNoHeight) {
    show({{"1", 100}, {"2", 0}});
    chart.setFocus();
    const QImage plain = grabbed();
    key(Qt::Key_Home);
    const QImage first = grabbed();
    EXPECT_TRUE(painted(plain, 0));
    EXPECT_FALSE(painted(first, 0)) << "in another colour";
    const QPoint corner = chart.place(1).toRect().bottomLeft() + QPoint(3, -9);
    EXPECT_EQ(first.pixel(corner), kPaper);
    key(Qt::Key_Right);
    EXPECT_TRUE(painted(grabbed(), 0)) << "the mark has gone on";
    EXPECT_NE(grabbed().pixel(corner), kPaper);
}

TEST_F(Chart, EscapeLetsGoAndASecondOneGoesToTheWindow) {
    class Listener : public QObject {
    public:
        bool eventFilter(QObject*, QEvent* event) override {
            escapes +=
                event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
            return false;
        }
        int escapes = 0;
    } listener;
    show(kThree);
    window.installEventFilter(&listener);
    chart.setFocus();
    key(Qt::Key_End);
    key(Qt::Key_Escape);
    EXPECT_EQ(chart.chosen(), -1);
    EXPECT_EQ(chart.shownText(), QString());
    EXPECT_EQ(listener.escapes, 0);
    key(Qt::Key_Escape);
    EXPECT_EQ(listener.escapes, 1);
    window.removeEventFilter(&listener);
}

TEST_F(Chart, TheChoiceGoesWithTheFocusAndWithTheBars) {
    show(kThree);
    chart.setFocus();
    key(Qt::Key_End);
    key(Qt::Key_Backtab);
    EXPECT_EQ(chart.chosen(), -1);
    chart.setFocus();
    key(Qt::Key_End);
    chart.setBars({{"2005-1", 5}});
    EXPECT_EQ(chart.chosen(), -1);
    EXPECT_EQ(chart.shownText(), QString());
}

TEST_F(Chart, TheBarUnderTheMouseShowsItsValue) {
    show(kThree + QList<Bar>{{"", 0}});
    chart.setFocus();
    key(Qt::Key_Home);
    mouseTo(1);
    EXPECT_EQ(chart.shownText(), u"2004-2：80");
    mouseTo(2);
    EXPECT_EQ(chart.shownText(), u"2004-3：160.5");
    EXPECT_EQ(chart.chosen(), 0);
    key(Qt::Key_Right);
    EXPECT_EQ(chart.shownText(), u"2004-2：80") << "who presses a key looks at what it chooses";
    (void)chart.picture();
    EXPECT_EQ(chart.shownText(), u"2004-2：80") << "also after the marks were away for a picture";
    mouseTo(0);
    mouseTo(3);
    EXPECT_EQ(chart.shownText(), u"2004-2：80") << "no bar there";
    mouseTo(0);
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(chart.viewport(), &leave);
    EXPECT_EQ(chart.shownText(), u"2004-2：80");
}

TEST_F(Chart, AClickChoosesABarAndOneBesideItLetsGo) {
    show(kThree + QList<Bar>{{"", 0}});
    QTest::mouseClick(chart.viewport(), Qt::LeftButton, {}, chart.place(2).center().toPoint());
    EXPECT_EQ(chart.chosen(), 2);
    EXPECT_TRUE(chart.hasFocus());
    QTest::mouseClick(chart.viewport(), Qt::LeftButton, {}, chart.place(3).center().toPoint());
    EXPECT_EQ(chart.chosen(), -1);
}

TEST_F(Chart, TheShownValueStaysInsideTheChart) {
    const QString label = QStringLiteral("一个特别特别特别长的标签");
    show({{label, 1}, {"2", 3}, {label, 2}}, {360, 300});
    chart.setFocus();
    for (const Qt::Key end : {Qt::Key_Home, Qt::Key_End}) {
        key(end);
        for (const QGraphicsSimpleTextItem* item : texts())
            EXPECT_TRUE(QRectF(chart.viewport()->rect()).contains(item->sceneBoundingRect()))
                << item->text().toStdString();
    }
}

TEST_F(Chart, TellsItsFiguresToScreenReaders) {
    show(kThree + QList<Bar>{{"", 0}});
    EXPECT_EQ(chart.objectName(), u"MSChart1");
    EXPECT_EQ(chart.accessibleName(), u"营业额统计图");
    EXPECT_EQ(chart.accessibleDescription(), u"2004-1：120；2004-2：80；2004-3：160.5");
    chart.setFocus();
    key(Qt::Key_End);
    EXPECT_EQ(chart.accessibleName(), u"营业额统计图，2004-3：160.5");
    key(Qt::Key_Escape);
    EXPECT_EQ(chart.accessibleName(), u"营业额统计图");
    chart.setBars({});
    EXPECT_EQ(chart.accessibleDescription(), u"没有数据");
}

/// How far the lightness of what is written in a part of a picture is from that around it.
int contrast(const QImage& image) {
    int darkest = 255;
    int lightest = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            darkest = std::min(darkest, qGray(image.pixel(x, y)));
            lightest = std::max(lightest, qGray(image.pixel(x, y)));
        }
    return lightest - darkest;
}

TEST_F(Chart, TextsAreLegibleOnLightAndDarkPaper) {
    show(kThree);
    QPalette dark = chart.palette();
    dark.setColor(QPalette::Base, QColor(0x20, 0x22, 0x26));
    dark.setColor(QPalette::Text, QColor(0xE6, 0xE9, 0xED));
    for (const QPalette& palette : {chart.palette(), dark}) {
        chart.setPalette(palette);
        const QImage image = grabbed();
        EXPECT_EQ(image.pixel(2, 2), palette.color(QPalette::Base).rgb());
        for (const QGraphicsSimpleTextItem* item : texts())
            EXPECT_GT(contrast(image.copy(item->sceneBoundingRect().toRect())), 120)
                << item->text().toStdString();
    }
}

TEST_F(Chart, FollowsTheSizeOfItsWindow) {
    show(kThree, {800, 600});
    chart.setFocus();
    key(Qt::Key_End);
    const double width = chart.place(2).width();
    window.resize(1280, 720);
    EXPECT_TRUE(QTest::qWaitFor([&] { return chart.place(2).width() > width * 1.4; }));
    expectNoTextOnAnother();
    const QImage image = grabbed();
    EXPECT_GT(paintedHeight(image, 0), 200);
    EXPECT_NEAR(paintedHeight(image, 1), paintedHeight(image, 0) * 80 / 120.0, 3);
    EXPECT_EQ(chart.shownText(), u"2004-3：160.5");
}

} // namespace
