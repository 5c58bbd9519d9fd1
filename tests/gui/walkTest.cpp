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
        books.addClient(number, QStringLiteral("单位") + number, QStringLiteral("联系人") + number);
        books.changeBehind(QStringLiteral("UPDATE clientTable SET 地区 = '%2', 行业 = '%3', "
                                          "业务员编号 = '%4', 客户级别 = 'A' WHERE 客户编号 = '%1'")
                               .arg(number, i < 3 ? QStringLiteral("北京") : QStringLiteral("上海"),
                                    i % 2 ? QStringLiteral("纸") : QStringLiteral("墨"),
                                    i < 4 ? QStringLiteral("甲") : QStringLiteral("乙")));
        books.addProduct(number, QStringLiteral("产品") + number, i == 4 ? 0 : i == 3 ? 1 : 100, 4, 10);
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

/// Confirms the year 2004 as the period of the view in front, if that has one.
void confirmPeriod(WalkedProgram& program) {
    Driver main(*program.main);
    if (!main.find<QWidget>("Toolbar1(2)")->isEnabled())
        return;
    main.click("Toolbar1(2)");
    TopWindow* dialog = program.main->host().window("timeDefineFm2");
    if (!dialog)
        return;
    Driver time(*dialog);
    time.pick("Combo1", "2004");
    time.click("Option5");
    time.click("Command1");
    QCoreApplication::processEvents();
}

void leaveSearch(WalkedProgram& program, const char* condition) {
    const Session& session = program.main->host().session();
    for (const RecordsetPtr& cursor : {session.clientTable, session.productTable})
        if (cursor->isOpen())
            cursor->setFilter(QString::fromUtf8(condition));
}

/// Windows that nothing opens; they are walked all the same.
const QStringList kWithoutRoad{QStringLiteral("timeDefineFm1"), QStringLiteral("clientNumFm1"),
                               QStringLiteral("clientPercentFm1"), QStringLiteral("listProductFm2"),
                               QStringLiteral("product_displayFm1")};

const WalkedShop kShops[] = {
    {QStringLiteral("filled"), fillShop, {}, true, kWithoutRoad},
    {QStringLiteral("empty"), [](TestBooks&) {}, {}, false, kWithoutRoad},
    // A period is confirmed in every view that has one, and searches show one customer and one product.
    {QStringLiteral("searched"),
     fillShop,
     [](WalkedProgram& program) {
         confirmPeriod(program);
         leaveSearch(program, "流水号 = 1");
     },
     false,
     {}},
    // Searches show nobody and nothing.
    {QStringLiteral("no-hits"),
     fillShop,
     [](WalkedProgram& program) { leaveSearch(program, "流水号 = 99"); },
     false,
     {}},
};

