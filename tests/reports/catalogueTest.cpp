// The catalogue of reports as a table: every member against its row, and what holds for all of them.
#include "reports/reportDescription.h"
#include "reports/reportLayout.h"
#include "support/reportRows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace {

/// What a member does otherwise than the others.
enum Trait : unsigned {
    Plain = 0,
    StopsInPrint = 1,
    StopsTest = 2,
    AtActivation = 4,
    MovesByProducts = 8,
    SizeByScratch = 16,
    ZeroWhenEmpty = 32,
    KeepsOrientation = 64,
    WideShift = 128,
    BareMenu = 256,
    SetupMenu = 512,
};

constexpr const char16_t* kHanded = u"";
constexpr const char16_t* kMade = u"*";

struct Row {
    const char16_t* name;
    const char16_t* caption;
    char set; // of columns; '-' for one of its own
    PaperOrientation orientation;
    int rows;
    double titleBase, addend, tableTop, footerX;
    const char16_t* title;
    unsigned traits = Plain;
};
constexpr auto P = PaperOrientation::Portrait;
constexpr auto L = PaperOrientation::Landscape;

constexpr Row kRows[] = {
    {u"print_clientline", u"打印客户行业分布", '-', P, 65, 60, 32, 5, 98, u" 客 户 行 业 分 布"},
    {u"print_clientplace", u"打印客户地区分布", '-', P, 65, 60, 32, 5, 98, u" 客 户 地 区 分 布"},
    {u"print_rs1", u"打印客户资料", 'F', L, 40, 115, 32, 0, 145, u" 客 户 资 料", StopsTest | ZeroWhenEmpty},
    {u"print_rs7", u"打印客户资料", 'F', L, 40, 115, 32, 5, 145, u" 客 户 资 料", StopsTest | ZeroWhenEmpty},
    {u"print_rs8", u"打印客户资料", 'F', L, 40, 115, 32, 5, 145, u" 客 户 资 料", StopsTest | ZeroWhenEmpty},
    {u"print_rs2", u"打印已销售产品统计", 'A', L, 40, 115, 0, 25, 145, u"已 销 售 产 品 统 计", StopsInPrint},
    {u"print_rs9", u"打印已销售产品统计", 'A', L, 40, 115, 0, 25, 145, u"已 销 售 产 品 统 计",
     StopsInPrint | SetupMenu},
    {u"print_rs3", u"销售库存打印", 'B', L, 40, 115, 0, 25, 145, u"销 售 库 存 ", StopsInPrint},
    {u"print_rs_order", u"打印订单号购买额", '-', P, 70, 55, 32, 2, 145, u" 订 单 号 购 买 额"},
    {u"print_rs_single", u"打印某客户购物统计", 'A', L, 40, 90, 0, 25, 145, u"购物清单",
     StopsInPrint | BareMenu},
    {u"print_rs_statistic", u"打印营业额统计", '-', P, 65, 55, 32, 5, 98, kHanded, WideShift},
    {u"print_rs_sum", u"打印业务员业绩", '-', P, 65, 60, 0, 25, 98, u"业 务 员 业 绩 报 表",
     StopsInPrint | SizeByScratch | BareMenu},
    {u"print_rs_total", u"打印购物记录", '-', P, 65, 55, 31, 0, 98, kMade, WideShift},
    {u"showprint_rs1", u"打印客户资料", 'E', L, 40, 115, 32, 0, 135, u" 客 户 资 料"},
    {u"showprint_rs1A", u"打印客户资料", 'E', L, 40, 115, 32, 0, 135, u" 客 户 资 料"},
    {u"showprint_rs7", u"打印客户资料", 'E', L, 40, 115, 32, 0, 135, u" 客 户 资 料"},
    {u"showprint_rs8", u"打印客户资料", 'E', L, 40, 115, 0, 5, 145, u" 客 户 资 料", SetupMenu},
    {u"showprint_rs5", u"打印客户资料", 'E', L, 40, 80, 31, 1, 145, kMade, KeepsOrientation},
    {u"showprint_rs2", u"打印销售清单", 'D', L, 40, 115, 32, 2, 145, u"销售清单",
     StopsInPrint | AtActivation | MovesByProducts},
    {u"showprint_rs9", u"打印销售清单", 'D', L, 40, 115, 32, 2, 145, u"销售清单",
     StopsInPrint | AtActivation | MovesByProducts | SetupMenu},
    {u"showprint_rs22", u"打印订单明细", 'D', L, 40, 115, 31, 0, 145, kMade,
     StopsInPrint | AtActivation | MovesByProducts},
    {u"showprint_rs_temp", u"打印单项产品销售清单", 'D', L, 40, 115, 34, 0, 145, kHanded,
     StopsInPrint | AtActivation | MovesByProducts},
    {u"showprint_rs6", u"单个打印客户购物清单", 'D', L, 40, 115, 32, 0, 145, u"客 户 购 物 清 单",
     StopsInPrint | StopsTest | MovesByProducts},
    {u"showprint_rs3", u"库存打印", 'B', L, 40, 115, 0, 25, 145, kHanded, StopsInPrint},
    {u"showprint_rs4", u"库存打印", 'B', L, 40, 115, 0, 25, 145, kHanded, StopsInPrint},
    {u"showprint_rs15", u"产品入库清单打印", 'B', L, 40, 115, 0, 25, 145, kHanded},
    {u"showprint_rs16", u"产品入库清单打印", 'B', L, 40, 115, 0, 25, 145, kHanded, StopsInPrint},
    {u"showprint_rs17", u"库存盘点打印", 'C', L, 40, 115, 0, 25, 145, kHanded},
    {u"showprint_rs18", u"退货表打印", 'C', L, 40, 115, 0, 25, 145, kHanded},
    {u"showprint_rs19", u"退货表打印", 'C', L, 40, 115, 0, 25, 145, kHanded},
    {u"showprint_rs20", u"产品报废表打印", 'C', L, 40, 115, 0, 25, 145, kHanded},
    {u"showprint_rs21", u"产品报废表打印", 'C', L, 40, 115, 0, 25, 145, kHanded},
    {u"showprint_rs23", u"产品调拨表打印", 'C', L, 40, 115, 0, 25, 145, kHanded},
    {u"showprint_rs24", u"产品调拨表打印", 'C', L, 40, 115, 0, 25, 145, kHanded},
};

