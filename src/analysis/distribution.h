#pragma once

#include "data/session.h"

#include <span>

/// One of the two ways in which customers are counted by group.
struct Distribution {
    const char16_t* command; // of the menu
    const char16_t* window;
    const char16_t* caption;
    const char16_t* column; // of the customers, and of the work table
    const char16_t* workTable;
    const char16_t* total; // what the number of customers is called
    const char16_t* report;
    /// Names of the commands, whose numbers the two windows give to different roles.
    const char16_t* print;
    const char16_t* back;
    const char16_t* moves;
};
std::span<const Distribution> distributions();

/// Whether customers are counted in the period copy: while a period of customers or salespeople is on show,
/// or a cut of one, and the copy is there.
bool countsPeriod(const Session& session);

/// A count of customers by group.
struct DistributionCount {
    double total = 0;    // customers that have a group
    bool period = false; // those of the period copy
    /// The rows of the work table, the largest group first: the group, 数量, and 百分率 as cut text (0 where
    /// the only group has all).
    std::shared_ptr<TableImage> rows;
};

/// Counts the customers of the source that is on show. Throws RuntimeError.
DistributionCount countDistribution(Session& session, const Distribution& distribution);

/// Writes a count into its work table and opens a cursor on it. Throws RuntimeError.
RecordsetPtr writeDistribution(Session& session, const Distribution& distribution,
                               const DistributionCount& count);
