#pragma once

#include "shell/commandTable.h"
#include "shell/viewHost.h"

class Prompts;

/// The views, windows and menu commands of customers and sales.
void registerSales(CommandTable& commands, ViewHost& host, Prompts& prompts);
