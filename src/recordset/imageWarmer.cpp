#include "recordset/imageWarmer.h"

#include "recordset/connection.h"
#include "recordset/error.h"
#include "recordset/imageLoader.h"

#include <QTimer>

#include <algorithm>
#include <chrono>

namespace {

constexpr Row kStep = 5'000; // rows that are read while writers wait
constexpr int kLater = 50;   // milliseconds

/// The rowids of these slots, first and last.
std::pair<qint64, qint64> rowidsOf(const WarmSource& source, Row first, Row last) {
    return source.rowids.empty() ? std::pair(qint64(first) + 1, qint64(last) + 1)
                                 : std::pair(source.rowids[first], source.rowids[last]);
}

/// The slots of rowids, which are those of the source with some left out. Throws RuntimeError where another
/// program has put others among them.
std::vector<Row> slotsOf(const WarmSource& source, const std::vector<qint64>& rowids) {
    const auto rowidOf = [&source](Row slot) {
        return source.rowids.empty() ? qint64(slot) + 1 : source.rowids[slot];
    };
    std::vector<Row> slots;
    slots.reserve(rowids.size());
    Row slot = 0;
    for (const qint64 rowid : rowids) {
        while (slot < source.size && rowidOf(slot) < rowid)
            ++slot;
        if (slot == source.size || rowidOf(slot) != rowid)
            fail(ErrorNumber::Engine, QStringLiteral("表被别的程序改动"));
        slots.push_back(slot);
    }
    return slots;
}

} // namespace

struct ImageWarmer::Pass {
    QString table;
    std::weak_ptr<TableImage> image;
    WarmSource source;
    std::vector<WarmColumn> wishes; // one a column
    std::vector<WarmedColumn> columns;
};

ImageWarmer::ImageWarmer(Connection& connection, std::vector<WarmTable> tables)
    : m_connection(connection)
    , m_tables(std::move(tables)) {
    std::reverse(m_tables.begin(), m_tables.end());
}

ImageWarmer::~ImageWarmer() {
    m_stop = true;
    if (m_thread.joinable())
        m_thread.join();
    if (const auto image = m_warming.lock())
        image->endWarming(); // what was read is not handed over any more
}

void ImageWarmer::waitForIdle(std::function<void()> then) {
    if (m_connection.isIdle())
        return then();
    QTimer::singleShot(kLater, this, [this, then = std::move(then)] { waitForIdle(then); });
}

void ImageWarmer::next() {
    waitForIdle([this] {
        try {
            startNext();
        } catch (const std::exception&) { // no memory or no thread left: the first uses read for themselves
            m_tables.clear();
            if (onEnd)
                onEnd();
        }
    });
}

void ImageWarmer::startNext() {
    std::shared_ptr<Pass> pass;
    while (!pass && !m_tables.empty()) {
        const WarmTable table = std::move(m_tables.back());
        m_tables.pop_back();
        pass = passOver(table);
    }
    if (!pass) {
        if (onEnd)
            onEnd();
        return;
    }
    m_thread = std::thread([this, pass] {
        read(*pass);
        QMetaObject::invokeMethod(
            this, [this, pass] { handOver(pass); }, Qt::QueuedConnection);
    });
}

/// The pass over a table's columns, null where none of them is wanted any more.
std::shared_ptr<ImageWarmer::Pass> ImageWarmer::passOver(const WarmTable& table) {
    const auto image = m_connection.standingImage(table.table);
    if (!image || image->isDropped() || image->size() == 0)
        return nullptr;
    auto pass = std::make_shared<Pass>();
    pass->table = table.table;
    pass->image = image;
    for (const WarmColumn& wish : table.columns) {
        WarmedColumn warmed;
        warmed.column = image->columnIndex(wish.name);
        if (warmed.column < 0)
            continue;
        warmed.read = !image->isLoaded(warmed.column);
        const bool isOrdered = wish.index || wish.ranks || wish.distinct;
        if (!warmed.read && (!isOrdered || image->info(warmed.column).type != ColumnType::Text))
            continue;
        if (warmed.read) {
            warmed.store.info = image->info(warmed.column);
        } else {
            warmed.original = image->column(warmed.column).pool;
            warmed.store = image->columnCopy(warmed.column);
        }
        pass->wishes.push_back(wish);
        pass->columns.push_back(std::move(warmed));
    }
    if (pass->columns.empty())
        return nullptr;
    pass->source = image->beginWarming();
    m_warming = image;
    return pass;
}

