#include "import/importSource.h"

#include "import/readerProcess.h"

#include <QFileInfo>

std::unique_ptr<ImportSource> openImportSource(SourceKind kind, const QString& path,
                                               const QStringList& ownFiles,
                                               const std::function<bool()>& shouldStop) {
    return openInProcess(kind, path, ownFiles, shouldStop);
}

QString tableOfFile(const QString& path) {
    return QFileInfo(path).fileName().chopped(4);
}
