#pragma once

#include "import/importSource.h"

/// The reader of Access files, beside the program that runs.
QString readerProgram();

/// Access files through the reader program. The library behind it was measured to crash and to loop on
/// damaged files: there its end, or its silence of so many milliseconds, is a file that cannot be read. A
/// reader that is only slow says so now and then. Throws ImportError.
std::unique_ptr<ImportSource> openMdbInProcess(const QString& path, const QString& program = readerProgram(),
                                               int silence = 8000);
