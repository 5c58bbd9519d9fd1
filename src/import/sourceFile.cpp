#include "import/sourceFile.h"

#include <algorithm>
#include <cstring>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

struct SourceFile::Mapping {
    Mapping(int descriptor, std::size_t length)
        : size(length)
        , start(mmap(nullptr, length, PROT_READ, MAP_PRIVATE, descriptor, 0)) {}
    Mapping(const Mapping&) = delete;
    Mapping& operator=(const Mapping&) = delete;
    ~Mapping() {
        if (start != MAP_FAILED)
            munmap(start, size);
    }

    std::size_t size;
    void* start;
};

SourceFile::SourceFile(const QByteArray& bytes)
    : m_bytes(bytes)
    , m_size(bytes.size()) {}

SourceFile::SourceFile(int descriptor)
    : m_descriptor(descriptor)
    , m_size(std::max<qint64>(0, lseek(descriptor, 0, SEEK_END))) {}

qint64 SourceFile::read(qint64 at, char* bytes, qint64 count) const {
    count = std::clamp<qint64>(m_size - at, 0, count);
    if (m_descriptor < 0) {
        std::memcpy(bytes, m_bytes.constData() + (count > 0 ? at : 0), std::size_t(count));
        return count;
    }
    qint64 come = 0;
    while (come < count) {
        const ssize_t step = pread(m_descriptor, bytes + come, std::size_t(count - come), at + come);
        if (step <= 0)
            break;
        come += step;
    }
    return come;
}

QByteArray SourceFile::read(qint64 at, qint64 count) const {
    QByteArray bytes(std::clamp<qint64>(m_size - at, 0, count), Qt::Uninitialized);
    bytes.truncate(read(at, bytes.data(), bytes.size()));
    return bytes;
}

QByteArray SourceFile::bytes() const {
    if (m_descriptor < 0 || m_size == 0)
        return m_bytes;
    if (!m_mapping)
        m_mapping = std::make_shared<Mapping>(m_descriptor, std::size_t(m_size));
    if (m_mapping->start == MAP_FAILED)
        return read(0, m_size);
    return QByteArray::fromRawData(static_cast<const char*>(m_mapping->start), m_size);
}
