#include "latencyBench.h"

#include "app/appearance.h"
#include "app/registry.h"
#include "controls/dataGrid.h"
#include "controls/prompts.h"
#include "data/books.h"
#include "data/warmUp.h"
#include "plainSqlite.h"
#include "shell/MDIForm1.h"
#include "support/driver.h"
#include "support/sampleData.h"
#include "support/startAtOnce.h"

#include <QApplication>
#include <QFile>

#include <array>

namespace {

constexpr int kRounds = 3;

/// Says yes to everything.
class Yes : public WindowPrompts {
public:
    void tell(const QString& /*text*/, const QString& /*title*/) override {}
    bool confirm(const QString& /*text*/, const QString& /*title*/) override { return true; }
    bool ask(const QString& /*text*/, const QString& /*title*/) override { return true; }
    bool confirmLoss(const QString& /*text*/, const QString& /*loss*/, const QString& /*title*/) override {
        return true;
    }
    std::optional<bool> askOrLeave(const QString& /*text*/, const QString& /*title*/) override {
        return true;
    }
};

/// A worker at the windows of a shop. Every step runs until its picture stands; only those with a name are
/// timed.
class Worker {
public:
    Worker(MDIForm1& main, bool first)
        : m_main(main)
        , m_shop(main)
        , m_suffix(first ? "-first" : "-again") {}

    void workThrough() {
        customers();
        sale();
        orders();
        stock();
        lists();
        tables();
    }

private:
    void timed(const char* name, const std::function<void()>& step) {
        const double time = milliseconds([&] {
            step();
            QCoreApplication::processEvents();
        });
        say((QByteArray(name) + m_suffix).constData(), time);
    }
    void choose(const char* command) { m_shop.choose(QString::fromLatin1(command)); }

    void customers() {
        timed("register:show", [&] { m_main.host().show(QStringLiteral("dataInputFm1")); });
        m_shop.type("Text2", QStringLiteral("1050"));
        timed("register:search", [&] { m_shop.click("Command2"); });
        timed("register:whole", [&] { m_shop.click("Command4"); });
        timed("register:row", [&] { m_shop.clickCell("DataGrid1", 7, QStringLiteral("客户编号")); });
        timed("register:last", [&] { m_shop.click("Command1(3)"); });
        m_shop.click("Command1(0)");
        m_shop.type("Text3(3)", QStringLiteral("13800001111"));
        timed("register:save", [&] { m_shop.click("Command5"); });
        timed("register:add", [&] { m_shop.click("Command3"); });
        m_shop.type("Text3(1)", QStringLiteral("新客"));
        timed("register:save-new", [&] { m_shop.click("Command5"); });
        m_shop.type("Text2", QStringLiteral("107"));
        m_shop.click("Command2");
        timed("register:delete", [&] { m_shop.click("Command8"); });
        m_shop.click("Command4");
        m_shop.clickCell("DataGrid1", 7, QStringLiteral("客户编号"));
    }

    void sale() {
        timed("purchase:open", [&] { m_shop.click("Command7"); });
        Driver buy(*m_main.host().window(QStringLiteral("buyFm1")));
        const QString grid = QStringLiteral("DataGrid1");
        for (const int row : {3, 5})
            timed(row == 3 ? "purchase:product" : "purchase:second-product",
                  [&] { buy.clickCell(grid, row, QStringLiteral("产品编号")); });
        timed("purchase:quantity", [&] { buy.type("Text4(10)", QStringLiteral("1")); });
        timed("purchase:confirm", [&] { buy.click("Command2"); });
        buy.type("Text3", QStringLiteral("P1"));
        timed("purchase:search", [&] { buy.click("Command5"); });
        timed("purchase:whole", [&] { buy.click("Command10"); });
        timed("purchase:basket", [&] { buy.click("Command9"); });
        buy.click("Command11");
        timed("purchase:settle", [&] { buy.click("Command1"); });
        timed("purchase:back", [&] { buy.click("Command4"); });
    }

