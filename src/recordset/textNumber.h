#pragma once

#include <QString>
#include <QStringView>

#include <optional>

/// Blanks U+0020 off both ends, nothing else.
QString trimBlanks(QStringView text);
/// The same as a part of the text that was given.
QStringView withoutBlanks(QStringView text);

/// The first `count` UTF-16 units. Throws BadArgument below 0.
QString leftPart(QStringView text, int count);

/// The number at the start of a text, 0 if there is none. Blanks, tabs and line ends are skipped wherever
/// they are; "." is the decimal point, E and D mark an exponent, &H and &O read hexadecimal and octal. Throws
/// Overflow for a number too large for a double.
double val(QStringView text);

/// The number that the whole text is (sign, currency mark, commas between digits, parentheses for a negative
/// number, exponent, &H, &O allowed), or nothing.
std::optional<double> parseNumeric(QStringView text);
bool isNumeric(QStringView text);

/// Nearest whole number, halves to the even neighbour. Throws Overflow outside 16 or 32 bits.
qint16 toInt16(double value);
qint32 toInt32(double value);

/// The form for boxes, labels, grids and stored texts: at most 15 significant digits, one "0" before the
/// point.
QString plainNumber(double value);
/// The same without the "0" before the point and without the exponent form of small numbers; only to be cut.
QString bareNumber(double value);
/// Single precision: 7 significant digits.
QString plainNumber(float value);
QString bareNumber(float value);

/// Margin rate in percent as text, cut and never rounded: at most four to six characters by the size of the
/// rate, without the "%". In: rate in percent.
QString rateText(double rate);
/// The same on a rate held in single precision, whose branches test the single value too.
QString rateText(float rate);