/// In the thread.
void ImageWarmer::read(Pass& pass) {
    try {
        readRows(pass);
        for (std::size_t i = 0; i < pass.columns.size() && !m_stop; ++i)
            order(pass.columns[i], pass.wishes[i]);
    } catch (const std::exception&) { // memory too, which nobody has asked for yet
        pass.columns.clear();
    }
}

void ImageWarmer::readRows(Pass& pass) {
    std::vector<ColumnInfo> wanted;
    for (WarmedColumn& column : pass.columns)
        if (column.read)
            wanted.push_back(column.store.info);
        else
            column.missing = pass.source.deleted;
    if (wanted.empty())
        return;
    std::unique_ptr<RangeLoader> loader;
    inStep([&] {
        loader = std::make_unique<RangeLoader>(m_connection.path(), pass.table, wanted, pass.source.size);
    });
    for (Row first = 0; first < pass.source.size && !m_stop; first += kStep) {
        const auto [from, to] = rowidsOf(pass.source, first, std::min(first + kStep, pass.source.size) - 1);
        inStep([&loader, from = from, to = to] { loader->read(from, to); });
    }
    if (!m_stop)
        place(pass, loader->take());
}

/// Reads a little while nobody writes; not at all where the work is to stop.
template <typename Step> void ImageWarmer::inStep(Step&& step) {
    while (!m_stop && !m_connection.gate().tryReading(step))
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

/// Puts the cells that were read where their rows have their slots.
void ImageWarmer::place(Pass& pass, LoadedRows&& rows) {
    const std::vector<Row> slots = slotsOf(pass.source, rows.rowids);
    const bool complete = slots.size() == pass.source.size;
    std::vector<char> missing(pass.source.size, 1);
    for (const Row slot : slots)
        missing[slot] = 0;
    std::size_t next = 0;
    for (WarmedColumn& column : pass.columns) {
        if (!column.read)
            continue;
        ColumnStore& read = rows.columns[next++];
        column.store = complete ? std::move(read) : read.spread(slots, pass.source.size);
        column.missing = missing;
    }
}

void ImageWarmer::order(WarmedColumn& column, const WarmColumn& wish) {
    const ColumnStore& store = column.store;
    if (store.info.type != ColumnType::Text)
        return;
    if (wish.index)
        column.index.emplace().build(store);
    if (wish.ranks || wish.distinct)
        column.ranks.emplace().of(store.pool);
    if (!wish.distinct || store.pool.hasCaseVariants())
        return;
    column.distinct.emplace().count(store, column.missing);
    column.distinct->ordered(column.ranks->of(store.pool));
}

void ImageWarmer::handOver(const std::shared_ptr<Pass>& pass) {
    m_thread.join();
    waitForIdle([this, pass] {
        if (const auto image = pass->image.lock()) {
            adopt(*image, *pass);
            image->endWarming();
        }
        m_warming.reset();
        next();
    });
}

/// A column that was read by its first use meanwhile is only to be ordered. Where another program holds the
/// file the rest is left: nobody waits for it.
void ImageWarmer::adopt(TableImage& image, Pass& pass) {
    WarmTable again{pass.table, {}};
    for (std::size_t i = 0; i < pass.columns.size(); ++i) {
        const int column = pass.columns[i].column;
        const bool read = pass.columns[i].read;
        try {
            const auto adopted = m_connection.atOnce([&] { return image.adopt(std::move(pass.columns[i])); });
            if (!adopted)
                return;
            if (!*adopted && read && image.isLoaded(column))
                again.columns.push_back(pass.wishes[i]);
        } catch (const std::exception&) { // its first use will tell
        }
    }
    if (!again.columns.empty())
        m_tables.push_back(again);
}
