#pragma once

#include "shell/commandTable.h"
#include "shell/viewHost.h"

class Prompts;

/// The views, windows and menu commands of data maintenance.
void registerMaintenance(CommandTable& commands, ViewHost& host, Prompts& prompts);
