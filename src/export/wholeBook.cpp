#include "export/wholeBook.h"

#include <zip.h>

#include <memory>

namespace {

constexpr qsizetype kBlock = 1 << 16;
const QByteArray kRowsBegin = "<sheetData>";
const QByteArray kRowsEnd = "</sheetData>";

/// Finds a mark in a stream of which it is given one block after the other.
class Mark {
public:
    explicit Mark(QByteArray mark)
        : m_mark(std::move(mark)) {}

    void look(const QByteArray& block) {
        if (m_at >= 0)
            return;
        const QByteArray window = m_rest + block;
        if (const qsizetype found = window.indexOf(m_mark); found >= 0)
            m_at = m_seen - m_rest.size() + found;
        m_seen += block.size();
        m_rest = window.right(m_mark.size() - 1);
    }
    /// Where it begins, -1 while it has not come.
    qint64 at() const { return m_at; }

private:
    QByteArray m_mark;
    QByteArray m_rest; // the end of what came before, which may hold the mark's beginning
    qint64 m_seen = 0;
    qint64 m_at = -1;
};

/// Whether the sheet that is open holds rows of so many bytes, and all that belongs around them.
bool isWholeSheet(zip_file_t* sheet, qint64 rowBytes) {
    Mark begin(kRowsBegin);
    Mark end(kRowsEnd);
    QByteArray tail;
    QByteArray block(kBlock, Qt::Uninitialized);
    qint64 read = 0;
    while ((read = zip_fread(sheet, block.data(), zip_uint64_t(kBlock))) > 0) {
        const QByteArray part = block.left(read);
        begin.look(part);
        end.look(part);
        tail = (tail + part).right(kBlock);
    }
    return read == 0 && begin.at() >= 0 && end.at() == begin.at() + kRowsBegin.size() + rowBytes &&
           tail.trimmed().endsWith("</worksheet>");
}

} // namespace

bool isWholeBook(const QByteArray& path, const std::vector<qint64>& rowBytes) {
    const std::unique_ptr<zip_t, void (*)(zip_t*)> book(zip_open(path.constData(), ZIP_RDONLY, nullptr),
                                                        zip_discard);
    if (!book)
        return false;
    for (std::size_t number = 0; number < rowBytes.size(); ++number) {
        const QByteArray name = "xl/worksheets/sheet" + QByteArray::number(qint64(number) + 1) + ".xml";
        const std::unique_ptr<zip_file_t, int (*)(zip_file_t*)> sheet(
            zip_fopen(book.get(), name.constData(), 0), zip_fclose);
        if (!sheet || !isWholeSheet(sheet.get(), rowBytes[number]))
            return false;
    }
    return true;
}
