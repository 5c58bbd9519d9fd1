#include "analysis/birthday.h"

#include "recordset/textNumber.h"

#include <algorithm>
#include <vector>

namespace {

constexpr int kAnyLeapYear = 2000; // of a birthday without a year

/// The text in half-width signs, without the time behind its day; nothing where only a time is there.
QString dayPart(QStringView text) {
    const bool plain = std::all_of(text.begin(), text.end(), [](QChar c) { return c < u'\x80'; });
    QString day =
        trimBlanks(plain ? text.toString() : text.toString().normalized(QString::NormalizationForm_KC));
    const qsizetype colon = day.indexOf(u':');
    if (colon < 0)
        return day;
    const qsizetype end = std::max(day.lastIndexOf(u' ', colon), day.lastIndexOf(u'T', colon));
    return trimBlanks(day.left(std::max<qsizetype>(end, 0)));
}

/// Chinese figures of years, months and days in Arabic ones: "二十三" is 23, "一九八〇" 1980. Of a day
/// without its sign at the end nothing is made: "八月十五" is a feast of the moon's calendar.
QString inDigits(const QString& text) {
    static const QString figures = QStringLiteral("〇一二三四五六七八九");
    const auto valueOf = [](QChar c) { return c == u'零' ? 0 : figures.indexOf(c); };
    if (!text.endsWith(u'日') && !text.endsWith(u'号'))
        return text;
    QString digits;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != u'十') {
            digits += valueOf(text[i]) < 0 ? QString(text[i]) : QString::number(valueOf(text[i]));
            continue;
        }
        // A ten without ones before or behind it is 10, 11 or 20.
        if (i == 0 || valueOf(text[i - 1]) < 1)
            digits += u'1';
        if (i + 1 == text.size() || valueOf(text[i + 1]) < 1)
            digits += u'0';
    }
    return digits;
}

/// A text taken apart into its numbers; whether nothing but separators stands between and behind them.
struct Numbers {
    std::vector<QStringView> digits;
    bool clean = true;
};
Numbers numbersOf(QStringView text) {
    Numbers numbers;
    for (qsizetype i = 0; i < text.size();) {
        const qsizetype start = i;
        while (i < text.size() && text[i] >= u'0' && text[i] <= u'9')
            ++i;
        if (i > start)
            numbers.digits.push_back(text.mid(start, i - start));
        else if (numbers.digits.empty() || !QStringView(u"-/. ,、年月日号").contains(text[i++]))
            return {{}, false};
    }
    return numbers;
}

int toInt(QStringView digits) {
    return digits.toString().toInt();
}

std::optional<Birthday> checked(int year, QStringView month, QStringView day) {
    if (month.size() > 2 || day.size() > 2 || !QDate::isValid(year, toInt(month), toInt(day)))
        return std::nullopt;
    return Birthday{toInt(month), toInt(day)};
}

int yearOf(QStringView digits) {
    const int year = toInt(digits);
    if (digits.size() == 4)
        return year;
    return year < 30 ? 2000 + year : 1900 + year; // as the books read a short year everywhere
}

std::optional<Birthday> inOneNumber(QStringView digits) {
    switch (digits.size()) {
    case 4:
        return checked(kAnyLeapYear, digits.left(2), digits.right(2));
    case 6: {
        const bool maybeYearAndMonth = digits.startsWith(u"19") || digits.startsWith(u"20");
        return maybeYearAndMonth ? std::nullopt
                                 : checked(yearOf(digits.left(2)), digits.mid(2, 2), digits.right(2));
    }
    case 8:
        return checked(yearOf(digits.left(4)), digits.mid(4, 2), digits.right(2));
    default:
        return std::nullopt;
    }
}

} // namespace

std::optional<Birthday> parseBirthday(QStringView text) {
    const QString day = inDigits(dayPart(text));
    const Numbers numbers = numbersOf(day);
    const std::vector<QStringView>& parts = numbers.digits;
    if (!numbers.clean)
        return std::nullopt;
    if (parts.size() == 1)
        return inOneNumber(parts[0]);
    if (parts.size() == 2)
        return day.contains(u'年') ? std::nullopt : checked(kAnyLeapYear, parts[0], parts[1]);
    if (parts.size() != 3)
        return std::nullopt;
    if (parts[2].size() == 4)
        return checked(yearOf(parts[2]), parts[0], parts[1]);
    const bool year = parts[0].size() == 4 || parts[0].size() <= 2;
    return year ? checked(yearOf(parts[0]), parts[1], parts[2]) : std::nullopt;
}

QDate nextBirthday(const Birthday& birthday, const QDate& from) {
    for (int year = from.year();; ++year) {
        const int last = QDate(year, birthday.month, 1).daysInMonth();
        const QDate day(year, birthday.month, std::min(birthday.day, last));
        if (day >= from)
            return day;
    }
}
