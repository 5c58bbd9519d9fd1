#include "import/sheetCells.h"

#include "import/tableReader.h"

#include <algorithm>

namespace {

constexpr quint32 kShared = 1U << 29;                   // mark of a shared text
constexpr std::size_t kMostText = std::size_t(1) << 30; // bytes

} // namespace

quint32 TextHeap::add(std::string_view text) {
    if (m_ends.size() >= kShared || m_bytes.size() + text.size() > kMostText)
        throw ImportError(QStringLiteral("工作表太大，不能读取。"));
    m_bytes.append(text);
    m_ends.push_back(quint32(m_bytes.size()));
    return count() - 1;
}

void SheetCells::add(int row, int column, quint32 text) {
    m_cells.push_back(quint64(row) << 44 | quint64(column) << 30 | text);
}

void SheetCells::put(int row, int column, std::string_view text) {
    if (holds(row, column))
        add(row, column, m_own.add(text));
}

void SheetCells::putShared(int row, int column, quint32 number) {
    if (number < m_shared.count() && holds(row, column))
        add(row, column, number | kShared);
}

std::string_view SheetCells::textOf(Cell cell) const {
    const quint32 text = quint32(cell & (kShared - 1));
    return cell & kShared ? m_shared.text(text) : m_own.text(text);
}

void SheetCells::putInOrder() {
    const auto before = [](Cell a, Cell b) { return placeOf(a) < placeOf(b); };
    if (!std::is_sorted(m_cells.begin(), m_cells.end(), before))
        std::stable_sort(m_cells.begin(), m_cells.end(), before);
    std::size_t kept = 0;
    for (const Cell cell : m_cells) {
        if (kept == 0 || placeOf(m_cells[kept - 1]) != placeOf(cell))
            ++kept;
        m_cells[kept - 1] = cell;
    }
    m_cells.resize(kept);
}

void SheetCells::table(RowSink& sink) {
    putInOrder();
    if (m_cells.empty())
        return sink.begin({});
    int left = m_bounds.columns;
    int right = 0;
    for (const Cell cell : m_cells) {
        left = std::min(left, columnOf(cell));
        right = std::max(right, columnOf(cell));
    }
    auto next = m_cells.begin();
    const auto isNext = [&](int row, int column) {
        return next != m_cells.end() && rowOf(*next) == row && columnOf(*next) == column;
    };
    const int top = rowOf(m_cells.front());
    QStringList names;
    for (int column = left; column <= right; ++column) {
        QString name;
        if (isNext(top, column)) {
            const std::string_view text = textOf(*next++);
            name = QString::fromUtf8(text.data(), qsizetype(text.size())).trimmed();
        }
        names << (name.isEmpty() ? QStringLiteral("F%1").arg(column - left + 1) : name);
    }
    sink.begin(names);
    const int bottom = rowOf(m_cells.back());
    for (int row = top + 1; row <= bottom; ++row)
        for (int column = left; column <= right; ++column) {
            if (isNext(row, column))
                sink.text(textOf(*next++));
            else
                sink.null();
        }
}
