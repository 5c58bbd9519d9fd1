#pragma once

#include <QByteArray>

#include <memory>

/// A file to be read, open already: nobody opens one behind the walls.
class SourceFile {
public:
    /// Bytes in memory.
    explicit SourceFile(const QByteArray& bytes);
    /// An open descriptor, which stays its owner's.
    explicit SourceFile(int descriptor);

    qint64 size() const { return m_size; }
    /// Up to `count` bytes from a place; fewer at the end.
    QByteArray read(qint64 at, qint64 count) const;
    /// The same into a buffer; gives how many came.
    qint64 read(qint64 at, char* bytes, qint64 count) const;
    /// The whole file, mapped and not copied where that can be. Valid as long as this file lives.
    QByteArray bytes() const;

private:
    struct Mapping;

    QByteArray m_bytes;
    int m_descriptor = -1;
    qint64 m_size = 0;
    mutable std::shared_ptr<Mapping> m_mapping;
};
