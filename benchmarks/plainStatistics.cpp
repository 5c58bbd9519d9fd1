#include "plainStatistics.h"

#include "analysis/frequency.h"
#include "analysis/percentText.h"

#include <array>
#include <charconv>

namespace {

/// A prepared statement; texts that are bound must outlive its next run.
class PlainStatement {
public:
    PlainStatement(const PlainSqlite& db, const QString& sql) {
        const QByteArray utf8 = sql.toUtf8();
        if (sqlite3_prepare_v2(db.handle(), utf8.constData(), int(utf8.size()), &m_statement, nullptr) !=
            SQLITE_OK)
            std::fprintf(stderr, "reference: %s\n", sqlite3_errmsg(db.handle()));
    }
    ~PlainStatement() { sqlite3_finalize(m_statement); }
    PlainStatement(const PlainStatement&) = delete;
    PlainStatement& operator=(const PlainStatement&) = delete;

    sqlite3_stmt* handle() { return m_statement; }
    bool step() { return sqlite3_step(m_statement) == SQLITE_ROW; }
    std::string_view text(int column) {
        const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(m_statement, column));
        return {bytes ? bytes : "", std::size_t(sqlite3_column_bytes(m_statement, column))};
    }
    double number(int column) { return sqlite3_column_double(m_statement, column); }
    int columnOf(const char* name) {
        int column = 0;
        while (std::string_view(name) != sqlite3_column_name(m_statement, column))
            ++column;
        return column;
    }
    void bind(int place, std::string_view text) {
        sqlite3_bind_text(m_statement, place, text.data(), int(text.size()), SQLITE_STATIC);
    }
    void bind(int place, PlainStatement& from, int column) {
        sqlite3_bind_value(m_statement, place, sqlite3_column_value(from.m_statement, column));
    }
    void reset() { sqlite3_reset(m_statement); }
    void run() {
        if (sqlite3_step(m_statement) != SQLITE_DONE)
            std::fprintf(stderr, "reference: %s\n", sqlite3_errmsg(sqlite3_db_handle(m_statement)));
        reset();
    }

private:
    sqlite3_stmt* m_statement = nullptr;
};

/// The month of a date of the file: "2022-3" of "2022-03-17".
std::string monthOf(std::string_view date) {
    std::string month(date.substr(0, 5));
    return month.append(date.substr(date[5] == '0' ? 6 : 5, date[5] == '0' ? 1 : 2));
}

int numberIn(std::string_view text) {
    int number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

/// Months between two months, 0 where more than one calendar year lies between them.
int intervalBetween(std::string_view earlier, std::string_view latest) {
    const int years = std::max(0, numberIn(latest.substr(0, 4)) - numberIn(earlier.substr(0, 4)));
    const int months = numberIn(latest.substr(5)) + 12 * years - numberIn(earlier.substr(5));
    return years > 1 ? 0 : std::max(1, months);
}

using Intervals = std::array<int, PurchaseIntervals::kLongest + 1>;

void writeIntervals(const PlainSqlite& db, const Intervals& customers) {
    int total = 0;
    QStringList places;
    for (int interval = 1; interval <= PurchaseIntervals::kLongest; ++interval) {
        total += customers[std::size_t(interval)];
        places << QStringLiteral("\"%1\" = ?").arg(interval);
    }
    for (const int row : {1, 2}) {
        PlainStatement update(
            db, QStringLiteral("UPDATE month_Table SET %1 WHERE rowid = %2").arg(places.join(u',')).arg(row));
        std::vector<std::string> texts;
        for (int interval = 1; interval <= PurchaseIntervals::kLongest; ++interval) {
            const int count = customers[std::size_t(interval)];
            const QString share =
                total == 0 ? QStringLiteral("0") : intervalShareText(100 * (double(count) / total)) + u'%';
            texts.push_back(row == 1 ? std::to_string(count) : share.toStdString());
        }
        for (std::size_t i = 0; i < texts.size(); ++i)
            update.bind(int(i) + 1, texts[i]);
        update.run();
    }
}

} // namespace

PlainStatistics::PlainStatistics(const QString& path)
    : m_db(path) {
    m_db.exec(QStringLiteral(
        "PRAGMA journal_mode = TRUNCATE; PRAGMA synchronous = FULL; PRAGMA cache_size = -16000"));
}

