#pragma once

#include "benchmark.h"

/// Grids over the shop at `path`, each measured in a process of its own.
void runWindowBench(BenchReport& report, const QString& path);

/// What a process of its own measures, by its second argument, over the file that is the third. Prints
/// "name value" lines.
int measureInThisProcess(int argc, char** argv);
