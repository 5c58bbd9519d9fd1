#include "suggestBench.h"

#include "data/session.h"
#include "suggest/suggestions.h"

#include <QEventLoop>

#include <algorithm>

namespace {

constexpr double kMostOffer = 5; // milliseconds
constexpr int kNames = 200;
constexpr int kLetters = 6;

/// What is typed, a letter more each time, on the way to the numbers, names and readings of some rows.
QStringList typedTexts(Connection& connection) {
    NameReadings readings;
    QStringList typed;
    Statement rows =
        connection.prepare(QStringLiteral("SELECT 客户编号, 单位名称, 联系人 FROM clientTable WHERE rowid % "
                                          "(SELECT max(1, count(*) / %1) FROM clientTable) = 0")
                               .arg(kNames));
    while (rows.step())
        for (const QString& key :
             QStringList{rows.text(0)} + readings.keysOf(rows.text(1)) + readings.keysOf(rows.text(2)))
            for (qsizetype letters = 1; letters <= std::min<qsizetype>(kLetters, key.size()); ++letters)
                typed << key.left(letters);
    return typed;
}

/// Reads the rows; the milliseconds until others can go on.
double read(RowSuggestions& rows) {
    QEventLoop loop;
    QObject::connect(&rows, &RowSuggestions::ready, &loop, &QEventLoop::quit);
    const double begun = milliseconds([&] { rows.start(); });
    loop.exec();
    return begun;
}

/// The same rows by a statement that looks at their numbers and names alone.
double bareSearch(Connection& connection, const QString& typed) {
    Statement statement = connection.prepare(
        QStringLiteral("SELECT rowid, 客户编号, 单位名称, 联系人 FROM clientTable WHERE 客户编号 LIKE ?1 OR "
                       "单位名称 LIKE ?1 OR 联系人 LIKE ?1 LIMIT 10"));
    statement.bindText(1, typed + u'%');
    return milliseconds([&] {
        while (statement.step()) {
        }
    });
}

} // namespace

void runSuggestBench(BenchReport& report, const QString& path) {
    Session session(path);
    session.openMainCursors();
    Suggestions suggestions(session.cn);
    RowSuggestions& rows = suggestions.customers;
    double begun = 0;
    const double built = milliseconds([&] { begun = read(rows); });
    const QStringList typed = typedTexts(session.cn);
    std::vector<double> ours;
    std::vector<double> theirs;
    for (const QString& each : typed)
        ours.push_back(milliseconds([&] { rows.offer(each); }));
    for (qsizetype i = 0; i < typed.size(); i += 40)
        theirs.push_back(bareSearch(session.cn, typed[i]));
    const double worst = *std::max_element(ours.begin(), ours.end());
    report.add(
        {QStringLiteral("offer for one more letter"), median(ours), median(theirs), QStringLiteral("ms"), 1});
    report.note(QStringLiteral("slowest of %1 offers: %2 ms (at most %3)")
                    .arg(typed.size())
                    .arg(worst, 0, 'f', 2)
                    .arg(kMostOffer));
    if (worst > kMostOffer)
        report.miss();
    report.note(QStringLiteral("offers are read in a thread: %1 ms, %2 MB; the window waits %3 ms for it")
                    .arg(built, 0, 'f', 0)
                    .arg(double(rows.memory()) / 1e6, 0, 'f', 1)
                    .arg(begun, 0, 'f', 2));
}
