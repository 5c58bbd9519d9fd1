#include "analysis/callList.h"

#include "analysis/birthday.h"
#include "recordset/recordset.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr const char16_t* kClientColumns[] = {u"客户编号", u"单位名称", u"联系人", u"电话",  u"手机",
                                              u"消费合计", u"生日",     u"购买数", u"Email", u"业务员编号"};

/// A customer on a list.
struct Called {
    Row row;
    QDate day;
    int days;
    double spent;
};

ColumnStore columnOf(const char16_t* name, const char16_t* type) {
    ColumnStore column;
    column.info = ColumnInfo::fromDeclaration(QString::fromUtf16(name), QString::fromUtf16(type));
    column.loaded = true;
    return column;
}

template <typename T> std::vector<T> cellsOf(const std::vector<T>& cells, const std::vector<Called>& called) {
    std::vector<T> taken;
    if (cells.empty())
        return taken;
    taken.reserve(called.size());
    for (const Called& each : called)
        taken.push_back(cells[each.row]);
    return taken;
}

/// The cells of a column by the rows of a list. The texts stay in the column's own pool: nearly every
/// customer may be on the list, and texts of his own each.
ColumnStore taken(const ColumnStore& column, const std::vector<Called>& called) {
    ColumnStore result;
    result.info = column.info;
    result.loaded = true;
    result.pool = column.pool;
    result.codes = cellsOf(column.codes, called);
    result.numbers = cellsOf(column.numbers, called);
    return result;
}

/// All customers, whatever the shared cursor shows.
class Clients {
public:
    explicit Clients(Session& session)
        : m_cursor(session.cn) {
        m_cursor.Open(QStringLiteral("Select * From clientTable"));
        QStringList names;
        for (const char16_t* name : kClientColumns)
            names << QString::fromUtf16(name);
        m_cursor.prefetch(names);
        m_spent = &column(u"消费合计");
    }

    const ColumnStore& column(const char16_t* name) const {
        return m_cursor.image().column(m_cursor.imageColumn(m_cursor.fieldIndex(QString::fromUtf16(name))));
    }
    template <typename Visit> void each(Visit&& visit) const {
        m_cursor.eachRow([&visit](RowId row) { visit(Row(row)); });
    }
    double spent(Row row) const {
        const double number = m_spent->numbers[row];
        return std::isnan(number) ? 0 : number;
    }
    /// The rows of a list, its day under this name.
    std::shared_ptr<TableImage> listed(const std::vector<Called>& called, const char16_t* dayName) const {
        ColumnStore day = columnOf(dayName, u"DATETEXT");
        ColumnStore days = columnOf(u"天数", u"INTEGER");
        for (const Called& each : called) {
            day.moments.push_back(Moment::fromDate(each.day).seconds);
            days.integers.push_back(each.days);
        }
        std::vector<ColumnStore> columns{std::move(day), std::move(days)};
        for (const char16_t* name : kClientColumns)
            columns.push_back(taken(column(name), called));
        return std::make_shared<TableImage>(std::move(columns));
    }

private:
    Recordset m_cursor;
    const ColumnStore* m_spent;
};

/// The day of the last line of each customer number (case of A-Z apart).
class LastDays {
public:
    explicit LastDays(Session& session)
        : m_lines(session.cn) {
        m_lines.Open(QStringLiteral("Select * From buyList"));
        m_lines.prefetch({QStringLiteral("客户编号"), QStringLiteral("日期")});
        m_numbers = &column(QStringLiteral("客户编号"));
        const std::vector<qint64>& moments = column(QStringLiteral("日期")).moments;
        const TextPool& pool = m_numbers->pool;
        std::vector<TextPool::Code> classes(std::size_t(pool.last()) + 1);
        for (TextPool::Code code = 0; code < classes.size(); ++code)
            classes[code] = pool.foldClass(code);
        m_last.assign(classes.size(), ColumnStore::NullMoment); // lower than any moment
        m_lines.eachRow([&](RowId row) {
            qint64& last = m_last[classes[m_numbers->codes[row]]];
            last = std::max(last, moments[row]);
        });
    }

    /// Nothing where no line with a day bears the number.
    std::optional<QDate> find(std::string_view number) const {
        const auto codes = m_numbers->pool.findEqual(number);
        if (codes.empty())
            return std::nullopt;
        const qint64 last = m_last[m_numbers->pool.foldClass(codes.front())];
        return last == ColumnStore::NullMoment ? std::nullopt : std::optional(Moment{last}.date());
    }

private:
    const ColumnStore& column(const QString& name) const {
        return m_lines.image().column(m_lines.imageColumn(m_lines.fieldIndex(name)));
    }

