#pragma once

#include "benchmark.h"

/// The figures of the data engine over the shop at `path`, on a copy of it where rows are written.
void runEngineBench(BenchReport& report, const QString& path, const QString& scratchFolder);
