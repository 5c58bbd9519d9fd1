#include "import/zipParts.h"

#include "import/tableReader.h"

#include <zip.h>

#include <algorithm>

namespace {

[[noreturn]] void damaged() {
    throw ImportError(QStringLiteral("文件已损坏，或者不是 Excel 的 .xlsx 文件。"));
}
[[noreturn]] void tooLarge() {
    throw ImportError(QStringLiteral("文件解开以后太大，不能读取。"));
}

/// A part while it is unpacked.
class Part : public QIODevice {
public:
    Part(zip_file_t* part, qint64 most)
        : m_part(part)
        , m_most(most) {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }
    ~Part() override { zip_fclose(m_part); }
    Q_DISABLE_COPY_MOVE(Part)

    bool isSequential() const override { return true; }
    bool atEnd() const override { return m_ended; }

protected:
    qint64 readData(char* bytes, qint64 count) override {
        const qint64 come = zip_fread(m_part, bytes, zip_uint64_t(count));
        if (come < 0)
            damaged();
        m_ended = come == 0 && count > 0;
        m_unpacked += come;
        if (m_unpacked > m_most)
            tooLarge();
        return come;
    }
    qint64 writeData(const char* /*bytes*/, qint64 /*count*/) override { return -1; }

private:
    zip_file_t* m_part;
    qint64 m_most;
    qint64 m_unpacked = 0;
    bool m_ended = false;
};

} // namespace

ZipParts::ZipParts(const SourceFile& file)
    : m_file(file)
    , m_bytes(m_file.bytes()) {
    zip_source_t* source =
        zip_source_buffer_create(m_bytes.constData(), zip_uint64_t(m_bytes.size()), 0, nullptr);
    if (source)
        m_archive = zip_open_from_source(source, ZIP_RDONLY, nullptr);
    if (source && !m_archive)
        zip_source_free(source);
    if (!m_archive)
        damaged();
    if (zip_get_num_entries(m_archive, 0) > kMostParts) {
        zip_discard(m_archive);
        throw ImportError(QStringLiteral("文件里的部件太多，不能读取。"));
    }
}

ZipParts::~ZipParts() {
    zip_discard(m_archive);
}

qint64 ZipParts::find(const QString& name) const {
    return zip_name_locate(m_archive, name.toUtf8().constData(), ZIP_FL_NOCASE | ZIP_FL_ENC_UTF_8);
}

std::unique_ptr<QIODevice> ZipParts::open(const QString& name) {
    const qint64 index = find(name);
    zip_stat_t told;
    if (index < 0 || zip_stat_index(m_archive, zip_uint64_t(index), 0, &told) != 0)
        damaged();
    const bool isPlain = (told.comp_method == ZIP_CM_STORE || told.comp_method == ZIP_CM_DEFLATE) &&
                         told.encryption_method == ZIP_EM_NONE;
    if (!isPlain)
        throw ImportError(QStringLiteral("文件加了密，或者压缩方式不合规定，不能读取。"));
    const qint64 packed = std::min<qint64>(qint64(told.comp_size), m_bytes.size());
    const qint64 most = std::min(kMost, std::max(kSmall, packed * kMostRatio));
    if (told.size > zip_uint64_t(most))
        tooLarge();
    zip_file_t* part = zip_fopen_index(m_archive, zip_uint64_t(index), 0);
    if (!part)
        damaged();
    return std::make_unique<Part>(part, most);
}
