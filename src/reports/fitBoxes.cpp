#include "reports/fitBoxes.h"

#include <QHash>

#include <algorithm>
#include <numeric>

namespace {

constexpr double kBeforeFirst = 1; // from a table's edge to its first text
constexpr double kBehindBox = 2;   // from a separator to the text behind it
constexpr double kBorder = 1;      // from the last separator to the table's edge
constexpr double kNearly = 1e-6;

/// Measures texts by their letters, each of which is asked for once.
class LetterWidths {
public:
    explicit LetterWidths(const FontRecord& font)
        : m_font(font) {}

    double of(const QString& text) {
        double width = 0;
        for (const QChar letter : text) {
            auto known = m_widths.constFind(letter);
            if (known == m_widths.constEnd())
                known = m_widths.insert(letter, m_font.textWidth(letter));
            width += *known;
        }
        return width;
    }
    double exactly(const QString& text) const { return m_font.textWidth(text); }

private:
    PaperFont m_font;
    QHash<QChar, double> m_widths;
};

/// The widest text of a column so far.
struct Widest {
    double byLetters = 0;
    QString text;

    void look(const QString& other, LetterWidths& letters) {
        if (const double width = letters.of(other); width > byLetters) {
            byLetters = width;
            text = other;
        }
    }
};

double beginning(std::size_t column) {
    return column == 0 ? kBeforeFirst : kBehindBox;
}

/// The boxes' widths as the layout has them, the last one to the border.
std::vector<double> boxWidths(const ReportDescription& report, const ReportLayout& layout) {
    std::vector<double> widths;
    double left = 0;
    for (std::size_t k = 0; k < report.columns.size(); ++k) {
        const bool last = k + 1 == report.columns.size();
        const double right =
            last ? layout.tableWidth - kBorder : report.columns[k].separator + layout.boxShift[k + 1];
        widths.push_back(right - left);
        left = right;
    }
    return widths;
}

double sum(const std::vector<double>& values) {
    return std::accumulate(values.begin(), values.end(), 0.0);
}

/// What is needed, brought into what there is: those that ask for little get it, the others share the rest.
std::vector<double> shared(const std::vector<double>& needed, double room) {
    std::vector<double> ascending = needed;
    std::sort(ascending.begin(), ascending.end());
    double share = 0;
    for (std::size_t i = 0; i < ascending.size(); ++i) {
        share = room / double(ascending.size() - i);
        if (ascending[i] > share)
            break;
        room -= ascending[i];
    }
    std::vector<double> widths;
    for (const double each : needed)
        widths.push_back(std::min(each, share));
    return widths;
}

/// Widths of the same sum that all suffice: what some lack is taken from those that have more than they need.
std::vector<double> balanced(const std::vector<double>& widths, const std::vector<double>& needed) {
    double lacking = 0;
    double spare = 0;
    for (std::size_t i = 0; i < widths.size(); ++i)
        (needed[i] > widths[i] ? lacking : spare) += std::abs(needed[i] - widths[i]);
    std::vector<double> result;
    for (std::size_t i = 0; i < widths.size(); ++i)
        result.push_back(needed[i] > widths[i] || lacking == 0
                             ? std::max(needed[i], widths[i])
                             : widths[i] - (widths[i] - needed[i]) * lacking / spare);
    return result;
}

} // namespace

std::optional<std::vector<double>> neededWidths(const ReportDrawing& drawing, const ExportSteps& steps) {
    const RecordsetPtr& rows = drawing.rows;
    const auto columns = drawing.report.columns;
    std::vector<int> fields;
    for (const ReportColumn& column : columns)
        fields.push_back(*column.field ? rows->fieldIndex(QString::fromUtf16(column.field)) : -1);
    LetterWidths content(drawing.layout.contentFont);
    std::vector<Widest> widest(columns.size());
    for (int row = 0; row < rows->RecordCount(); ++row) {
        for (std::size_t k = 0; k < columns.size(); ++k)
            if (fields[k] >= 0)
                widest[k].look(rows->shownAt(row, fields[k]), content);
        if (steps && isStep(row) && !steps(row + 1))
            return std::nullopt;
    }
    const PaperFont labels(drawing.layout.fieldFont);
    std::vector<double> needed;
    for (std::size_t k = 0; k < columns.size(); ++k)
        needed.push_back(beginning(k) + std::max(content.exactly(widest[k].text),
                                                 labels.textWidth(QString::fromUtf16(columns[k].label))));
    return needed;
}

FittedBoxes fitBoxes(const ReportDescription& report, const ReportLayout& layout,
                     const std::vector<double>& needed) {
    const std::vector<double> now = boxWidths(report, layout);
    const bool fits = sum(needed) <= sum(now) + kNearly;
    const std::vector<double> widths = fits ? balanced(now, needed) : shared(needed, sum(now));
    FittedBoxes fitted;
    double right = 0;
    for (std::size_t k = 0; k < widths.size(); ++k) {
        right += widths[k];
        if (k + 1 < widths.size())
            fitted.boxShift[k + 1] = right - report.columns[k].separator;
        if (widths[k] + kNearly < needed[k])
            fitted.tooNarrow << QString::fromUtf16(report.columns[k].label);
    }
    return fitted;
}
