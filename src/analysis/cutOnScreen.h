#pragma once

#include "analysis/evaluation.h"
#include "shell/viewHost.h"

/// Answers a question by the text that was typed in the evaluation, which is in front: shows the customers of
/// the answer there, and writes them into their table behind what is seen. In: the cursor to cut. Throws
/// RuntimeError.
void showCut(ViewHost& host, const RecordsetPtr& clients, const BestClientsQuestion& question,
             const QString& answer);
