#include "data/warmUp.h"

namespace {

WarmColumn plain(const char16_t* name) {
    return {.name = QString::fromUtf16(name)};
}

WarmColumn key(const char16_t* name) {
    return {.name = QString::fromUtf16(name), .index = true};
}

WarmColumn ordered(const char16_t* name) {
    return {.name = QString::fromUtf16(name), .ranks = true};
}

WarmColumn orderedKey(const char16_t* name) {
    return {.name = QString::fromUtf16(name), .index = true, .ranks = true};
}

} // namespace

std::vector<WarmTable> columnsToWarm() {
    const QString clients = QStringLiteral("clientTable");
    const QString lines = QStringLiteral("buyList");
    const QString products = QStringLiteral("productTable");
    const WarmColumn orders{.name = QStringLiteral("订单号"), .index = true, .ranks = true, .distinct = true};
    return {
        // The search of the register, a product taken up, the orders.
        {clients, {key(u"客户编号"), plain(u"单位名称"), plain(u"联系人"), plain(u"电话"), plain(u"生日")}},
        {lines, {key(u"客户编号"), key(u"产品编号"), orders, plain(u"成本"), plain(u"折扣")}},
        {products,
         {orderedKey(u"产品编号"), ordered(u"品名"), ordered(u"规格"), ordered(u"产地"), ordered(u"厂家"),
          plain(u"日期"), plain(u"单价"), plain(u"计量单位"), plain(u"数量"), plain(u"折扣"),
          plain(u"成本")}},
        {lines,
         {ordered(u"品名"), ordered(u"规格"), ordered(u"产地"), ordered(u"厂家"), plain(u"单价"),
          plain(u"计量单位"), plain(u"合计")}},
        {clients,
         {plain(u"部门"), plain(u"地址"), plain(u"邮政编码"), plain(u"传真"), plain(u"手机"), plain(u"Email"),
          ordered(u"地区"), ordered(u"行业"), ordered(u"客户级别"), ordered(u"业务员编号")}},
        // Then orders that take long to find out.
        {clients, {ordered(u"单位名称"), ordered(u"联系人"), ordered(u"客户编号"), ordered(u"电话")}},
        {lines, {ordered(u"产品编号"), ordered(u"客户编号")}},
    };
}

std::vector<WarmTable> columnsOfTotals() {
    return {
        {QStringLiteral("buyList"), {plain(u"客户编号"), plain(u"实付"), plain(u"差额利润"), plain(u"数量")}},
        {QStringLiteral("clientTable"),
         {plain(u"客户编号"), plain(u"消费合计"), plain(u"差额利润"), plain(u"购买数"),
          plain(u"差额利润率")}}};
}
