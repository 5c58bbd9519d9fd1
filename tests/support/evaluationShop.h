#pragma once

#include "shell/viewHost.h"
#include "support/shopWindow.h"

/// A shop with three customers, their salespeople and lines in two years, and the ways to its statistics.
class EvaluationShop : public ShopWindow {
protected:
    /// Customer 1 buys for 60 (2003-6-1, 2004-3-5), 2 for 30 (2004-1-31, 2004-5-20), 3 for 10 (2004-5-21).
    void fill() {
        const std::tuple<const char*, const char*, const char*> clients[] = {
            {"1", "北京", "甲"}, {"2", "上海", "甲"}, {"3", "上海", "乙"}};
        for (const auto& [number, region, clerk] : clients) {
            books.addClient(QString::fromUtf8(number), "单位" + QString::fromUtf8(number),
                            "联系人" + QString::fromUtf8(number));
            books.changeBehind(
                QStringLiteral("UPDATE clientTable SET 地区 = '%1', 行业 = '纸', 业务员编号 = '%2' "
                               "WHERE 客户编号 = '%3'")
                    .arg(QString::fromUtf8(region), QString::fromUtf8(clerk), QString::fromUtf8(number)));
        }
        books.addProduct("p1", "纸", 100, 4, 10);
        books.addLine("9001", "1", "p1", "2003-06-01", 2, 20, 4);
        books.addLine("9002", "1", "p1", "2004-03-05", 4, 40, 4);
        books.addLine("9003", "2", "p1", "2004-01-31", 1, 10, 4);
        books.addLine("9004", "2", "p1", "2004-05-20", 2, 20, 4);
        books.addLine("9005", "3", "p1", "2004-05-21", 1, 10, 4);
    }
    void open() {
        start();
        drive->choose("data_statistic1");
    }
    /// Confirms the period "= year" in the dialog that stands open.
    void confirmYear(const char* year) {
        Driver dialog(*window("timeDefineFm2"));
        dialog.pick("Combo1", QString::fromUtf8(year));
        dialog.click("Option5");
        dialog.click("Command1");
    }
    void choosePeriod(const char* year) {
        drive->click("Toolbar1(2)");
        ASSERT_NE(window("timeDefineFm2"), nullptr);
        confirmYear(year);
    }
    /// Answers one of the six questions (of its menu command) by a text.
    void cut(const char* command, const char* prompt, const char* title, std::optional<QString> answer) {
        prompts.expectInput(QString::fromUtf8(prompt), QString::fromUtf8(title), std::move(answer));
        drive->choose(QString::fromUtf8(command));
    }
    void cutByTurnover(const char* percent) {
        cut("proporation_analysis1", "占总销售额百分率的客户数，请输入1到100的整数！",
            "按销售额的百分率确定客户数", QString::fromUtf8(percent));
    }
    void cutByRank(const char* number) {
        cut("proporation_analysis2", "最高购买金额客户数，请输入1到100的整数！", "按购买金额确定客户数",
            QString::fromUtf8(number));
    }
    /// The view in front: the evaluation stays in the main window, hidden, with boxes of the same names.
    Driver view() { return Driver(*main->host().active()); }
    /// Customer numbers in the grid of the view in front, in its order.
    QString clients() {
        QStringList numbers;
        for (int row = 0; row < view().rows("DataGrid1"); ++row)
            numbers << view().cell("DataGrid1", row, "客户编号");
        return numbers.join(u' ');
    }
    QString inFront() { return main->host().active() ? main->host().active()->name() : QString(); }
    /// Text of a label or box of the view in front, hidden ones too.
    QString of(const char* control) {
        return main->host().controlText(inFront(), QString::fromUtf8(control));
    }
    /// Turnover, margin, quantity and customers with their shares.
    QString indicators() {
        QStringList all;
        for (const char* each :
             {"Label6", "Label7", "Label10", "Label11", "Label14", "Label15", "Label18", "Label19"})
            all << of(each);
        return all.join(u' ');
    }
    QString period() { return of("Text2") + u'/' + of("Text3"); }
    /// Sells a number of the product to a customer, at 10 each.
    void sell(const char* client, const char* quantity) {
        drive->choose("management_client");
        if (view().rows("DataGrid1") == 0)
            view().click("Command4"); // the whole table again
        for (int row = 0; row < view().rows("DataGrid1"); ++row)
            if (view().cell("DataGrid1", row, "客户编号") == QString::fromUtf8(client))
                view().clickCell("DataGrid1", row, "客户编号");
        view().click("Command7");
        ASSERT_NE(window("buyFm1"), nullptr);
        Driver buy(*window("buyFm1"));
        buy.clickCell("DataGrid1", 0, "品名");
        buy.type("Text4(10)", quantity);
        prompts.expectMessage("已记入购物表！");
        buy.click("Command2");
        prompts.expectConfirm(QStringLiteral("购买总数量： %1\n总金额：%2\n确认结算吗？")
                                  .arg(QString::fromUtf8(quantity))
                                  .arg(10 * QString::fromUtf8(quantity).toInt()),
                              true);
        buy.click("Command1");
        window("buyFm1")->close();
    }
};