/// What the program may say, and in which of the shops (by their first letters).
struct Expected {
    const char16_t* text;
    const char* shops;
};
constexpr Expected kExpected[] = {
    {u"confirm [信息提示] 确实要删除全库记录吗？", "fesn"},
    {u"confirm [信息提示] 确实要删除此记录吗？", "fsn"},
    {u"confirm [信息提示] 确实要删除该记录吗？", "fsn"},
    {u"confirm [信息提示] 确实要退出该系统吗？", "fesn"},
    {u"confirm [信息提示] 确认要删除该记录吗？", "fsn"},
    {u"confirm [信息提示] 该产品将增加数：1", "fsn"},
    {u"confirm [删除提示] 确实要删除该订单吗？", "fsn"},
    {u"confirm [删除提示] 确实要删除该记录吗？", "fsn"},
    {u"confirm [删除提示] 确实要删除该记录吗？该客户的购买信息也将同时被删除！", "fsn"},
    {u"font [内容字符] ", "fsn"},
    {u"font [字段名字符] ", "fsn"},
    {u"font [标题字符] ", "fsn"},
    {u"font [表头字符] ", "fsn"},
    {u"input [按差额利润百分率确定客户数] 占总差额利润百分率的客户数，请输入1到100的整数！", "fsn"},
    {u"input [按差额利润确定客户数] 最高差额利润客户数，请输入1到100的整数！", "fsn"},
    {u"input [按购买量确定客户数] 最高购买量客户数，请输入1到100的整数！", "fsn"},
    {u"input [按购买金额确定客户数] 最高购买金额客户数，请输入1到100的整数！", "fsn"},
    {u"input [按销售量百分率确定客户数] 占总销售量百分率的客户数，请输入1到100的整数！", "fsn"},
    {u"input [按销售额的百分率确定客户数] 占总销售额百分率的客户数，请输入1到100的整数！", "fsn"},
    {u"input [查询输入] 请输入产品编号：", "fe"},
    {u"input [单项产品统计] 请输入产品编号：", "fsn"},
    {u"input [标题输入] 请输入标题：", "fsn"},
    {u"input [输入数字] 请输入产品数量：", "fsn"},
    {u"open [打开.csv文件] ", "fesn"},
    {u"open [打开.dbf文件] ", "fesn"},
    {u"open [打开.mdb文件] ", "fesn"},
    {u"open [打开.txt文件] ", "fesn"},
    {u"open [打开.xls文件] ", "fesn"},
    {u"open [打开.xlsx文件] ", "fesn"},
    {u"open [载入版式] ", "fsn"},
    {u"printer [] ", "fsn"},
    {u"save [保存图片] ", "fsn"},
    {u"save [保存版式] ", "fsn"},
    {u"save [导出 CSV] ", "fsn"},
    {u"save [导出 PDF] ", "fsn"},
    {u"save [导出 XLSX] ", "fsn"},
    {u"save [没有打印机：打印到 PDF 文件] ", "fsn"},
    {u"save [选择目标文件] ", "fesn"},
    {u"tell [信息提示 ] 所有产品库存数大于2", "e"},
    {u"tell [信息提示] 备份成功！", "fesn"},
    {u"tell [信息提示] 已记入购物表！", "fsn"},
    {u"tell [信息提示] 已选购该产品！", "fsn"},
    {u"tell [信息提示] 库存中无此产品", "sn"},
    {u"tell [信息提示] 总计购物数：2\\n总计金额数：20", "fsn"},
    {u"tell [信息提示] 总计购物数：4\\n总计金额数：21.98", "fsn"},
    {u"tell [信息提示] 数据已保存！", "fesn"},
    {u"tell [信息提示] 版式没有载入：文件不能打开。", "fsn"},
    {u"tell [信息提示] 无数字，请输入", "fe"},
    {u"tell [信息提示] 查询结果为零！", "e"},
    {u"tell [信息提示] 正在添加新产品，不能执行此操作！", "fesn"},
    {u"tell [信息提示] 正在添加新客户，不能执行此操作！", "fesn"},
    {u"tell [信息提示] 该产品已售完！", "fsn"},
    {u"tell [信息提示] 该客户无购物记录！", "fsn"},
    {u"tell [信息提示] 请先看销售显示！", "fesn"},
    {u"tell [信息提示] 请看库存显示或看销售显示！", "fesn"},
    {u"tell [信息提示] 请先显示业务员业绩统计！", "fesn"},
    {u"tell [信息提示] 请输入‘品名’！", "fesn"},
    {u"tell [信息提示] 请输入产品调拨数量！", "fsn"},
    {u"tell [信息提示] 请输入报废数量！", "fsn"},
    {u"tell [信息提示] 请输入查寻内容！", "fsn"},
    {u"tell [信息提示] 请输入第二个比较时间！", "fsn"},
    {u"tell [信息提示] 请输入订单号！", "fsn"},
    {u"tell [信息提示] 请输入退货数量！", "fsn"},
    {u"tell [信息提示] 请选择字段名！", "fsn"},
    {u"tell [信息提示] 请选择年份！", "fesn"},
    {u"tell [信息提示] 请选择产品！", "fsn"},
    {u"tell [信息提示] 请选择排序字段！", "fsn"},
};

bool isExpected(const QString& text, const WalkedShop& shop) {
    for (const Expected& each : kExpected)
        if (text == QString::fromUtf16(each.text) && QString::fromLatin1(each.shops).contains(shop.name[0]))
            return true;
    return false;
}

/// Writes what was pressed beside the test, and prints it.
void report(const Walker& walker, const QString& name) {
    QStringList lines = walker.log;
    lines.sort();
    lines << QStringLiteral("not reached: ") + walker.unreached.join(u' ');
    for (auto each = walker.said.begin(); each != walker.said.end(); ++each)
        lines << QStringLiteral("said: %1 (%2)").arg(each.key(), each.value());
    const QByteArray text = lines.join(u'\n').toUtf8() + '\n';
    const QDir folder(QCoreApplication::applicationDirPath());
    folder.mkpath(QStringLiteral("walk"));
    QFile file(folder.filePath(QStringLiteral("walk/%1.txt").arg(name)));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
    std::printf("%s%d controls pressed in %d places, see %s\n", text.constData(), int(walker.log.size()),
                int(walker.reached.size()), qPrintable(file.fileName()));
}

class Walk : public testing::TestWithParam<std::tuple<int, bool>> {};

TEST_P(Walk, FindsNoDeadEndAndNoUnexpectedMessage) {
    const WalkedShop& shop = kShops[std::get<0>(GetParam())];
    const bool yes = std::get<1>(GetParam());
    Walker walker(shop, yes);
    walker.walk();
    report(walker, shop.name + (yes ? QStringLiteral("-confirmed") : QStringLiteral("-cancelled")));
    for (const QString& each : walker.faults)
        ADD_FAILURE() << each.toStdString();
    for (auto each = walker.said.begin(); each != walker.said.end(); ++each)
        EXPECT_TRUE(isExpected(each.key(), shop))
            << "said: " << each.key().toStdString() << " (" << each.value().toStdString() << ")";
    for (const QString& each : walker.unreached)
        EXPECT_FALSE(shop.name == u"filled" && walker.viewNames.contains(each))
            << "no road to " << each.toStdString();
}

std::string nameOfWalk(const testing::TestParamInfo<std::tuple<int, bool>>& info) {
    static const char* const shops[] = {"FilledShop", "EmptyShop", "SearchedShop", "ShopWithoutHits"};
    return std::string(shops[std::get<0>(info.param)]) +
           (std::get<1>(info.param) ? "AllConfirmed" : "AllCancelled");
}

INSTANTIATE_TEST_SUITE_P(Shops, Walk, testing::Combine(testing::Range(0, 4), testing::Bool()), nameOfWalk);

} // namespace
