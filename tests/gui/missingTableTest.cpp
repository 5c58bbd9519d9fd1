// Views whose table is not in the file.
#include "support/shopWindow.h"

#include "recordset/error.h"

namespace {

class MissingTable : public ShopWindow {
protected:
    MissingTable() {
        books.addClient("7", "甲");
        books.addProduct("p1", "纸", 5, 2, 9);
        books.addLine("1", "7", "p1", "2004-05-07", 1, 1, 1);
        books.execute("DROP TABLE stock_Count_Bank");
    }
};

TEST_F(MissingTable, GoingOnWithACountFromStockInDoesNothing) {
    start();
    drive->choose("maintain_product");
    drive->click("Command12");
    EXPECT_TRUE(main->host().isActive("productRegisterFm1"));
    EXPECT_EQ(session().activeViewName, u"productRegisterFm1");
}

TEST_F(MissingTable, GoingOnWithACountFromTheMenuShowsAnEmptyView) {
    start();
    drive->choose("count_stock2");
    ASSERT_TRUE(main->host().isActive("stock_CountFm1"));
    EXPECT_TRUE(shown("DataGrid1"));
    EXPECT_EQ(drive->text("Text1"), u"0/0");
    EXPECT_EQ(drive->text("Text2") + u'/' + drive->text("Text3"), u"0000-0-0/0000-0-0");
    for (const char* button : {"Command2", "Command3", "Command7", "Command1(0)", "Toolbar1(3)",
                               "Toolbar1(4)", "Toolbar1(5)", "Toolbar1(7)"})
        drive->click(QString::fromUtf8(button));
    drive->choose("count_stock1");
    drive->choose("show_stock");
    drive->choose("count_stock1");
    EXPECT_EQ(drive->rows("DataGrid1"), 1) << "a new count makes it again";
}

TEST_F(MissingTable, AViewWhoseLoadFailsIsNotKept) {
    class Broken : public View {
    public:
        Broken()
            : View("broken", "坏") {}
        void load() override { fail(ErrorNumber::Engine, "坏了"); }
    };
    start();
    main->host().registerView("broken", [] { return new Broken; });
    EXPECT_THROW(main->host().showFromMenu("broken"), RuntimeError);
    EXPECT_EQ(session().activeViewName, u"dataInputFm1");
    EXPECT_TRUE(main->host().isActive("dataInputFm1"));
    EXPECT_EQ(main->findChild<QWidget*>("broken"), nullptr);
    EXPECT_TRUE(shown("DataGrid1"));
    EXPECT_THROW(main->host().showFromMenu("broken"), RuntimeError) << "and is tried again the next time";
}

TEST_F(MissingTable, ADroppedHistoryShowsAsAnEmptyView) {
    books.execute("DROP TABLE return_Bank");
    start();
    drive->choose("show_return");
    ASSERT_TRUE(main->host().isActive("stock_ReturnFm2"));
    EXPECT_EQ(drive->text("Text1"), u"0/0");
}

} // namespace
