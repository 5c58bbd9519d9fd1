// What a screen reader is told of a grid, and that it may look on while rows come and go.
#include "controls/dataGrid.h"
#include "support/readerSwitch.h"
#include "support/shopWindow.h"

#include <QAccessible>
#include <QApplication>
#include <QFile>
#include <QtTest/QTest>

namespace {

/// Notes what a screen reader hears, as one that is attached.
class Listener {
public:
    Listener() {
        s_heard.clear();
        setReaderAttached(true);
        s_before = QAccessible::installUpdateHandler(hear);
    }
    ~Listener() {
        QAccessible::installUpdateHandler(s_before);
        setReaderAttached(false);
    }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    static QStringList take(QAccessible::Event type) {
        QStringList said;
        for (const auto& [heard, name] : s_heard)
            if (heard == type)
                said << name;
        s_heard.clear();
        return said;
    }

private:
    static void hear(QAccessibleEvent* event) {
        QAccessibleInterface* of = event->accessibleInterface();
        s_heard.emplace_back(event->type(), of && of->isValid() ? of->text(QAccessible::Name) : QString());
    }
    static inline std::vector<std::pair<QAccessible::Event, QString>> s_heard;
    static inline QAccessible::UpdateHandler s_before = nullptr;
};

class GridReader : public ShopWindow {
protected:
    void open(int clients) {
        for (int i = 1; i <= clients; ++i)
            books.addClient(QString::number(i), "单位" + QString::number(i), i == 2 ? "" : "联系人");
        start();
        QApplication::setActiveWindow(main.get());
        grid = main->host().active()->findChild<DataGrid*>("DataGrid1");
    }
    QAccessibleInterface* table() { return QAccessible::queryAccessibleInterface(grid); }
    QAccessibleInterface* cell(int row, const char* column) {
        return table()->tableInterface()->cellAt(row,
                                                 grid->recordset()->fieldIndex(QString::fromUtf8(column)));
    }
    /// Looks at everything as a reader that wants to know all; of a table at its first and last cells.
    static int look(QAccessibleInterface* node, int depth = 0) {
        if (!node || !node->isValid() || depth > 20)
            return 0;
        node->text(QAccessible::Name);
        node->text(QAccessible::Value);
        node->text(QAccessible::Description);
        node->rect();
        node->state();
        node->parent();
        int seen = 1;
        const int count = node->childCount();
        constexpr int ends = 200;
        for (int i = 0; i < count; ++i)
            if (i < ends || i >= count - ends)
                seen += look(node->child(i), depth + 1);
        node->focusChild();
        return seen;
    }
    int lookAtAll() { return look(QAccessible::queryAccessibleInterface(main.get())); }

