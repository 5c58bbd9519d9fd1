#pragma once

#include "benchmark.h"

/// What a search box offers for one more letter, over the customers of the shop at `path`.
void runSuggestBench(BenchReport& report, const QString& path);
