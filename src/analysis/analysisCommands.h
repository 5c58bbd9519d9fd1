#pragma once

#include "shell/commandTable.h"
#include "shell/viewHost.h"

class Prompts;

/// The dialogs, views and menu commands of customer evaluation.
void registerAnalysis(CommandTable& commands, ViewHost& host, Prompts& prompts);
