#pragma once

#include <QString>

#include <functional>

/// Copies the database at `source`, in a consistent state and checked, to `target`. The copy is made beside
/// the target under another name and takes the target's name only when it is whole and on the disk, so that
/// an old backup survives every failure. The copy bears a mark of its own, so that no journal is ever taken
/// for its; only its owner may read it, unless the target had other rights. The database itself as target, by
/// whatever spelling or link, is a failure. False, and nothing changed, where it fails.
bool backUpDatabase(const QString& source, const QString& target);

/// The same without a lock that a commit would wait for, from another thread than the one that writes:
/// `stoodStill` tells afterwards whether nobody wrote meanwhile, and where it denies, the copy has failed.
bool backUpStill(const QString& source, const QString& target, const std::function<bool()>& stoodStill);

/// The name with ".mdb" behind it where it has no ending.
QString withDefaultEnding(const QString& name);

/// Copies a file under a name that is free; only its owner may read the copy. False, and nothing under the
/// name, where it fails. Not for the books while they are open: closing them drops the engine's locks.
bool copyPrivately(const QString& from, const QString& to);

/// Whether a file's contents are on the disk, or the file system does not know how to tell. Throws nothing.
bool flushFile(const QString& path);