    void orders() {
        timed("orders:open", [&] { choose("maintain_order"); });
        timed("orders:choose", [&] { m_shop.clickCell("DataGrid2", 4, QStringLiteral("订单号")); });
        timed("orders:line", [&] { m_shop.clickCell("DataGrid1", 0, QStringLiteral("品名")); });
        m_shop.type("Text4(10)", QStringLiteral("2"));
        timed("orders:save", [&] { m_shop.click("Command3"); });
        timed("orders:last", [&] { m_shop.click("Command1(3)"); });
        const QString number =
            m_shop.cell("DataGrid2", m_shop.rows("DataGrid2") - 1, QStringLiteral("订单号"));
        m_shop.type("Text1", number);
        timed("orders:find", [&] { m_shop.click("Command6"); });
        m_shop.key("DataGrid2", Qt::Key_Return);
        timed("orders:delete-line", [&] { m_shop.click("Command4"); });
        m_shop.clickCell("DataGrid2", m_shop.rows("DataGrid2") - 2, QStringLiteral("订单号"));
        timed("orders:delete-order", [&] { m_shop.click("Command2"); });
    }

    void stock() {
        timed("stock-in:open", [&] { choose("maintain_product"); });
        m_shop.type("Text3", QStringLiteral("P1"));
        timed("stock-in:search", [&] { m_shop.key("Text3", Qt::Key_Return); });
        timed("stock-in:row", [&] { m_shop.clickCell("DataGrid1", 0, QStringLiteral("产品编号")); });
        timed("stock:open", [&] { choose("show_stock"); });
        timed("stock-ins:open", [&] { choose("whole_show_product"); });
        timed("stock-count:open", [&] { choose("count_stock1"); });
    }

    void lists() {
        timed("customers:open", [&] { choose("show_whole_client"); });
        timed("customers:sort-dialog", [&] { m_shop.click("Toolbar1(5)"); });
        {
            Driver sort(*m_main.host().window(QStringLiteral("orderFm1")));
            sort.clickItem("List1", QStringLiteral("单位名称"));
            timed("customers:sort", [&] { sort.click("Command1"); });
        }
        m_shop.click("Toolbar1(3)");
        {
            Driver search(*m_main.host().window(QStringLiteral("searchFm1")));
            search.clickItem("List1", QStringLiteral("单位名称"));
            search.type("Text2", QStringLiteral("北"));
            timed("customers:search", [&] { search.click("Command1"); });
        }
        timed("customers:whole", [&] { m_shop.click("Toolbar1(4)"); });
    }

    void tables() {
        timed("customer-table:open", [&] { choose("maintain_Data1"); });
        timed("line-table:open", [&] { choose("maintain_Data2"); });
        m_shop.editCell("DataGrid1", 2, QStringLiteral("数量"), QStringLiteral("3"));
        timed("line-table:save", [&] { m_shop.click("Command3"); });
        timed("line-table:last", [&] { m_shop.click("Command1(3)"); });
        timed("line-table:delete", [&] { m_shop.click("Command5"); });
        m_shop.type("Text2", QStringLiteral("1050"));
        timed("line-table:search", [&] { m_shop.key("Text2", Qt::Key_Return); });
        timed("product-table:open", [&] { choose("maintain_Data3"); });
        timed("register:back", [&] { choose("management_client"); });
    }