struct ColumnSet {
    char set;
    std::vector<double> separators;
    const char* first;
};
const ColumnSet kSets[] = {
    {'A', {20, 62, 94, 116, 138, 160, 182, 204, 216}, "产品编号"},
    {'B', {20, 62, 94, 116, 138, 160, 182, 204, 216}, "日期"},
    {'C', {20, 62, 94, 116, 138, 160, 182, 204, 225}, "日期"},
    {'D', {20, 38, 70, 100, 132, 162, 180, 192, 212, 222}, "日期"},
    {'E', {15, 37, 59, 81, 123, 175, 227}, "联系人"},
    {'F', {15, 37, 59, 101, 153, 205, 223}, "联系人"},
};

const Row* rowOf(const ReportDescription& report) {
    const auto row = std::find_if(std::begin(kRows), std::end(kRows), [&report](const Row& each) {
        return QStringView(each.name) == QStringView(report.name);
    });
    return row == std::end(kRows) ? nullptr : row;
}

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

TEST(ReportCatalogue, EveryMemberIsAsItsRowSays) {
    for (const ReportDescription& report : reportCatalogue()) {
        const Row* row = rowOf(report);
        ASSERT_NE(row, nullptr) << nameOf(report) << " has no row here";
        EXPECT_EQ(QStringView(report.caption), QStringView(row->caption)) << nameOf(report);
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
        for (const ColumnSet& set : kSets) {
            if (set.set != row->set)
                continue;
            EXPECT_EQ(separators(report), set.separators) << nameOf(report);
            EXPECT_EQ(QString::fromUtf16(report.columns.front().label), QString::fromUtf8(set.first));
        }
    }
    EXPECT_EQ(findReport(u"unknown"), nullptr);
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
