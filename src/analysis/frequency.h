#pragma once

#include "data/recount.h"
#include "data/session.h"

#include <array>

/// How many months lie between the last purchase of the latest month's customers and the one before.
struct PurchaseIntervals {
    static constexpr int kLongest = 24; // months; index 0 is not in use

    std::array<int, kLongest + 1> customers{};
    /// Their numbers as a list for an In clause: "'A001', 'A007'".
    std::array<QString, kLongest + 1> lists;
};

/// The lines that the cursor shows as the rows of buy_Frequence_Table: 日期 (key of the month), 客户编号,
/// 订单号.
std::shared_ptr<TableImage> frequencyRows(const Recordset& lines);

/// The rows of buy_Frequence_Table2, one for each month and customer: 日期, 客户编号, 购买次数.
std::shared_ptr<TableImage> monthsOfCustomers(const TableImage& frequencyRows);

/// Counts the customers of the latest month by the months since their purchase before, at least one. Of a
/// customer's earlier months that counts whose key is the greatest as a text, so that "2004-9" beats
/// "2004-10": that is meant. Customers without an earlier month, or whose month lies more than one calendar
/// year back, are left out. In: the rows of monthsOfCustomers().
PurchaseIntervals purchaseIntervals(const TableImage& months, const QString& latest);

/// Writes the counts into the first row of month_Table and their shares in percent into its last, column by
/// column from the second on.
void writeIntervals(const RecordsetPtr& monthTable, const PurchaseIntervals& intervals);

/// What a run of the frequency leaves for the file.
struct FrequencyTables {
    std::shared_ptr<TableImage> lines;  // of buy_Frequence_Table
    std::shared_ptr<TableImage> months; // of buy_Frequence_Table2
    bool counted = false;               // whether month_Table and the lists of customers are new
};

/// Counts how often the customers of the latest month come back, into session.month_Table and
/// session.intervalClients. In: lines without a Filter; they are sorted by 日期. Nothing is counted where the
/// latest month is the only one.
FrequencyTables countFrequency(Session& session);

/// Writes what a run left into the file.
void writeFrequency(Session& session, const FrequencyTables& tables, const Progress& progress = {});

/// Makes clientTable3 of the customers of an interval (a position of month_Table) and opens it. Without any
/// the table is only dropped and the answer is false. With some a cut of the best customers ends.
bool showIntervalClients(Session& session, int interval);
