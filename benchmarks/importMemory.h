#pragma once

#include "benchmark.h"

/// Says how much memory an import of this file takes at most, for a process of its own; the reader program's
/// counts with it. Books are made beside the file for it.
void measureImportMemory(const QString& path);

/// Adds the figures of files of many rows, each as a multiple of the file's size.
void benchImportMemory(BenchReport& report, const QString& folder);
