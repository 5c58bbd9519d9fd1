#pragma once

#include "recordset/textNumber.h"
#include "reports/reportDescription.h"

/// The head lines of the reports, and the titles that are made of what stands in the books or in a view.
namespace heads {

inline QString period(const QString& first, const QString& last) {
    return QStringLiteral("时间：") + first + u'/' + last;
}

// The stock list and the stock statistic both print it, with figures of the same names and of their own.
inline constexpr HeadItem kStock[] = {
    {0, [](const HeadSource& s) { return period(s.ofCaller(u"Text2"), s.ofCaller(u"Text3")); }},
    {80, [](const HeadSource& s) { return QStringLiteral("库存资金：") + s.ofCaller(u"Label5"); }},
    {130, [](const HeadSource& s) { return QStringLiteral("库存量：") + s.ofCaller(u"Label7"); }},
};
inline constexpr HeadItem kDisplay[] = {
    {0, [](const HeadSource& s) { return period(s.session.displayDate1, s.session.displayDate2); }},
};

/// The days that the customer or sales view in front shows.
inline QString shownPeriod(const HeadSource& s) {
    return period(s.session.periodDate1, s.session.periodDate2);
}
inline constexpr HeadItem kClient[] = {{0, shownPeriod}};

/// A text of the evaluation, which may stand hidden behind another view.
inline QString evaluated(const HeadSource& s, QStringView control) {
    return s.control(u"statisticFm1", control);
}
inline constexpr HeadItem kWorth[] = {
    {0, [](const HeadSource& s) { return period(evaluated(s, u"Text2"), evaluated(s, u"Text3")); }},
    {100, [](const HeadSource& s) { return QStringLiteral("消费总合：") + evaluated(s, u"Label6"); }},
    {150, [](const HeadSource& s) { return QStringLiteral("差额利润总合：") + evaluated(s, u"Label10"); }},
    {200, [](const HeadSource& s) { return QStringLiteral("购买数总合：") + evaluated(s, u"Label14"); }},
};
inline constexpr HeadItem kClerk[] = {
    {0, [](const HeadSource& s) { return period(s.ofCaller(u"Text2"), s.ofCaller(u"Text3")); }},
    {60, [](const HeadSource& s) { return QStringLiteral("营业额总合：") + s.ofCaller(u"Label5"); }},
    {115, [](const HeadSource& s) { return QStringLiteral("客户数总合：") + s.ofCaller(u"Label7"); }},
};

/// A text of the list of sold goods, in front or not.
inline QString sold(const HeadSource& s, QStringView control) {
    return s.control(u"statisticFm2", control);
}
inline QString soldPeriod(const HeadSource& s) {
    return period(sold(s, u"Text2"), sold(s, u"Text3"));
}
inline constexpr HeadItem kSold[] = {
    {0, soldPeriod},
    {70, [](const HeadSource& s) { return QStringLiteral("营业额：") + sold(s, u"Label5"); }},
    {120, [](const HeadSource& s) { return QStringLiteral("差额利润：") + sold(s, u"Label7"); }},
    {170, [](const HeadSource& s) { return QStringLiteral("销售量：") + sold(s, u"Label9"); }},
    {210, [](const HeadSource& s) { return QStringLiteral("客户数：") + sold(s, u"Label11"); }},
};
// A period is printed without its margin.
inline constexpr HeadItem kSoldInPeriod[] = {
    {0, soldPeriod},
    {130, [](const HeadSource& s) { return QStringLiteral("营业额：") + sold(s, u"Label5"); }},
    {170, [](const HeadSource& s) { return QStringLiteral("销售量：") + sold(s, u"Label9"); }},
    {210, [](const HeadSource& s) { return QStringLiteral("客户数：") + sold(s, u"Label11"); }},
};

inline constexpr HeadItem kSales[] = {
    {0, shownPeriod},
    {150, [](const HeadSource& s) { return QStringLiteral("合计件数：") + s.session.report.totalCount; }},
    {200, [](const HeadSource& s) { return QStringLiteral("营业额：") + s.session.report.totalAmount; }},
};
inline constexpr HeadItem kOrderLines[] = {
    {0, [](const HeadSource& s) { return QStringLiteral("时间：") + s.session.periodDate1; }},
    {60, [](const HeadSource& s) { return QStringLiteral("单位名称：") + s.session.currentClientName; }},
    {150, [](const HeadSource& s) { return QStringLiteral("合计件数：") + s.session.orderQuantity; }},
    {200, [](const HeadSource& s) { return QStringLiteral("合计金额：") + s.session.orderAmount; }},
};
inline QString orderNumberTitle(const HeadSource& s) {
    return QStringLiteral("订单号：") + s.session.currentOrderNum;
}

/// A text of the list of one customer's lines.
inline QString ofClientLines(const HeadSource& s, QStringView control) {
    return s.control(u"tempTable2Fm2", control);
}
inline constexpr HeadItem kClientLines[] = {
    {0, [](const HeadSource& s) { return QStringLiteral("客户编号：") + s.session.currentClientNum; }},
    {40, [](const HeadSource& s) { return QStringLiteral("联系人：") + ofClientLines(s, u"Label13"); }},
    {80, [](const HeadSource& s) { return QStringLiteral("单位：") + ofClientLines(s, u"Label11"); }},
    {160, [](const HeadSource& s) { return QStringLiteral("合计件数：") + ofClientLines(s, u"Label8"); }},
    {200, [](const HeadSource& s) { return QStringLiteral("合计金额：") + ofClientLines(s, u"Label2"); }},
};

/// A text of the shares of one customer.
inline QString ofClientShares(const HeadSource& s, QStringView control) {
    return s.control(u"tempTable3Fm3", control);
}
inline constexpr HeadItem kClientShares[] = {
    {0, shownPeriod},
    {70, [](const HeadSource& s) { return QStringLiteral("消费合计：") + ofClientShares(s, u"Label2"); }},
    {120, [](const HeadSource& s) { return QStringLiteral("差额利润：") + ofClientShares(s, u"Label5"); }},
    {170, [](const HeadSource& s) { return QStringLiteral("购物数：") + ofClientShares(s, u"Label8"); }},
};

/// A sum over all orders behind its own caption.
inline QString orderSum(const HeadSource& s, QStringView caption, QStringView value) {
    static constexpr QStringView orders = u"statisticFm5";
    return s.control(orders, caption) + u'/' + s.control(orders, value);
}
inline constexpr HeadItem kOrders[] = {
    {0, shownPeriod},
    {63, [](const HeadSource& s) { return orderSum(s, u"Label4", u"Label5"); }},
    {95, [](const HeadSource& s) { return orderSum(s, u"Label6", u"Label7"); }},
    {127, [](const HeadSource& s) { return orderSum(s, u"Label8", u"Label9"); }},
};

/// A text of the list of one product's buyers.
inline QString ofBuyers(const HeadSource& s, QStringView control) {
    return s.control(u"tempTable1Fm1", control);
}
inline constexpr HeadItem kBuyers[] = {
    {0, [](const HeadSource& s) { return ofBuyers(s, u"Label2") + QStringLiteral("产品编号"); }},
};
inline QString buyersTitle(const HeadSource& s) {
    return QStringLiteral("购买'") + ofBuyers(s, u"Label4") + QStringLiteral("'的客户资料");
}

// Whom the list names, and what was judged for it.
inline constexpr HeadItem kCallList[] = {
    {0, [](const HeadSource& s) { return s.ofCaller(u"Label1"); }},
    {115, [](const HeadSource& s) { return s.ofCaller(u"Label2"); }},
};

/// A text of the customer whom the register stands on, "" where it stands on none.
inline QString ofClient(const HeadSource& s, const char16_t* field) {
    const RecordsetPtr& clients = s.session.clientTable;
    const bool any = clients->isOpen() && clients->currentRow();
    return any ? clients->Fields(QString::fromUtf16(field)).shown() : QString();
}
/// First and last 日期 of the report's rows, in their order.
inline QString rowsPeriod(const HeadSource& s) {
    const int count = s.rows->hasRows() ? s.rows->RecordCount() : 0;
    if (count == 0)
        return period({}, {});
    const int date = s.rows->fieldIndex(QStringLiteral("日期"));
    return period(fieldText(s.rows->valueAt(0, date)), fieldText(s.rows->valueAt(count - 1, date)));
}
inline QString sumOf(const HeadSource& s, const char16_t* column) {
    const int count = s.rows->hasRows() ? s.rows->RecordCount() : 0;
    const int field = count > 0 ? s.rows->fieldIndex(QString::fromUtf16(column)) : 0;
    double sum = 0;
    for (int i = 0; i < count; ++i)
        sum += s.rows->numberAt(i, field);
    return plainNumber(sum);
}
inline constexpr HeadItem kPurchases[] = {
    {0, [](const HeadSource& s) { return QStringLiteral("客户编号：") + ofClient(s, u"客户编号"); }},
    {50, rowsPeriod},
    {63, [](const HeadSource& s) { return QStringLiteral("合计金额：") + sumOf(s, u"购物金额"); }},
    {125, [](const HeadSource& s) { return QStringLiteral("合计数：") + sumOf(s, u"购物数"); }},
};
inline QString purchasesTitle(const HeadSource& s) {
    return ofClient(s, u"单位名称") + QStringLiteral("购物记录");
}

} // namespace heads