void PlainStatistics::turnoverByMonth() {
    m_db.exec(QStringLiteral("BEGIN IMMEDIATE; DELETE FROM saleTable"));
    {
        PlainStatement lines(m_db, QStringLiteral("SELECT 日期, 实付 FROM buyList ORDER BY rowid"));
        PlainStatement insert(m_db, QStringLiteral("INSERT INTO saleTable (日期, 实收) VALUES (?, ?)"));
        while (lines.step()) {
            const std::string month = monthOf(lines.text(0));
            insert.bind(1, month);
            insert.bind(2, lines, 1);
            insert.run();
        }
    }
    m_db.readAll(QStringLiteral("SELECT 日期, sum(实收) FROM saleTable GROUP BY 日期"));
    m_db.exec(QStringLiteral("COMMIT"));
}

template <typename Enough> void PlainStatistics::cut(Enough&& enough) {
    m_db.exec(QStringLiteral("BEGIN IMMEDIATE; DELETE FROM clientTable3"));
    {
        PlainStatement totals(
            m_db, QStringLiteral("SELECT sum(消费合计), sum(差额利润), sum(购买数) FROM clientTable"));
        totals.step();
        const double turnover = totals.number(0);
        PlainStatement clients(m_db,
                               QStringLiteral("SELECT * FROM clientTable ORDER BY 消费合计 DESC, rowid"));
        const int columns = sqlite3_column_count(clients.handle());
        const int measures[] = {clients.columnOf("消费合计"), clients.columnOf("差额利润"),
                                clients.columnOf("购买数")};
        PlainStatement insert(m_db, QStringLiteral("INSERT INTO clientTable3 VALUES (%1)")
                                        .arg(QStringList(columns, QStringLiteral("?")).join(u',')));
        double sums[3] = {};
        int count = 0;
        while (clients.step()) {
            for (int i = 0; i < 3; ++i)
                sums[i] += clients.number(measures[i]);
            for (int i = 0; i < columns; ++i)
                insert.bind(i + 1, clients, i);
            insert.run();
            if (enough(++count, sums[0] / turnover))
                break;
        }
    }
    m_db.readAll(QStringLiteral("SELECT * FROM clientTable3 ORDER BY 消费合计 DESC"));
    m_db.exec(QStringLiteral("COMMIT"));
}

void PlainStatistics::cutByShare(double share) {
    cut([share](int, double reached) { return reached >= share; });
}

void PlainStatistics::cutByRank(int number) {
    cut([number](int count, double) { return count >= number; });
}

std::string PlainStatistics::copyLines() {
    PlainStatement lines(m_db, QStringLiteral("SELECT 日期, 客户编号, 订单号 FROM buyList ORDER BY 日期"));
    PlainStatement insert(m_db, QStringLiteral("INSERT INTO buy_Frequence_Table VALUES (?, ?, ?)"));
    std::string month;
    while (lines.step()) {
        month = monthOf(lines.text(0));
        insert.bind(1, month);
        insert.bind(2, lines, 1);
        insert.bind(3, lines, 2);
        insert.run();
    }
    return month;
}

void PlainStatistics::countIntervals(const std::string& latest) {
    PlainStatement clients(
        m_db, QStringLiteral("SELECT DISTINCT 客户编号 FROM buy_Frequence_Table2 WHERE 日期 = ?"));
    PlainStatement earlier(m_db, QStringLiteral("SELECT 日期 FROM buy_Frequence_Table2 WHERE 客户编号 = ? "
                                                "AND 日期 <> ? ORDER BY 日期 DESC LIMIT 1"));
    Intervals customers{};
    clients.bind(1, latest);
    while (clients.step()) {
        earlier.bind(1, clients, 0);
        earlier.bind(2, latest);
        if (earlier.step())
            if (const int interval = intervalBetween(earlier.text(0), latest);
                interval >= 1 && interval <= PurchaseIntervals::kLongest)
                ++customers[std::size_t(interval)];
        earlier.reset();
    }
    writeIntervals(m_db, customers);
}

void PlainStatistics::frequency() {
    m_db.exec(QStringLiteral("BEGIN IMMEDIATE; DELETE FROM buy_Frequence_Table"));
    const std::string latest = copyLines();
    // Without the index each customer's last month would be a scan of its own.
    m_db.exec(QStringLiteral(
        "DROP TABLE buy_Frequence_Table2; CREATE TABLE buy_Frequence_Table2 AS SELECT 日期, 客户编号, "
        "count(订单号) AS 购买次数 FROM buy_Frequence_Table GROUP BY 日期, 客户编号;"
        "CREATE INDEX monthsOfClient ON buy_Frequence_Table2 (客户编号, 日期)"));
    countIntervals(latest);
    m_db.exec(QStringLiteral("COMMIT"));
}