    MDIForm1& m_main;
    Driver m_shop;
    QByteArray m_suffix;
};

using Figures = QMap<QString, std::vector<double>>;

Figures figuresOf(const QString& path) {
    Figures figures;
    for (int i = 0; i < kRounds; ++i) {
        const auto said = childFigures(QStringLiteral("latency"), path);
        for (auto figure = said.begin(); figure != said.end(); ++figure)
            figures[figure.key()].push_back(figure.value());
    }
    return figures;
}

/// What it takes to write and flush the rows that a settlement of one line writes, by statements made by
/// hand.
double bareCommit(const QString& path) {
    PlainSqlite db(path);
    db.exec(QStringLiteral("PRAGMA journal_mode = TRUNCATE; PRAGMA synchronous = FULL"));
    std::vector<double> times;
    for (int i = 0; i < 9; ++i)
        times.push_back(milliseconds([&] {
            db.exec(QStringLiteral("BEGIN IMMEDIATE; INSERT INTO buyList (订单号, 数量) VALUES ('0', 1);"
                                   "UPDATE counterCode SET counterNum2 = counterNum2 + 1 WHERE rowid = 1;"
                                   "UPDATE clientTable SET 消费合计 = 1 WHERE rowid = 50;"
                                   "UPDATE productTable SET 数量 = 数量 - 0.25 WHERE rowid = 7; COMMIT"));
        }));
    return median(times);
}

} // namespace

void measureLatency(const QString& path) {
    setAppearance(*qApp);
    Session session(path);
    Yes prompts;
    MDIForm1 main(session, prompts);
    registerAll(main, prompts);
    main.resize(1366, 768);
    main.show();
    startAtOnce(main);
    QCoreApplication::processEvents();
    bool warm = false;
    ImageWarmer warmer(session.cn, columnsToWarm());
    warmer.onEnd = [&warm] { warm = true; };
    say("warming", milliseconds([&] {
            warmer.start();
            while (!warm)
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }));
    for (const bool first : {true, false})
        Worker(main, first).workThrough();
}

namespace {

constexpr double kMost[] = {0, 100, 150}; // milliseconds by size
constexpr double kMostTimes = 2;          // of an action's own figure in the small shop ...
constexpr double kMostMore = 30;          // ... and so many milliseconds more

/// One action's medians at the three sizes; whether one of them is more than a person shall wait.
bool noteAction(BenchReport& report, const QString& action, const std::array<double, 3>& times) {
    bool missed = false;
    for (std::size_t size = 1; size < times.size(); ++size)
        missed |= times[size] > kMost[size] || times[size] > kMostTimes * times[0] + kMostMore;
    report.note(QStringLiteral("%1 %2 %3 %4 %5")
                    .arg(action, -34)
                    .arg(times[0], 8, 'f', 1)
                    .arg(times[1], 8, 'f', 1)
                    .arg(times[2], 8, 'f', 1)
                    .arg(missed ? QStringLiteral("MISSED") : QString()));
    if (missed)
        report.miss();
    return missed;
}

} // namespace

void runLatencyBench(BenchReport& report, const QString& path, const QString& folder) {
    const QString paths[] = {folder + QStringLiteral("/waits20k.mdb"),
                             folder + QStringLiteral("/waits1m.mdb"),
                             folder + QStringLiteral("/waits5m.mdb")};
    makeSample(paths[0], SampleSize());
    QFile::copy(path, paths[1]);
    makeSample(paths[2], {500'000, 50'000, 5'000'000});
    Figures figures[3];
    std::array<double, 3> bare{};
    for (std::size_t size = 0; size < 3; ++size) {
        figures[size] = figuresOf(paths[size]);
        bare[size] = bareCommit(paths[size]);
        QFile::remove(paths[size]);
    }
    report.note(QStringLiteral("milliseconds until an action's picture stands, at 20,000, 1,000,000 and "
                               "5,000,000 lines (wanted: at most 100 and 150, and twice the first and 30)"));
    int missed = 0;
    for (auto figure = figures[0].begin(); figure != figures[0].end(); ++figure)
        missed += noteAction(report, figure.key(),
                             {median(figure.value()), median(figures[1].value(figure.key())),
                              median(figures[2].value(figure.key()))});
    report.note(
        QStringLiteral("%1 of %2 actions missed; a bare commit of the rows of a settlement: %3, %4, %5 ms")
            .arg(missed)
            .arg(figures[0].size())
            .arg(bare[0], 0, 'f', 1)
            .arg(bare[1], 0, 'f', 1)
            .arg(bare[2], 0, 'f', 1));
}
