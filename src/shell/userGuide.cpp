#include "shell/userGuide.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

/// A heading's line without the number of its chapter.
QString withoutNumber(const QString& line) {
    static const QRegularExpression number(QStringLiteral("^[一二三四五六七八九十]+、"));
    return QString(line).remove(number).trimmed();
}

bool underlines(const QString& line, QChar sign) {
    return line.size() >= 3 && std::all_of(line.begin(), line.end(), [sign](QChar c) { return c == sign; });
}

struct Topic {
    const char16_t* window;
    const char16_t* section;
};
constexpr Topic kTopics[] = {
    {u"dataInputFm1", u"购买"},
    {u"buyFm1", u"购买窗口"},
    {u"paybackFm1", u"订单维护"},
    {u"userInfoFm1", u"全部客户资料显示"},
    {u"tempTable2Fm2", u"该客户购物清单显示"},
    {u"order_Form_NumFm1", u"该客户订单明细显示"},
    {u"tempTable2Fm22", u"该客户订单明细显示"},
    {u"goodsSalesFm1", u"产品销售显示"},
    {u"birthdayFm1", u"近期生日"},
    {u"lapsedFm1", u"久未购买"},
    {u"productRegisterFm1", u"产品登录（入库）"},
    {u"stock_BankFm1", u"入库产品显示"},
    {u"stockFm1", u"库存显示"},
    {u"stockFm3", u"库存显示"},
    {u"product_displayFm1", u"库存显示"},
    {u"StockFm2", u"库存安全数以下产品显示"},
    {u"stock_CountFm1", u"库存盘点"},
    {u"stock_ReturnFm1", u"非销售出库"},
    {u"stock_ReturnFm3", u"非销售出库"},
    {u"stock_out_of_BankFm1", u"非销售出库"},
    {u"stock_out_of_BankFm3", u"非销售出库"},
    {u"stock_no_use_BankFm1", u"非销售出库"},
    {u"stock_no_use_BankFm3", u"非销售出库"},
    {u"stock_ReturnFm2", u"退货表显示"},
    {u"stock_out_of_BankFm2", u"调拨表显示"},
    {u"stock_no_use_BankFm2", u"报废表显示"},
    {u"statisticFm2", u"产品销售显示"},
    {u"statisticFm5", u"产品销售显示"},
    {u"listProductFm2", u"产品销售显示"},
    {u"goodsSalesFm2", u"该产品销售显示"},
    {u"tempTable1Fm1", u"该产品客户资料显示"},
    {u"statisticFm1", u"客户评估"},
    {u"statisticFm4", u"客户评估"},
    {u"tempTable3Fm3", u"单个客户购买统计"},
    {u"clientPercentFm1", u"最有价值客户分析"},
    {u"clientNumFm1", u"最有价值客户分析"},
    {u"saleroom_statistic", u"营业额统计"},
    {u"buy_FrequenceFm1", u"购买频率"},
    {u"userInfoFm3", u"购买频率"},
    {u"clientPlaceFm1", u"客户分布统计"},
    {u"clientlineFm1", u"客户分布统计"},
    {u"statisticFm3", u"业务员业绩统计"},
    {u"userInfoFm2", u"该业务员客户资料"},
    {u"timeDefineFm2", u"统计时间"},
    {u"timeDefineFm1", u"统计时间"},
    {u"timeDefineFm22", u"统计时间"},
    {u"searchFm1", u"查询和排序"},
    {u"orderFm1", u"查询和排序"},
    {u"maintainFm1", u"客户资料表维护"},
    {u"maintainFm2", u"购物表维护"},
    {u"maintainFm3", u"销售库存表维护"},
    {u"FileInputFm2", u"导入数据"},
    {u"FileInputFm3", u"导入数据"},
    {u"manualFm1", u"帮助"},
    {u"slip_roll", u"购买窗口"},
    {u"slip_A5", u"购买窗口"},
};
constexpr char16_t kReports[] = u"打印";

} // namespace

QString helpTopic(const QString& window) {
    for (const Topic& topic : kTopics)
        if (window == QStringView(topic.window))
            return QString::fromUtf16(topic.section);
    const bool isReport = window.startsWith(u"print_") || window.startsWith(u"showprint_");
    return isReport ? QString::fromUtf16(kReports) : QString();
}

