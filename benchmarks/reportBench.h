#pragma once

#include "benchmark.h"

/// Reports over the shop at `path`: pages turned and printed, and views changed.
void runReportBench(BenchReport& report, const QString& path);

/// What the process of the figures above does.
void measureReports(const QString& path);
