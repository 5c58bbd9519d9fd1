#pragma once

#include "controls/notice.h"
#include "sales/settledOrder.h"
#include "shell/viewHost.h"

class Prompts;

/// What a settlement did, in words, with a button that offers to print the order: as a slip, on a roll or A5,
/// or line by line.
Notice settledNotice(const SettledOrder& settled, ViewHost& host, Prompts& prompts);
