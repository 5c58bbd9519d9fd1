#pragma once

#include "plainSqlite.h"

#include <string_view>

/// The statistics as plain walks of prepared statements over a shop's file, by the storage engine alone. Each
/// one is one transaction with the program's pragmas, and leaves the same rows in the same work tables.
class PlainStatistics {
public:
    explicit PlainStatistics(const QString& path);

    void turnoverByMonth();
    /// Customers from the top until they bring this part of the turnover.
    void cutByShare(double share);
    /// The first customers by turnover.
    void cutByRank(int number);
    void frequency();
    /// The rest only read.
    void distribution();
    void salespeople();
    void evaluation();

    std::string client;  // whose purchases
    std::string product; // whose sales and buyers
    void clientLines();
    void productLines();
    void productClients();
    /// Looks for the first line of each order by an index, which is made before the first run.
    void orders();
    void indexOrders();

private:
    template <typename Enough> void cut(Enough&& enough);
    /// Copies month, customer and order of every line. Out: the month of the last line by its date.
    std::string copyLines();
    void countIntervals(const std::string& latest);

    PlainSqlite m_db;
};
