// The catalogue of reports as a table: every member against its row, and what holds for all of them.
#include "reports/reportDescription.h"
#include "reports/reportLayout.h"
#include "support/reportRows.h"
#include "support/reportTable.h"

#include <gtest/gtest.h>

#include <set>

namespace {

using namespace table;

std::string nameOf(const ReportDescription& report) {
    return QString::fromUtf16(report.name).toStdString();
}

unsigned traitsOf(const ReportDescription& report) {
    const std::pair<bool, unsigned> traits[] = {{report.printReadsUnopened, StopsInPrint},
                                                {report.testReadsUnopened, StopsTest},
                                                {report.pagesAtActivation, AtActivation},
                                                {report.moveGuard == &Session::productTable, MovesByProducts},
                                                {report.pageSizeGuard == &Session::scratch, SizeByScratch},
                                                {report.emptyPageSizeIsZero, ZeroWhenEmpty},
                                                {report.keepsOrientation, KeepsOrientation},
                                                {report.wideTitleShift, WideShift},
                                                {report.settings == SettingsMenu::Bare, BareMenu},
                                                {report.settings == SettingsMenu::PrinterSetup, SetupMenu}};
    unsigned found = Plain;
    for (const auto& [has, trait] : traits)
        found |= has ? trait : Plain;
    return found;
}

std::vector<double> separators(const ReportDescription& report) {
    std::vector<double> found;
    for (const ReportColumn& column : report.columns.first(report.columns.size() - 1))
        found.push_back(column.separator);
    return found;
}

template <typename Texts> QStringList listed(const Texts& texts) {
    QStringList list;
    for (const char16_t* text : texts)
        list << QString::fromUtf16(text);
    return list;
}

QStringList ofColumns(const ReportDescription& report, const char16_t* ReportColumn::*text) {
    QStringList list;
    for (const ReportColumn& column : report.columns)
        list << QString::fromUtf16(column.*text);
    return list;
}

TEST(ReportCatalogue, AllThirtySixAreThere) {
    EXPECT_EQ(kRows.size(), 36u);
    EXPECT_EQ(reportCatalogue().size(), kRows.size());
    for (const ReportRow& row : kRows)
        EXPECT_NE(findReport(row.name), nullptr) << nameOf(row);
    EXPECT_EQ(findReport(u"unknown"), nullptr);
}

TEST(ReportCatalogue, EveryMemberIsAsItsRowSays) {
    for (const ReportDescription& report : reportCatalogue()) {
        const ReportRow* row = rowOf(report);
        ASSERT_NE(row, nullptr) << nameOf(report) << " has no row here";
        EXPECT_EQ(QStringView(report.caption), QStringView(row->caption)) << nameOf(report);
        EXPECT_TRUE(report.cursor == row->cursor) << nameOf(report);
        EXPECT_EQ(report.orientation, row->orientation) << nameOf(report);
        EXPECT_EQ(report.rows, row->rows) << nameOf(report);
        EXPECT_EQ(report.titleBase, row->titleBase) << nameOf(report);
        EXPECT_EQ(report.addend, row->addend) << nameOf(report);
        EXPECT_EQ(report.tableTop, row->tableTop) << nameOf(report);
        EXPECT_EQ(report.footerX, row->footerX) << nameOf(report);
        EXPECT_EQ(traitsOf(report), row->traits) << nameOf(report);
        const bool made = QStringView(row->title) == QStringView(kMade);
        EXPECT_EQ(report.titleOf != nullptr, made) << nameOf(report);
        EXPECT_EQ(QStringView(report.title), QStringView(made ? kHanded : row->title)) << nameOf(report);
    }
}

TEST(ReportCatalogue, EveryMemberHasTheColumnsBoxesAndHeadBasesOfItsRow) {
    for (const ReportDescription& report : reportCatalogue()) {
        const ReportRow& row = *rowOf(report);
        const ColumnSet& set = setOf(row);
        EXPECT_EQ(ofColumns(report, &ReportColumn::label), labelsOf(set)) << nameOf(report);
        EXPECT_EQ(ofColumns(report, &ReportColumn::field), fieldsOf(set)) << nameOf(report);
        EXPECT_EQ(separators(report), set.separators) << nameOf(report);
        EXPECT_EQ(listed(report.boxNames), textsOf(set.boxes)) << nameOf(report);
        std::vector<double> bases;
        for (const HeadItem& item : report.head)
            bases.push_back(item.base);
        EXPECT_EQ(bases, row.head) << nameOf(report);
    }
}

TEST(ReportCatalogue, NamesAreUniqueAndFoundAndNoGuardIsUnknown) {
    std::set<QString> names;
    for (const ReportDescription& report : reportCatalogue()) {
        EXPECT_TRUE(names.insert(QString::fromUtf16(report.name)).second) << nameOf(report);
        EXPECT_EQ(findReport(report.name), &report) << nameOf(report);
        EXPECT_TRUE(!report.moveGuard || report.moveGuard == &Session::productTable) << nameOf(report);
        EXPECT_TRUE(!report.pageSizeGuard || report.pageSizeGuard == &Session::scratch) << nameOf(report);
    }
}

TEST(ReportCatalogue, EveryFieldIsInTheTableOfItsCursor) {
    TestBooks books;
    for (const ReportDescription& report : reportCatalogue()) {
        const QString table = tableOf(report);
        ASSERT_FALSE(table.isEmpty()) << nameOf(report) << ": no table is known for its cursor";
        RecordsetPtr rows;
        books.session().reopen(rows, rowsOf(report));
        for (const ReportColumn& column : report.columns) {
            const QString field = QString::fromUtf16(column.field);
            EXPECT_TRUE(field.isEmpty() || rows->fieldIndex(field) >= 0)
                << nameOf(report) << ": " << field.toStdString();
        }
    }
}

TEST(ReportCatalogue, SeparatorsRiseWithinTheTableAndEachHasTheNameOfItsBox) {
    for (const ReportDescription& report : reportCatalogue()) {
        const std::vector<double> bases = separators(report);
        EXPECT_LE(bases.size(), std::size_t(ReportLayout::kMostBoxes)) << nameOf(report);
        for (std::size_t k = 0; k < bases.size(); ++k)
            EXPECT_GT(bases[k], k == 0 ? 0 : bases[k - 1]) << nameOf(report) << k;
        EXPECT_LT(bases.back(), report.tableWidth() - 1) << nameOf(report);
        EXPECT_EQ(report.boxNames.size(), bases.size()) << nameOf(report);
        for (const char16_t* name : report.boxNames)
            EXPECT_FALSE(QStringView(name).isEmpty()) << nameOf(report);
    }
}

} // namespace
