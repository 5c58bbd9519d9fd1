#pragma once

#include "data/session.h"

/// Opens session.clerkTotals on the salespeople of the customers, the highest 营业额 first: 业务员编号,
/// 营业额 and 客户数 of the whole table or, at showSource 12, of the period copy. Without rows showSource
/// becomes 11. A failure leaves the cursor closed and the source as it was.
void clerk_Count(Session& session);

/// Turnover and number of all customers of the source, also of those without a salesperson, as texts; "0"
/// without rows in session.clerkTotals. Takes the customers' Filter off where they are counted whole. Throws
/// RuntimeError.
struct ClerkFigures {
    QString turnover;
    QString clients;
};
ClerkFigures clerkFigures(Session& session, ShowSource code);

/// Takes the salesperson of the current row of session.clerkTotals in hand. False where there is no row or
/// his number is blank.
bool takeClerk(Session& session);

/// Opens session.clerkClients on the customers of the salesperson in hand, of the whole table or, at
/// showSource 12, of the period copy. A failure leaves the cursor closed.
void openClerkClients(Session& session);
