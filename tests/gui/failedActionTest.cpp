// Actions that another program's lock or a full disk ends: file, images and boxes are as before, and the
// window goes on working.
#include "app/startJobs.h"
#include "controls/dataGrid.h"
#include "recordset/error.h"
#include "support/otherProgram.h"
#include "support/purchaseWindow.h"
#include "support/smallDisk.h"

#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTest>

namespace {

class FailedAction : public Purchase {
protected:
    /// What the program's dispatch does with an action that ends.
    template <typename Work> QString endOf(Work&& work) {
        try {
            work();
        } catch (const ActionEnded& action) {
            session().cn.tellTakenBack();
            return action.text();
        }
        return QStringLiteral("done");
    }
    /// The question comes at once.
    void waitForNobody() { sqlite3_busy_timeout(session().cn.handle(), 0); }
    /// The user will not wait.
    void giveUpAlways() {
        session().cn.askAgain = [this] {
            ++asked;
            return false;
        };
    }
    QString totals() {
        return books.stored(
            "SELECT (SELECT sum(数量) FROM productTable) || ' ' || (SELECT count(*) FROM buyList) || ' ' "
            "|| (SELECT counterNum2 FROM counterCode)");
    }

    int asked = 0;
};

TEST_F(FailedAction, AGivenUpSaveOfTheRegisterKeepsWhatIsTypedAndTheStoredRow) {
    start();
    giveUpAlways();
    drive->type("Text3(8)", "改过的名字");
    const QString stored = books.stored("SELECT 单位名称 FROM clientTable");
    {
        waitForNobody();
        const OtherProgram other(books.path(), kWrites);
        EXPECT_EQ(endOf([&] { drive->click("Command5"); }), u"");
    }
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(drive->text("Text3(8)"), u"改过的名字");
    EXPECT_EQ(books.stored("SELECT 单位名称 FROM clientTable"), stored);
    EXPECT_EQ(session().clientTable->pendingCount(), 0);
    drive->click("Command5");
    EXPECT_EQ(books.stored("SELECT 单位名称 FROM clientTable"), u"改过的名字") << "the next try books it";
}

class PaintCount : public QObject {
public:
    explicit PaintCount(QWidget* watched) { watched->installEventFilter(this); }
    int count = 0;

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        count += event->type() == QEvent::Paint;
        return false;
    }
};

/// How many of a grid's customers show no name.
int nameless(DataGrid* grid) {
    grid->viewport()->repaint();
    const int column = grid->recordset()->fieldIndex(QStringLiteral("单位名称"));
    int count = 0;
    for (int row = 0; row < grid->model()->rowCount(); ++row)
        count += grid->model()->index(row, column).data(Qt::DisplayRole).toString().isEmpty();
    return count;
}

class LockedGrid : public FailedAction {
protected:
    /// So many that most of them have not been read when the register is up.
    LockedGrid() {
        for (int i = 0; i < 150; ++i)
            books.execute(QStringLiteral("INSERT INTO clientTable (流水号, 客户编号, 单位名称) VALUES (%1, "
                                         "'%1', '客户')")
                              .arg(100 + i));
    }
};

TEST_F(LockedGrid, IsPaintedWithoutAWordAndFillsItselfWhenItMayReadAgain) {
    start();
    auto* grid = drive->find<DataGrid>("DataGrid1");
    const std::size_t held = session().clientTable->image().memory();
    {
        const OtherProgram other(books.path(), kExcludes);
        for (int paints = 0; paints < 30; ++paints)
            EXPECT_GT(nameless(grid), 0);
        EXPECT_LT(nameless(grid), grid->model()->rowCount()) << "what was read is shown";
    }
    nameless(grid);
    EXPECT_EQ(session().clientTable->image().memory(), held)
        << "what could not be read is no reason to read all of the table";
    const QSignalSpy changed(grid->model(), &QAbstractItemModel::dataChanged);
    PaintCount paints(grid->viewport());
    EXPECT_TRUE(QTest::qWaitFor([&] { return paints.count > 0; })) << "asked for again by itself";
    EXPECT_EQ(changed.count(), 0) << "an open editor keeps what is typed";
    EXPECT_EQ(nameless(grid), 0);
}

TEST_F(LockedGrid, PaintedWhileTheUserIsAskedDoesNotUndoWhatHeWaitedFor) {
    start();
    auto* grid = drive->find<DataGrid>("DataGrid1");
    drive->type("Text3(8)", "改过的名字");
    auto other = std::make_unique<OtherProgram>(books.path(), kExcludes);
    waitForNobody();
    session().cn.askAgain = [&] {
        EXPECT_GT(nameless(grid), 0);
        other.reset();
        return ++asked == 1;
    };
    EXPECT_EQ(endOf([&] { drive->click("Command5"); }), u"done");
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(books.stored("SELECT 单位名称 FROM clientTable WHERE 客户编号 = '7'"), u"改过的名字");
}

