#include "reports/reportPage.h"

#include "recordset/shownText.h"

#include <algorithm>
#include <cmath>

namespace {

const QString kSeparator = QStringLiteral("|");

QString footerText(int page) {
    return QStringLiteral(" 第 ") + QString::number(page) + QStringLiteral(" 页");
}

void fitToSheet(ReportLayout& layout, const SmallSheet& sheet) {
    layout.tableLeft = sheet.margin;
    layout.titleShift = float(sheet.margin);
    layout.titleTop = sheet.margin;
    std::fill(layout.headLeft.begin(), layout.headLeft.end(), sheet.margin);
    layout.titleFont.size = sheet.titleSize;
    layout.headFont.size = sheet.headSize;
    layout.fieldFont.size = layout.contentFont.size = sheet.textSize;
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
    for (const HeadItem& item : report.head)
        layout.headTop.push_back(item.top);
    if (report.sheet)
        fitToSheet(layout, *report.sheet);
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
    print(layout.tableLeft + 1, fitted(cells, 0));
    for (std::size_t k = 1; k < columns.size(); ++k) {
        const double x = separator(k);
        print(x, kSeparator);
        print(x + 2, fitted(cells, k));
    }
    print(separator(columns.size()), kSeparator);
    endLine();
}

double ReportPageDrawing::separator(std::size_t k) const {
    const ReportLayout& layout = m_drawing.layout;
    if (k == m_drawing.report.columns.size())
        return layout.tableLeft + layout.tableWidth - 1;
    // A shifted separator takes the text behind it along, and nothing else.
    return layout.tableLeft + m_drawing.report.columns[k - 1].separator + layout.boxShift[k];
}

QString ReportPageDrawing::fitted(const QStringList& cells, std::size_t k) const {
    QString text = cells.value(qsizetype(k));
    if (!m_drawing.report.cutsTexts)
        return text;
    const double left = k == 0 ? m_drawing.layout.tableLeft + 1 : separator(k) + 2;
    while (!text.isEmpty() && left + m_font->textWidth(text) > separator(k + 1))
        text.chop(1);
    return text;
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
