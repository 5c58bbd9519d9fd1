#pragma once

#include "data/cursorMoves.h"
#include "data/session.h"

/// What a table of customers reads where it has none.
inline constexpr const char16_t* kNoClients = u"没有客户资料。\n新客户在“营销管理”—“购买”中登记。";

/// What date boxes read where there is nothing to date: "0000-0-0" twice.
const DateSpan& noDates();

/// First and last date of all lines, which are sorted by 日期, their Filter taken off; both empty without
/// lines.
DateSpan datesOfLines(Session& session, const RecordsetPtr& shown);

/// The same, and noDates() without lines.
DateSpan datesOfLinesOrNone(Session& session, const RecordsetPtr& shown);

/// Sorts the customers of a code as they stand in their table, the first one current.
void inTableOrder(Session& session, ShowSource code);
