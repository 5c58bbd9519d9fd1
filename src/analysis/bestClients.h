#pragma once

#include "data/session.h"

#include <span>

/// What a customer is measured by.
enum class ClientMeasure { Turnover, Margin, Quantity };
inline constexpr int kMeasures = 3;

/// Sums of the three measures, by measure.
struct MeasureSums {
    double of[kMeasures] = {};

    double operator[](ClientMeasure measure) const { return of[int(measure)]; }
};

/// One of the six questions who carries the shop: how few customers bring a share of the whole, or what the
/// first of them bring.
struct BestClientsQuestion {
    const char16_t* command; // of the menu
    bool ranks;              // by number of customers, not by share
    ClientMeasure measure;
    const char16_t* inputTitle;
    const char16_t* prompt;
    const char16_t* caption; // what the panel says of the cut
};
std::span<const BestClientsQuestion> bestClientsQuestions();

/// The order that puts the customers with the most first: "消费合计 desc" and its sisters.
QString mostFirst(ClientMeasure measure);

/// Sums of the measures over a whole customer table, "clientTable" or "clientTable2".
MeasureSums clientTotals(Session& session, const QString& table);

/// The first customers of a cursor, and what stands beside them.
struct BestClients {
    std::vector<RowId> rows; // the customers, first to last
    MeasureSums sums;        // of these rows
    /// Shares of the whole in percent, cut, without the "%", by measure and of the number of customers.
    QString shares[kMeasures];
    QString clientShare;

    int count() const { return int(rows.size()); }
};

/// Customers from the top until their share of the measure's total reaches `target`, the one who crosses it
/// included; nobody where the total is 0. Takes the cursor's Filter off and sorts it by the measure. In:
/// target as a part of 1, in single precision, as it is typed in percent.
BestClients cutByShare(const RecordsetPtr& clients, const MeasureSums& totals, ClientMeasure measure,
                       float target);

/// The first `number` customers of what the cursor shows, at least one; nobody where any of the three totals
/// is 0. Sorts the cursor by the measure and takes its Filter off in the end.
BestClients cutByRank(const RecordsetPtr& clients, const MeasureSums& totals, ClientMeasure measure,
                      double number);
