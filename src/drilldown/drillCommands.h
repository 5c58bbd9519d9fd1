#pragma once

#include "shell/commandTable.h"
#include "shell/viewHost.h"

class Prompts;

/// Adds the drill-downs into one customer, one order and one product.
void registerDrillDowns(CommandTable& commands, ViewHost& host, Prompts& prompts);
