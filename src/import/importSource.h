#pragma once

#include "import/sourceRows.h"
#include "import/tableReader.h"

#include <functional>
#include <memory>

/// The user did not want to wait for the rest.
class ImportStopped : public ImportError {
public:
    ImportStopped()
        : ImportError(QStringLiteral("已停止读取。")) {}
};

enum class SourceKind { Dbf, Txt, Xls, Mdb, Xlsx, Csv };

/// A foreign file as tables by name.
class ImportSource {
public:
    virtual ~ImportSource() = default;
    virtual QStringList tables() = 0;
    /// Throws ImportError.
    virtual SourceRows read(const QString& table) = 0;

    /// Called now and then by a reader that may be long at a table; may be unset.
    std::function<void()> signOfLife;
    /// Asked at least ten times a second while a reader is waited for; true ends the waiting with
    /// ImportStopped. May be unset.
    std::function<bool()> shouldStop;
};

/// Opens a source, whose reader runs behind walls in a process of its own. Nothing is opened that is no
/// ordinary file, nor any of `ownFiles`, by whatever name or link it comes: closing a descriptor of a
/// database that is in use would drop its locks. Throws ImportError.
std::unique_ptr<ImportSource> openImportSource(SourceKind kind, const QString& path,
                                               const QStringList& ownFiles = {},
                                               const std::function<bool()>& shouldStop = {});

/// Bare file name without its last four characters: the one table of a source that has no tables of its own.
QString tableOfFile(const QString& path);
