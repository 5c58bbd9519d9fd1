#include "export/wholeFile.h"

#include <QSaveFile>

bool writeWholeFile(const QString& path, const QByteArray& bytes) {
    QSaveFile file(path);
    // A short file reaches the disk only with the flush, and commit() does not hear when that fails.
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush() &&
           file.commit();
}
