#include "reports/reportPage.h"

#include "recordset/shownText.h"

#include <algorithm>
#include <cmath>

namespace {

const QString kSeparator = QStringLiteral("|");

QString footerText(int page) {
    return QStringLiteral(" 第 ") + QString::number(page) + QStringLiteral(" 页");
}

} // namespace

ReportLayout defaultLayout(const ReportDescription& report, const QString& openingTitle) {
    ReportLayout layout;
    const QString title = QString::fromUtf16(report.title);
    layout.reportTitle = title.isEmpty() || report.titleOf ? openingTitle : title;
    layout.charWidth = qint16(std::floor(PaperFont(layout.contentFont).textWidth(QStringLiteral("宽"))));
    layout.tableLeft = layout.charWidth + 15;
    layout.tableWidth = report.tableWidth();
    layout.titleShift = layout.charWidth;
    layout.wideTitleShift = report.wideTitleShift;
    layout.tableTop = report.tableTop;
    layout.headLeft.assign(report.head.size(), 20);
    layout.headTop.assign(report.head.size(), 20);
    return layout;
}

ReportPageDrawing::ReportPageDrawing(const ReportDrawing& drawing, PaperPage& page)
    : m_drawing(drawing)
    , m_page(page) {}

void ReportPageDrawing::setFont(const FontRecord& record) {
    const auto known = std::find_if(m_fonts.begin(), m_fonts.end(),
                                    [&record](const PaperFontPtr& font) { return font->record() == record; });
    m_font = known != m_fonts.end() ? *known : m_fonts.emplace_back(std::make_shared<PaperFont>(record));
}

void ReportPageDrawing::print(double x, const QString& text) {
    if (!text.isEmpty())
        m_page.text(x, m_y, beginningOf(text), m_font);
}

bool ReportPageDrawing::drawTable(int pageIndex) {
    const RecordsetPtr& rows = m_drawing.rows;
    if (!rows->hasRows())
        return false;
    resolveFields();
    drawTitle();
    drawHead();
    m_y = m_drawing.layout.tableTop + m_drawing.report.addend;
    drawRule();
    setFont(m_drawing.layout.fieldFont);
    drawLine(labels());
    const int pageSize = rows->PageSize();
    int drawn = 0;
    for (; drawn < pageSize; ++drawn) {
        const qint64 position = qint64(pageIndex) * pageSize + drawn + 1;
        if (position > rows->RecordCount()) {
            rows->setAbsolutePosition(rows->RecordCount() +
                                      1); // past the end, where the next page stands too
            break;
        }
        rows->setAbsolutePosition(int(position));
        drawRule();
        setFont(m_drawing.layout.contentFont);
        drawLine(cellsOfRow());
    }
    drawRule();
    const bool full = drawn >= pageSize;
    for (; drawn < pageSize; ++drawn) {
        drawLine({});
        drawRule();
    }
    return full;
}

void ReportPageDrawing::resolveFields() {
    m_fields.clear();
    for (const ReportColumn& column : m_drawing.report.columns) {
        const QString field = QString::fromUtf16(column.field);
        m_fields.push_back(field.isEmpty() ? -1 : m_drawing.rows->fieldIndex(field));
    }
}

void ReportPageDrawing::drawTitle() {
    const ReportLayout& layout = m_drawing.layout;
    setFont(layout.titleFont);
    m_y = layout.titleTop;
    print(layout.titleShift + m_drawing.report.titleBase, layout.reportTitle);
}

void ReportPageDrawing::drawHead() {
    const ReportLayout& layout = m_drawing.layout;
    setFont(layout.headFont);
    for (std::size_t i = 0; i < m_drawing.report.head.size(); ++i) {
        m_y = layout.headTop[i];
        print(layout.headLeft[i] + m_drawing.report.head[i].base, m_drawing.head.value(qsizetype(i)));
    }
}

void ReportPageDrawing::drawRule() {
    const ReportLayout& layout = m_drawing.layout;
    m_page.rule(layout.tableLeft, layout.tableLeft + layout.tableWidth, m_y);
}

void ReportPageDrawing::drawLine(const QStringList& cells) {
    const ReportLayout& layout = m_drawing.layout;
    const auto columns = m_drawing.report.columns;
    print(layout.tableLeft - 1, kSeparator);
    print(layout.tableLeft + 1, cells.value(0));
    for (std::size_t k = 1; k < columns.size(); ++k) {
        // A shifted separator takes the text behind it along, and nothing else.
        const double x = layout.tableLeft + columns[k - 1].separator + layout.boxShift[k];
        print(x, kSeparator);
        print(x + 2, cells.value(qsizetype(k)));
    }
    print(layout.tableLeft + layout.tableWidth - 1, kSeparator);
    endLine();
}

QStringList ReportPageDrawing::labels() const {
    QStringList texts;
    for (const ReportColumn& column : m_drawing.report.columns)
        texts << QString::fromUtf16(column.label);
    return texts;
}

QStringList ReportPageDrawing::cellsOfRow() const {
    QStringList texts;
    for (const int field : m_fields)
        texts << (field < 0 ? QString() : m_drawing.rows->Fields(field).shown());
    return texts;
}

void ReportPageDrawing::drawPreviewFooter(int page, double pageWidth) {
    endLine();
    // The width is that of the text without the blank before its last character.
    const QString measured = QStringLiteral(" 第 ") + QString::number(page) + QStringLiteral("页");
    print(pageWidth / 2 - m_font->textWidth(measured) / 2, footerText(page));
}

void ReportPageDrawing::drawPreviewPeriod(const QString& days, double pageWidth) {
    endLine();
    const QString text = QStringLiteral("统计时间：") + days;
    print(pageWidth / 2 - m_font->textWidth(text) / 2, text);
}

void ReportPageDrawing::drawPaperFooter(int page) {
    endLine();
    print(m_drawing.report.footerX, footerText(page));
}
