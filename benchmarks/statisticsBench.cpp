#include "statisticsBench.h"

#include "analysis/turnover.h"
#include "app/appearance.h"
#include "app/registry.h"
#include "controls/barChart.h"
#include "controls/dataGrid.h"
#include "controls/figureCard.h"
#include "controls/prompts.h"
#include "plainStatistics.h"
#include "recordset/tableImage.h"
#include "shell/MDIForm1.h"
#include "support/startAtOnce.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QPushButton>
#include <QTemporaryDir>

#include <cstdio>

namespace {

constexpr int kRounds = 5;

/// What a statistic is seen in.
enum Part : unsigned { Grid = 1, Chart = 2, Card = 4 };

/// One statistic of the bench.
struct Case {
    const char* key; // of its figures
    const char* work;
    const char16_t* command;
    const char16_t* window; // view or window that shows it
    unsigned parts;
    const char16_t* answer; // to the question it asks; empty where it asks none
    bool writes;            // a work table behind what is seen
    /// What is in front when the command comes: the register, the whole evaluation, a cut, the sales, the
    /// result itself.
    enum class Before { Register, Whole, Cut, Sales, InFront } before;
    void (*reference)(PlainStatistics&);
    const char* table;            // what both have written, to be compared; null where nothing
    double wanted = 0.2;          // of the reference, until seen
    const char* button = nullptr; // of the view in front, in place of a command
};

using Before = Case::Before;
constexpr Case kCases[] = {
    {"turnover", "turnover by month", u"count_Month", u"saleroom_statistic", Grid | Chart, u"", true,
     Before::Register, [](PlainStatistics& plain) { plain.turnoverByMonth(); }, "saleTable"},
    {"frequency", "purchase frequency", u"buy_frequence", u"buy_FrequenceFm1", Grid | Chart, u"", true,
     Before::Register, [](PlainStatistics& plain) { plain.frequency(); }, "month_Table"},
    {"share", "ratio cut, 80 % of the turnover", u"proporation_analysis1", u"statisticFm1", Grid | Card,
     u"80", true, Before::Whole, [](PlainStatistics& plain) { plain.cutByShare(0.8); }, "clientTable3"},
    {"rank", "ranking cut, 1,000 customers", u"proporation_analysis2", u"statisticFm1", Grid | Card, u"1000",
     true, Before::Whole, [](PlainStatistics& plain) { plain.cutByRank(1000); }, "clientTable3"},
    {"evaluation", "evaluation, back to the whole", u"data_statistic1", u"statisticFm1", Grid | Card, u"",
     false, Before::Cut, [](PlainStatistics& plain) { plain.evaluation(); }, nullptr},
    {"clerks", "salespeople", u"statistic_achievement", u"statisticFm3", Grid, u"", false, Before::InFront,
     [](PlainStatistics& plain) { plain.salespeople(); }, nullptr},
    {"distribution", "distribution by region", u"distribution_analysis1", u"clientPlaceFm1", Grid, u"", false,
     Before::InFront, [](PlainStatistics& plain) { plain.distribution(); }, nullptr},
    {"client", "one customer's purchases", u"show_one_client1", u"tempTable2Fm2", Grid, u"", false,
     Before::Register, [](PlainStatistics& plain) { plain.clientLines(); }, "tempTable2", 0.3},
    {"product", "one product's sales", u"show_one_sale_product", u"goodsSalesFm2", Grid, u"", false,
     Before::Sales, [](PlainStatistics& plain) { plain.productLines(); }, nullptr, 0.3},
    {"buyers", "one product's customers", u"show_product_client", u"tempTable1Fm1", Grid, u"", false,
     Before::Sales, [](PlainStatistics& plain) { plain.productClients(); }, "clientTable3", 0.3},
    {"orders", "what each order comes to", u"", u"statisticFm5", Grid, u"", true, Before::Sales,
     [](PlainStatistics& plain) { plain.orders(); }, "orderTable", 0.3, "orderStatistic"},
};

/// Answers every question with one text.
class OneAnswer : public WindowPrompts {
public:
    void tell(const QString& text, const QString& /*title*/) override {
        std::fprintf(stderr, "told: %s\n", qUtf8Printable(text));
    }
    std::optional<QString> input(const QString& /*text*/, const QString& /*title*/) override {
        return answer;
    }

