#include "reports/reportPage.h"
#include "support/reportRows.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using Item = PageRecording::Item;

class ReportPage : public testing::Test {
protected:
    Session& session() { return books.session(); }
    const RecordsetPtr& rows() { return session().product_Bank; }

    void open(int count, int pageSize = 40) {
        fillStockTable(books, "product_Bank", count);
        session().reopen(session().product_Bank, "Select * From product_Bank");
        rows()->setPageSize(pageSize);
    }
    bool draw(int pageIndex) {
        page.clear();
        const ReportDrawing drawing{report, layout, rows(), {"时间：a/b"}};
        ReportPageDrawing sheet(drawing, page);
        const bool full = sheet.drawTable(pageIndex);
        if (rows()->hasRows())
            sheet.drawPaperFooter(7);
        return full;
    }
    std::vector<Item> rules() const {
        std::vector<Item> found;
        std::copy_if(page.items().begin(), page.items().end(), std::back_inserter(found),
                     [](const Item& item) { return !item.font; });
        return found;
    }
    std::vector<Item> texts(const QString& text) const {
        std::vector<Item> found;
        std::copy_if(page.items().begin(), page.items().end(), std::back_inserter(found),
                     [&text](const Item& item) { return item.font && item.text == text; });
        return found;
    }
    Item only(const QString& text) const {
        const auto found = texts(text);
        EXPECT_EQ(found.size(), 1u) << text.toStdString();
        return found.empty() ? Item() : found.front();
    }

    TestBooks books;
    const ReportDescription& report = *findReport(u"showprint_rs15");
    ReportLayout layout = defaultLayout(report, "产 品 入 库 清 单");
    PageRecording page;
};

TEST_F(ReportPage, TheLayoutOpensWithItsDefaults) {
    EXPECT_EQ(layout.reportTitle, u"产 品 入 库 清 单");
    EXPECT_EQ(layout.charWidth, 3);
    EXPECT_EQ(layout.tableLeft, 18);
    EXPECT_EQ(layout.tableWidth, 250);
    EXPECT_EQ(layout.titleShift, 3);
    EXPECT_EQ(layout.titleTop, 10);
    EXPECT_EQ(layout.tableTop, 25);
    EXPECT_EQ(layout.headLeft, std::vector<double>{20});
    EXPECT_EQ(layout.headTop, std::vector<double>{20});
    EXPECT_EQ(layout.selectedBox, 1);
    EXPECT_EQ(layout.titleFont, (FontRecord{"黑体", 20, true}));
    EXPECT_EQ(layout.headFont, (FontRecord{"黑体", 12, true}));
    EXPECT_EQ(layout.fieldFont, (FontRecord{"黑体", 10, true}));
    EXPECT_EQ(layout.contentFont, (FontRecord{"宋体", 10, false}));
}

TEST_F(ReportPage, ARowIsAsHighAsALineOfItsFont) {
    EXPECT_NEAR(PaperFont(layout.contentFont).lineHeight(), 3.53, 0.01);
    EXPECT_NEAR(PaperFont(layout.fieldFont).lineHeight(), 4.14, 0.01);
}

TEST_F(ReportPage, TitleHeadLabelsAndRowsStandAtTheirMillimetres) {
    open(2);
    EXPECT_FALSE(draw(0));
    const double label = PaperFont(layout.fieldFont).lineHeight();
    const double pitch = PaperFont(layout.contentFont).lineHeight();
    const Item title = only("产 品 入 库 清 单");
    EXPECT_EQ(title.x, 118);
    EXPECT_EQ(title.y, 10);
    EXPECT_EQ(title.font->record(), layout.titleFont);
    const Item head = only("时间：a/b");
    EXPECT_EQ(head.x, 20);
    EXPECT_EQ(head.y, 20);
    EXPECT_EQ(rules().front().x, 18);
    EXPECT_EQ(rules().front().right, 268);
    EXPECT_EQ(rules().front().y, 25);
    const double bases[] = {20, 62, 94, 116, 138, 160, 182, 204, 216};
    EXPECT_EQ(only("日期").x, 19);
    EXPECT_EQ(only("日期").y, 25);
    const char* labels[] = {"产品编号", "品名", "规格", "产地", "厂家", "单价", "数量", "成本", "折扣"};
    for (int i = 0; i < 9; ++i)
        EXPECT_EQ(texts(QString::fromUtf8(labels[i])).front().x, 18 + bases[i] + 2) << labels[i];
    EXPECT_EQ(only("P1").x, 40);
    EXPECT_NEAR(only("P1").y, 25 + label, 1e-9);
    EXPECT_NEAR(only("P2").y, 25 + label + pitch, 1e-9);
    EXPECT_EQ(only("2004-1-2").x, 19);
    std::vector<double> separators;
    for (const Item& item : texts("|"))
        if (item.y == 25)
            separators.push_back(item.x);
    EXPECT_EQ(separators, (std::vector<double>{17, 38, 80, 112, 134, 156, 178, 200, 222, 234, 267}));
}

