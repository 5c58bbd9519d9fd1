#pragma once

#include "benchmark.h"

/// Grids and the start of the program over the shop at `path`, each measured in a process of its own.
void runWindowBench(BenchReport& report, const QString& path, const QString& smallPath);

/// What such a process does: one of "grid", "sqlgrid", "bare", "start" over a file. Prints "name value"
/// lines.
int measureInThisProcess(int argc, char** argv);
