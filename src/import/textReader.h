#pragma once

#include "import/importSource.h"

/// Text of a delimited file: byte order mark, else strict UTF-8, else the Chinese encoding of Windows.
QString decodeText(const QByteArray& bytes);

/// The one of comma, tab and semicolon that stands most often in the header line outside quotes; comma on a
/// tie.
QChar delimiterOf(const QString& text);

/// Rows of delimited text in one pass; the first one names the columns. A quote at the start of a field opens
/// it, a doubled one inside is one quote, line ends inside belong to the field. Empty lines are skipped.
SourceRows parseDelimited(const QString& text);
