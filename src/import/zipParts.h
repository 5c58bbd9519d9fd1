#pragma once

#include "import/sourceFile.h"

#include <QIODevice>

#include <memory>

struct zip;

/// The parts of a ZIP archive, unpacked as they are read. What an archive says of its sizes is not believed:
/// every part has a bound on what comes out.
class ZipParts {
public:
    /// Bytes that come out of a part without a question about how much went in.
    static constexpr qint64 kSmall = qint64(64) << 20;
    /// Beyond them a part may be so many times as large as what it is packed into.
    static constexpr qint64 kMostRatio = 200;
    static constexpr qint64 kMost = qint64(2) << 30;
    static constexpr qint64 kMostParts = 10000;

    /// Throws ImportError for what is no archive, and for one of too many parts.
    explicit ZipParts(const SourceFile& file);
    ~ZipParts();
    Q_DISABLE_COPY_MOVE(ZipParts)

    /// Whether a part is there, its name in any case.
    bool has(const QString& name) const { return find(name) >= 0; }
    /// A part, to be read from its start to its end. Throws ImportError where it is not there, and, then and
    /// at every reading, where it is damaged, packed in a way that workbooks are not, or too large.
    std::unique_ptr<QIODevice> open(const QString& name);

private:
    qint64 find(const QString& name) const;

    SourceFile m_file;
    QByteArray m_bytes;
    zip* m_archive = nullptr;
};
