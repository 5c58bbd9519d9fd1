#include "benchmark.h"

#include <QCoreApplication>
#include <QProcess>
#include <algorithm>
#include <chrono>
#include <cstdio>

namespace {

constexpr int kRounds = 5;

} // namespace

void BenchReport::add(BenchRow row) {
    const double ratio = row.reference > 0 ? row.ours / row.reference : 0;
    QString verdict = QStringLiteral("reported");
    if (row.wanted > 0) {
        verdict =
            QStringLiteral("wanted %1: %2").arg(row.wanted).arg(ratio <= row.wanted ? u"ok" : u"MISSED");
        m_misses += ratio > row.wanted;
    }
    std::printf("%-58s %10.3f %10.3f %-3s ratio %7.4f  %s\n", qUtf8Printable(row.work), row.ours,
                row.reference, qUtf8Printable(row.unit), ratio, qUtf8Printable(verdict));
    std::fflush(stdout);
}

void BenchReport::note(const QString& text) {
    std::printf("  %s\n", qUtf8Printable(text));
    std::fflush(stdout);
}

double milliseconds(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

void alternate(BenchReport& report, const QString& work, double wanted, const std::function<void()>& ours,
               const std::function<void()>& reference, int rounds, const std::function<void()>& before) {
    std::vector<double> oursTimes;
    std::vector<double> referenceTimes;
    for (int i = 0; i < rounds; ++i) {
        if (before)
            before();
        oursTimes.push_back(milliseconds(ours));
        if (before)
            before();
        referenceTimes.push_back(milliseconds(reference));
    }
    report.add({work, median(oursTimes), median(referenceTimes), QStringLiteral("ms"), wanted});
}

void say(const char* name, double value) {
    std::printf("%s %f\n", name, value);
}

QMap<QString, double> childFigures(const QString& what, const QString& path) {
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--measure"), what, path});
    child.waitForFinished(-1);
    QMap<QString, double> figures;
    for (const QByteArray& line : child.readAllStandardOutput().split('\n')) {
        const auto words = line.split(' ');
        if (words.size() == 2)
            figures[QString::fromLatin1(words[0])] = words[1].toDouble();
    }
    return figures;
}

ChildPairs::ChildPairs(const QString& ours, const QString& theirs, const QString& path,
                       const std::function<void()>& before) {
    for (int i = 0; i < kRounds; ++i) {
        if (before)
            before();
        collect(m_ours, childFigures(ours, path));
        if (before)
            before();
        collect(m_theirs, childFigures(theirs, path));
    }
}

double ChildPairs::ours(const char* name) const {
    return median(m_ours.value(QString::fromLatin1(name)));
}

double ChildPairs::theirs(const char* name) const {
    return median(m_theirs.value(QString::fromLatin1(name)));
}

void ChildPairs::collect(Figures& to, const QMap<QString, double>& from) {
    for (auto figure = from.begin(); figure != from.end(); ++figure)
        to[figure.key()].push_back(figure.value());
}