TEST_F(ReportPage, APageOfExactlyItsRowsHasNoEmptyOnesAndIsFull) {
    open(40);
    EXPECT_TRUE(draw(0));
    EXPECT_EQ(rules().size(), 42u);
    EXPECT_EQ(texts("|").size(), 41u * 11);
    EXPECT_EQ(only("P40").text, u"P40");
}

TEST_F(ReportPage, TheRowBehindAFullPageStandsAloneAboveEmptyBoxes) {
    open(41);
    EXPECT_TRUE(draw(0));
    EXPECT_FALSE(draw(1));
    EXPECT_EQ(texts("P41").size(), 1u);
    EXPECT_TRUE(texts("P40").empty());
    EXPECT_EQ(rules().size(), 42u);
    EXPECT_EQ(texts("|").size(), 41u * 11) << "the empty rows keep their separators";
    EXPECT_TRUE(rows()->isEOF());
}

TEST_F(ReportPage, TheRulesBelowEmptyRowsStandAPitchApart) {
    open(1);
    draw(0);
    const double pitch = PaperFont(layout.contentFont).lineHeight();
    const auto all = rules();
    for (std::size_t i = 2; i < all.size(); ++i)
        EXPECT_NEAR(all[i].y - all[i - 1].y, pitch, 1e-9);
}

TEST_F(ReportPage, TheFooterFollowsAnEmptyLineAndItsXIsTheReports) {
    open(1);
    draw(0);
    const Item footer = only(" 第 7 页");
    EXPECT_EQ(footer.x, 145);
    EXPECT_NEAR(footer.y - rules().back().y, PaperFont(layout.contentFont).lineHeight(), 1e-9);
}

TEST_F(ReportPage, ThePreviewCentresItsFooterByTheWidthWithoutOneBlank) {
    open(1);
    const ReportDrawing drawing{report, layout, rows(), {""}};
    ReportPageDrawing sheet(drawing, page);
    sheet.drawTable(0);
    sheet.drawPreviewFooter(3, 288.09);
    const PaperFont font(layout.contentFont);
    EXPECT_NEAR(only(" 第 3 页").x, 288.09 / 2 - font.textWidth(" 第 3页") / 2, 1e-9);
    EXPECT_LT(font.textWidth(" 第 3页"), font.textWidth(" 第 3 页"));
}

TEST_F(ReportPage, WithoutRowsNothingIsDrawn) {
    open(0);
    EXPECT_FALSE(draw(0));
    EXPECT_TRUE(page.items().empty());
}

TEST_F(ReportPage, WideningABoxMovesItsSeparatorAndTheTextBehindItAlone) {
    open(1);
    draw(0);
    const auto before = page.items();
    layout.boxShift[2] += 3;
    draw(0);
    int moved = 0;
    for (std::size_t i = 0; i < before.size(); ++i) {
        const double by = page.items()[i].x - before[i].x;
        if (by == 0)
            continue;
        ++moved;
        EXPECT_EQ(by, 3);
        EXPECT_TRUE(before[i].x == 80 || before[i].x == 82) << before[i].x;
    }
    EXPECT_EQ(moved, 41 + 2) << "a separator a line, and the third column's label and cell";
}

