#include "suggest/rowSuggestions.h"

#include "recordset/dialect.h"
#include "recordset/shownText.h"

#include <QScopeGuard>

#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <optional>

namespace {

constexpr int kPatience = 1000; // milliseconds that a writer is waited for
constexpr std::size_t kRowsAtOnce = 2000;

using DatabaseHandle = std::unique_ptr<sqlite3, decltype(&sqlite3_close)>;

DatabaseHandle openForReading(const QString& path) {
    sqlite3* db = nullptr;
    const int code =
        sqlite3_open_v2(path.toUtf8().constData(), &db, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
    DatabaseHandle handle(db, sqlite3_close);
    if (code != SQLITE_OK)
        failEngine(db, path);
    sqlite3_busy_timeout(db, kPatience);
    return handle;
}

QStringList textsOfRow(const Statement& row, int first) {
    QStringList texts;
    for (int column = first; column < row.columnCount(); ++column)
        texts << shownText(row.bytes(column)).trimmed();
    return texts;
}

QStringList keysOfRow(NameReadings& readings, const QStringList& texts) {
    QStringList keys{suggestionKey(texts.first())};
    for (qsizetype i = 1; i < texts.size(); ++i)
        keys += readings.keysOf(texts[i]);
    keys.removeDuplicates();
    return keys;
}

} // namespace

RowSuggestions::RowSuggestions(Connection& connection, QString table, QStringList columns)
    : m_connection(connection)
    , m_table(std::move(table))
    , m_columns(std::move(columns)) {}

RowSuggestions::~RowSuggestions() {
    stop();
    letGo();
}

void RowSuggestions::stop() {
    m_stop = true;
    if (m_thread.joinable())
        m_thread.join();
    m_stop = false;
}

void RowSuggestions::letGo() {
    if (m_image)
        m_image->detach(this);
    m_image.reset();
}

void RowSuggestions::start() {
    stop();
    letGo();
    m_changed.clear();
    m_isReading = false;
    ++m_reading;
    m_image = m_connection.standingImage(m_table);
    if (!m_image)
        return;
    // From here on every change is noted, so that it does not matter what of it the thread sees.
    m_image->attach(this);
    m_seen = m_image->size();
    QString names;
    for (const QString& column : m_columns)
        names += QStringLiteral(", ") + quotedName(column);
    const QString select = QStringLiteral("SELECT rowid%1 FROM %2 WHERE rowid > ? ORDER BY rowid LIMIT %3")
                               .arg(names, quotedName(m_table))
                               .arg(kRowsAtOnce);
    m_isReading = true;
    m_thread = std::thread([this, path = m_connection.path(), select, reading = m_reading] {
        const std::shared_ptr<Read> done = read(path, select);
        QMetaObject::invokeMethod(
            this, [this, reading, done] { take(reading, done); }, Qt::QueuedConnection);
    });
}

/// Some rows behind a rowid, the file held no longer than it takes to fetch them. False while somebody
/// writes.
bool RowSuggestions::fetch(Statement& statement, qint64 behind, Texts& rows) {
    rows.clear();
    return m_connection.gate().tryReading([&] {
        const auto reset = qScopeGuard([&statement] { statement.reset(); });
        statement.bind(1, behind);
        while (statement.step())
            rows.emplace_back(statement.integer(0), textsOfRow(statement, 1));
    });
}

/// In the thread. Null where it was stopped, or the file could not be read. Nobody who writes waits for it
/// longer than for a few rows.
std::shared_ptr<RowSuggestions::Read> RowSuggestions::read(const QString& path, const QString& select) try {
    auto done = std::make_shared<Read>();
    done->readings = std::make_unique<NameReadings>();
    const DatabaseHandle db = openForReading(path);
    std::optional<Statement> statement;
    const auto prepare = [&] { statement.emplace(db.get(), select); };
    while (!m_connection.gate().tryReading(prepare))
        if (!pause())
            return nullptr;
    qint64 last = std::numeric_limits<qint64>::min();
    Texts rows(kRowsAtOnce);
    while (rows.size() == kRowsAtOnce) {
        while (!fetch(*statement, last, rows))
            if (!pause())
                return nullptr;
        for (const auto& [rowid, texts] : rows) {
            last = rowid;
            done->index.add(rowid, keysOfRow(*done->readings, texts));
            if (m_stop)
                return nullptr;
        }
    }
    done->index.build();
    return done;
} catch (const std::exception&) {
    return nullptr;
}

/// Lets somebody who writes go first; false where the reading is to end.
bool RowSuggestions::pause() const {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return !m_stop;
}

void RowSuggestions::take(int reading, const std::shared_ptr<Read>& read) {
    if (reading != m_reading)
        return;
    m_isReading = false;
    if (!read)
        return;
    m_index = std::move(read->index);
    m_readings = std::move(read->readings);
    Q_EMIT ready();
}

std::optional<QStringList> RowSuggestions::textsOf(qint64 rowid) {
    QString names;
    for (const QString& column : m_columns)
        names += (names.isEmpty() ? QString() : QStringLiteral(", ")) + quotedName(column);
    Statement& statement = m_connection.cached(
        QStringLiteral("SELECT %1 FROM %2 WHERE rowid = ?").arg(names, quotedName(m_table)));
    const auto reset = qScopeGuard([&statement] { statement.reset(); });
    statement.bind(1, rowid);
    return statement.step() ? std::optional(textsOfRow(statement, 0)) : std::nullopt;
}

void RowSuggestions::follow() {
    if (m_isReading)
        return; // what changed is put beside what is being read
    for (; m_seen < m_image->size(); ++m_seen)
        m_changed.push_back(m_seen);
    std::sort(m_changed.begin(), m_changed.end());
    m_changed.erase(std::unique(m_changed.begin(), m_changed.end()), m_changed.end());
    if (m_changed.size() + std::size_t(m_index.putCount()) > kMostChanges)
        return start();
    for (const Row row : m_changed) {
        if (row >= m_image->size())
            break; // taken back again
        const std::optional<QStringList> texts = textsOf(m_image->rowid(row));
        m_index.put(m_image->rowid(row), texts ? keysOfRow(*m_readings, *texts) : QStringList());
    }
    m_changed.clear();
}

std::vector<SuggestedRow> RowSuggestions::offered(const QString& typed, int most) {
    follow();
    const auto isLive = [this](qint64 rowid) { return !m_image->rowsOf({rowid}).empty(); };
    std::vector<SuggestedRow> rows;
    for (const qint64 rowid : m_index.find(suggestionKey(typed), most, isLive))
        if (const auto texts = textsOf(rowid))
            rows.push_back({m_image->rowsOf({rowid}).front(), *texts});
    return rows;
}

std::vector<SuggestedRow> RowSuggestions::offer(const QString& typed, int most) {
    if (!isReady() || m_connection.inTransaction())
        return {};
    if (!m_image || m_image->hasVanished() || m_connection.standingImage(m_table) != m_image) {
        m_readings.reset(); // rows of another table
        start();
        return {};
    }
    const auto rows = m_connection.atOnce([&] { return offered(typed, most); });
    return rows ? *rows : std::vector<SuggestedRow>();
}

bool goToSuggested(const RecordsetPtr& cursor, RowId row) {
    if (!cursor->isOpen())
        return false;
    const QuietWalk walk(cursor);
    if (cursor->moveToRow(row))
        return true;
    cursor->clearFilter();
    if (cursor->moveToRow(row))
        return true;
    // A row that was added elsewhere is seen after this.
    cursor->Requery();
    return cursor->moveToRow(row);
}
