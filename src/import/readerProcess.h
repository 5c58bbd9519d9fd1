#pragma once

#include "import/importSource.h"

/// The reader program, beside the program that runs.
QString readerProgram();

/// What is believed of a reader and how long it is waited for.
struct ReaderBounds {
    QString program = readerProgram();
    int silence = 8000;                 // milliseconds without a word
    int patience = 600'000;             // milliseconds for an answer
    qint64 mostBytes = qint64(3) << 29; // of an answer
    qint64 mostCells = 200'000'000;     // of an answer
};

/// A source through the reader program. The libraries in it were measured to crash and to loop on damaged
/// files: there its end, its silence, or an answer without measure or sense, is a file that cannot be read. A
/// reader that is only slow says so now and then. As openImportSource otherwise.
std::unique_ptr<ImportSource> openInProcess(SourceKind kind, const QString& path,
                                            const QStringList& ownFiles = {},
                                            const std::function<bool()>& shouldStop = {},
                                            const ReaderBounds& bounds = {});

/// Whether the system can put the reader behind walls; asked of the reader program once.
bool wallsState();
