// Where the tab key goes, pressed as a user presses it.
#include "support/shopWindow.h"

#include <QtTest/QTest>

namespace {

class TabOrder : public ShopWindow {
protected:
    TabOrder() { books.addProduct("p1", "打印纸", 10, 2, 5); }
    /// The names of the widgets that have the focus at first and behind every press of the key.
    static QStringList tabs(QWidget* window, qsizetype count) {
        QStringList names;
        if (!window->focusWidget())
            QTest::keyClick(window, Qt::Key_Tab);
        for (; names.size() < count; QTest::keyClick(window->focusWidget(), Qt::Key_Tab))
            names << window->focusWidget()->objectName();
        return names;
    }
    static QStringList numbered(const char* name, int count) {
        QStringList names;
        for (int i = 0; i < count; ++i)
            names << QStringLiteral("%1(%2)").arg(QString::fromLatin1(name)).arg(i);
        return names;
    }
};

TEST_F(TabOrder, OfAStockOutGoesFromTheSearchToTheListTheFieldsAndTheMovement) {
    start();
    const QStringList order = QStringList{"Text4", "Command2", "Command3", "DataGrid1"} +
                              numbered("Command1", 4) + QStringList{"Text1", "Text3"} +
                              numbered("Text2", 11) + QStringList{"Command5"};
    for (const auto& [view, name] : {std::pair("stock_ReturnFm1", "stock_ReturnFm3"),
                                     {"stock_no_use_BankFm1", "stock_no_use_BankFm3"},
                                     {"stock_out_of_BankFm1", "stock_out_of_BankFm3"}}) {
        main->host().show(QString::fromUtf8(view));
        EXPECT_EQ(tabs(main.get(), order.size()), order) << view;
        drive->clickCell("DataGrid1", 0, "品名");
        drive->click("Command5");
        TopWindow* dialog = window(name);
        ASSERT_NE(dialog, nullptr) << name;
        const QStringList boxes = numbered("Text6", 3);
        EXPECT_EQ(tabs(dialog, 6), boxes + QStringList({"Command1", "Command2"}) + boxes.mid(0, 1)) << name;
        dialog->close();
    }
}

TEST_F(TabOrder, OfAMaintenanceWindowGoesFromTheSearchToTheTableAndItsCommands) {
    start();
    const std::pair<const char*, QStringList> views[] = {
        {"maintainFm1", {"Command3", "Command4", "Command5", "Command8"}},
        {"maintainFm2", {"Command3", "Command4", "Command5", "Command2"}},
        {"maintainFm3", {"Command2", "Command3", "Command4", "Command8"}}};
    for (const auto& [view, commands] : views) {
        main->host().show(QString::fromUtf8(view));
        const QStringList order =
            QStringList{"Text2", "Command6", "DataGrid1"} + numbered("Command1", 4) + commands;
        EXPECT_EQ(tabs(main.get(), order.size()), order) << view;
    }
}

} // namespace
