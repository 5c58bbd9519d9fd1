#include "longTextBench.h"

#include "app/appearance.h"
#include "app/registry.h"
#include "controls/prompts.h"
#include "data/books.h"
#include "recordset/error.h"
#include "shell/MDIForm1.h"
#include "support/sampleData.h"

#include <QApplication>
#include <QFile>

#include <cstdio>

namespace {

constexpr int kRounds = 3;
constexpr double kMostCost = 200; // milliseconds over the view without the text
constexpr int kMegabyte = 1'000'000;
/// Windows that show rows of the three tables, and a page of each.
const char* const kWindows[] = {"buyFm1",        "listProductFm2", "order_Form_NumFm1",
                                "goodsSalesFm1", "statisticFm4",   "searchFm1",
                                "print_rs3",     "showprint_rs2",  "print_rs_order"};

/// Takes the way out of every question.
class NoAnswer : public WindowPrompts {
public:
    void tell(const QString& /*text*/, const QString& /*title*/) override {}
    bool confirm(const QString& /*text*/, const QString& /*title*/) override { return false; }
    bool ask(const QString& /*text*/, const QString& /*title*/) override { return false; }
    bool confirmLoss(const QString& /*text*/, const QString& /*loss*/, const QString& /*title*/) override {
        return false;
    }
    std::optional<bool> askOrLeave(const QString& /*text*/, const QString& /*title*/) override { return {}; }
    std::optional<QString> input(const QString& /*text*/, const QString& /*title*/) override { return {}; }
    std::optional<QString> anyFileToSave(const QString& /*title*/, const QString& /*proposal*/,
                                         const QString& /*filter*/) override {
        return {};
    }
};

void sayTime(const QString& name, const std::function<void()>& work) {
    const double time = milliseconds([&] {
        try {
            work();
        } catch (const RuntimeError&) { // a window that needs what only its own command prepares
        }
        QCoreApplication::processEvents();
    });
    say(name.toLatin1().constData(), time);
}

/// Puts a text of so many megabytes into the first row of a table.
void putText(Connection& connection, const QString& table, const QString& column, int megabytes) {
    constexpr int kBytesOfALetter = 3;
    connection.execute(
        QStringLiteral("UPDATE %1 SET %2 = replace(hex(zeroblob(%3)), '00', '长') WHERE rowid = "
                       "(SELECT min(rowid) FROM %1)")
            .arg(table, column)
            .arg(megabytes * kMegabyte / kBytesOfALetter));
}

QString shopWith(int megabytes, const QString& plain, const QString& folder) {
    const QString path = QStringLiteral("%1/long%2.mdb").arg(folder).arg(megabytes);
    QFile::copy(plain, path);
    Connection connection(path);
    for (const auto& [table, column] : {std::pair(QStringLiteral("clientTable"), QStringLiteral("单位名称")),
                                        {QStringLiteral("buyList"), QStringLiteral("品名")},
                                        {QStringLiteral("productTable"), QStringLiteral("品名")}})
        putText(connection, table, column, megabytes);
    return path;
}

using Times = QMap<QString, std::vector<double>>;

void collect(Times& to, const QString& path) {
    const auto figures = childFigures(QStringLiteral("everywindow"), path);
    for (auto figure = figures.begin(); figure != figures.end(); ++figure)
        to[figure.key()].push_back(figure.value());
}

void compare(BenchReport& report, int megabytes, const Times& with, const Times& without) {
    int missed = 0;
    for (auto each = with.begin(); each != with.end(); ++each) {
        const double ours = median(each.value());
        const double reference = median(without.value(each.key()));
        // The start reads two such rows, and is no view.
        const bool starts = each.key() == u"cursors-first";
        const bool miss = !starts && ours - reference > kMostCost;
        missed += miss;
        if (miss || ours - reference > kMostCost / 4)
            report.add({QStringLiteral("%1 with a text of %2 MB%3")
                            .arg(each.key())
                            .arg(megabytes)
                            .arg(miss ? QStringLiteral(": MISSED") : QString()),
                        ours, reference, QStringLiteral("ms"), 0});
        if (miss)
            report.miss();
    }
    report.note(
        QStringLiteral("%1 views and windows with texts of %2 MB: %3 cost more than %4 ms (wanted: none)")
            .arg(with.size())
            .arg(megabytes)
            .arg(missed)
            .arg(kMostCost));
}

} // namespace

void measureEveryWindow(const QString& path) {
    setAppearance(*qApp);
    Session session(path);
    NoAnswer prompts;
    MDIForm1 main(session, prompts);
    registerAll(main, prompts);
    main.show();
    sayTime(QStringLiteral("cursors-first"), [&] { openBooks(session); });
    sayTime(QStringLiteral("recount-first"), [&] { totalsRecount(session)->finish(); });
    QStringList views = main.host().viewNames();
    views.sort();
    for (const QString& view : views)
        sayTime(view + QStringLiteral("-first"), [&] { main.host().show(view); });
    // Once more: the tables have been read by now.
    for (const QString& view : views)
        sayTime(view, [&] { main.host().show(view); });
    main.host().show(QStringLiteral("dataInputFm1"));
    for (const char* each : kWindows) {
        const QString name = QString::fromLatin1(each);
        sayTime(name, [&] { main.host().openWindow(name, ViewHost::MainWindow::Stays); });
        if (TopWindow* window = main.host().window(name))
            window->close();
        QCoreApplication::processEvents();
    }
}

void runLongTextBench(BenchReport& report, const QString& folder) {
    const QString plain = folder + QStringLiteral("/plain.mdb");
    makeSample(plain, SampleSize());
    for (const int megabytes : {5, 50}) {
        const QString path = shopWith(megabytes, plain, folder);
        Times with;
        Times without;
        for (int i = 0; i < kRounds; ++i) {
            collect(with, path);
            collect(without, plain);
        }
        compare(report, megabytes, with, without);
    }
}