    QString answer;
};

/// Takes the time when every part of a window has been painted once.
class ResultClock : public QObject {
public:
    void start(const QString& window, unsigned parts) {
        m_window = window;
        m_missing = parts;
        m_painted = -1;
        m_since.start();
    }
    double now() const { return double(m_since.nsecsElapsed()) / 1e6; }
    /// Milliseconds from the start on; -1 while a part is missing.
    double painted() const { return m_painted; }

    bool eventFilter(QObject* watched, QEvent* event) override {
        const unsigned part = event->type() == QEvent::Paint ? partOf(watched) & m_missing : 0;
        if (part == 0)
            return false;
        // Sent on from here, the paint is over when its time is taken.
        m_missing &= ~part;
        QCoreApplication::sendEvent(watched, event);
        if (m_missing == 0)
            m_painted = now();
        return true;
    }

private:
    unsigned partOf(QObject* watched) const {
        const auto* widget = qobject_cast<const QWidget*>(watched);
        if (!widget || !isInWindow(widget))
            return 0;
        if (qobject_cast<const FigureCard*>(widget))
            return Card;
        const auto* area = qobject_cast<const QAbstractScrollArea*>(widget->parentWidget());
        if (!area || area->viewport() != widget)
            return 0;
        return qobject_cast<const DataGrid*>(area) ? Grid : qobject_cast<const BarChart*>(area) ? Chart : 0U;
    }
    bool isInWindow(const QWidget* widget) const {
        while (widget && widget->objectName() != m_window)
            widget = widget->parentWidget();
        return widget;
    }

    QString m_window;
    unsigned m_missing = 0;
    double m_painted = -1;
    QElapsedTimer m_since;
};

/// The program on a shop of its own, and the walks on another.
class StatisticsRun {
public:
    StatisticsRun(const QString& ours, const QString& theirs)
        : m_theirPath(theirs)
        , m_session(ours)
        , m_main(m_session, m_prompts)
        , m_plain(theirs) {
        registerAll(m_main, m_prompts);
        m_main.show();
        startAtOnce(m_main);
        qApp->installEventFilter(&m_clock);
    }

    void measure(const Case& each) {
        run(each);
        const double firstSeen = m_seen;
        each.reference(m_plain);
        std::vector<double> seen, file, reference;
        for (int i = 0; i < kRounds; ++i) {
            run(each);
            seen.push_back(m_seen);
            file.push_back(m_file);
            reference.push_back(milliseconds([&] { each.reference(m_plain); }));
        }
        sayOf(each, "first", firstSeen);
        sayOf(each, "seen", median(seen));
        sayOf(each, "file", median(file));
        sayOf(each, "reference", median(reference));
        sayOf(each, "same", isSame(each));
        closeWindow(each);
    }

private:
    static void sayOf(const Case& each, const char* figure, double value) {
        say((std::string(each.key) + '.' + figure).c_str(), value);
    }

    /// What the drill-downs start from, for both sides.
    void tellInHand() {
        if (m_session.clientTable->hasRows() && m_session.clientTable->currentRow())
            m_plain.client = m_session.clientTable->Fields(QStringLiteral("客户编号")).text().toStdString();
        m_plain.product = m_session.currentProductNum.toStdString();
    }

    void command(const char16_t* name, const QString& answer) {
        m_prompts.answer = answer;
        m_main.commands().run(QString::fromUtf16(name));
    }

    /// Everything painted and gone that is to be.
    static void settle() {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }

    void closeWindow(const Case& each) {
        if (TopWindow* window = m_main.host().window(QString::fromUtf16(each.window)))
            window->close();
        settle();
    }

    void prepare(const Case& each) {
        if (each.before == Before::Register) {
            closeWindow(each);
            m_main.host().show(QStringLiteral("dataInputFm1"));
        } else if (each.before == Before::Whole) {
            command(u"data_statistic1", {});
        } else if (each.before == Before::Cut) {
            // Sorted otherwise, so that the whole is sorted again.
            command(u"proporation_analysis6", QStringLiteral("1000"));
        } else if (each.before == Before::Sales) {
            closeWindow(each);
            command(u"show_sales", {});
        } else if (!isInFront(each)) {
            command(each.command, {});
        }
        settle();
        tellInHand();
    }

    bool isInFront(const Case& each) {
        const QString name = QString::fromUtf16(each.window);
        return m_main.host().isActive(name) || m_main.host().window(name);
    }

