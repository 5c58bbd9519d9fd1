#pragma once

#include "benchmark.h"

/// Foreign files read and brought in, beside the tools that others read them with.
void runImportBench(BenchReport& report, const QString& scratchFolder);
