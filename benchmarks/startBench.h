#pragma once

#include "benchmark.h"

class QApplication;
class QElapsedTimer;

/// The start of the program over the shop at `path`, and over a small one, each measured in processes of
/// their own; then what goes on behind its first window.
void runStartBench(BenchReport& report, const QString& path, const QString& smallPath);

// What those processes measure; `since` runs from the start of main.

void measureBare(const QElapsedTimer& since);
void measureStart(QApplication& application, const QElapsedTimer& since, const QString& path);
/// From the painted frame on, with the jobs of a start in their thread.
void measureStartJobs(const QString& path);
/// The same without them, and what they do by plain means afterwards.
void measurePlainStart(const QString& path);
