#include "recordset/textDate.h"

#include "recordset/textNumber.h"

#include <QRegularExpression>

namespace {

constexpr qint64 kDaySeconds = 86400;
constexpr qint64 kEpochJulianDay = 2415019; // 1899-12-30

int fullYear(const QString& digits) {
    const int year = digits.toInt();
    if (digits.size() <= 2)
        return year < 30 ? 2000 + year : 1900 + year;
    return year;
}

std::optional<QDate> checkedDate(int year, int month, int day) {
    if (year < 100 || year > 9999 || !QDate::isValid(year, month, day))
        return std::nullopt;
    return QDate(year, month, day);
}

std::optional<QDate> dateOfParts(const QStringList& parts, const QDate& today) {
    if (parts.size() == 3 && parts[2].size() == 4)
        return parts[0].size() > 2 ? std::nullopt
                                   : checkedDate(parts[2].toInt(), parts[0].toInt(), parts[1].toInt());
    if (parts.size() == 3)
        return checkedDate(fullYear(parts[0]), parts[1].toInt(), parts[2].toInt());
    if (parts[0].size() >= 3)
        return checkedDate(parts[0].toInt(), parts[1].toInt(), 1);
    return checkedDate(today.year(), parts[0].toInt(), parts[1].toInt());
}

/// The date part of a typed text, all separators alike.
std::optional<QDate> readDate(const QString& text, const QDate& today) {
    static const QRegularExpression separated(
        QStringLiteral("\\A([0-9]{1,4})([-/.])([0-9]{1,4})(?:\\2([0-9]{1,4}))?\\z"));
    static const QRegularExpression chinese(
        QStringLiteral("\\A(?:([0-9]{1,4})年)?(?:([0-9]{1,2})月)(?:([0-9]{1,2})日?)?\\z"));
    if (const auto match = separated.match(text); match.hasMatch()) {
        QStringList parts{match.captured(1), match.captured(3)};
        if (!match.captured(4).isEmpty())
            parts << match.captured(4);
        if (parts[1].size() > 2)
            return std::nullopt;
        if (parts.size() == 2 && match.captured(2) == u".")
            return std::nullopt; // "1.5" is a number
        return dateOfParts(parts, today);
    }
    const auto match = chinese.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    const QString year = match.captured(1);
    const QString day = match.captured(3);
    if (year.isEmpty() && day.isEmpty())
        return std::nullopt;
    return checkedDate(year.isEmpty() ? today.year() : fullYear(year), match.captured(2).toInt(),
                       day.isEmpty() ? 1 : day.toInt());
}

/// Second of the day of "[上午|下午] H:m[:s]", or nothing.
std::optional<int> readTime(const QString& text) {
    static const QRegularExpression time(
        QStringLiteral("\\A(?:(上午|下午) ?)?([0-9]{1,2}):([0-9]{1,2})(?::([0-9]{1,2}))?\\z"));
    const auto match = time.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    int hour = match.captured(2).toInt();
    const QString half = match.captured(1);
    if (!half.isEmpty()) {
        if (hour > 12)
            return std::nullopt;
        hour = hour % 12 + (half == u"下午" ? 12 : 0);
    }
    const int minute = match.captured(3).toInt();
    const int second = match.captured(4).toInt();
    if (hour > 23 || minute > 59 || second > 59)
        return std::nullopt;
    return hour * 3600 + minute * 60 + second;
}

std::optional<int> twoDigits(const char* at) {
    if (at[0] < '0' || at[0] > '9' || at[1] < '0' || at[1] > '9')
        return std::nullopt;
    return (at[0] - '0') * 10 + (at[1] - '0');
}

/// Days since 1970-01-01 of a day of the Gregorian calendar (Hinnant, "chrono-compatible low-level date
/// algorithms"); no check that the day exists.
qint64 civilDay(int year, int month, int day) {
    const int y = month <= 2 ? year - 1 : year;
    const int era = y / 400;
    const int yearOfEra = y - era * 400;
    const int dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    const int dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return qint64(era) * 146097 + dayOfEra - 719468;
}

constexpr qint64 kUnixDay = 25569; // 1970-01-01 counted from 1899-12-30

} // namespace

