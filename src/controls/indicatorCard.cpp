#include "controls/indicatorCard.h"

namespace {

constexpr double kLeft = 5;
constexpr double kCaptionAt = 70;
constexpr double kValueAt = 90;
constexpr double kShareAt = 130;
constexpr double kRuleEnd = 140;
constexpr double kFirstRow = 2;
constexpr double kRowHeight = 5;
constexpr double kUnderText = 4; // from a text's top to the rule below it

double rowAt(int row) {
    return kFirstRow + row * kRowHeight;
}

QList<CardRule> rules(int rows) {
    QList<CardRule> all;
    for (int row = 0; row < rows; ++row)
        all << CardRule{kCaptionAt, kRuleEnd, rowAt(row) + kUnderText};
    return all;
}

} // namespace

IndicatorCard::IndicatorCard(const QString& name, int rows, QWidget* parent)
    : FigureCard(name, {kRuleEnd + kLeft, rowAt(rows) + 1}, rules(rows), parent) {}

void IndicatorCard::setRows(const QList<IndicatorRow>& rows) {
    using Style = CardText::Style;
    QList<CardText> lefts;
    QList<CardText> figures;
    for (int i = 0; i < rows.size(); ++i) {
        const IndicatorRow& row = rows[i];
        const double y = rowAt(i);
        if (!row.left.isEmpty())
            lefts << CardText{kLeft, y, row.left, row.leftStyle};
        figures << CardText{kCaptionAt, y, row.caption, Style::Caption}
                << CardText{kValueAt, y, row.value, Style::Figure}
                << CardText{kShareAt, y, row.share, Style::Caption, row.shareTip};
    }
    setTexts(lefts + figures);
}
