#pragma once

#include "analysis/timeKeys.h"
#include "data/recount.h"
#include "data/session.h"

#include <span>

/// One of the four turnover statistics.
struct TurnoverStatistic {
    const char16_t* command; // of the menu
    TurnoverSpan span;
    const char16_t* title;
};
std::span<const TurnoverStatistic> turnoverStatistics();

/// One row for each line that the cursor shows, in its order: 日期 (the key of its span) and 实收 (what was
/// paid, in the currency of the shop).
std::shared_ptr<TableImage> turnoverRows(const Recordset& lines, TurnoverSpan span);

/// 营业额 by 日期, in the order of the keys as texts.
std::shared_ptr<TableImage> turnoverBySpan(const TableImage& rows);

/// Counts the turnover of all lines into session.saleTable, a fixed picture, and keeps its title. Out: the
/// rows that belong into the work table saleTable; null without lines, and then nothing changes.
std::shared_ptr<TableImage> countTurnover(Session& session, const TurnoverStatistic& statistic);

/// A span and what it brought.
struct SpanTurnover {
    QString label;
    double value = 0;
};
/// The last 24 rows of a counted turnover, filled up with empty ones behind them.
QList<SpanTurnover> lastSpans(const RecordsetPtr& turnover);