    void run(const Case& each) {
        prepare(each);
        m_clock.start(QString::fromUtf16(each.window), each.parts);
        if (each.button)
            m_main.host().active()->findChild<QPushButton*>(QString::fromUtf8(each.button))->click();
        else
            command(each.command, QString::fromUtf16(each.answer));
        m_file = m_clock.now();
        settle();
        m_seen = m_clock.painted();
        if (m_seen < 0)
            std::fprintf(stderr, "%s: never painted\n", each.key);
    }

    /// Whether both sides have the same rows in the work table, 1 or 0.
    double isSame(const Case& each) {
        if (!each.table)
            return 1;
        const QString rows = QStringLiteral("SELECT * FROM ") + QString::fromUtf8(each.table);
        PlainSqlite ours(m_session.cn.path());
        PlainSqlite theirs(m_theirPath);
        const qint64 sum = ours.readAll(rows);
        return sum > 0 && sum == theirs.readAll(rows) ? 1 : 0;
    }

    QString m_theirPath;
    OneAnswer m_prompts;
    Session m_session;
    MDIForm1 m_main;
    PlainStatistics m_plain;
    ResultClock m_clock;
    double m_seen = 0;
    double m_file = 0;
};

void addRows(BenchReport& report, const Case& each, const QMap<QString, double>& figures) {
    const auto figure = [&](const char* name) {
        return figures.value(QStringLiteral("%1.%2").arg(QLatin1String(each.key), QLatin1String(name)), -1);
    };
    const QString work = QString::fromUtf8(each.work);
    report.add({work + QStringLiteral(": seen / plain walk"), figure("seen"), figure("reference"),
                QStringLiteral("ms"), each.wanted});
    if (each.writes)
        report.add({work + QStringLiteral(": in the file / plain walk"), figure("file"), figure("reference"),
                    QStringLiteral("ms"), 0.9});
    if (figure("seen") < 0 || figure("same") != 1) {
        report.note(work + QStringLiteral(": not painted, or other rows than the plain walk's"));
        report.miss();
    }
    report.note(QStringLiteral("seen in %1 ms the first time").arg(figure("first"), 0, 'f', 0));
}

/// Our grouping beside the storage engine's, both read to the end.
void benchGroups(BenchReport& report, const QString& path) {
    PlainSqlite plain(path);
    Connection connection(path);
    RecordsetPtr lines;
    reopen(lines, connection, QStringLiteral("Select * From buyList"));
    connection.image(QStringLiteral("buyList"))->loadAllColumns();
    alternate(
        report, QStringLiteral("turnover of the lines by month / GROUP BY"), 0,
        [&] { turnoverBySpan(*turnoverRows(*lines, TurnoverSpan::Month)); },
        [&] {
            plain.readAll(QStringLiteral("SELECT substr(日期, 1, 7), sum(实付) FROM buyList GROUP BY 1"));
        });
    const std::pair<const char*, const char*> keys[] = {{"by customer", "客户编号"}, {"by order", "订单号"}};
    for (const auto& [name, column] : keys) {
        const QString sql = QStringLiteral("Select %1, Sum(实付) As x From buyList Group By %1")
                                .arg(QString::fromUtf8(column));
        alternate(
            report, QStringLiteral("turnover of the lines %1 / GROUP BY").arg(QLatin1String(name)), 0,
            [&] {
                Recordset groups(connection);
                groups.Open(sql);
            },
            [&] { plain.readAll(sql); });
    }
}

} // namespace

void measureStatistics(const QString& path) {
    setAppearance(*qApp);
    const QTemporaryDir folder;
    const QString ours = folder.filePath(QStringLiteral("ours.mdb"));
    const QString theirs = folder.filePath(QStringLiteral("theirs.mdb"));
    QFile::copy(path, ours);
    QFile::copy(path, theirs);
    PlainStatistics(theirs).indexOrders();
    StatisticsRun run(ours, theirs);
    for (const Case& each : kCases)
        run.measure(each);
}

void runStatisticsBench(BenchReport& report, const QString& path) {
    report.note(QStringLiteral("statistics from a warm start, each one run once before:"));
    const auto figures = childFigures(QStringLiteral("statistics"), path);
    for (const Case& each : kCases)
        addRows(report, each, figures);
    benchGroups(report, path);
}
