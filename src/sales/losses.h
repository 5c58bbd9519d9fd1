#pragma once

#include "data/session.h"

/// What a deletion takes with it, in the words that stand below its question.

/// The current customer and those of his lines that go with him.
QString lossOfClient(Session& session);

/// The current line of an order or a basket.
QString lossOfLine(const RecordsetPtr& lines);

/// All lines of an order.
QString lossOfOrder(const RecordsetPtr& lines);