UserGuide::UserGuide(const QString& text)
    : m_text(text) {
    m_text.remove(u'\r');
    takeHeadings();
    endSections();
    takeLinks();
}

void UserGuide::takeHeadings() {
    const QStringList lines = m_text.split(u'\n');
    qsizetype at = 0;
    for (qsizetype i = 0; i < lines.size(); at += lines[i++].size() + 1) {
        const QString& line = lines[i];
        const QString below = lines.value(i + 1);
        const bool isTitle = underlines(below, u'=');
        if (!line.trimmed().isEmpty() && (isTitle || underlines(below, u'-')))
            m_sections.push_back({isTitle ? Level::Title : Level::Chapter, withoutNumber(line), line, at,
                                  at + line.size() + 1 + below.size(), 0});
        else if (line.startsWith(u'【'))
            takeBrackets(at, line);
    }
}

/// Several names may share one text: 【甲】【乙】.
void UserGuide::takeBrackets(qsizetype at, const QString& line) {
    static const QRegularExpression bracket(QStringLiteral("\\G【([^【】]+)】"));
    std::vector<Section> found;
    for (auto each = bracket.globalMatch(line); each.hasNext();) {
        const QRegularExpressionMatch match = each.next();
        found.push_back({Level::Section, match.captured(1), match.captured(), at + match.capturedStart(),
                         at + match.capturedEnd(), 0});
    }
    m_sections.insert(m_sections.end(), found.begin(), found.end());
}

void UserGuide::endSections() {
    for (std::size_t i = 0; i < m_sections.size(); ++i) {
        const auto next = std::find_if(
            m_sections.begin() + std::ptrdiff_t(i) + 1, m_sections.end(), [&](const Section& other) {
                const bool shares = other.start == m_sections[i].textFrom; // stands behind it on its line
                return other.level <= m_sections[i].level && !shares;
            });
        m_sections[i].end = next == m_sections.end() ? m_text.size() : next->start;
    }
    // Of 【甲】【乙】 the first one's text is the second one's.
    for (std::size_t i = m_sections.size(); i-- > 1;)
        if (m_sections[i].start == m_sections[i - 1].textFrom)
            m_sections[i - 1].end = m_sections[i].end;
}

void UserGuide::takeLinks() {
    static const QRegularExpression quoted(QStringLiteral("“([^“”\n]+)”"));
    for (auto each = quoted.globalMatch(m_text); each.hasNext();) {
        const QRegularExpressionMatch match = each.next();
        const int target = find(match.captured(1));
        if (target < 0)
            continue;
        const Section& section = m_sections[std::size_t(target)];
        const bool own = match.capturedStart() >= section.start && match.capturedStart() < section.end;
        if (!own)
            m_links.push_back({match.capturedStart(1), match.capturedLength(1), target});
    }
}

int UserGuide::find(const QString& name) const {
    for (const Level level : {Level::Section, Level::Chapter, Level::Title})
        for (std::size_t i = 0; i < m_sections.size(); ++i)
            if (m_sections[i].level == level && m_sections[i].name == name)
                return int(i);
    return -1;
}

int UserGuide::sectionAt(qsizetype place) const {
    int found = -1;
    for (std::size_t i = 0; i < m_sections.size() && m_sections[i].start <= place; ++i)
        found = int(i);
    return found;
}

QStringList UserGuide::missingTargets() const {
    static const QRegularExpression reference(QStringLiteral("见[^“”。，；：\n]{0,3}“([^“”\n]+)”"));
    QStringList missing;
    for (auto each = reference.globalMatch(m_text); each.hasNext();)
        if (const QString name = each.next().captured(1); find(name) < 0)
            missing << name;
    return missing;
}

std::vector<qsizetype> UserGuide::hits(const QString& word) const {
    std::vector<qsizetype> places;
    if (word.isEmpty())
        return places;
    for (qsizetype at = m_text.indexOf(word, 0, Qt::CaseInsensitive); at >= 0;
         at = m_text.indexOf(word, at + word.size(), Qt::CaseInsensitive))
        places.push_back(at);
    return places;
}
