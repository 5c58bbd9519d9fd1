#pragma once

#include "reports/printJob.h"
#include "reports/reportPage.h"

#include <functional>

/// Pages that a document holds at most; a longer job goes on in another one.
inline constexpr int kPagesPerDocument = 1000;

enum class PrintEnd {
    Done,
    Stopped, // the caller's wish
    Failed,  // the job's fault() says why
};

/// What the caller does around the pages, counted from 1.
struct PrintSteps {
    std::function<void(int page)> before = [](int) {};
    /// Behind each full page, its sheet ended already; false stops the run. What it throws leaves the
    /// document open.
    std::function<bool(int page)> after = [](int) { return true; };
};

/// Prints pages `from` to `to` of a report and ends the document.
PrintEnd printPages(const ReportDrawing& drawing, PrintJob& job, int from, int to, const PrintSteps& steps);
