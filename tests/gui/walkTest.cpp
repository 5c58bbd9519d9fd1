// Everything that can be pressed is pressed, in shops of several kinds.
#include "shell/toolbarTable.h"
#include "support/driver.h"
#include "support/walker.h"

#include <QApplication>
#include <QDir>

#include <cstdio>

namespace {

/// Customers of several salespeople, regions and industries, lines over two years, products of which one is
/// sold out and one below the safety stock, and goods that went back, away and to another store.
void fillShop(TestBooks& books) {
    for (int i = 1; i <= 4; ++i) {
        const QString number = QString::number(i);
        books.addClient(number, u"单位"_qs + number, u"联系人"_qs + number);
        books.changeBehind(QStringLiteral("UPDATE clientTable SET 地区 = '%2', 行业 = '%3', "
                                          "业务员编号 = '%4', 客户级别 = 'A' WHERE 客户编号 = '%1'")
                               .arg(number, i < 3 ? u"北京"_qs : u"上海"_qs, i % 2 ? u"纸"_qs : u"墨"_qs,
                                    i < 4 ? u"甲"_qs : u"乙"_qs));
        books.addProduct(number, u"产品"_qs + number, i == 4 ? 0 : i == 3 ? 1 : 100, 4, 10);
    }
    const std::tuple<const char*, const char*, const char*, const char*> lines[] = {
        {"1", "1", "1", "2003-06-01"}, {"1", "1", "2", "2003-06-01"}, {"2", "1", "1", "2004-03-05"},
        {"3", "2", "1", "2003-12-31"}, {"4", "2", "3", "2004-01-31"}, {"5", "2", "2", "2004-05-20"},
        {"6", "3", "1", "2004-05-21"}, {"7", "3", "4", "2004-11-20"}};
    for (const auto& [order, client, product, date] : lines)
        books.addLine(QString::fromUtf8(order), QString::fromUtf8(client), QString::fromUtf8(product),
                      QString::fromUtf8(date), 2, 20, 4);
    for (const char* table : {"return_Bank", "out_of_Bank", "no_use_Bank"})
        for (const char* date : {"2003-07-01", "2004-07-01"})
            books.changeBehind(
                QStringLiteral("INSERT INTO %1 VALUES ('%2', '1', '产品1', '规格1', '产地1', '厂家1', "
                               "'个', 4, 1, 4, '说明')")
                    .arg(QString::fromLatin1(table), QString::fromLatin1(date)));
}

QString walkFile(const QString& name) {
    QDir folder(QCoreApplication::applicationDirPath());
    folder.mkpath(QStringLiteral("walk"));
    return folder.filePath(QStringLiteral("walk/%1.txt").arg(name));
}

void walkThrough(const WalkedShop& shop, bool yes) {
    Walker walker(shop, yes);
    walker.walk();
    QStringList lines = walker.log;
    lines.sort();
    QFile file(walkFile(shop.name + (yes ? u"-yes"_qs : u"-no"_qs)));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(lines.join(u'\n').toUtf8() + '\n');
    std::printf("%d controls pressed, %d places\n", int(lines.size()), int(walker.reached.size()));
    for (const QString& each : walker.faults)
        ADD_FAILURE() << each.toStdString();
    for (auto each = walker.said.begin(); each != walker.said.end(); ++each)
        std::printf("said: %s   (%s)\n", qPrintable(each.key()), qPrintable(each.value()));
    std::printf("%s\n unreached %s", qPrintable(walker.reached.join(u' ')),
                qPrintable(walker.unreached.join(u' ')));
}

const QStringList kWithoutRoad{u"timeDefineFm1"_qs, u"clientNumFm1"_qs, u"clientPercentFm1"_qs,
                               u"listProductFm2"_qs, u"product_displayFm1"_qs};

const WalkedShop kFilled{u"filled"_qs, fillShop, {}, {}, kWithoutRoad};
const WalkedShop kEmpty{u"empty"_qs, [](TestBooks&) {}, {}, {}, kWithoutRoad};

/// Confirms the year 2004 as the period of every view that has one.
void confirmPeriods(WalkedProgram& program) {
    ViewHost& host = program.main->host();
    for (const ToolbarRow& row : toolbarTable()) {
        if (!row.serves(ViewOperation::Time_AA) || !host.knows(row.view.toString()))
            continue;
        host.show(row.view.toString());
        Driver(*program.main).click("Toolbar1(2)");
        Driver time(*host.window("timeDefineFm2"));
        time.pick("Combo1", "2004");
        time.click("Option5");
        time.click("Command1");
    }
    host.show("dataInputFm1");
    QCoreApplication::processEvents();
}

void leaveSearch(WalkedProgram& program, const char* condition) {
    const Session& session = program.main->host().session();
    for (const RecordsetPtr& cursor : {session.clientTable, session.productTable})
        if (cursor->isOpen())
            cursor->setFilter(QString::fromUtf8(condition));
}

/// A period is confirmed, and searches show one customer and one product.
const WalkedShop kFiltered{u"filtered"_qs,
                           fillShop,
                           confirmPeriods,
                           [](WalkedProgram& program) { leaveSearch(program, "流水号 = 1"); },
                           {}};
/// Searches show nobody and nothing.
const WalkedShop kNoHits{
    u"no-hits"_qs, fillShop, {}, [](WalkedProgram& program) { leaveSearch(program, "流水号 = 99"); }, {}};

TEST(Walk, FilledShopAllCancelled) {
    walkThrough(kFilled, false);
}
TEST(Walk, FilledShopAllConfirmed) {
    walkThrough(kFilled, true);
}
TEST(Walk, EmptyShopAllCancelled) {
    walkThrough(kEmpty, false);
}
TEST(Walk, EmptyShopAllConfirmed) {
    walkThrough(kEmpty, true);
}
TEST(Walk, FilteredShopAllCancelled) {
    walkThrough(kFiltered, false);
}
TEST(Walk, FilteredShopAllConfirmed) {
    walkThrough(kFiltered, true);
}
TEST(Walk, ShopWithoutHitsAllCancelled) {
    walkThrough(kNoHits, false);
}
TEST(Walk, ShopWithoutHitsAllConfirmed) {
    walkThrough(kNoHits, true);
}

} // namespace