void PlainStatistics::distribution() {
    m_db.readAll(QStringLiteral(
        "SELECT 地区, count(地区) AS 数量 FROM clientTable GROUP BY 地区 ORDER BY count(地区) DESC"));
    m_db.readAll(QStringLiteral("SELECT count(地区) AS 数量 FROM clientTable"));
}

void PlainStatistics::salespeople() {
    m_db.readAll(QStringLiteral(
        "SELECT 业务员编号, sum(消费合计) AS 营业额, count(业务员编号) AS 客户数 FROM clientTable GROUP BY "
        "业务员编号 ORDER BY sum(消费合计) DESC"));
    m_db.readAll(QStringLiteral("SELECT sum(消费合计) FROM clientTable"));
}

void PlainStatistics::evaluation() {
    m_db.readAll(QStringLiteral("SELECT sum(消费合计), sum(差额利润), sum(购买数) FROM clientTable"));
    m_db.readAll(QStringLiteral("SELECT * FROM clientTable ORDER BY 消费合计 DESC"));
    m_db.readAll(QStringLiteral("SELECT min(日期), max(日期) FROM buyList"));
}

void PlainStatistics::clientLines() {
    m_db.exec(QStringLiteral("BEGIN IMMEDIATE; DROP TABLE tempTable2;"
                             "CREATE TABLE tempTable2 AS SELECT * FROM buyList WHERE 客户编号 = '%1'")
                  .arg(QString::fromStdString(client)));
    m_db.readAll(QStringLiteral("SELECT * FROM tempTable2"));
    m_db.readAll(QStringLiteral("SELECT sum(消费合计), sum(差额利润), sum(购买数) FROM clientTable"));
    m_db.exec(QStringLiteral("COMMIT"));
}

void PlainStatistics::productLines() {
    m_db.readAll(QStringLiteral("SELECT * FROM buyList WHERE 产品编号 = '%1' ORDER BY 日期 DESC")
                     .arg(QString::fromStdString(product)));
}

void PlainStatistics::productClients() {
    m_db.exec(QStringLiteral("BEGIN IMMEDIATE; DROP TABLE clientTable3;"
                             "CREATE TABLE clientTable3 AS SELECT * FROM clientTable WHERE 客户编号 IN "
                             "(SELECT 客户编号 FROM buyList WHERE 产品编号 = '%1')")
                  .arg(QString::fromStdString(product)));
    m_db.readAll(QStringLiteral("SELECT * FROM clientTable3"));
    m_db.exec(QStringLiteral("COMMIT"));
}

void PlainStatistics::indexOrders() {
    m_db.exec(QStringLiteral("CREATE INDEX IF NOT EXISTS linesOfOrder ON buyList (订单号)"));
}

void PlainStatistics::orders() {
    m_db.exec(QStringLiteral("BEGIN IMMEDIATE; DELETE FROM orderTable"));
    {
        PlainStatement groups(
            m_db, QStringLiteral("SELECT 订单号, sum(实付), sum(差额利润), sum(数量) FROM buyList "
                                 "GROUP BY 订单号 ORDER BY sum(实付) DESC"));
        PlainStatement first(
            m_db, QStringLiteral("SELECT 客户编号 FROM buyList WHERE 订单号 = ? ORDER BY rowid LIMIT 1"));
        PlainStatement insert(m_db, QStringLiteral("INSERT INTO orderTable (订单号, 客户编号, 购买额, "
                                                   "差额利润, 购买数量) VALUES (?, ?, ?, ?, ?)"));
        while (groups.step()) {
            first.bind(1, groups, 0);
            first.step();
            insert.bind(1, groups, 0);
            insert.bind(2, first, 0);
            for (int sum = 1; sum <= 3; ++sum)
                insert.bind(sum + 2, groups, sum);
            insert.run();
            first.reset();
        }
    }
    m_db.readAll(QStringLiteral("SELECT * FROM orderTable ORDER BY 购买额 DESC"));
    m_db.exec(QStringLiteral("COMMIT"));
}
