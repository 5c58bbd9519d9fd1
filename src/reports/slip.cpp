#include "reports/slip.h"

#include "reports/paperFont.h"
#include "reports/reportLayout.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cmath>

namespace {

constexpr int kMostShopLines = 3;
constexpr qint64 kMostBytes = 4096;
constexpr int kMostRowsOfRoll = 300; // a sheet; a printer takes no endless one
constexpr int kLinesAround = 4;      // the labels, the page number and the blank line before it, and one more

constexpr ReportColumn kRollColumns[] = {
    {u"品名", u"品名", 33}, {u"单价", u"单价", 46}, {u"数量", u"数量", 56}, {u"实付", u"实付"}};
constexpr const char16_t* kRollBoxes[] = {u"品名方框", u"单价方框", u"数量方框"};

constexpr ReportColumn kA5Columns[] = {
    {u"产品编号", u"产品编号", 22}, {u"品名", u"品名", 58},  {u"规格", u"规格", 78}, {u"单价", u"单价", 94},
    {u"数量", u"数量", 106},        {u"折扣", u"折扣", 114}, {u"实付", u"实付"}};
constexpr const char16_t* kA5Boxes[] = {u"产品编号方框", u"品名方框", u"规格方框",
                                        u"单价方框",     u"数量方框", u"折扣方框"};

QString title(const HeadSource& s) {
    const QStringList lines = shopLines(s.session);
    return lines.isEmpty() ? QStringLiteral("购物小票") : lines.first();
}

/// The head's items in their order, a line each.
constexpr ReportText kShopLines[] = {[](const HeadSource& s) { return shopLines(s.session).value(1); },
                                     [](const HeadSource& s) { return shopLines(s.session).value(2); }};
constexpr ReportText kOrderLines[] = {
    [](const HeadSource& s) { return QStringLiteral("订单号：") + s.session.currentOrderNum; },
    [](const HeadSource& s) { return QStringLiteral("日期：") + s.session.periodDate1; },
    [](const HeadSource& s) {
        const QString& company = s.session.currentClientName;
        return QStringLiteral("客户：") + (company.isEmpty() ? s.session.currentContact : company);
    },
    [](const HeadSource& s) { return QStringLiteral("件数：") + s.session.orderQuantity; },
    [](const HeadSource& s) { return QStringLiteral("合计：") + s.session.orderAmount; },
};

double lineHeight(float points, bool bold) {
    const ReportLayout layout;
    FontRecord font = bold ? layout.headFont : layout.contentFont;
    font.size = points;
    return PaperFont(font).lineHeight();
}

ReportDescription onPaper(SlipPaper paper) {
    const bool roll = paper == SlipPaper::Roll;
    ReportDescription slip{.name = roll ? u"slip_roll" : u"slip_A5",
                           .caption = u"打印小票",
                           .cursor = &Session::buyList,
                           .columns = kA5Columns,
                           .boxNames = kA5Boxes,
                           .orientation = PaperOrientation::Portrait,
                           .titleBase = 0};
    if (roll) {
        slip.columns = kRollColumns;
        slip.boxNames = kRollBoxes;
    }
    slip.sheet = roll ? SmallSheet{80, 0, 4, 14, 9, 8} : SmallSheet{148, 210, 10, 18, 11, 9};
    slip.footerX = slip.sheet->width / 2 - 8;
    slip.titleOf = title;
    slip.cutsTexts = true;
    return slip;
}

} // namespace

QStringList shopLines(const Session& session) {
    QFile file(QFileInfo(session.cn.path()).absolutePath() + QStringLiteral("/小票抬头.txt"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList lines;
    for (const QString& line : QString::fromUtf8(file.read(kMostBytes)).split(u'\n'))
        if (const QString text = line.trimmed(); !text.isEmpty() && lines.size() < kMostShopLines)
            lines << text;
    return lines;
}

Slip::Slip(SlipPaper paper, const Session& session)
    : m_description(onPaper(paper)) {
    SmallSheet& sheet = *m_description.sheet;
    const double head = lineHeight(sheet.headSize, true);
    double top = sheet.margin + lineHeight(sheet.titleSize, true);
    const auto add = [&](ReportText text) {
        m_head.push_back({0, text, top});
        top += head;
    };
    const auto shop = std::max<qsizetype>(0, shopLines(session).size() - 1);
    std::for_each_n(kShopLines, shop, add);
    std::for_each(std::begin(kOrderLines), std::end(kOrderLines), add);
    m_description.head = m_head;
    m_description.tableTop = top + head / 2;
    const double row = std::max(lineHeight(sheet.textSize, false), lineHeight(sheet.textSize, true));
    const int lines = session.buyList->hasRows() ? session.buyList->RecordCount() : 1;
    if (paper == SlipPaper::Roll) {
        m_description.rows = std::min(lines, kMostRowsOfRoll);
        sheet.height = std::ceil(m_description.tableTop + (m_description.rows + kLinesAround) * row);
    } else {
        m_description.rows = int((sheet.height - sheet.margin - m_description.tableTop) / row) - kLinesAround;
    }
}
