#include "analysis/periodCopies.h"
#include "data/sourceTable.h"
#include "query/fieldLists.h"
#include "reports/reportDescription.h"
#include "shell/toolbarTable.h"
#include "stock/stockCount.h"
#include "stock/stockViews.h"
#include "support/shopWindow.h"

#include <gtest/gtest.h>

#include <set>

namespace {

/// Every description of a display view against the tables that its names and numbers point into.
class DisplayTable : public ShopWindow {
protected:
    void SetUp() override {
        books.addProduct("p1", "纸", 5, 1, 2);
        start();
        newStockCount(session());
        buildPeriodCopies(session(), "日期 >= #2000-1-1#", PeriodCopies::All);
    }
    template <typename Check> void eachDisplay(Check&& check) {
        for (const DisplayDescription& each : stockDisplays()) {
            SCOPED_TRACE(text(each.name).toStdString());
            check(each);
        }
    }
    /// The cursor of a source, opened on the whole table where nothing has opened it yet.
    RecordsetPtr cursorOf(const DisplayDescription& display, const DisplaySource& source) {
        RecordsetPtr* slot = sourceCursor(session(), source.code);
        if (!slot)
            return nullptr;
        if (!(*slot)->isOpen())
            session().reopen(*slot, "Select * From " + text(display.table));
        return *slot;
    }
    static QString text(const char16_t* characters) { return QString::fromUtf16(characters); }
};

TEST_F(DisplayTable, NamesAreUniqueAndEachIsRegisteredWithItsWords) {
    std::set<QString> names;
    eachDisplay([&](const DisplayDescription& each) {
        EXPECT_TRUE(names.insert(text(each.name)).second);
        EXPECT_TRUE(main->host().knows(text(each.name)));
        EXPECT_FALSE(text(each.caption).isEmpty());
        EXPECT_FALSE(text(each.emptyText).isEmpty());
    });
    EXPECT_FALSE(names.empty());
}

TEST_F(DisplayTable, EachHasItsToolbarRowWithShowOrderAndPrint) {
    eachDisplay([](const DisplayDescription& each) {
        const ToolbarRow* row = toolbarRow(each.name);
        ASSERT_NE(row, nullptr);
        EXPECT_EQ(row->view, text(each.name));
        for (const ViewOperation operation :
             {ViewOperation::data_whole_show, ViewOperation::data_order, ViewOperation::data_print})
            EXPECT_TRUE(row->serves(operation)) << int(operation);
    });
}

TEST_F(DisplayTable, EachSourceHasACursorWithTheColumnsThatTheViewAsksFor) {
    eachDisplay([this](const DisplayDescription& each) {
        ASSERT_FALSE(each.sources.empty());
        QStringList asked = text(each.hidden).split(u' ', Qt::SkipEmptyParts);
        asked.removeAll(QStringLiteral("流水号")); // hidden where there is one
        asked << text(each.sort) << QStringLiteral("日期");
        for (const DisplaySource& source : each.sources) {
            const RecordsetPtr cursor = cursorOf(each, source);
            ASSERT_NE(cursor, nullptr) << int(source.code);
            for (const QString& field : asked + searchFields(searchCodeOf(source.code)))
                EXPECT_TRUE(cursor->fieldNames().contains(field)) << int(source.code) << field.toStdString();
            EXPECT_NE(source.dates, nullptr);
        }
        for (const ShowSource code : {each.wholeShowCode, each.queryCode})
            EXPECT_TRUE(code == ShowSource::None || sourceRow(code)) << int(code);
    });
}

TEST_F(DisplayTable, TheFirstSourceIsTheWholeTable) {
    eachDisplay([this](const DisplayDescription& each) {
        ASSERT_TRUE(session().cn.hasTable(text(each.table)));
        const RecordsetPtr cursor = cursorOf(each, each.sources.front());
        EXPECT_EQ(cursor->image().table().toLower(), text(each.table).toLower());
    });
}

TEST_F(DisplayTable, EachReportIsInTheCatalogueAndReadsTheSourcesCursor) {
    eachDisplay([this](const DisplayDescription& each) {
        for (const DisplaySource& source : each.sources) {
            const ReportDescription* report = findReport(source.report);
            ASSERT_NE(report, nullptr) << text(source.report).toStdString();
            EXPECT_TRUE(main->host().knows(text(source.report)));
            // A view that asks the whole table for rows prints that, whatever it shows.
            const ShowSource printed = each.asksWholeForRows ? each.whole() : source.code;
            EXPECT_TRUE(report->cursor == sourceRow(printed)->cursor) << text(source.report).toStdString();
            EXPECT_NE(text(report->title).isEmpty(), text(each.reportTitle).isEmpty())
                << "a title comes from the report or from the view";
            for (const ReportColumn& column : report->columns)
                EXPECT_TRUE(cursorOf(each, source)->fieldNames().contains(text(column.field)))
                    << text(column.field).toStdString();
        }
    });
}

} // namespace