TEST_F(FailedAction, TheProgramAsksAndShowsTheCursorsAsTheyWereWhenTheUserGivesUp) {
    start();
    StartJobs jobs(session(), QDate(2026, 11, 22));
    session().cn.beforeFirstWrite = nullptr; // no check is under way
    std::function<void(const QString&)> onActionEnded;
    wireBooks(*main, jobs, prompts, onActionEnded);
    main->host().beforeFigures = nullptr;
    {
        waitForNobody();
        const OtherProgram other(books.path(), kWrites);
        drive->type("Text3(8)", "改过的名字");
        prompts.expectAsk("数据文件正被另一个程序使用（已锁定），这一步还没有记入。\n"
                          "再试一次吗？选“否”就放弃这一步，一切照旧。",
                          false, "衡商汇");
        EXPECT_THROW(drive->click("Command5"), ActionEnded);
    }
    const QSignalSpy told(drive->find<DataGrid>("DataGrid1")->model(), &QAbstractItemModel::modelReset);
    onActionEnded(QString());
    EXPECT_GE(told.count(), 1) << "the grid has been told";
    EXPECT_EQ(drive->cell("DataGrid1", 0, "单位名称"), u"红木行");
    EXPECT_EQ(drive->text("Text3(8)"), u"改过的名字");
    prompts.expectMessage("没有记入", "衡商汇");
    onActionEnded(QStringLiteral("没有记入"));
    session().cn.askAgain = nullptr;
}

class FailedSettlement : public FailedAction, public testing::WithParamInterface<bool> {};
INSTANTIATE_TEST_SUITE_P(Others, FailedSettlement, testing::Bool());

TEST_P(FailedSettlement, GivenUpLeavesBasketStockAndNumberAndCanBeDoneAgain) {
    open();
    put(0, "2");
    put(1, "1");
    const QString before = totals();
    const QString inBasket = basket();
    const auto order = session().nextOrderNum;
    const QString shown = left(0) + u'/' + left(1);
    giveUpAlways();
    {
        waitForNobody();
        const OtherProgram other(books.path(), GetParam() ? kWrites : kReads);
        prompts.expectConfirm("购买总数量： 3\n总金额：37\n确认结算吗？", true);
        EXPECT_EQ(endOf([&] { buy->click("Command1"); }), u"");
    }
    EXPECT_EQ(totals(), before);
    EXPECT_EQ(basket(), inBasket);
    EXPECT_EQ(session().nextOrderNum, order);
    EXPECT_EQ(left(0) + u'/' + left(1), shown);
    prompts.expectMessage("已选购该产品！");
    choose(1);
    EXPECT_EQ(session().productTable->Fields("产品编号").text(), u"p2")
        << "the grid moves the cursor that is read";
    EXPECT_EQ(session().productTable->pendingCount() + session().clientTable->pendingCount(), 0);
    prompts.expectConfirm("购买总数量： 3\n总金额：37\n确认结算吗？", true);
    buy->click("Command1");
    EXPECT_EQ(books.stored("SELECT count(DISTINCT 订单号) || ' ' || count(*) FROM buyList"), u"1 2");
    EXPECT_EQ(basket(), u"");
}

TEST_F(FailedAction, AFullDiskLeavesTheOldCountAndTheProgramAlive) {
    start();
    drive->choose("count_stock1");
    drive->editCell("DataGrid1", 0, "实物数", "3");
    drive->click("Command2");
    const QString counted = books.stored("SELECT 产品编号, 实物数 FROM stock_Count_Bank ORDER BY rowid");
    drive->choose("management_client");
    {
        const FileSizeLimit full(1);
        const QString said = endOf([&] { drive->choose("count_stock1"); });
        EXPECT_TRUE(said.contains(u"已全部撤回")) << said.toStdString();
    }
    EXPECT_EQ(books.stored("SELECT 产品编号, 实物数 FROM stock_Count_Bank ORDER BY rowid"), counted);
    drive->choose("count_stock2");
    EXPECT_EQ(drive->cell("DataGrid1", 0, "实物数"), u"3");
}

TEST_F(FailedAction, TypedCountsThatCannotBeSavedStayAndTheStatusBarSaysSo) {
    start();
    drive->choose("count_stock1");
    drive->editCell("DataGrid1", 0, "实物数", "3");
    drive->editCell("DataGrid1", 1, "亏_盈", "少");
    {
        const FileSizeLimit full(1);
        EXPECT_EQ(endOf([&] { drive->click("Command2"); }), u"done");
    }
    EXPECT_TRUE(status().contains("没有保存")) << status().toStdString();
    EXPECT_EQ(drive->cell("DataGrid1", 0, "实物数"), u"3");
    EXPECT_EQ(session().stock_Count_Bank->pendingCount(), 2);
    drive->click("Command2");
    EXPECT_EQ(session().stock_Count_Bank->pendingCount(), 0);
    EXPECT_EQ(books.stored("SELECT sum(实物数) FROM stock_Count_Bank"), u"3.0");
}

TEST_F(FailedAction, EditsOfAMaintenanceWindowThatCannotBeSavedStayUnderASearchToo) {
    start();
    drive->choose("maintain_Data3");
    drive->editCell("DataGrid1", 0, "品名", "改一");
    drive->type("Text2", "p2");
    drive->click("Command6");
    drive->editCell("DataGrid1", 0, "规格", "改二");
    {
        const FileSizeLimit full(1);
        EXPECT_EQ(endOf([&] { drive->click("Command2"); }), u"done");
    }
    EXPECT_TRUE(status().contains("没有保存")) << status().toStdString();
    EXPECT_EQ(session().productTable->pendingCount(), 2);
    EXPECT_EQ(session().productTable->RecordCount(), 1) << "the search stays";
    drive->click("Command2");
    EXPECT_EQ(books.stored("SELECT count(*) FROM productTable WHERE 品名 = '改一' OR 规格 = '改二'"), u"2");
}

} // namespace
