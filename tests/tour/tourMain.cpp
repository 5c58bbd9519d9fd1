// tour PROGRAM_FOLDER OUT_FOLDER: drives the real program through the main job on the books in PROGRAM_FOLDER
// and leaves a screenshot of each stage in OUT_FOLDER.
#include "app/appearance.h"
#include "app/booksPlace.h"
#include "app/registry.h"
#include "app/shopApplication.h"
#include "controls/prompts.h"
#include "reports/reportForm.h"
#include "shell/MDIForm1.h"
#include "support/driver.h"
#include "support/startAtOnce.h"

#include <QAbstractButton>
#include <QAction>
#include <QDir>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QtTest/QTest>

#include <cstdio>

namespace {

/// Answers the file dialogs with a file of its folder.
class TourPrompts : public WindowPrompts {
public:
    explicit TourPrompts(QString folder)
        : m_folder(std::move(folder)) {}
    std::optional<QString> openFile(const QString& /*title*/, const QString& /*filter*/) override {
        return m_folder + QStringLiteral("/customers.xls");
    }
    std::optional<QString> input(const QString& /*text*/, const QString& /*title*/) override {
        return QStringLiteral("80");
    }
    std::optional<QString> anyFileToSave(const QString& /*title*/, const QString& /*proposal*/,
                                         const QString& /*filter*/) override {
        return m_folder + QStringLiteral("/backup.mdb");
    }

private:
    QString m_folder;
};

class Tour {
public:
    Tour(MDIForm1& main, QString folder)
        : m_main(main)
        , m_folder(std::move(folder)) {}

    void run() {
        Driver main(m_main);
        shoot(&m_main, "register");
        frequency();
        main.choose(QStringLiteral("maintain_product"));
        shoot(&m_main, "product-registration");
        main.click(QStringLiteral("Command8"));
        main.type(QStringLiteral("Text2(2)"), QStringLiteral("红松签字笔"));
        main.type(QStringLiteral("Text2(3)"), QStringLiteral("12支装"));
        main.type(QStringLiteral("Text2(4)"), QStringLiteral("上海"));
        main.type(QStringLiteral("Text2(6)"), QStringLiteral("盒"));
        main.type(QStringLiteral("Text2(7)"), QStringLiteral("60"));
        main.type(QStringLiteral("Text2(8)"), QStringLiteral("12.5"));
        main.type(QStringLiteral("Text2(10)"), QStringLiteral("18"));
        shoot(&m_main, "new-product");
        whenBoxOpens("product-saved");
        main.click(QStringLiteral("Command5"));
        main.choose(QStringLiteral("management_client"));
        main.type(QStringLiteral("Text2"), QStringLiteral("五金"));
        main.click(QStringLiteral("Command2"));
        shoot(&m_main, "customer-search");
        main.click(QStringLiteral("Command7"));
        purchase();
        shoot(&m_main, "register-after-sale");
        stock();
        orders();
        stockOut();
        count();
        import();
        maintenance();
        evaluation();
        statistics();
        drillDowns();
        main.choose(QStringLiteral("help"));
        shoot(m_main.host().window(QStringLiteral("manualFm1")), "user-guide");
    }

private:
    void purchase() {
        TopWindow* window = m_main.host().window(QStringLiteral("buyFm1"));
        window->resize(1240, 700);
        Driver buy(*window);
        const std::pair<int, const char*> lines[] = {{0, "2"}, {2, "5"}, {4, "1"}, {6, "3"}};
        for (const auto& [row, quantity] : lines) {
            buy.clickCell(QStringLiteral("DataGrid1"), row, QStringLiteral("品名"));
            buy.type(QStringLiteral("Text4(10)"), QString::fromLatin1(quantity));
            if (row == 4)
                buy.type(QStringLiteral("Text4(12)"), QStringLiteral("90"));
            if (row == 6)
                shoot(window, "line");
            whenBoxOpens(nullptr);
            buy.click(QStringLiteral("Command2"));
        }
        buy.click(QStringLiteral("Command9"));
        shoot(window, "basket");
        buy.click(QStringLiteral("Command11"));
        whenBoxOpens("settlement-question");
        buy.click(QStringLiteral("Command1"));
        shoot(window, "after-settlement");
        buy.click(QStringLiteral("Command4"));
        QCoreApplication::processEvents();
    }

    TopWindow* window(const char* name) { return m_main.host().window(QString::fromLatin1(name)); }

