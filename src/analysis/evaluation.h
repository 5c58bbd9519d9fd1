#pragma once

#include "analysis/bestClients.h"
#include "data/recount.h"
#include "data/session.h"
#include "data/workTable.h"

/// The statistics of customers: their start. Opens the cursors on customers, lines and products, shows the
/// whole table and makes the work tables of a period and of a cut again, empty.
void openEvaluation(Session& session);

/// What precedes a display of the customers that are evaluated: they stand for their source again, unless a
/// ranking cut is on screen, which stays. Out: whether they are to be shown.
bool beginEvaluation(Session& session);

/// Sorts the customers of a source by 消费合计 and figures their indicators, which are the whole of their
/// table. A cut of the best customers keeps the figures that the analysis left.
void begin_setup(Session& session, ShowSource code);

/// Which customers the evaluation shows: a cut of the best ones, or those of clientShowSource.
ShowSource evaluatedSource(const Session& session);

/// Whether there are customers at all; takes the Filter off their cursor.
bool hasClients(Session& session);

/// The customers that an analysis would cut, by the source that is on show: null where there are none.
RecordsetPtr clientsToCut(Session& session);

/// Answers a question by the text that was typed: session.clientTable3 shows the customers of the cut, the
/// indicators and what the panel says of them are the cut's. In: the cursor of clientsToCut(). Out: the rows
/// that belong into clientTable3. Throws RuntimeError.
RowsOfTable cutBestClients(Session& session, const RecordsetPtr& clients, const BestClientsQuestion& question,
                           const QString& answer);

/// Writes the customers of the cut into clientTable3 and opens the cursor on it, in the same order.
void writeCut(Session& session, const RowsOfTable& cut, ClientMeasure measure, const Progress& progress = {});
