// What the host of the views does with showSource, hidden views, and the main window beside others.
#include "controls/dataGrid.h"
#include "support/shopWindow.h"

#include <QVBoxLayout>

namespace {

class Host : public ShopWindow {
protected:
    Host() {
        books.addClient("7", "甲");
        books.addClient("8", "乙");
        books.addProduct("p1", "纸", 5, 2, 9);
    }
    ViewHost& host() { return main->host(); }
};

/// A view of one code, with a grid on the customers.
class CodeView : public View {
public:
    CodeView(const QString& name, ShowSource code, Session& session, Prompts& prompts)
        : View(name, name)
        , m_code(code)
        , m_session(session)
        , grid(new DataGrid(prompts, this)) {
        (new QVBoxLayout(this))->addWidget(grid);
    }
    void load() override { grid->bind(m_session.clientTable, {"流水号"}); }
    ShowSource source() const override { return m_code; }

private:
    ShowSource m_code;
    Session& m_session;

public:
    DataGrid* grid;
};

/// A window that sets showSource for itself.
class OwnSource : public TopWindow {
public:
    explicit OwnSource(Session& session)
        : TopWindow("own", "窗口") {
        session.showSource = ShowSource::Products;
    }
    bool setsShowSource() const override { return true; }
};

TEST_F(Host, AViewTellsItsSourceWhenItIsShown) {
    start();
    session().stockShowSource = ShowSource::PeriodProducts;
    host().show("stockFm1");
    EXPECT_EQ(session().showSource, ShowSource::Products) << "there is no copy of the products";
    session().stockShowSource = ShowSource::PeriodProducts;
    session().reopen(session().productTable2, "Select * From productTable2");
    host().show("StockFm2");
    EXPECT_EQ(session().showSource, ShowSource::PeriodProducts);
    host().show("stock_BankFm1");
    EXPECT_EQ(session().showSource, ShowSource::StockIn);
    host().show("productRegisterFm1");
    EXPECT_EQ(session().showSource, ShowSource::StockIn) << "a view without a say leaves it";
    session().clientShowSource = ShowSource::PeriodClients;
    host().show("dataInputFm1");
    EXPECT_EQ(session().showSource, ShowSource::Clients) << "the register is about the whole table";
}

TEST_F(Host, AWindowThatSetsShowSourceGivesTheFrontViewsValueBack) {
    start();
    host().registerView("cut",
                        [this] { return new CodeView("cut", ShowSource::BestClients, session(), prompts); });
    host().registerWindow("own", [this] { return new OwnSource(session()); });
    host().show("cut");
    EXPECT_EQ(session().showSource, ShowSource::BestClients);
    host().openWindow("own", ViewHost::MainWindow::Stays);
    EXPECT_EQ(session().showSource, ShowSource::Products);
    window("own")->close();
    EXPECT_EQ(session().showSource, ShowSource::BestClients);
}

TEST_F(Host, ThePeriodOnShowComesBackBehindTheStockStatistic) {
    books.addLine("1", "7", "p1", "2004-01-05", 1, 1, 1);
    start();
    drive->choose("whole_show_product");
    drive->click("Toolbar1(2)");
    Driver time(*window("timeDefineFm2"));
    time.pick("Combo1", "2004");
    time.click("Option5");
    time.click("Command1");
    ASSERT_EQ(session().showSource, ShowSource::PeriodStockIn);
    host().openWindow("statisticFm4", ViewHost::MainWindow::Stays);
    EXPECT_EQ(session().showSource, session().stockShowSource);
    window("statisticFm4")->close();
    EXPECT_EQ(session().showSource, ShowSource::PeriodStockIn);
}

TEST_F(Host, AHiddenViewsGridHearsNothingAndIsBackWithTheView) {
    start();
    host().registerView("statisticFm1", [this] {
        return new CodeView("statisticFm1", ShowSource::Clients, session(), prompts);
    });
    host().show("statisticFm1");
    DataGrid* grid = static_cast<CodeView*>(host().active())->grid;
    int heard = 0;
    grid->setRowHandler([&heard] { ++heard; });
    host().show("productRegisterFm1");
    session().clientTable->MoveLast();
    session().clientTable->setFilter("客户编号 = '8'");
    EXPECT_EQ(heard, 0);
    EXPECT_EQ(grid->model()->rowCount(), 0);
    host().show("statisticFm1");
    EXPECT_EQ(grid->model()->rowCount(), 1);
    EXPECT_TRUE(grid->isColumnHidden(0)) << "流水号";
    session().clientTable->clearFilter();
    EXPECT_EQ(grid->model()->rowCount(), 2);
}

TEST_F(Host, TheMainWindowComesBackBesideAWindowThatHadItHidden) {
    start();
    host().registerWindow("own", [this] { return new OwnSource(session()); });
    host().openWindow("own", ViewHost::MainWindow::Hidden);
    EXPECT_FALSE(main->isVisible());
    host().bringBackMain("own");
    EXPECT_TRUE(main->isVisible());
    EXPECT_TRUE(window("own")->isVisible());
    window("own")->close();
    EXPECT_TRUE(main->isVisible());
}

TEST_F(Host, TheMainWindowStaysAwayWhileAnotherHasItHidden) {
    start();
    host().registerWindow("own", [this] { return new OwnSource(session()); });
    host().openWindow("buyFm1", ViewHost::MainWindow::Hidden);
    host().openWindow("own", ViewHost::MainWindow::Hidden);
    host().bringBackMain("own");
    EXPECT_FALSE(main->isVisible());
    window("buyFm1")->close();
    EXPECT_TRUE(main->isVisible());
}

TEST_F(Host, AViewInFrontIsActivatedWhereAnotherWouldBeShown) {
    start();
    host().showOrActivate("stock_BankFm1");
    EXPECT_TRUE(host().isActive("stock_BankFm1"));
    session().viewReturnState = "Close";
    session().product_Bank->MoveFirst();
    session().displayDate1.clear();
    host().showOrActivate("stock_BankFm1");
    EXPECT_EQ(session().displayDate1, u"2004-1-5");
    EXPECT_EQ(session().viewReturnState, u"Open");
}

} // namespace