    void stock() {
        Driver main(m_main);
        main.choose(QStringLiteral("show_stock"));
        shoot(&m_main, "stock-list");
        main.click(QStringLiteral("Toolbar1(3)"));
        Driver search(*window("searchFm1"));
        search.clickItem(QStringLiteral("List1"), QStringLiteral("品名"));
        search.type(QStringLiteral("Text2"), QStringLiteral("红"));
        shoot(window("searchFm1"), "search");
        search.click(QStringLiteral("Command1"));
        shoot(&m_main, "stock-found");
        main.click(QStringLiteral("Toolbar1(4)"));
        main.click(QStringLiteral("Toolbar1(6)"));
        Driver order(*window("orderFm1"));
        order.clickItem(QStringLiteral("List1"), QStringLiteral("数量"));
        shoot(window("orderFm1"), "sort");
        order.click(QStringLiteral("Command1"));
        shoot(&m_main, "stock-sorted");
        period();
        main.choose(QStringLiteral("show_stock"));
        main.click(QStringLiteral("Command5"));
        shoot(window("stockFm3"), "one-product");
        window("stockFm3")->close();
        main.choose(QStringLiteral("show_stock3"));
        for (int i = 0; i < 28; ++i)
            main.click(QStringLiteral("Command3(0)"));
        shoot(&m_main, "shortfall");
        main.choose(QStringLiteral("show_stock"));
        report();
    }

    /// "=" the last year but one that has lines, in the dialog that stands open.
    void pickAYear() {
        Driver time(*window("timeDefineFm2"));
        const QStringList years = time.entries(QStringLiteral("Combo1"));
        time.pick(QStringLiteral("Combo1"), years.at(years.size() - 2));
        time.click(QStringLiteral("Option5"));
    }

    void period() {
        Driver main(m_main);
        main.choose(QStringLiteral("whole_show_product"));
        main.click(QStringLiteral("Toolbar1(2)"));
        pickAYear();
        shoot(window("timeDefineFm2"), "period");
        Driver(*window("timeDefineFm2")).click(QStringLiteral("Command1"));
        shoot(&m_main, "stock-in-of-a-year");
    }

    void orders() {
        Driver main(m_main);
        main.choose(QStringLiteral("maintain_order"));
        main.click(QStringLiteral("Command1(3)"));
        main.clickCell(QStringLiteral("DataGrid2"), main.rows(QStringLiteral("DataGrid2")) - 1,
                       QStringLiteral("订单号"));
        main.clickCell(QStringLiteral("DataGrid1"), 1, QStringLiteral("品名"));
        main.type(QStringLiteral("Text4(10)"), QStringLiteral("3"));
        shoot(&m_main, "order-changed");
        whenBoxOpens("order-saved");
        main.click(QStringLiteral("Command3"));
        main.clickCell(QStringLiteral("DataGrid1"), 0, QStringLiteral("品名"));
        whenBoxOpens("line-deletion-question");
        QTimer::singleShot(200, [this] { whenBoxOpens(nullptr); });
        main.click(QStringLiteral("Command4"));
        shoot(&m_main, "line-deleted");
    }

    void stockOut() {
        Driver main(m_main);
        main.choose(QStringLiteral("no_Sales_stock1"));
        main.clickCell(QStringLiteral("DataGrid1"), main.rows(QStringLiteral("DataGrid1")) - 2,
                       QStringLiteral("品名"));
        main.click(QStringLiteral("Command5"));
        Driver dialog(*window("stock_ReturnFm3"));
        dialog.type(QStringLiteral("Text6(0)"), QStringLiteral("2"));
        dialog.type(QStringLiteral("Text6(2)"), QStringLiteral("包装破损"));
        shoot(&m_main, "return");
        shoot(window("stock_ReturnFm3"), "return-dialog");
        whenBoxOpens("return-question");
        dialog.click(QStringLiteral("Command1"));
        shoot(&m_main, "return-booked");
    }

    void count() {
        Driver main(m_main);
        main.choose(QStringLiteral("count_stock1"));
        main.click(QStringLiteral("Command1(0)"));
        const std::pair<int, const char*> found[] = {{0, "149"}, {1, "32"}, {2, "12"}};
        for (const auto& [row, quantity] : found)
            main.editCell(QStringLiteral("DataGrid1"), row, QStringLiteral("实物数"),
                          QString::fromLatin1(quantity));
        main.editCell(QStringLiteral("DataGrid1"), 0, QStringLiteral("亏_盈"), QStringLiteral("亏1"));
        main.editCell(QStringLiteral("DataGrid1"), 2, QStringLiteral("亏_盈"), QStringLiteral("盈2"));
        main.click(QStringLiteral("Command2"));
        shoot(&m_main, "stock-count");
        main.click(QStringLiteral("Toolbar1(7)"));
        TopWindow* form = window("showprint_rs17");
        form->resize(1280, 800);
        shoot(form, "stock-count-report");
        form->close();
    }