Moment Moment::fromDate(const QDate& date, int secondOfDay) {
    return Moment{(date.toJulianDay() - kEpochJulianDay) * kDaySeconds + secondOfDay};
}

QDate Moment::date() const {
    const qint64 day = seconds >= 0 ? seconds / kDaySeconds : -((-seconds + kDaySeconds - 1) / kDaySeconds);
    return QDate::fromJulianDay(day + kEpochJulianDay);
}

int Moment::secondOfDay() const {
    const qint64 rest = seconds % kDaySeconds;
    return int(rest < 0 ? rest + kDaySeconds : rest);
}

std::optional<Moment> parseDate(QStringView text, const QDate& today) {
    const QString trimmed = trimBlanks(text);
    if (const auto time = readTime(trimmed))
        return Moment{*time};
    const qsizetype blank = trimmed.indexOf(u' ');
    const auto date = readDate(blank < 0 ? trimmed : trimmed.left(blank), today);
    if (!date)
        return std::nullopt;
    if (blank < 0)
        return Moment::fromDate(*date);
    const auto time = readTime(trimBlanks(QStringView(trimmed).mid(blank)));
    return time ? std::optional(Moment::fromDate(*date, *time)) : std::nullopt;
}

bool isDate(QStringView text) {
    return parseDate(text).has_value();
}

std::optional<Moment> parseDateLiteral(QStringView text) {
    static const QRegularExpression form(
        QStringLiteral("\\A *([0-9]{4})([-/])([0-9]{1,2})\\2([0-9]{1,2})"
                       "(?: +([0-9]{1,2}):([0-9]{1,2})(?::([0-9]{1,2}))?)? *\\z"));
    const auto match = form.match(text.toString());
    if (!match.hasMatch())
        return std::nullopt;
    const auto date =
        checkedDate(match.captured(1).toInt(), match.captured(3).toInt(), match.captured(4).toInt());
    const int hour = match.captured(5).toInt();
    const int minute = match.captured(6).toInt();
    const int second = match.captured(7).toInt();
    if (!date || hour > 23 || minute > 59 || second > 59)
        return std::nullopt;
    return Moment::fromDate(*date, hour * 3600 + minute * 60 + second);
}

QString dateText(const Moment& moment) {
    const int second = moment.secondOfDay();
    QString time = QStringLiteral("%1:%2:%3")
                       .arg(second / 3600)
                       .arg(second / 60 % 60, 2, 10, QChar(u'0'))
                       .arg(second % 60, 2, 10, QChar(u'0'));
    if (moment.seconds >= 0 && moment.seconds < kDaySeconds)
        return time;
    const QDate date = moment.date();
    const QString day = QStringLiteral("%1-%2-%3").arg(date.year()).arg(date.month()).arg(date.day());
    return second == 0 ? day : day + u' ' + time;
}

QByteArray isoText(const Moment& moment) {
    QByteArray text = moment.date().toString(Qt::ISODate).toLatin1();
    const int second = moment.secondOfDay();
    if (second != 0) {
        const auto two = [](int n) { return QByteArray::number(n).rightJustified(2, '0'); };
        text += ' ' + two(second / 3600) + ':' + two(second / 60 % 60) + ':' + two(second % 60);
    }
    return text;
}

std::optional<Moment> parseIso(const char* text, int length) {
    if ((length != 10 && length != 19) || text[4] != '-' || text[7] != '-')
        return std::nullopt;
    const auto century = twoDigits(text);
    const auto year = twoDigits(text + 2);
    const auto month = twoDigits(text + 5);
    const auto day = twoDigits(text + 8);
    if (!century || !year || !month || !day || !QDate::isValid(*century * 100 + *year, *month, *day))
        return std::nullopt;
    const qint64 days = civilDay(*century * 100 + *year, *month, *day) + kUnixDay;
    if (length == 10)
        return Moment{days * kDaySeconds};
    const auto hour = twoDigits(text + 11);
    const auto minute = twoDigits(text + 14);
    const auto second = twoDigits(text + 17);
    if (!hour || !minute || !second || text[10] != ' ' || *hour > 23 || *minute > 59 || *second > 59)
        return std::nullopt;
    const int secondOfDay = *hour * 3600 + *minute * 60 + *second;
    return Moment{days * kDaySeconds + secondOfDay};
}
