#pragma once

#include "support/shopWindow.h"

/// The purchase window on a customer and three products, the last one sold out.
class Purchase : public ShopWindow {
protected:
    Purchase() {
        books.addClient("7", "红木行", "王平");
        books.addProduct("p1", "打印纸", 10, 2, 5);
        books.addProduct("p2", "硒鼓", 3, 20, 30, "90");
        books.addProduct("p3", "墨盒", 0, 1, 2);
    }
    void open() {
        start();
        drive->click("Command7");
        ASSERT_NE(window("buyFm1"), nullptr);
        buy = std::make_unique<Driver>(*window("buyFm1"));
    }
    void choose(int row) { buy->clickCell("DataGrid1", row, "品名"); }
    QString line(int box) { return buy->text(QStringLiteral("Text4(%1)").arg(box)); }
    void type(int box, const QString& text) { buy->type(QStringLiteral("Text4(%1)").arg(box), text); }
    void confirm() {
        prompts.expectMessage("已记入购物表！");
        buy->click("Command2");
    }
    void put(int row, const QString& quantity) {
        choose(row);
        type(10, quantity);
        confirm();
    }
    QString left(int row) { return buy->cell("DataGrid1", row, "数量"); }
    QString basket() {
        return books.stored("SELECT 产品编号, 数量, 折扣, 实付 FROM buyList2 ORDER BY rowid");
    }
    std::unique_ptr<Driver> buy;
};
