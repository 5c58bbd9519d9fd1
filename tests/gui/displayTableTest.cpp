#include "analysis/clerks.h"
#include "analysis/evaluation.h"
#include "analysis/periodCopies.h"
#include "data/sourceTable.h"
#include "drilldown/clientLines.h"
#include "drilldown/productSales.h"
#include "query/fieldLists.h"
#include "reports/reportDescription.h"
#include "shell/displayView.h"
#include "shell/toolbarTable.h"
#include "stock/stockCount.h"
#include "support/shopWindow.h"

#include <gtest/gtest.h>

#include <set>

namespace {

/// Every description of a display view against the tables that its names and numbers point into.
class DisplayTable : public ShopWindow {
protected:
    void SetUp() override {
        books.addProduct("p1", "纸", 5, 1, 2);
        books.addClient("1");
        books.changeBehind("UPDATE clientTable SET 业务员编号 = 's'");
        start();
        collect();
        newStockCount(session());
        openEvaluation(session());
        buildPeriodCopies(session(), "日期 >= #2000-1-1#", PeriodCopies::All);
        session().showSource = ShowSource::Clerks;
        clerk_Count(session());
        session().currentClerk = QStringLiteral("s");
        openClerkClients(session());
        books.addLine("1", "1", "p1", "2004-01-05", 1, 2, 1);
        openClientLines(session(), "1", ShowSource::Lines);
        openProductLines(session(), {"p1", "纸"}, ShowSource::Lines);
        openProductClients(session(), {"p1", "纸"}, ShowSource::Lines);
    }
    /// The view hands its report rows and a title of its own.
    static bool handsRows(const DisplayDescription& each) { return text(each.name) == u"goodsSalesFm2"; }
    /// The descriptions of all display views that any feature has registered.
    void collect() {
        for (const QString& name : main->host().viewNames()) {
            session().showSource = ShowSource::Clerks; // what one of them keeps of the view before it
            main->host().show(name);
            if (const auto* view = qobject_cast<DisplayView*>(main->host().active()))
                displays.push_back(&view->description());
        }
        main->host().show("dataInputFm1");
    }
    template <typename Check> void eachDisplay(Check&& check) {
        EXPECT_GE(displays.size(), 17U);
        for (const DisplayDescription* each : displays) {
            SCOPED_TRACE(text(each->name).toStdString());
            check(*each);
        }
    }
    /// The cursor of a source, opened on the whole table where nothing has opened it yet.
    RecordsetPtr cursorOf(const DisplayDescription& display, const DisplaySource& source) {
        const bool own = display.queryCode == ShowSource::None;
        RecordsetPtr* slot = sourceCursor(session(), own ? source.code : display.queryCode);
        if (!slot)
            return nullptr;
        if (!(*slot)->isOpen())
            session().reopen(*slot, "Select * From " + text(display.table));
        return *slot;
    }
    static QString text(const char16_t* characters) { return QString::fromUtf16(characters); }

    std::vector<const DisplayDescription*> displays;
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

TEST_F(DisplayTable, EachHasItsToolbarRowWithPrintAndAWholeTableWithShowAndOrder) {
    eachDisplay([](const DisplayDescription& each) {
        const ToolbarRow* row = toolbarRow(each.name);
        ASSERT_NE(row, nullptr);
        EXPECT_EQ(row->view, text(each.name));
        EXPECT_TRUE(row->serves(ViewOperation::data_print));
        // What hangs on one customer, order or product has no whole to go back to.
        EXPECT_EQ(row->serves(ViewOperation::data_whole_show), !each.keepsAsker);
        EXPECT_EQ(row->serves(ViewOperation::data_order),
                  !each.keepsAsker || each.queryCode != ShowSource::None);
    });
}

TEST_F(DisplayTable, EachSourceHasACursorWithTheColumnsThatTheViewAsksFor) {
    eachDisplay([this](const DisplayDescription& each) {
        ASSERT_FALSE(each.sources.empty());
        QStringList asked = text(each.hidden).split(u' ', Qt::SkipEmptyParts);
        asked.removeAll(QStringLiteral("流水号")); // hidden where there is one
        if (each.sort[0])
            asked << text(each.sort).section(u' ', 0, 0);
        for (const DisplaySource& source : each.sources) {
            const RecordsetPtr cursor = cursorOf(each, source);
            ASSERT_NE(cursor, nullptr) << int(source.code);
            QStringList fields = asked;
            if (source.dates == datesOfRows || source.dates == datesOfRowsOrPeriod)
                fields << QStringLiteral("日期");
            // A search by 日期 asks for a period and no column.
            for (const QString& field : searchFields(
                     searchCodeOf(each.queryCode == ShowSource::None ? source.code : each.queryCode)))
                if (field != u"日期")
                    fields << field;
            for (const QString& field : fields)
                EXPECT_TRUE(cursor->fieldNames().contains(field)) << int(source.code) << field.toStdString();
            EXPECT_TRUE(source.dates || !each.showsDates);
        }
        for (const ShowSource code : {each.wholeShowCode, each.queryCode})
            EXPECT_TRUE(code == ShowSource::None || sourceRow(code)) << int(code);
    });
}

TEST_F(DisplayTable, TheFirstSourceIsTheWholeTable) {
    eachDisplay([this](const DisplayDescription& each) {
        if (!each.table[0])
            return; // rows of its own
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
            const ShowSource shown = each.queryCode == ShowSource::None ? printed : each.queryCode;
            // The customers of an interval are printed by a command of their own; the toolbar prints all.
            if (text(each.name) != u"userInfoFm3" && !handsRows(each)) {
                EXPECT_TRUE(report->cursor == sourceRow(shown)->cursor) << text(source.report).toStdString();
            }
            const int titles = !text(report->title).isEmpty() + (report->titleOf != nullptr) +
                               !text(each.reportTitle).isEmpty() + handsRows(each);
            EXPECT_EQ(titles, 1) << "a title comes from the report or from the view";
            for (const ReportColumn& column : report->columns)
                EXPECT_TRUE(cursorOf(each, source)->fieldNames().contains(text(column.field)))
                    << text(column.field).toStdString();
        }
    });
}

} // namespace
