#pragma once

#include "benchmark.h"

/// In a process of its own: every view and window of the program on the shop at `path`, shown once.
void measureEveryWindow(const QString& path);

/// What a text of 5 and of 50 MB in one cell of the customers, the lines and the products costs each view.
void runLongTextBench(BenchReport& report, const QString& folder);
