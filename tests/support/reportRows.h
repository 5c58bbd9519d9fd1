#pragma once

#include "data/sourceTable.h"
#include "reports/reportDescription.h"
#include "support/testBooks.h"

/// Whether a report lists customers whom the shop is to call.
inline bool isCallList(const ReportDescription& report) {
    return report.cursor == &Session::scratch && report.columns[1].field == QStringView(u"天数");
}

/// The table below a report's cursor, "" for a cursor that is not known here.
inline QString tableOf(const ReportDescription& report) {
    struct Source {
        RecordsetPtr Session::*cursor;
        const char16_t* table;
    };
    static constexpr Source sources[] = {
        {&Session::clientTable, u"clientTable"},     {&Session::clientTable2, u"clientTable2"},
        {&Session::clientTable3, u"clientTable3"},   {&Session::clerkClients, u"clientTable"},
        {&Session::productClients, u"clientTable"},  {&Session::buyList, u"buyList"},
        {&Session::buyList2, u"buyList2"},           {&Session::tempTable2, u"tempTable2"},
        {&Session::orderTable, u"orderTable"},       {&Session::productTable, u"productTable"},
        {&Session::productTable2, u"productTable2"}, {&Session::product_Bank, u"product_Bank"},
        {&Session::product_Bank2, u"product_Bank2"}, {&Session::stock_Count_Bank, u"stock_Count_Bank"},
        {&Session::return_Bank, u"return_Bank"},     {&Session::return_Bank2, u"return_Bank2"},
        {&Session::no_use_Bank, u"no_use_Bank"},     {&Session::no_use_Bank2, u"no_use_Bank2"},
        {&Session::out_of_Bank, u"out_of_Bank"},     {&Session::out_of_Bank2, u"out_of_Bank"},
        {&Session::saleTable, u"saleTable"},         {&Session::clerkTotals, u"clientTable"},
        {&Session::orderTotals, u"buyList"}};
    if (isCallList(report))
        return QStringLiteral("clientTable");
    if (report.cursor == &Session::scratch && report.columns.front().field == QStringView(u"日期"))
        return QStringLiteral("buyList");
    if (report.cursor == &Session::scratch)
        return report.columns.front().field == QStringView(u"地区") ? QStringLiteral("clientplaceTable")
                                                                    : QStringLiteral("clientlineTable");
    for (const Source& source : sources)
        if (source.cursor == report.cursor)
            return QString::fromUtf16(source.table);
    return {};
}

/// The statement that opens a report's cursor.
inline QString rowsOf(const ReportDescription& report) {
    if (report.cursor == &Session::saleTable)
        return QStringLiteral("Select 日期, Sum(实收) As 营业额 From saleTable Group By 日期");
    if (report.cursor == &Session::clerkTotals)
        return QStringLiteral("Select 业务员编号, Sum(消费合计) As 营业额, Count(业务员编号) As 客户数 "
                              "From clientTable Group By 业务员编号 Order By Sum(消费合计) desc");
    if (report.cursor == &Session::orderTotals)
        return QStringLiteral("Select 日期, 订单号, 客户编号, Sum(数量) As 购物数, Sum(实付) As 购物金额 "
                              "From buyList Group By 日期, 订单号, 客户编号 ");
    if (isCallList(report))
        return QStringLiteral(
            "Select 单位名称, 联系人, 生日, 电话, 手机, 业务员编号, Sum(消费合计) As 消费合计, "
            "Sum(购买数) As 购买数, Count(客户编号) As 天数, Count(Email) As 近期生日, "
            "Count(部门) As 最近购买 "
            "From clientTable Group By 单位名称, 联系人, 生日, 电话, 手机, 业务员编号");
    return QStringLiteral("Select * From ") + tableOf(report);
}

/// Fills a table with `count` rows whose texts are short for their column and row, "品17", with numbers that
/// count up and dates that ascend; a 产品编号 is "P17", a 折扣 "95". The table must be empty.
inline void fillTable(TestBooks& books, const QString& table, int count) {
    QStringList columns;
    QStringList values;
    const QString about =
        books.stored(QStringLiteral("SELECT name, type FROM pragma_table_info('%1')").arg(table));
    for (const QString& column : about.split(u';')) {
        const QString name = column.section(u'|', 0, 0);
        const QString type = column.section(u'|', 1, 1);
        columns << u'"' + name + u'"';
        if (name == u"产品编号")
            values << QStringLiteral("'P' || i");
        else if (name == u"折扣")
            values << QStringLiteral("'95'");
        else if (type == u"DATETEXT")
            values << QStringLiteral("date('2004-01-01', '+' || i || ' days')");
        else if (type.startsWith(u"TEXT"))
            values << QStringLiteral("'%1' || i").arg(name.left(1));
        else
            values << QStringLiteral("i");
    }
    books.execute(
        QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
                       "INSERT INTO \"%2\" (%3) SELECT %4 FROM n WHERE %1 > 0")
            .arg(QString::number(count), table, columns.join(u','), values.join(u',')));
}

/// The same for a stock table, with texts as a shop writes them.
inline void fillStockTable(TestBooks& books, const QString& table, int count) {
    const bool movement = !table.startsWith(QStringLiteral("product"), Qt::CaseInsensitive);
    QString columns = QStringLiteral("日期, 产品编号, 品名, 规格, 产地, 厂家, 计量单位, 成本, 数量");
    QString values =
        QStringLiteral("date('2004-01-01', '+' || i || ' days'), 'P' || i, '品' || i, '规格', '产地', "
                       "'厂家', '个', 2.5, i");
    if (!movement) {
        columns += QStringLiteral(", 流水号, 折扣, 单价");
        values += QStringLiteral(", i, '100', 4");
    } else if (table.startsWith(QStringLiteral("stock_Count"))) {
        columns += QStringLiteral(", 流水号, 实物数, 亏_盈");
        values += QStringLiteral(", i, i, '0'");
    } else {
        const QString amount = table.startsWith(QStringLiteral("return")) ? QStringLiteral("退货款")
                               : table.startsWith(QStringLiteral("no_"))  ? QStringLiteral("亏损金额")
                                                                          : QStringLiteral("合计金额");
        columns += QStringLiteral(", %1, 说明").arg(amount);
        values += QStringLiteral(", i, '说明' || i");
    }
    books.execute(
        QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
                       "INSERT INTO \"%2\" (%3) SELECT %4 FROM n WHERE %1 > 0")
            .arg(QString::number(count), table, columns, values));
}
