#pragma once

#include "recordset/recordset.h"

#include <array>
#include <functional>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

/// Told how far a long loop has come: rows done, rows in all.
using Progress = std::function<void(int, int)>;

/// The sums of a customer's lines that his stored totals are made of.
struct LineSums {
    double paid = 0;     // 实付, in the currency of the shop
    double margin = 0;   // 差额利润
    double quantity = 0; // 数量

    void add(double linePaid, double lineMargin, double lineQuantity);
};

/// Margin rate in percent, 0 where nothing was paid.
double marginRate(const LineSums& sums);

/// Sums over all rows that the cursor shows, in their order. Leaves the position.
LineSums sumsOfView(const RecordsetPtr& lines);

/// The sums of all rows that a cursor over lines shows, by customer number (case of A-Z apart), in one pass.
/// Valid while the lines stay as they are.
class SumsByClient {
public:
    explicit SumsByClient(const RecordsetPtr& lines);
    /// Nothing where no line bears the number.
    std::optional<LineSums> find(std::string_view number) const;

private:
    const ColumnStore& numberStore() const;
    const TextPool& pool() const { return numberStore().pool; }
    void addStored();
    void addShown();

    const Recordset& m_lines;
    const TableImage& m_image;
    int m_number = 0;
    std::vector<LineSums> m_sums; // by fold class of the number's code
    std::vector<char> m_any;      // whether a line bears it
};

/// A customer's stored totals and what they are for such sums, in one order.
inline constexpr const char16_t* kTotalColumns[] = {u"消费合计", u"差额利润", u"购买数", u"差额利润率"};
std::array<CellValue, 4> totalsOf(const LineSums& sums);

/// The recount of the customers' totals in steps: all customers are looked at first, then what differs is
/// written. In: cursors that show all customers and all lines, and stay as they are until it is written.
class TotalsRecount {
public:
    TotalsRecount(Connection& connection, RecordsetPtr clients, RecordsetPtr lines);

    /// Looks at `most` customers more; whether some are left.
    bool look(int most);
    int looked() const { return m_looked; }
    int clientCount() const { return m_clients->RecordCount(); }
    /// Writes the totals that differ, in one transaction; their number.
    int write();
    /// Looks at all of them and writes.
    int finish();

private:
    Connection& m_connection;
    RecordsetPtr m_clients;
    RecordsetPtr m_lines;
    SumsByClient m_sums;
    int m_number = 0;
    std::array<int, 4> m_fields{}; // of kTotalColumns
    int m_looked = 0;
    std::vector<std::pair<RowId, std::array<CellValue, 4>>> m_wrong; // with what they are to be
};

/// Rebuilds 消费合计, 差额利润, 购买数 and 差额利润率 of every customer from the lines that bear his number
/// (case of A-Z apart). Writes only what changes, in one transaction. Afterwards no Filter is on, the
/// customers stand on their first row, the lines are requeried. A customer cursor that is closed or empty is
/// left alone. Gives the number of customers whose totals changed.
int client_totals_recount(Connection& connection, const RecordsetPtr& clients, const RecordsetPtr& lines,
                          const Progress& progress = {});

/// 差额利润 := 实付 - 成本 * 数量 on every line of the cursor, the position kept (the first row where there
/// was none).
void lineMarginRefresh(Connection& connection, const RecordsetPtr& lines);
