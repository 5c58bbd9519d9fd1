#include "controls/dataGrid.h"
#include "support/purchaseWindow.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>

namespace {

class QueryDialogs : public ShopWindow {
protected:
    QueryDialogs() {
        books.addProduct("p1", "打印纸", 5, 2, 9);
        books.addProduct("p2", "硒鼓", 2, 10, 30);
        books.addProduct("p3", "白纸", 3, 1, 2);
    }
    void stock() {
        start();
        drive->choose("show_stock");
    }
    Driver opened(const char* name) {
        EXPECT_NE(window(name), nullptr) << name;
        return Driver(*window(name));
    }
    QString names() {
        QStringList texts;
        for (int i = 0; i < drive->rows("DataGrid1"); ++i)
            texts << drive->cell("DataGrid1", i, "品名");
        return texts.join(u' ');
    }
};

TEST_F(QueryDialogs, TheSearchOffersItsFieldsAndSaysWhatIsMissing) {
    stock();
    drive->click("Toolbar1(3)");
    Driver search = opened("searchFm1");
    EXPECT_EQ(window("searchFm1")->windowTitle(), u"查寻选择");
    EXPECT_EQ(search.entries("List1"), (QStringList{"日期", "产品编号", "品名", "规格", "产地"}));
    EXPECT_EQ(search.text("Label1"), u"查询输入：");
    EXPECT_EQ(search.find<QLineEdit>("Text1")->placeholderText(), u"点击左边字段名表输入");
    EXPECT_EQ(search.find<QLineEdit>("Text2")->placeholderText(), u"输入查询内容");
    prompts.expectMessage("请选择字段名！");
    search.click("Command1");
    search.clickItem("List1", "品名");
    EXPECT_EQ(search.text("Text1"), u"品名");
    prompts.expectMessage("请输入查寻内容！");
    search.click("Command1");
    EXPECT_NE(window("searchFm1"), nullptr);
}

TEST_F(QueryDialogs, ASearchStaysUntilWholeShow) {
    stock();
    drive->click("Toolbar1(3)");
    Driver search = opened("searchFm1");
    search.clickItem("List1", "品名");
    search.type("Text2", "纸");
    search.key("Text2", Qt::Key_Return);
    EXPECT_EQ(window("searchFm1"), nullptr) << "Enter confirms";
    EXPECT_EQ(names(), u"白纸 打印纸") << "filtered, and sorted by the field";
    EXPECT_EQ(drive->text("Text1"), u"1/2");
    drive->click("Toolbar1(4)");
    EXPECT_EQ(drive->rows("DataGrid1"), 3);
}

TEST_F(QueryDialogs, ASearchThatTheCursorRefusesIsPassedOverAndTheDialogCloses) {
    stock();
    drive->click("Toolbar1(3)");
    Driver search = opened("searchFm1");
    search.clickItem("List1", "品名");
    search.type("Text2", "'");
    search.click("Command1");
    EXPECT_EQ(window("searchFm1"), nullptr);
    EXPECT_EQ(drive->rows("DataGrid1"), 3);
}

TEST_F(QueryDialogs, ASearchByDateIsAChoiceOfAPeriod) {
    stock();
    drive->click("Toolbar1(3)");
    opened("searchFm1").clickItem("List1", "日期");
    EXPECT_EQ(window("searchFm1"), nullptr);
    ASSERT_NE(window("timeDefineFm2"), nullptr);
    EXPECT_EQ(session().productTable->Filter(), u"");
    window("timeDefineFm2")->close();
}

TEST_F(QueryDialogs, InTheSalesListTooADateLeadsToThePeriod) {
    start();
    session().showSource = ShowSource(2);
    session().searchCode = 2;
    main->host().openWindow("searchFm1", ViewHost::MainWindow::Stays);
    opened("searchFm1").clickItem("List1", "日期");
    EXPECT_NE(window("timeDefineFm2"), nullptr);
    EXPECT_EQ(session().buyList->Filter(), u"");
}

TEST_F(QueryDialogs, BackClosesWithNothingChanged) {
    stock();
    drive->click("Toolbar1(3)");
    Driver search = opened("searchFm1");
    search.clickItem("List1", "品名");
    search.type("Text2", "纸");
    search.click("Command2");
    EXPECT_EQ(window("searchFm1"), nullptr);
    EXPECT_EQ(drive->rows("DataGrid1"), 3);
}

TEST_F(QueryDialogs, TransfersHaveNeitherListNorCursorAndTheDialogSaysSo) {
    books.execute("INSERT INTO out_of_Bank (日期, 产品编号) VALUES ('2003-01-01', 'p1')");
    start();
    drive->choose("show_out_of_Bank");
    drive->click("Toolbar1(3)");
    Driver search = opened("searchFm1");
    EXPECT_TRUE(search.entries("List1").isEmpty());
    EXPECT_TRUE(search.find<QLabel>("emptyHint")->isVisible());
    search.type("Text1", "品名");
    search.type("Text2", "x");
    search.click("Command1");
    EXPECT_EQ(session().out_of_Bank->RecordCount(), 1);
    drive->click("Toolbar1(5)");
    EXPECT_TRUE(opened("orderFm1").entries("List1").isEmpty());
}

TEST_F(QueryDialogs, TheSortOffersEveryColumnAndFollowsTheDirection) {
    stock();
    drive->click("Toolbar1(5)");
    Driver order = opened("orderFm1");
    EXPECT_EQ(window("orderFm1")->windowTitle(), u"排序选择");
    EXPECT_EQ(order.find<QLineEdit>("Text1")->placeholderText(), u"请点击左边字段名输入");
    EXPECT_EQ(order.entries("List1"), session().productTable->fieldNames());
    prompts.expectMessage("请选择排序字段！");
    order.click("Command1");
    order.clickItem("List1", "数量");
    order.click("Command1");
    EXPECT_EQ(window("orderFm1"), nullptr);
    EXPECT_EQ(names(), u"硒鼓 白纸 打印纸");
    EXPECT_EQ(drive->text("Text1"), u"1/3") << "no activation: the sort stays";
    drive->click("Toolbar1(6)");
    Driver descending = opened("orderFm1");
    descending.clickItem("List1", "数量");
    descending.click("Command1");
    EXPECT_EQ(names(), u"打印纸 白纸 硒鼓");
}

/// A view that hears of a sort.
class HearingView : public View {
public:
    explicit HearingView(int& heard)
        : View("hearing", "听")
        , m_heard(heard) {}
    void sorted() override { ++m_heard; }

private:
    int& m_heard;
};

TEST_F(QueryDialogs, TheViewInFrontHearsThatItsRowsAreSortedAndNotOfAReturn) {
    start();
    int heard = 0;
    main->host().registerView("hearing", [&heard] { return new HearingView(heard); });
    main->host().show("hearing");
    session().orderCode = 3;
    for (const char* button : {"Command2", "Command1"}) {
        main->host().openWindow("orderFm1", ViewHost::MainWindow::Stays);
        Driver order = opened("orderFm1");
        order.clickItem("List1", "数量");
        order.click(QString::fromUtf8(button));
        EXPECT_EQ(window("orderFm1"), nullptr);
    }
    EXPECT_EQ(heard, 1);
    EXPECT_EQ(session().productTable->Sort(), u"数量");
}

TEST_F(QueryDialogs, ATypedNameThatTheCursorLacksSortsNothing) {
    stock();
    drive->click("Toolbar1(5)");
    Driver order = opened("orderFm1");
    order.type("Text1", "无此列");
    order.key("Text1", Qt::Key_Return);
    EXPECT_EQ(window("orderFm1"), nullptr);
    EXPECT_EQ(session().productTable->Sort(), u"日期");
}

TEST_F(QueryDialogs, ThePeriodViewOfAHistoryOffersTheMakerToo) {
    start();
    books.addLine("2", "7", "p1", "2004-12-05", 1, 20, 1);
    session().buyList->Requery();
    drive->choose("whole_show_product");
    drive->click("Toolbar1(3)");
    EXPECT_FALSE(opened("searchFm1").entries("List1").contains("厂家"));
    session().showSource = ShowSource(16);
    session().reopen(session().product_Bank2, "Select * From product_Bank");
    main->host().active()->activate();
    drive->click("Toolbar1(3)");
    EXPECT_TRUE(opened("searchFm1").entries("List1").contains("厂家")) << "the open dialog follows";
}

TEST_F(QueryDialogs, AnOpenSearchGoesToWhoeverAskedForItLast) {
    start();
    drive->choose("whole_show_product");
    main->host().openWindow("product_displayFm1", ViewHost::MainWindow::Stays);
    const auto search = [this] {
        Driver dialog = opened("searchFm1");
        dialog.clickItem("List1", "品名");
        dialog.type("Text2", "纸");
        dialog.click("Command1");
    };
    opened("product_displayFm1").choose("search");
    drive->click("Toolbar1(3)");
    search();
    EXPECT_EQ(session().productTable->Filter(), u"");
    EXPECT_EQ(names(), u"白纸 打印纸");
    drive->click("Toolbar1(4)");
    drive->click("Toolbar1(3)");
    opened("product_displayFm1").choose("search");
    search();
    EXPECT_EQ(session().productTable->RecordCount(), 2);
    EXPECT_EQ(drive->rows("DataGrid1"), 3);
}

TEST_F(QueryDialogs, TheProductListMovesSearchesSortsAndReturns) {
    start();
    main->host().openWindow("product_displayFm1", ViewHost::MainWindow::Stays);
    Driver list = opened("product_displayFm1");
    EXPECT_EQ(window("product_displayFm1")->windowTitle(), u"产品显示");
    EXPECT_EQ(list.text("Text1"), u"1/3");
    list.click("Command1(3)");
    EXPECT_EQ(list.text("Text1"), u"3/3");
    list.choose("search");
    EXPECT_EQ(session().searchCode, 3);
    session().showSource = ShowSource(3);
    Driver search = opened("searchFm1");
    search.clickItem("List1", "品名");
    search.type("Text2", "纸");
    search.click("Command1");
    EXPECT_EQ(list.text("Text1"), u"1/2");
    list.choose("whole_show");
    EXPECT_EQ(list.rows("DataGrid1"), 3);
    list.choose("order");
    EXPECT_EQ(session().orderCode, 3);
    opened("orderFm1").click("Command2");
    list.choose("return");
    EXPECT_EQ(window("product_displayFm1"), nullptr);
}

TEST_F(QueryDialogs, AnEmptyProductListShowsNoPositionAndDoesNotSort) {
    books.execute("DELETE FROM productTable");
    start();
    main->host().openWindow("product_displayFm1", ViewHost::MainWindow::Stays);
    Driver list = opened("product_displayFm1");
    EXPECT_EQ(list.text("Text1"), u"0/0");
    list.choose("order");
    EXPECT_EQ(window("orderFm1"), nullptr);
}

TEST_F(QueryDialogs, ThePickerSearchesTheColumnOfTheCurrentCell) {
    start();
    main->host().openWindow("listProductFm2", ViewHost::MainWindow::Stays);
    Driver list = opened("listProductFm2");
    EXPECT_EQ(window("listProductFm2")->windowTitle(), u"产品选择");
    list.clickCell("DataGrid1", 0, "品名");
    prompts.expectInput("请输入品名：", "查询输入", "纸");
    list.click("Command3");
    EXPECT_EQ(list.text("Text1"), u"1/2");
    list.clickCell("DataGrid1", 0, "单价");
    prompts.expectInput("请输入产品编号：", "查询输入", std::nullopt);
    list.click("Command3");
    EXPECT_EQ(list.text("Text1"), u"1/3") << "a canceled question shows all";
    list.click("Command1(3)");
    list.click("Command2");
    EXPECT_EQ(session().pickedProduct.number, u"p3");
    EXPECT_EQ(session().pickedProduct.cost, 1);
    EXPECT_EQ(window("listProductFm2"), nullptr);
    EXPECT_EQ(session().report.reportReturned, 2) << "any unload";
}

TEST_F(QueryDialogs, ThePickerReturnsWithoutAPickAndIgnoresAnEmptyList) {
    books.execute("DELETE FROM productTable");
    start();
    main->host().openWindow("listProductFm2", ViewHost::MainWindow::Stays);
    Driver list = opened("listProductFm2");
    list.click("Command2");
    EXPECT_NE(window("listProductFm2"), nullptr);
    list.click("Command4");
    EXPECT_EQ(window("listProductFm2"), nullptr);
}

TEST_F(QueryDialogs, AnOrderIsPickedFromThoseOfTheCustomerInHand) {
    books.addClient("7", "甲");
    books.addLine("21", "7", "p1", "2004-01-05", 1, 1, 1);
    books.addLine("21", "7", "p2", "2004-01-05", 1, 1, 1);
    books.addLine("22", "8", "p2", "2004-01-05", 1, 1, 1);
    start();
    session().currentClientNum = "7";
    main->host().openWindow("order_Form_NumFm1", ViewHost::MainWindow::Stays);
    Driver orders = opened("order_Form_NumFm1");
    EXPECT_EQ(window("order_Form_NumFm1")->windowTitle(), u"选择订单");
    EXPECT_EQ(orders.text("Label1"), u"订单号");
    EXPECT_EQ(orders.entries("List1"), QStringList{"21"});
    orders.clickItem("List1", "21");
    orders.click("Command1");
    EXPECT_EQ(window("order_Form_NumFm1"), nullptr);
    EXPECT_EQ(main->host().active()->name(), u"tempTable2Fm22");
}

class PickForPurchase : public Purchase {};

TEST_F(PickForPurchase, ThePickFillsTheBoxesOfThePurchaseByTheirNumbers) {
    open();
    main->host().openWindow("listProductFm2", ViewHost::MainWindow::Stays);
    Driver list(*window("listProductFm2"));
    list.click("Command1(0)");
    list.click("Command1(2)");
    list.click("Command2");
    // The twelfth is the discount box of the purchase, which takes no unit of measure and says 100.
    const std::pair<int, const char*> boxes[] = {{1, "p2"}, {2, "硒鼓"}, {6, "30"}, {9, "90"}};
    for (const auto& [box, text] : boxes)
        EXPECT_EQ(line(box), QString::fromUtf8(text)) << box;
}

} // namespace
