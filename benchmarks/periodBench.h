#pragma once

#include "benchmark.h"

/// A period of one year of the shop at `path`, built as the program builds it on one copy and by hand-made
/// statements on another.
void runPeriodBench(BenchReport& report, const QString& path, const QString& scratchFolder);
