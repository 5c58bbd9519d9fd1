#pragma once

#include "data/session.h"

#include <span>

/// The customers whom the shop is to call, as rows of their own, and how many could not be judged.
struct CallList {
    std::shared_ptr<TableImage> rows;
    int leftOut = 0;

    int count() const { return int(rows->size()); }
};

/// Customers whose birthday falls on one of `days` days from `today` on, the nearest first, of one day those
/// with the highest 消费合计. Columns: 近期生日 (the day it falls on), 天数 (until then, 0 today), and of the
/// customer. Left out: a 生日 that cannot be read; an empty one does not count. Judges the whole register,
/// whatever its Filter shows.
CallList comingBirthdays(Session& session, const QDate& today, int days);

/// Customers whose last line is `days` days old or older, the highest 消费合计 first. Columns: 最近购买 (the
/// day of that line), 天数 (since then), and of the customer. Left out: who has no line with a day. Judges
/// all customers by all lines, whatever Filter or period is on: a period would take everybody for lapsed who
/// has bought behind it.
CallList lapsedCustomers(Session& session, const QDate& today, int days);

/// A kind of list: its window, its report, and the words around it.
struct CallKind {
    const char16_t* window;
    const char16_t* caption;
    const char16_t* report;
    const char16_t* empty;     // what an empty list says
    std::span<const int> days; // to choose from, the first at first
    CallList (*make)(Session& session, const QDate& today, int days);
    QString (*head)(const CallList& list, const QDate& today, int days);
    QString (*scope)(const CallList& list); // what was judged, and who was left out
};

std::span<const CallKind> callKinds();
