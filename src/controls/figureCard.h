#pragma once

#include <QList>
#include <QWidget>

/// A text of a card, the place of its upper left corner in the card's units, and how it is set.
struct CardText {
    enum class Style { Caption, Figure };
    double x;
    double y;
    QString text;
    Style style = Style::Caption;
    QString tip = {}; // its tool tip
};

/// A thin rule of a card.
struct CardRule {
    double from;
    double to;
    double y;
};

/// A drawn panel of texts and rules on places of its own scale: four units are a line of text high.
class FigureCard : public QWidget {
    Q_OBJECT

public:
    /// `units` is the drawn part's size; `rules` stand for the life of the card.
    FigureCard(const QString& name, const QSizeF& units, QList<CardRule> rules, QWidget* parent);

    /// Draws these texts, which the accessible description tells in their order.
    void setTexts(const QList<CardText>& texts);
    const QList<CardText>& texts() const { return m_texts; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    /// Pixels a unit.
    double scale() const { return fontMetrics().height() / 4.0; }
    /// Where a text stands on the widget.
    QRectF placeOf(const CardText& text) const;

    QSizeF m_units;
    QList<CardRule> m_rules;
    QList<CardText> m_texts;
};
