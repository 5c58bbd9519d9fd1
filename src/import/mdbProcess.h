#pragma once

#include "import/importSource.h"

/// Access files through the reader program beside this one. The library behind it was measured to crash and
/// to loop on damaged files: there its end, or its silence, is a file that cannot be read. Throws
/// ImportError.
std::unique_ptr<ImportSource> openMdbInProcess(const QString& path);
