#pragma once

#include "data/session.h"

/// Filters the order totals and the lines to the order in hand of the customer in hand ("1" where no order is
/// chosen), and leaves its date, amount and quantity in the session for the order report. Empty where the
/// order is not there.
void Temp_Order_Form(Session& session);

/// Whether a customer has lines at all, whatever Filter is on them. Throws RuntimeError.
bool hasLines(Session& session, const QString& client);

/// Opens the order totals over the lines, over the period copy where showSource is 7.
void setup_rs_total(Session& session);
