#pragma once

#include <QString>

/// Whether a number format of a workbook shows its numbers as dates: one of the built-in date formats, or an
/// own one with y, m, d, h or s outside quotes, brackets and escapes, before its first ";".
bool isDateFormat(int index, const QString& code);

/// A serial of a workbook as a date text, with its time where it has one; a time alone without a date.
QString serialText(double serial, bool from1904);
