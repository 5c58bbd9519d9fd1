#pragma once

#include "benchmark.h"

/// Prints the figures of the statistics of customers, each of them by its menu command in the real main
/// window, until it is seen and until its work table is in the file; beside each the plain walk of prepared
/// statements. Works on copies of the shop at `path`.
void measureStatistics(const QString& path);

/// Those figures out of a process of their own, and the groupings they stand on beside the storage engine's.
void runStatisticsBench(BenchReport& report, const QString& path);
