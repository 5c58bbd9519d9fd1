#pragma once

#include <QStringList>

/// The one list of menu commands that are in the menu and do nothing yet but say so in the status bar.
const QStringList& commandsNotYet();
