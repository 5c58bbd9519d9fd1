#pragma once

#include "controls/figureCard.h"

/// One row of a card of indicators, each with its share of a whole.
struct IndicatorRow {
    QString left; // what stands on the card's left side in this row
    QString caption;
    QString value;
    QString share;
    QString shareTip = {};
    CardText::Style leftStyle = CardText::Style::Caption;
};

/// A card of indicators: a row each, closed by a rule of width 1 below its caption, value and share.
class IndicatorCard : public FigureCard {
    Q_OBJECT

public:
    IndicatorCard(const QString& name, int rows, QWidget* parent);

    void setRows(const QList<IndicatorRow>& rows);
};
