// Every report on paper: what stands where, figured here from the table of reports alone.
#include "reports/reportRun.h"
#include "support/reportPaper.h"
#include "support/reportTable.h"

#include <cmath>

namespace {

using namespace table;

constexpr double kTolerance = 0.1; // millimetres

/// A font at 1200 dots an inch, without hinting: the measure of all paper.
class Measure {
public:
    Measure(const char* family, double points, bool bold)
        : m_font(QString::fromUtf8(family)) {
        const int dots = int(std::lround(points * 1200 / 72));
        m_font.setPixelSize(dots);
        m_font.setBold(bold);
        m_font.setHintingPreference(QFont::PreferNoHinting);
        m_dot = points * 25.4 / 72 / dots;
    }
    double line() const { return QFontMetricsF(m_font).height() * m_dot; }
    double width(const QString& text) const { return QFontMetricsF(m_font).horizontalAdvance(text) * m_dot; }

private:
    QFont m_font;
    double m_dot;
};

struct Placed {
    double x;
    double y;
    QString text;
};

/// The page of a report as its row of the table wants it.
class Sheet {
public:
    Sheet(const ReportRow& row, int count, int page)
        : m_row(row)
        , m_first(page * row.rows)
        , m_drawn(std::min(row.rows, count - m_first)) {}

    double ruleTop() const { return m_row.tableTop + m_row.addend; }
    /// Top of the line of a row of the page, from 0.
    double lineTop(int line) const { return ruleTop() + m_label.line() + line * m_content.line(); }
    double left() const { return std::floor(m_content.width(QStringLiteral("宽"))) + 15; }
    double width() const { return m_row.orientation == L ? 250 : 170; }
    int drawnRows() const { return m_drawn; }

    std::vector<Placed> texts(const Recordset& rows, const QString& title, const QStringList& heads,
                              int pageNumber) const {
        std::vector<Placed> placed;
        const double shift = std::floor(m_content.width(QStringLiteral("宽")));
        const QString blanks = title.left(title.indexOf(title.trimmed()));
        placed.push_back({shift + m_row.titleBase + m_title.width(blanks), 10, title.trimmed()});
        for (std::size_t i = 0; i < m_row.head.size(); ++i)
            placed.push_back({20 + m_row.head[i], 20, heads[qsizetype(i)]});
        addLine(placed, ruleTop(), labelsOf(setOf(m_row)));
        for (const int line : {0, m_drawn - 1})
            addLine(placed, lineTop(line), cells(rows, m_first + line));
        if (m_drawn < m_row.rows)
            addLine(placed, lineTop(m_row.rows - 1), {});
        placed.push_back({m_row.footerX + m_content.width(QStringLiteral(" ")), lineTop(m_row.rows + 1),
                          QStringLiteral("第 %1 页").arg(pageNumber)});
        return placed;
    }
    /// Bars of the whole page: each line has one at either border and one a separator.
    int bars() const { return (m_row.rows + 1) * int(setOf(m_row).separators.size() + 2); }

private:
    QStringList cells(const Recordset& rows, int position) const {
        QStringList texts;
        for (const QString& field : fieldsOf(setOf(m_row)))
            texts << (field.isEmpty() ? QString()
                                      : fieldText(rows.valueAt(position, rows.fieldIndex(field))));
        return texts;
    }
    void addLine(std::vector<Placed>& placed, double y, const QStringList& cells) const {
        static const QString bar = QStringLiteral("|");
        const std::vector<double>& separators = setOf(m_row).separators;
        placed.push_back({left() - 1, y, bar});
        placed.push_back({left() + 1, y, cells.value(0)});
        for (std::size_t k = 0; k < separators.size(); ++k) {
            placed.push_back({left() + separators[k], y, bar});
            placed.push_back({left() + separators[k] + 2, y, cells.value(qsizetype(k) + 1)});
        }
        placed.push_back({left() + width() - 1, y, bar});
    }

