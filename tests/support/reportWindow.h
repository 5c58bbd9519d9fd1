#pragma once

#include "reports/paperView.h"
#include "reports/reportForm.h"
#include "support/reportRows.h"
#include "support/shopWindow.h"

/// The program with a report open over invented rows.
class ReportWindow : public ShopWindow {
protected:
    /// Opens the report of the stock-in history over `count` rows, on the page of its last row.
    void openHistory(int count) {
        fillStockTable(books, "product_Bank", count);
        start();
        drive->choose("whole_show_product");
        drive->click("Toolbar1(7)");
        take("showprint_rs15");
    }
    void openStock(int count) {
        fillStockTable(books, "productTable", count);
        start();
        drive->choose("show_stock");
        drive->click("Toolbar1(7)");
        take("print_rs3");
    }
    void take(const char* name) {
        form = qobject_cast<ReportForm*>(window(name));
        ASSERT_NE(form, nullptr);
        report = std::make_unique<Driver>(*form);
    }
    PageRecording& preview() { return form->findChild<PaperSheet*>("Picture2")->recording(); }
    bool previewShows(const QString& text) {
        for (const PageRecording::Item& item : preview().items())
            if (item.font && item.text == text)
                return true;
        return false;
    }
    PageRecording::Item item(const QString& text) {
        for (const PageRecording::Item& each : preview().items())
            if (each.font && each.text == text)
                return each;
        ADD_FAILURE() << "not on the page: " << text.toStdString();
        return {};
    }
    QString pages() {
        return report->text("Text1(1)") + u' ' + report->text("Text1(0)") + u' ' + report->text("Text1(2)");
    }
    QString pdf(const char* name = "out.pdf") { return folder.filePath(QString::fromUtf8(name)); }

    QTemporaryDir folder;
    ReportForm* form = nullptr;
    std::unique_ptr<Driver> report;
};
