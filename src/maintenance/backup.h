#pragma once

#include <QString>

/// Copies the database at `source`, in a consistent state and checked, to `target`. The copy is made beside
/// the target under another name and takes the target's name only when it is whole and on the disk, so that
/// an old backup survives every failure. The database itself as target, by whatever spelling or link, is a
/// failure. False, and nothing changed, where it fails.
bool backUpDatabase(const QString& source, const QString& target);

/// The name with ".mdb" behind it where it has no ending.
QString withDefaultEnding(const QString& name);
