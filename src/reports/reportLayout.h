#pragma once

#include <QString>

#include <array>
#include <vector>

/// A font of a report.
struct FontRecord {
    QString name;
    float size = 0; // points
    bool bold = false;
    bool italic = false;
    bool strikethrough = false;
    bool underline = false;
    qint32 colour = 0; // blue, green, red from the highest byte down; 0 is black

    bool operator==(const FontRecord&) const = default;
};

/// What the four move buttons act on.
enum class ReportPart { Table, Title, Head };

/// The layout of one open report: where its parts stand, in millimetres from the page's top left corner, and
/// its fonts. It lives as long as its form; only where the user asks for it a file keeps it.
struct ReportLayout {
    static constexpr int kMostBoxes = 10;

    QString reportTitle;
    qint16 charWidth = 0; // whole millimetres of one wide character
    double tableLeft = 0;
    qint16 tableWidth = 0;
    float titleShift = 0; // added to the report's own X of the title
    bool wideTitleShift = false;
    double titleTop = 10;
    double tableTop = 25;
    std::vector<double> headLeft; // one a head item
    std::vector<double> headTop;
    std::array<double, kMostBoxes + 1> boxShift{}; // from 1: moves one separator and the text behind it
    qint16 selectedBox = 1;
    FontRecord titleFont{QStringLiteral("黑体"), 20, true};
    FontRecord headFont{QStringLiteral("黑体"), 12, true};
    FontRecord fieldFont{QStringLiteral("黑体"), 10, true};
    FontRecord contentFont{QStringLiteral("宋体"), 10};

    /// Moves a part by millimetres, right and down. Throws Overflow where a title shift that is not wide
    /// would leave 16 bits.
    void move(ReportPart part, double right, double down);

    bool operator==(const ReportLayout&) const = default;
};
