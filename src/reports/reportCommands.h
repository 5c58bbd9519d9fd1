#pragma once

#include "shell/viewHost.h"

class Prompts;

/// Every report form of the catalogue, and the slips, as windows by their names.
void registerReports(ViewHost& host, Prompts& prompts);
