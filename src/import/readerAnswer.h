#pragma once

#include "import/sourceRows.h"

#include <QByteArray>

/// What a reader said and no honest one says.
class BadAnswer {};

/// The texts of a frame of them, `most` at most. Throws BadAnswer.
QStringList textsOf(const QByteArray& content, quint32 most);

/// Puts the rows of a frame behind those that are there; every length in it is checked before. Throws
/// BadAnswer.
void takeBlock(const QByteArray& content, SourceRows& rows);

/// A text from a reader for the user's eyes: one line of limited length.
QString shownText(const QByteArray& content);