    void import() {
        Driver main(m_main);
        main.choose(QStringLiteral("Input_Data1"));
        Driver form(*window("FileInputFm2"));
        form.click(QStringLiteral("Command7(2)"));
        form.clickItem(QStringLiteral("List5"), QStringLiteral("客户资料"));
        form.click(QStringLiteral("Command6"));
        for (const char* column : {"客户编号", "联系人", "电话", "单位名称", "地址", "地区", "行业"}) {
            form.clickItem(QStringLiteral("List1"), QString::fromUtf8(column));
            form.click(QStringLiteral("Command2(0)"));
            form.clickItem(QStringLiteral("List4"), QString::fromUtf8(column));
            form.click(QStringLiteral("Command3(0)"));
        }
        shoot(window("FileInputFm2"), "import-pairing");
        QTimer::singleShot(50, [this] {
            pressBox("import-question");
            whenBoxOpens("import-done");
        });
        form.click(QStringLiteral("Command4"));
        QCoreApplication::processEvents();
        shoot(window("FileInputFm3"), "import-result");
        Driver(*window("FileInputFm3")).click(QStringLiteral("Command3"));
        QCoreApplication::processEvents();
    }

    void maintenance() {
        Driver main(m_main);
        main.choose(QStringLiteral("maintain_Data1"));
        main.editCell(QStringLiteral("DataGrid1"), 1, QStringLiteral("电话"), QStringLiteral("021-55512345"));
        shoot(&m_main, "maintenance");
        main.click(QStringLiteral("Command3"));
        whenBoxOpens("backup");
        main.choose(QStringLiteral("dataBackup1"));
    }

    /// The view in front; the evaluation may stand hidden behind it with boxes of the same names.
    Driver view() { return Driver(*m_main.host().active()); }

    void evaluation() {
        Driver main(m_main);
        main.choose(QStringLiteral("data_statistic1"));
        shoot(&m_main, "evaluation");
        main.click(QStringLiteral("Toolbar1(2)"));
        pickAYear();
        Driver(*window("timeDefineFm2")).click(QStringLiteral("Command1"));
        shoot(&m_main, "evaluation-of-a-year");
        main.click(QStringLiteral("Toolbar1(4)"));
        main.choose(QStringLiteral("proporation_analysis1"));
        shoot(&m_main, "best-customers");
        page("print_rs8", "best-customers-report");
    }

    void statistics() {
        Driver main(m_main);
        main.choose(QStringLiteral("count_season"));
        shoot(&m_main, "turnover");
        page("print_rs_statistic", "turnover-report");
        main.choose(QStringLiteral("statistic_achievement"));
        shoot(&m_main, "salespeople");
        view().clickCell(QStringLiteral("DataGrid1"), 1,
                         QStringLiteral("业务员编号")); // the first has no number
        view().click(QStringLiteral("Command4"));
        shoot(&m_main, "customers-of-a-salesperson");
        main.choose(QStringLiteral("distribution_analysis1"));
        shoot(window("clientPlaceFm1"), "regions");
        window("clientPlaceFm1")->close();
    }

    void drillDowns() {
        Driver main(m_main);
        main.choose(QStringLiteral("data_statistic1"));
        view().clickCell(QStringLiteral("DataGrid1"), 0, QStringLiteral("客户编号"));
        main.choose(QStringLiteral("statistic_one_client"));
        shoot(&m_main, "one-customer-statistic");
        page("print_rs_single", "one-customer-statistic-report");
        main.choose(QStringLiteral("show_one_client1"));
        shoot(&m_main, "one-customer-purchases");
        page("showprint_rs6", "one-customer-purchases-report");
        main.choose(QStringLiteral("show_one_client2"));
        Driver orders(*window("order_Form_NumFm1"));
        shoot(window("order_Form_NumFm1"), "choice-of-an-order");
        orders.click(QStringLiteral("Command1"));
        shoot(&m_main, "one-order");
        page("showprint_rs22", "one-order-report");
        sales();
        registerSales();
    }

