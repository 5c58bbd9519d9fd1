// What a user does with the columns of a grid: sorts by them, widens and moves them, copies and exports them.
#include "controls/dataGrid.h"
#include "support/contextMenu.h"
#include "support/shopWindow.h"
#include "support/workbook.h"

#include <QClipboard>
#include <QHeaderView>
#include <QLineEdit>

namespace {

class GridColumnsOf : public ShopWindow {
protected:
    GridColumnsOf() {
        books.addProduct("p1", "打印纸", 5, 2, 9);
        books.addProduct("p2", "硒鼓", 2, 10, 30, "9折");
        books.addProduct("p3", "白纸", 3, 1, 2, "95");
    }
    void stock() {
        start();
        drive->choose("show_stock");
    }
    DataGrid& grid() { return *main->host().active()->findChild<DataGrid*>("DataGrid1"); }
    QHeaderView& head() { return *grid().horizontalHeader(); }
    int column(const char* name) {
        for (int i = 0; i < grid().model()->columnCount(); ++i)
            if (grid().model()->headerData(i, Qt::Horizontal).toString() == QString::fromUtf8(name))
                return i;
        ADD_FAILURE() << "no column " << name;
        return -1;
    }
    QPoint captionAt(const char* name, int fromRight = -1) {
        const int section = column(name);
        grid().scrollTo(grid().model()->index(0, section));
        const int left = head().sectionViewportPosition(section);
        const int width = head().sectionSize(section);
        return {fromRight < 0 ? left + width / 2 : left + width - fromRight, head().height() / 2};
    }
    void clickCaption(const char* name) {
        QTest::mouseClick(head().viewport(), Qt::LeftButton, {}, captionAt(name));
    }
    /// Drags by the left button within the captions.
    void drag(const QPoint& from, const QPoint& to) {
        QWidget* captions = head().viewport();
        QTest::mousePress(captions, Qt::LeftButton, {}, from);
        QTest::mouseMove(captions, (from + to) / 2);
        QTest::mouseMove(captions, to);
        QTest::mouseRelease(captions, Qt::LeftButton, {}, to);
    }
    QString names() {
        QStringList texts;
        for (int i = 0; i < drive->rows("DataGrid1"); ++i)
            texts << drive->cell("DataGrid1", i, "品名");
        return texts.join(u' ');
    }
    /// The sign in the captions: the column's name and how it points, "" where none is.
    QString sign() {
        const int section = head().sortIndicatorSection();
        if (!head().isSortIndicatorShown() || section < 0 || section >= grid().model()->columnCount())
            return {};
        return grid().model()->headerData(section, Qt::Horizontal).toString() +
               (head().sortIndicatorOrder() == Qt::DescendingOrder ? " desc" : "");
    }
    QStringList shownOrder() {
        QStringList captions;
        for (int place = 0; place < head().count(); ++place)
            if (const int section = head().logicalIndex(place); !grid().isColumnHidden(section))
                captions << grid().model()->headerData(section, Qt::Horizontal).toString();
        return captions;
    }
    void sortByDialog(const char* button, const char* field) {
        drive->click(button);
        Driver order(*window("orderFm1"));
        order.clickItem("List1", field);
        order.click("Command1");
    }
    /// A caption without the line at its right.
    QImage captionPicture(const char* name) {
        const int section = column(name);
        return head().viewport()->grab().toImage().copy(head().sectionViewportPosition(section), 2,
                                                        head().sectionSize(section) - 3, head().height() - 6);
    }
    /// The first and the last column of pixels that are not as they are to be.
    template <typename Wanted> static std::pair<int, int> differing(const QImage& image, Wanted&& wanted) {
        int first = image.width();
        int last = -1;
        for (int x = 0; x < image.width(); ++x)
            for (int y = 0; y < image.height(); ++y)
                if (image.pixel(x, y) != wanted(x, y)) {
                    first = std::min(first, x);
                    last = x;
                }
        return {first, last};
    }
    void exportAs(const QString& entry, const QString& path) {
        prompts.saveName = path;
        chooseInMenuOf(*grid().viewport(), entry);
    }