    Recordset m_lines;
    const ColumnStore* m_numbers;
    std::vector<qint64> m_last; // by fold class of the number's code
};

std::string_view withoutBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// The day of the next birthday by the code of its text: Null, or an empty text, has none and is not counted.
struct BirthdayOfCode {
    bool written = false;
    QDate next; // null where the text cannot be read
};
std::vector<BirthdayOfCode> birthdaysByCode(const ColumnStore& texts, const QDate& today) {
    std::vector<BirthdayOfCode> found(std::size_t(texts.pool.last()) + 1);
    for (TextPool::Code code = 1; code < found.size(); ++code) {
        const std::string_view text = withoutBlanks(texts.pool.text(code));
        found[code].written = !text.empty();
        if (const auto birthday = parseBirthday(QString::fromUtf8(text.data(), qsizetype(text.size()))))
            found[code].next = nextBirthday(*birthday, today);
    }
    return found;
}

QString birthdayHead(const CallList& list, const QDate& today, int days) {
    return QStringLiteral("%1 至 %2 过生日：%3 位")
        .arg(dateText(Moment::fromDate(today)), dateText(Moment::fromDate(today.addDays(days - 1))))
        .arg(list.count());
}

QString birthdayScope(const CallList& list) {
    const QString scope = QStringLiteral("按全部客户资料");
    return list.leftOut == 0 ? scope
                             : scope + QStringLiteral("；%1 位的生日认不出，没有列入").arg(list.leftOut);
}

QString lapsedHead(const CallList& list, const QDate& today, int days) {
    return QStringLiteral("到 %1 已有 %2 天以上没有购买：%3 位")
        .arg(dateText(Moment::fromDate(today)))
        .arg(days)
        .arg(list.count());
}

QString lapsedScope(const CallList& list) {
    const QString scope = QStringLiteral("按全部购物记录");
    return list.leftOut == 0 ? scope
                             : scope + QStringLiteral("；没有购买日期的 %1 位没有列入").arg(list.leftOut);
}

constexpr int kBirthdayDays[] = {30};
constexpr int kLapsedDays[] = {90, 180, 365};

constexpr CallKind kCallKinds[] = {{u"birthdayFm1", u"近期生日", u"print_birthdays", u"近期没有客户过生日。",
                                    kBirthdayDays, comingBirthdays, birthdayHead, birthdayScope},
                                   {u"lapsedFm1", u"久未购买", u"print_lapsed", u"没有久未购买的客户。",
                                    kLapsedDays, lapsedCustomers, lapsedHead, lapsedScope}};

} // namespace

CallList comingBirthdays(Session& session, const QDate& today, int days) {
    const Clients clients(session);
    const ColumnStore& texts = clients.column(u"生日");
    const std::vector<BirthdayOfCode> birthdays = birthdaysByCode(texts, today);
    CallList list;
    std::vector<Called> called;
    clients.each([&](Row row) {
        const BirthdayOfCode& birthday = birthdays[texts.codes[row]];
        const int until = int(today.daysTo(birthday.next));
        if (birthday.written && birthday.next.isNull())
            ++list.leftOut;
        else if (birthday.written && until < days)
            called.push_back({row, birthday.next, until, clients.spent(row)});
    });
    std::stable_sort(called.begin(), called.end(), [](const Called& a, const Called& b) {
        return a.days != b.days ? a.days < b.days : a.spent > b.spent;
    });
    list.rows = clients.listed(called, u"近期生日");
    return list;
}

CallList lapsedCustomers(Session& session, const QDate& today, int days) {
    const Clients clients(session);
    const LastDays lastDays(session);
    const ColumnStore& numbers = clients.column(u"客户编号");
    CallList list;
    std::vector<Called> called;
    clients.each([&](Row row) {
        const TextPool::Code code = numbers.codes[row];
        const auto last =
            code == TextPool::Null ? std::nullopt : lastDays.find(withoutBlanks(numbers.pool.text(code)));
        if (!last)
            ++list.leftOut;
        else if (const int since = int(last->daysTo(today)); since >= days)
            called.push_back({row, *last, since, clients.spent(row)});
    });
    std::stable_sort(called.begin(), called.end(),
                     [](const Called& a, const Called& b) { return a.spent > b.spent; });
    list.rows = clients.listed(called, u"最近购买");
    return list;
}

std::span<const CallKind> callKinds() {
    return kCallKinds;
}
