#pragma once

#include "shell/viewHost.h"

class Prompts;

/// Every report form of the catalogue, as a window by its name.
void registerReports(ViewHost& host, Prompts& prompts);
