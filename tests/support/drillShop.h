#pragma once

#include "controls/dataGrid.h"
#include "reports/paperView.h"
#include "reports/reportForm.h"
#include "support/evaluationShop.h"

#include <QAction>
#include <QListWidget>
#include <QMenu>

/// The shop of the evaluation with a second product, and the ways down to one customer, order and product.
/// Customer 1 has order 9001 (2003-6-1) and 9002 (2004-3-5, of two products).
class DrillShop : public EvaluationShop {
protected:
    void fillTwoProducts() {
        fill();
        books.addProduct("p2", "笔", 50, 2, 5);
        books.changeBehind("UPDATE buyList SET 品名 = '纸'");
        books.addLine("9002", "1", "p2", "2004-03-05", 2, 10, 2);
        books.changeBehind("UPDATE buyList SET 品名 = '笔' WHERE 产品编号 = 'p2'");
    }
    void begin() {
        fillTwoProducts();
        start();
    }
    /// Runs an entry of the context menu of the grid in front, or of another window's list or grid.
    void chooseInMenu(QWidget& place, const char* caption) {
        for (QAction* action : place.findChildren<QAction*>())
            if (action->text() == QString::fromUtf8(caption))
                return action->trigger();
        FAIL() << "no entry " << caption;
    }
    void chooseInMenu(const char* caption) { chooseInMenu(*main->host().active(), caption); }
    /// The texts on the page of the report that is open, which is closed then; none where nothing is open.
    QStringList page(const char* report) {
        TopWindow* form = window(report);
        if (!form)
            return {};
        QStringList texts;
        for (const PageRecording::Item& item : form->findChild<PaperSheet*>("Picture2")->recording().items())
            if (item.font && item.text != u"|" && !item.text.trimmed().isEmpty())
                texts << item.text.trimmed();
        form->close();
        return texts;
    }
    /// A command of "营销管理" as the user comes to it: the menu has been open.
    void chooseBehindItsMenu(const char* command) {
        QMenu* menu = main->findChild<QAction*>("data_input")->menu();
        Q_EMIT menu->aboutToShow();
        Q_EMIT menu->aboutToHide();
        drive->choose(QString::fromUtf8(command));
    }
    /// The same behind the print button of the main window.
    QStringList print(const char* report) {
        drive->click("Toolbar1(7)");
        return page(report);
    }
    /// A column of the grid in front, from top to bottom.
    QString column(const char* name) {
        QStringList cells;
        for (int row = 0; row < view().rows("DataGrid1"); ++row)
            cells << view().cell("DataGrid1", row, QString::fromUtf8(name));
        return cells.join(u' ');
    }
    bool hidden(const char* name) {
        auto* grid = view().find<DataGrid>("DataGrid1");
        return grid->isColumnHidden(grid->recordset()->fieldIndex(QString::fromUtf8(name)));
    }
    /// Chooses a customer in the register or the customer view in front.
    void chooseClient(const char* number) { chooseRow("客户编号", number); }
    void chooseRow(const char* name, const char* value) {
        for (int row = 0; row < view().rows("DataGrid1"); ++row)
            if (view().cell("DataGrid1", row, QString::fromUtf8(name)) == QString::fromUtf8(value))
                return view().clickCell("DataGrid1", row, QString::fromUtf8(name));
        FAIL() << value << " is not in the grid";
    }
    /// Confirms the first or the given order in the dialog that is open.
    void confirmOrder(const char* order = nullptr) {
        ASSERT_NE(window("order_Form_NumFm1"), nullptr);
        Driver dialog(*window("order_Form_NumFm1"));
        if (order)
            dialog.clickItem("List1", QString::fromUtf8(order));
        dialog.click("Command1");
    }
    /// Texts of some labels of the view in front, parted by blanks.
    QString labels(std::initializer_list<const char*> names) {
        QStringList all;
        for (const char* name : names)
            all << of(name);
        return all.join(u' ');
    }
};

/// The same, at the view of all that was sold.
class SalesShop : public DrillShop {
protected:
    void open() {
        begin();
        drive->choose("show_sales");
    }
    QString figures() { return labels({"Label5", "Label7", "Label9", "Label11"}); }
    void search(const char* field, const char* value) {
        drive->click("Toolbar1(3)");
        ASSERT_NE(window("searchFm1"), nullptr);
        Driver dialog(*window("searchFm1"));
        dialog.clickItem("List1", QString::fromUtf8(field));
        dialog.type("Text2", QString::fromUtf8(value));
        dialog.click("Command1");
    }
    void sort(const char* field, const char* button = "Toolbar1(5)") {
        drive->click(QString::fromUtf8(button));
        ASSERT_NE(window("orderFm1"), nullptr);
        Driver dialog(*window("orderFm1"));
        dialog.clickItem("List1", QString::fromUtf8(field));
        dialog.click("Command1");
    }
    void count(std::optional<QString> answer) {
        prompts.expectInput("请输入产品编号：", "单项产品统计", std::move(answer));
        view().click("singleCount");
    }
};