TEST_F(ReportPage, ALongTextRunsOnAndTheNextSeparatorStandsInIt) {
    open(1);
    books.changeBehind("UPDATE product_Bank SET 品名 = '" + QString(40, u'长') + "'");
    session().reopen(session().product_Bank, "Select * From product_Bank");
    rows()->setPageSize(40);
    draw(0);
    const auto& items = page.items();
    const auto cell = std::find_if(items.begin(), items.end(),
                                   [](const Item& item) { return item.text == QString(40, u'长'); });
    ASSERT_NE(cell, items.end()) << "whole, without an ellipsis";
    EXPECT_GT(cell->x + cell->font->textWidth(cell->text), 112);
    EXPECT_EQ((cell + 1)->text, u"|") << "drawn after it";
    EXPECT_EQ((cell + 1)->x, 112);
}

TEST_F(ReportPage, NullIsAnEmptyCellAndBlanksAroundATextAreTakenOff) {
    open(2);
    books.changeBehind("UPDATE product_Bank SET 品名 = '  纸 ', 规格 = NULL WHERE 产品编号 = 'P1'");
    session().reopen(session().product_Bank, "Select * From product_Bank");
    rows()->setPageSize(40);
    draw(0);
    EXPECT_EQ(texts("纸").size(), 1u);
    EXPECT_EQ(texts("规格").size(), 2u) << "the label and the second row";
}

TEST_F(ReportPage, APageSizeOfZeroOrLessDrawsNoRow) {
    open(3);
    for (const int size : {0, -5}) {
        rows()->setPageSize(size);
        EXPECT_TRUE(draw(0));
        EXPECT_EQ(rules().size(), 2u) << size;
        EXPECT_TRUE(texts("P1").empty()) << size;
    }
}

TEST_F(ReportPage, APageBeyondTheLastOneIsAllEmptyBoxes) {
    open(3);
    EXPECT_FALSE(draw(5));
    EXPECT_EQ(rules().size(), 42u);
    EXPECT_TRUE(texts("P1").empty());
}

TEST_F(ReportPage, AColumnWithoutLabelAndFieldIsAnEmptyBox) {
    static constexpr ReportColumn columns[] = {
        {u"日期", u"日期", 30}, {u"数量", u"数量", 62}, {u"", u"", 94}, {u"", u""}};
    static const ReportDescription portrait{.name = u"portrait",
                                            .caption = u"",
                                            .cursor = &Session::product_Bank,
                                            .columns = columns,
                                            .boxNames = {},
                                            .orientation = PaperOrientation::Portrait,
                                            .rows = 65,
                                            .titleBase = 55,
                                            .addend = 32,
                                            .tableTop = 5,
                                            .footerX = 98,
                                            .title = u"统计"};
    open(1, 65);
    const ReportLayout own = defaultLayout(portrait, {});
    EXPECT_EQ(own.tableWidth, 170);
    const ReportDrawing drawing{portrait, own, rows(), {}};
    ReportPageDrawing sheet(drawing, page);
    sheet.drawTable(0);
    sheet.drawPaperFooter(1);
    EXPECT_EQ(rules().front().y, 37) << "top and addend";
    EXPECT_EQ(rules().front().right, 18 + 170);
    EXPECT_EQ(only("统计").x, 58);
    EXPECT_EQ(only(" 第 1 页").x, 98);
    EXPECT_LT(only(" 第 1 页").y, 290) << "65 rows and the footer fit a portrait sheet";
    EXPECT_EQ(texts("|").size(), 66u * 5);
}

TEST(ReportMove, EachPartMovesByItself) {
    ReportLayout layout = defaultLayout(*findReport(u"print_rs3"), {});
    layout.move(ReportPart::Table, 1, -1);
    EXPECT_EQ(layout.tableLeft, 19);
    EXPECT_EQ(layout.tableTop, 24);
    layout.move(ReportPart::Title, -1, 1);
    EXPECT_EQ(layout.titleShift, 2);
    EXPECT_EQ(layout.titleTop, 11);
    layout.move(ReportPart::Head, 1, 1);
    EXPECT_EQ(layout.headLeft, (std::vector<double>{21, 21, 21}));
    EXPECT_EQ(layout.headTop, (std::vector<double>{21, 21, 21}));
    EXPECT_EQ(layout.tableLeft, 19);
}

} // namespace
