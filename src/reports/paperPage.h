#pragma once

#include "reports/paperFont.h"

#include <QPainter>

#include <vector>

/// A page that can be drawn on. Everything is in millimetres from its top left corner.
class PaperPage {
public:
    virtual ~PaperPage() = default;
    /// A text in one line, its line box with the top left corner at (x, y).
    virtual void text(double x, double y, const QString& text, const PaperFontPtr& font) = 0;
    /// A thin black line from (left, y) to (right, y).
    virtual void rule(double left, double right, double y) = 0;
};

/// A page that remembers what was drawn on it: the preview paints it again and again, tests read it.
class PageRecording : public PaperPage {
public:
    struct Item {
        double x = 0;
        double y = 0;
        double right = 0;  // of a rule
        QString text;      // of a text
        PaperFontPtr font; // null for a rule
    };

    void text(double x, double y, const QString& text, const PaperFontPtr& font) override {
        m_items.push_back({x, y, x, text, font});
    }
    void rule(double left, double right, double y) override {
        m_items.push_back({left, y, right, {}, nullptr});
    }
    void clear() { m_items.clear(); }
    const std::vector<Item>& items() const { return m_items; }
    /// Draws what lies between two heights again, on another page.
    void replay(PaperPage& page, double top, double bottom) const;

private:
    std::vector<Item> m_items;
};

/// A page on a painter: a screen, a printer, a PDF.
class PainterPage : public PaperPage {
public:
    /// Screens draw letters at their own size, since they make no bold of larger ones scaled down; paper
    /// takes the measured font as it is.
    enum class Medium { Paper, Screen };

    /// `dotsPerMillimetre`: resolution of the painter in its present coordinates, whose origin is the page's
    /// corner.
    PainterPage(QPainter& painter, double dotsPerMillimetre, Medium medium);

    void text(double x, double y, const QString& text, const PaperFontPtr& font) override;
    void rule(double left, double right, double y) override;

private:
    void use(const PaperFontPtr& font);
    void useBase();

    QPainter& m_painter;
    double m_scale;
    Medium m_medium;
    QTransform m_base;
    PaperFontPtr m_font;
    double m_unit = 1; // of the font as it is drawn, in millimetres
    QPen m_rulePen;
};
