#pragma once

#include "import/importSource.h"

class QFile;

// How a reader in a process of its own talks: each answer comes in parts, a length as qint64 before each.
namespace AnswerPart {
inline constexpr qint64 SignOfLife = 0; // nothing yet, but the reader is at work
inline constexpr qint64 End = -1;       // of the answer
} // namespace AnswerPart

/// Answers with the tables of a source, and then with the columns and rows of each table whose name comes in
/// on a line, until none comes. Throws ImportError.
void serveTables(ImportSource& source, QFile& in, QFile& out);
