#pragma once

#include <QString>

/// What saving came to, for the status bar: `before` rows were changed and not saved, `left` still are.
QString savedWords(int before, int left);

/// The same where the changes were given up.
QString droppedWords(int before, int left);