    QTemporaryDir folder;
};

TEST_F(GridColumnsOf, AClickOnACaptionSortsAndASecondTurnsIt) {
    stock();
    clickCaption("数量");
    EXPECT_EQ(names(), u"硒鼓 白纸 打印纸");
    EXPECT_EQ(sign(), u"数量");
    EXPECT_EQ(session().productTable->Sort(), u"数量");
    EXPECT_EQ(session().sortDirection, 1);
    clickCaption("数量");
    EXPECT_EQ(names(), u"打印纸 白纸 硒鼓");
    EXPECT_EQ(sign(), u"数量 desc");
    EXPECT_EQ(session().productTable->Sort(), u"数量 Desc");
    EXPECT_EQ(session().sortDirection, 2);
    clickCaption("数量");
    EXPECT_EQ(sign(), u"数量") << "and the third turns it back";
    clickCaption("品名");
    EXPECT_EQ(names(), u"白纸 打印纸 硒鼓") << "another column begins ascending";
    EXPECT_EQ(sign(), u"品名");
}

TEST_F(GridColumnsOf, TheSignFollowsWhoeverSortsAndGoesWithTheSort) {
    stock();
    clickCaption("数量");
    sortByDialog("Toolbar1(6)", "单价");
    EXPECT_EQ(sign(), u"单价 desc");
    clickCaption("单价");
    EXPECT_EQ(sign(), u"单价") << "what the dialog has turned down, a click turns up";
    drive->click("Toolbar1(4)");
    EXPECT_EQ(sign(), session().productTable->Sort());
    session().productTable->setSort({});
    EXPECT_EQ(sign(), u"");
}

TEST_F(GridColumnsOf, TheSignStandsBesideTheCaptionAndNotOverIt) {
    stock();
    for (const char* name : {"产品编号", "计量单位", "数量", "品名"}) {
        head().setSortIndicator(-1, Qt::AscendingOrder);
        const QImage plain = captionPicture(name);
        head().setSortIndicator(column(name), Qt::AscendingOrder);
        const QImage signedOne = captionPicture(name);
        const auto [textLeft, textRight] = differing(plain, [&](int, int) { return plain.pixel(2, 2); });
        const auto [signLeft, signRight] =
            differing(signedOne, [&](int x, int y) { return plain.pixel(x, y); });
        EXPECT_GT(textRight, textLeft) << name;
        EXPECT_GT(signRight, signLeft) << name;
        EXPECT_GT(signLeft, textRight) << name;
    }
}

TEST_F(GridColumnsOf, ACaptionOfAFilteredViewSortsWhatTheFilterShows) {
    stock();
    session().productTable->setFilter("品名 Like '%纸%'");
    clickCaption("单价");
    EXPECT_EQ(names(), u"白纸 打印纸");
    session().productTable->setFilter("品名 = '无'");
    clickCaption("单价");
    EXPECT_EQ(sign(), u"单价") << "without rows nothing is sorted, and the sign says so";
    EXPECT_EQ(session().productTable->Sort(), u"单价");
}

TEST_F(GridColumnsOf, ACaptionDoesNothingWhereTheToolbarDoesNotSort) {
    start();
    const QString before = session().clientTable->Sort();
    drive->choose("management_client");
    clickCaption("客户编号");
    EXPECT_EQ(session().clientTable->Sort(), before);
    EXPECT_EQ(sign(), u"");
    books.execute("INSERT INTO out_of_Bank (日期, 产品编号) VALUES ('2003-01-01', 'p1')");
    session().reopen(session().out_of_Bank, "Select * From out_of_Bank");
    drive->choose("show_out_of_Bank");
    const QString transfers = session().out_of_Bank->Sort();
    clickCaption("数量");
    EXPECT_EQ(session().out_of_Bank->Sort(), transfers) << "the sort dialog has no list for it either";
    EXPECT_EQ(sign(), transfers.isEmpty() ? QString() : sign());
}

TEST_F(GridColumnsOf, ASortByCaptionShowsTheProductInHandAsTheDialogDoes) {
    for (const char* product : {"p1", "p2", "p3"})
        books.addLine("10", "1", product, QStringLiteral("2004-01-0%1").arg(product[1]), 1, 5, 1);
    start();
    drive->choose("show_sales");
    drive->clickCell("DataGrid1", 1, "产品编号");
    const QString inHand = session().currentProductNum;
    sortByDialog("Toolbar1(6)", "产品编号");
    const QString byDialog = drive->text("Text1");
    const QString row = session().buyList->Fields("产品编号").text();
    sortByDialog("Toolbar1(5)", "日期");
    clickCaption("产品编号");
    clickCaption("产品编号");
    EXPECT_EQ(drive->text("Text1"), byDialog);
    EXPECT_EQ(session().buyList->Fields("产品编号").text(), row);
    EXPECT_EQ(session().currentProductNum, inHand);
}

TEST_F(GridColumnsOf, InAMaintenanceGridACaptionSortsWithItsEditsAndMovesNothing) {
    start();
    drive->choose("maintain_Data3");
    drive->editCell("DataGrid1", 0, "品名", "新纸");
    drive->clickCell("DataGrid1", 2, "品名");
    QTest::mousePress(head().viewport(), Qt::LeftButton, {}, captionAt("数量"));
    EXPECT_EQ(session().productTable->AbsolutePosition(), 3) << "a press on a caption chooses no row";
    QTest::mouseRelease(head().viewport(), Qt::LeftButton, {}, captionAt("数量"));
    EXPECT_EQ(session().productTable->Sort(), u"数量");
    EXPECT_TRUE(names().contains("新纸"));
    EXPECT_EQ(session().productTable->pendingCount(), 1);
}

TEST_F(GridColumnsOf, AnEditorThatIsOpenIsTakenOverBeforeTheSort) {
    start();
    drive->choose("maintain_Data3");
    drive->doubleClickCell("DataGrid1", 0, "数量");
    auto editors = grid().viewport()->findChildren<QLineEdit*>("cellEditor");
    ASSERT_FALSE(editors.isEmpty());
    editors.last()->setText("1");
    clickCaption("数量");
    EXPECT_EQ(drive->cell("DataGrid1", 0, "数量"), u"1");
    EXPECT_EQ(names().section(u' ', 1, 1), u"硒鼓");
}

TEST_F(GridColumnsOf, TheChooserOfAStockOutSortsByItsCaptions) {
    start();
    drive->choose("no_Sales_stock1");
    clickCaption("数量");
    EXPECT_EQ(names(), u"硒鼓 白纸 打印纸");
    EXPECT_EQ(sign(), u"数量");
}

TEST_F(GridColumnsOf, WidthAndPlaceOfAColumnHoldWhenTheViewIsLeftAndBound) {
    stock();
    const int before = grid().columnWidth(column("品名"));
    drag(captionAt("品名", 1), captionAt("品名", 1) + QPoint(60, 0));
    const int widened = grid().columnWidth(column("品名"));
    EXPECT_NEAR(widened, before + 60, 3);
    drag(captionAt("数量"), captionAt("产品编号"));
    const QStringList order = shownOrder();
    EXPECT_NE(order.indexOf("数量"), QStringList(session().productTable->fieldNames()).indexOf("数量") - 1);
    drive->choose("maintain_order");
    drive->choose("show_stock");
    EXPECT_EQ(grid().columnWidth(column("品名")), widened);
    EXPECT_EQ(shownOrder(), order);
    session().reopen(session().productTable, "Select * From productTable");
    drive->click("Toolbar1(4)");
    EXPECT_EQ(grid().columnWidth(column("品名")), widened);
    EXPECT_EQ(shownOrder(), order);
    drive->choose("show_stock3");
    EXPECT_NE(shownOrder(), order) << "another view has its own";
}

TEST_F(GridColumnsOf, BindingSortingAndFilteringAreNoWidthsOfTheUsers) {
    stock();
    const auto memory = std::make_shared<ColumnsByUser>();
    grid().rememberColumns(memory);
    clickCaption("品名");
    session().productTable->setFilter("品名 = '无'");
    session().productTable->clearFilter();
    session().reopen(session().productTable, "Select * From productTable");
    drive->click("Toolbar1(4)");
    main->resize(1500, 800);
    QCoreApplication::processEvents();
    EXPECT_TRUE(memory->widths.isEmpty()) << memory->widths.keys().join(u' ').toStdString();
    EXPECT_TRUE(memory->order.isEmpty());
}

TEST_F(GridColumnsOf, ATextColumnTakesTheSpaceThatIsLeft) {
    start();
    drive->choose("statistic_achievement");
    main->resize(1280, 720);
    QCoreApplication::processEvents();
    const auto total = [this] {
        int sum = 0;
        for (int i = 0; i < head().count(); ++i)
            sum += grid().columnWidth(i);
        return sum;
    };
    books.addClient("1");
    EXPECT_EQ(total(), grid().viewport()->width());
    main->resize(1600, 800);
    QCoreApplication::processEvents();
    EXPECT_EQ(total(), grid().viewport()->width());
    const int number = grid().columnWidth(column("营业额"));
    main->resize(1300, 800);
    QCoreApplication::processEvents();
    EXPECT_EQ(total(), grid().viewport()->width());
    EXPECT_EQ(grid().columnWidth(column("营业额")), number) << "a column of numbers stays narrow";
}

TEST_F(GridColumnsOf, TheCompanyStandsEarlyInTheRegister) {
    start();
    EXPECT_EQ(shownOrder().mid(0, 4), (QStringList{"客户编号", "单位名称", "联系人", "电话"}));
    EXPECT_TRUE(shownOrder().contains("地址")) << "and the others behind them";
    EXPECT_FALSE(shownOrder().contains("流水号"));
}

TEST_F(GridColumnsOf, CtrlCCopiesTheSelectedRowsUnderTheirCaptionsAsTheyStand) {
    stock();
    drag(captionAt("数量"), captionAt("产品编号"));
    drive->clickCell("DataGrid1", 0, "品名");
    QTest::keyClick(&grid(), Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(&grid(), Qt::Key_C, Qt::ControlModifier);
    const QStringList lines = QApplication::clipboard()->text().split(u'\n');
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(lines[0].split(u'\t'), shownOrder());
    for (int row = 0; row < 2; ++row) {
        QStringList cells;
        for (const QString& caption : shownOrder())
            cells << drive->cell("DataGrid1", row, caption);
        EXPECT_EQ(lines[row + 1].split(u'\t'), cells);
    }
    QTest::keyClick(&grid(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&grid(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().count(u'\n'), 3);
}

TEST_F(GridColumnsOf, ALineOrATabWithinACellTearsNoCopiedRow) {
    books.changeBehind(
        "UPDATE productTable SET 品名 = 'a' || char(9) || 'b' || char(10) || 'c' WHERE 产品编号 = 'p1'");
    stock();
    drive->clickCell("DataGrid1", 0, "产品编号");
    QTest::keyClick(&grid(), Qt::Key_C, Qt::ControlModifier);
    const QStringList lines = QApplication::clipboard()->text().split(u'\n');
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines[1].split(u'\t').contains("a b c"));
}

TEST_F(GridColumnsOf, WithoutRowsCtrlCLeavesTheClipboard) {
    stock();
    session().productTable->setFilter("品名 = '无'");
    QApplication::clipboard()->setText("before");
    QTest::keyClick(&grid(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), u"before");
}

TEST_F(GridColumnsOf, AGridIsExportedAsAWorkbookAsItStands) {
    stock();
    drag(captionAt("数量"), captionAt("产品编号"));
    session().productTable->setFilter("数量 < 5");
    clickCaption("数量");
    clickCaption("数量");
    const QString path = folder.filePath("库存.xlsx");
    exportAs("导出 XLSX…", path);
    const Workbook book(path);
    const auto sheet = book.sheet();
    QHash<QString, QChar> place;
    for (int i = 0; i < shownOrder().size(); ++i) {
        place[shownOrder()[i]] = QChar(u'A' + i);
        EXPECT_EQ(sheet.at(QString(QChar(u'A' + i)) + u'1').text, shownOrder()[i]);
    }
    const auto cell = [&](const char* name, int row) {
        return sheet.at(place.value(QString::fromUtf8(name)) + QString::number(row + 1));
    };
    EXPECT_EQ(cell("品名", 1).text, u"白纸");
    EXPECT_EQ(cell("品名", 1).type, u"text");
    EXPECT_EQ(cell("品名", 2).text, u"硒鼓");
    EXPECT_EQ(cell("数量", 1).text, u"3");
    EXPECT_EQ(cell("数量", 1).type, u"number");
    EXPECT_EQ(cell("日期", 1).text, u"2004-1-5");
    EXPECT_EQ(cell("日期", 1).type, u"date");
    EXPECT_EQ(cell("折扣", 1).type, u"number") << "a number also where it is kept as its text";
    EXPECT_EQ(cell("折扣", 2).type, u"text") << "9折";
    EXPECT_FALSE(sheet.count("A4"));
    EXPECT_FALSE(place.contains("流水号"));
    EXPECT_EQ(book.widths().size(), shownOrder().size());
    for (const double width : book.widths())
        EXPECT_GT(width, 4);
}

TEST_F(GridColumnsOf, TheWorkbookOfAPurchaseHasTheStockThatItShows) {
    books.addClient("1", "甲", "乙");
    start();
    drive->clickCell("DataGrid1", 0, "客户编号");
    drive->click("Command7");
    Driver buy(*window("buyFm1"));
    buy.clickCell("DataGrid1", 0, "产品编号");
    buy.type("Text4(10)", "2");
    auto* products = buy.find<DataGrid>("DataGrid1");
    const ExportTable table = products->exportTable();
    QStringList captions;
    for (const ExportColumn& each : table.columns)
        captions << each.caption;
    EXPECT_EQ(fieldText(table.cell(0, int(captions.indexOf("数量")))), buy.cell("DataGrid1", 0, "数量"));
    window("buyFm1")->close();
}

} // namespace
