#pragma once

#include "data/sourceTable.h"
#include "support/testBooks.h"

/// Fills a stock table with `count` rows whose texts name their row: number "P17", name "品17", dates that
/// ascend. The table must be empty.
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
