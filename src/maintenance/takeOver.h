#pragma once

#include <QString>

#include <functional>

class ImportSource;

/// Whether the file is a Jet database, as old installations keep their books in.
bool isJetFile(const QString& path);

/// Why a Jet file cannot be taken over (protected, damaged, not this system's), naming the file; empty if it
/// can. Reads only.
QString takeOverFault(const QString& path);

/// Turns the Jet file into a database of the present format under the same name. Every table of the system
/// comes over with its rows in their order; a text wider than its column widens the column. The old file
/// stays beside it under the name that is given back. A process that is killed at any moment leaves the old
/// state or the new one. `progress` is told tables done and in all. Throws ImportError, RuntimeError.
QString takeOver(const QString& path, const std::function<void(int, int)>& progress = {});

/// The same from tables that are open already.
QString takeOverFrom(ImportSource& source, const QString& path,
                     const std::function<void(int, int)>& progress = {});