    void sales() {
        Driver main(m_main);
        main.choose(QStringLiteral("show_sales"));
        shoot(&m_main, "sales");
        page("print_rs2", "sales-report");
        view().click(QStringLiteral("orderStatistic"));
        shoot(window("statisticFm5"), "what-orders-come-to");
        Driver orders(*window("statisticFm5"));
        orders.click(QStringLiteral("print"));
        pageShown("print_rs_order", "what-orders-come-to-report");
        orders.click(QStringLiteral("return"));
        QCoreApplication::processEvents();
        view().click(QStringLiteral("Command3"));
        shoot(&m_main, "one-product-sales");
        page("showprint_rs_temp", "one-product-sales-report");
        main.choose(QStringLiteral("show_sales"));
        view().click(QStringLiteral("Command4"));
        shoot(&m_main, "one-product-customers");
        page("showprint_rs5", "one-product-customers-report");
    }

    void registerSales() {
        Driver(m_main).choose(QStringLiteral("management_client"));
        for (QAction* action : m_main.host().active()->findChildren<QAction*>())
            if (action->text() == u"产品销售显示")
                action->trigger();
        shoot(window("goodsSalesFm1"), "sales-window");
        window("goodsSalesFm1")->close();
    }

    /// Before the sale of today, whose month would have no other customer.
    void frequency() {
        Driver main(m_main);
        main.choose(QStringLiteral("buy_frequence"));
        TopWindow* form = window("buy_FrequenceFm1");
        form->resize(1240, 620);
        shoot(form, "frequency");
        Driver(*form).clickCell(QStringLiteral("DataGrid3"), 0, QStringLiteral("2"));
        shoot(&m_main, "customers-of-an-interval");
        form->close();
    }

    /// The report that the view in front prints.
    void page(const char* report, const char* name) {
        Driver(m_main).click(QStringLiteral("Toolbar1(7)"));
        pageShown(report, name);
    }

    void pageShown(const char* report, const char* name) {
        TopWindow* form = window(report);
        form->resize(1280, 800);
        shoot(form, name);
        form->close();
        QCoreApplication::processEvents();
    }

    void report() {
        Driver main(m_main);
        main.click(QStringLiteral("Toolbar1(7)"));
        TopWindow* form = window("print_rs3");
        form->resize(1280, 800);
        shoot(form, "report");
        Driver report(*form);
        report.pick(QStringLiteral("Combo1"), QStringLiteral("品名方框"));
        for (int i = 0; i < 6; ++i)
            report.click(QStringLiteral("Command9"));
        static_cast<ReportForm*>(form)->setFont(&ReportLayout::titleFont, {QStringLiteral("宋体"), 24, true});
        report.click(QStringLiteral("Command4(3)"));
        shoot(form, "report-changed");
        static_cast<ReportForm*>(form)->exportPdf(m_folder + QStringLiteral("/stock-list.pdf"));
        form->close();
    }

    /// Photographs the next message box, if a name is given, and presses the one that goes on. A machine with
    /// other work is given time.
    void whenBoxOpens(const char* name, int looks = 200) {
        QTimer::singleShot(50, [this, name, looks] {
            if (qobject_cast<QMessageBox*>(QApplication::activeModalWidget()) || looks == 0)
                pressBox(name);
            else
                whenBoxOpens(name, looks - 1);
        });
    }

    void pressBox(const char* name) {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box)
            return std::exit(3);
        if (name)
            shoot(box, name);
        // The one that goes on: where something would be lost, the default button is the other.
        for (QAbstractButton* button : box->buttons())
            if (const auto role = box->buttonRole(button);
                role == QMessageBox::AcceptRole || role == QMessageBox::YesRole)
                return QTest::mouseClick(button, Qt::LeftButton);
        std::exit(3);
    }

    void shoot(QWidget* widget, const char* name) {
        QCoreApplication::processEvents();
        const QString path = QStringLiteral("%1/%2.png").arg(m_folder, QString::fromLatin1(name));
        if (!widget->grab().save(path))
            std::exit(2);
        std::printf("%s\n", qUtf8Printable(path));
    }

    MDIForm1& m_main;
    QString m_folder;
};

} // namespace

int main(int argc, char** argv) {
    ShopApplication application(argc, argv);
    setAppearance(application);
    application.setQuitOnLastWindowClosed(false);
    const QStringList words = application.arguments();
    if (words.size() != 3)
        return 2;
    QDir().mkpath(words[2]);
    Session session(words[1] + u'/' + databaseFileName());
    session.appPath = words[1];
    TourPrompts prompts(words[1]);
    MDIForm1 main(session, prompts);
    registerAll(main, prompts);
    main.show();
    // The pictures are of one size, however small the screen behind them is.
    main.setWindowState(Qt::WindowNoState);
    main.resize(1280, 720);
    startAtOnce(main);
    Tour(main, words[2]).run();
    return 0;
}