    const ReportRow& m_row;
    int m_first;
    int m_drawn;
    Measure m_title{"黑体", 20, true};
    Measure m_label{"黑体", 10, true};
    Measure m_content{"宋体", 10, false};
};

/// Whether a word of the file is this text, or its beginning up to a blank. A cell so near to its separator
/// that both read as one word counts from where the separator stands.
bool isAt(const PdfWord& word, const Placed& text) {
    if (std::abs(word.y - text.y) > kTolerance)
        return false;
    if (text.text == u"|")
        return word.text.startsWith(u'|') && std::abs(word.x - text.x) <= kTolerance;
    const QString first = text.text.section(u' ', 0, 0);
    return (word.text == first && std::abs(word.x - text.x) <= kTolerance) ||
           (word.text == u'|' + first && std::abs(word.x - (text.x - 2)) <= kTolerance);
}

class Paper : public ReportPaper {
protected:
    /// Prints the report over `count` rows; how many pages there are.
    int print(const ReportDescription& report, int count) {
        layout = defaultLayout(report, QStringLiteral("交来的标题"));
        const RecordsetPtr& rows = open(report, count, report.rows);
        EXPECT_EQ(rows->RecordCount(), count);
        const auto job = PrintJob::toPdf(path(), {report.orientation, QStringLiteral("标题")});
        EXPECT_EQ(printPages(drawing(report), *job, 1, rows->PageCount(), {}), PrintEnd::Done);
        return rows->PageCount();
    }
    void expectPage(const ReportDescription& report, const ReportRow& row, int count, int page) {
        const std::vector<PdfWord> words = pdfWords(path(), page + 1);
        const Sheet sheet(row, count, page);
        const Recordset& rows = *(session().*report.cursor);
        int bars = 0;
        for (const PdfWord& word : words)
            bars += word.text.startsWith(u'|');
        EXPECT_EQ(bars, sheet.bars()) << nameOf(row) << count;
        for (const Placed& text : sheet.texts(rows, layout.reportTitle, heads(report), page + 1)) {
            const bool there =
                text.text.isEmpty() || std::any_of(words.begin(), words.end(),
                                                   [&](const PdfWord& word) { return isAt(word, text); });
            EXPECT_TRUE(there) << nameOf(row) << " over " << count << " rows, page " << page + 1 << ": "
                               << text.text.toStdString() << " at " << text.x << ", " << text.y;
        }
        expectRules(report, sheet, page);
    }
    void expectRules(const ReportDescription& report, const Sheet& sheet, int page) {
        std::vector<double> wanted{sheet.ruleTop()};
        for (int line = 0; line <= report.rows; ++line)
            wanted.push_back(sheet.lineTop(line));
        std::size_t found = 0;
        for (const PageRecording::Item& item : recorded(report, page)) {
            if (item.font)
                continue;
            ASSERT_LT(found, wanted.size());
            EXPECT_NEAR(item.y, wanted[found++], kTolerance);
            EXPECT_EQ(item.x, sheet.left());
            EXPECT_EQ(item.right, sheet.left() + sheet.width());
        }
        EXPECT_EQ(found, wanted.size());
    }
};

TEST_F(Paper, EveryReportHasItsPagesAndItsTextsAtTheirMillimetresForEveryNumberOfRows) {
    for (const ReportRow& row : kRows) {
        const ReportDescription& report = *findReport(row.name);
        for (const int count : {1, row.rows - 1, row.rows, row.rows + 1, 500}) {
            const int pages = (count + row.rows - 1) / row.rows;
            EXPECT_EQ(print(report, count), pages) << nameOf(row) << count;
            EXPECT_EQ(pdfPages(path()), pages) << nameOf(row) << count;
            for (int page = 0; page < pages; page += std::max(1, pages - 1))
                expectPage(report, row, count, page);
        }
    }
}

TEST_F(Paper, WithoutRowsNoReportMakesAFile) {
    for (const ReportRow& row : kRows) {
        const ReportDescription& report = *findReport(row.name);
        EXPECT_EQ(print(report, 0), 0) << nameOf(row);
        EXPECT_TRUE(recorded(report, 0).empty()) << nameOf(row);
        EXPECT_FALSE(QFile::exists(path())) << nameOf(row);
    }
}

} // namespace
