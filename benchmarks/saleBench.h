#pragma once

#include "benchmark.h"

/// Settlement and deletion of an order over a copy of the shop at `path`, beside hand-made statements on
/// another copy.
void runSaleBench(BenchReport& report, const QString& path, const QString& scratchFolder);