    Listener listener;
    DataGrid* grid = nullptr;
};

TEST_F(GridReader, ACellSaysItsColumnItsTextAndItsRow) {
    open(3);
    EXPECT_EQ(cell(0, "单位名称")->text(QAccessible::Name), u"单位名称：单位1");
    EXPECT_EQ(cell(1, "联系人")->text(QAccessible::Name), u"联系人：空");
    EXPECT_EQ(cell(1, "联系人")->text(QAccessible::Description), u"第 2 行，共 3 行");
    EXPECT_EQ(cell(0, "消费合计")->text(QAccessible::Name), u"消费合计：0");
    EXPECT_EQ(cell(0, "单位名称")->role(), QAccessible::Cell);
    EXPECT_EQ(table()->role(), QAccessible::Table);
    EXPECT_EQ(table()->text(QAccessible::Name), u"数据表");
}

TEST_F(GridReader, TheCurrentCellIsAnnouncedWhenTheGridIsEnteredAndWithEveryArrow) {
    open(3);
    drive->clickCell("DataGrid1", 0, "单位名称");
    QCoreApplication::processEvents();
    Listener::take(QAccessible::Focus);
    grid->setFocus();
    QCoreApplication::processEvents();
    EXPECT_EQ(Listener::take(QAccessible::Focus), QStringList({"数据表", "单位名称：单位1"}));
    QTest::keyClick(grid, Qt::Key_Right);
    EXPECT_EQ(Listener::take(QAccessible::Focus), QStringList{"联系人：联系人"});
}

TEST_F(GridReader, ARowThatAMoveButtonChoosesIsSelectedForTheReader) {
    open(3);
    drive->click("Command1(0)");
    Listener::take(QAccessible::SelectionAdd);
    drive->click("Command1(2)");
    EXPECT_EQ(Listener::take(QAccessible::SelectionAdd).size(), 1);
}

TEST_F(GridReader, AnUnsavedCellSaysSo) {
    books.addClient("1", "单位1");
    start();
    main->host().show("maintainFm1");
    grid = main->host().active()->findChild<DataGrid*>("DataGrid1");
    EXPECT_EQ(cell(0, "单位名称")->text(QAccessible::Name), u"单位名称：单位1");
    drive->editCell("DataGrid1", 0, "单位名称", "新名");
    EXPECT_EQ(cell(0, "单位名称")->text(QAccessible::Name), u"单位名称：新名，没有保存");
}

TEST_F(GridReader, LooksOnWhileRowsComeGoAreFilteredSortedAndReloaded) {
    open(30);
    EXPECT_GT(lookAtAll(), 100);
    const RecordsetPtr clients = session().clientTable;
    // A reader keeps what it has been given, whatever becomes of it.
    QList<QAccessible::Id> kept;
    for (int i = 0; i < table()->childCount(); ++i)
        kept << QAccessible::uniqueId(table()->child(i));
    const std::function<void()> changes[] = {
        [&] { clients->setFilter("客户编号 = '7'"); },
        [&] { clients->setFilter("客户编号 = 'none'"); },
        [&] { clients->clearFilter(); },
        [&] { clients->setSort("单位名称 Desc"); },
        [&] { clients->MoveLast(); },
        [&] { clients->Delete(); },
        [&] { clients->MoveFirst(); },
        [&] { clients->Delete(); },
        [&] {
            clients->AddNew();
            clients->Fields("客户编号").setValue(QStringLiteral("99"));
            clients->Update();
        },
        [&] {
            clients->AddNew();
            clients->CancelUpdate();
        },
        [&] { clients->Requery(); },
        [&] { session().reopen(session().clientTable, "Select * From clientTable"); },
        [&] { main->host().active()->activate(); },
        [&] { main->host().show("userInfoFm1"); },
        [&] { main->host().show("dataInputFm1"); }};
    for (const auto& change : changes) {
        change();
        for (const QAccessible::Id id : kept)
            if (QAccessibleInterface* each = QAccessible::accessibleInterface(id); each && each->isValid())
                each->text(QAccessible::Name);
        EXPECT_GT(lookAtAll(), 100);
        QCoreApplication::processEvents();
    }
}

TEST_F(GridReader, LooksOnWhileViewsAndWindowsComeAndGo) {
    open(3);
    for (const QString& view : main->host().viewNames()) {
        main->host().show(view);
        EXPECT_GT(lookAtAll(), 10) << view.toStdString();
        QCoreApplication::processEvents();
    }
    main->host().show("dataInputFm1");
    grid = main->host().active()->findChild<DataGrid*>("DataGrid1");
    for (const char* name : {"birthdayFm1", "lapsedFm1", "manualFm1"}) {
        main->host().openWindow(name, ViewHost::MainWindow::Stays);
        EXPECT_GT(look(QAccessible::queryAccessibleInterface(window(name))), 10) << name;
        window(name)->close();
        QCoreApplication::processEvents();
        EXPECT_GT(lookAtAll(), 10) << name;
    }
}

qint64 peakMemory() {
    QFile status("/proc/self/status");
    EXPECT_TRUE(status.open(QIODevice::ReadOnly));
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmHWM:"))
            return line.mid(6).simplified().split(' ').first().toLongLong() * 1024;
    return 0;
}

TEST_F(GridReader, OfAMillionRowsKnowsThePlaceOfEveryCellAndListsNoneOfThem) {
    constexpr int rows = 1'000'000;
    open(1);
    ColumnStore numbers;
    numbers.info = ColumnInfo::fromDeclaration("数量", "REAL");
    numbers.loaded = true;
    numbers.numbers.assign(rows, 1);
    std::vector<ColumnStore> columns(10, numbers);
    auto recordset = std::make_shared<Recordset>(session().cn);
    recordset->OpenPicture(std::make_shared<TableImage>(std::move(columns)));
    DataGrid large(prompts);
    large.setObjectName("large");
    large.resize(600, 400);
    large.show();
    QAccessibleInterface* before = QAccessible::queryAccessibleInterface(&large);
    ASSERT_NE(before, nullptr);
    large.bind(recordset, {});
    const qint64 memory = peakMemory();
    QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(&large);
    EXPECT_EQ(reader->tableInterface()->rowCount(), rows);
    EXPECT_GE(reader->childCount(), rows * 10);
    QAccessibleInterface* last = reader->tableInterface()->cellAt(rows - 1, 9);
    ASSERT_NE(last, nullptr);
    EXPECT_EQ(last->text(QAccessible::Description), u"第 1000000 行，共 1000000 行");
    EXPECT_EQ(reader->child(reader->indexOfChild(last)), last);
    large.selectAll();
    large.clearSelection();
    large.setFocus();
    recordset->MoveLast();
    recordset->setSort("数量 Desc");
    recordset->setFilter("数量 = 2");
    recordset->clearFilter();
    EXPECT_LT(peakMemory() - memory, qint64(150) << 20) << "bytes of a list of cells";
}

} // namespace
