#pragma once

#include <QMap>
#include <QString>

#include <functional>
#include <vector>

/// One figure beside its reference from the same run.
struct BenchRow {
    QString work;
    double ours = 0;      // median, in `unit`
    double reference = 0; // median, in `unit`
    QString unit;
    double wanted = 0; // highest ratio ours / reference that is good; 0: reported only
};

/// Collects the rows and prints them.
class BenchReport {
public:
    void add(BenchRow row);
    /// A remark below the rows, such as a count that must hold.
    void note(const QString& text);
    /// How many rows and notes miss what is wanted.
    int misses() const { return m_misses; }
    void miss() { ++m_misses; }

private:
    int m_misses = 0;
};

/// Milliseconds that `work` takes.
double milliseconds(const std::function<void()>& work);

double median(std::vector<double> values);

/// Runs both alternately `rounds` times and adds the row of their medians in milliseconds. `before` runs,
/// unmeasured, ahead of each run of either.
void alternate(BenchReport& report, const QString& work, double wanted, const std::function<void()>& ours,
               const std::function<void()>& reference, int rounds = 5,
               const std::function<void()>& before = {});

/// Prints a figure of this process for the one that started it.
void say(const char* name, double value);

/// The figures that a process of its own says about `what` over the shop at `path`.
QMap<QString, double> childFigures(const QString& what, const QString& path);

/// Figures of several alternating runs of two kinds of child over one shop, the medians of each.
class ChildPairs {
public:
    /// `before` runs, unmeasured, ahead of each child.
    ChildPairs(const QString& ours, const QString& theirs, const QString& path,
               const std::function<void()>& before = {});
    double ours(const char* name) const;
    double theirs(const char* name) const;

private:
    using Figures = QMap<QString, std::vector<double>>;
    static void collect(Figures& to, const QMap<QString, double>& from);

    Figures m_ours;
    Figures m_theirs;
};
