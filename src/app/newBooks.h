#pragma once

#include <QString>

/// Whether the user's data folder has never been made: nothing has its name, not even a link to a disk that
/// is away. A folder without its file has been used, and is no first start.
bool isFirstStart(const QString& dataFolder);

/// Makes the user's data folder at the very first start, with a copy of the empty books in it that bears a
/// mark of its own. The folder takes its name only when it is whole and on the disk, so that a process killed
/// at any moment leaves none or a whole one; of two that start together one makes it. Gives why it could not
/// be made, empty if it is there.
QString makeFirstBooks(const QString& dataFolder, const QString& emptyBooks);
