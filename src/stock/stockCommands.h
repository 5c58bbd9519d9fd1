#pragma once

#include "shell/commandTable.h"
#include "shell/viewHost.h"

class Prompts;

/// The views and menu commands of products and stock.
void registerStock(CommandTable& commands, ViewHost& host, Prompts& prompts);
