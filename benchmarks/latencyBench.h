#pragma once

#include "benchmark.h"

/// What a person waits for each action at the real windows, at 20,000, 1,000,000 and 5,000,000 lines, the
/// first time and again. `path`: a shop with 1,000,000 lines.
void runLatencyBench(BenchReport& report, const QString& path, const QString& folder);

/// One shop worker's round through the windows, in this process, twice.
void measureLatency(const QString& path);
