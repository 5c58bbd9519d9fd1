#include "import/biffFormats.h"

#include "recordset/textDate.h"
#include "recordset/textNumber.h"

#include <QDate>

#include <cmath>

namespace {

bool hasDateLetter(const QString& code) {
    bool quoted = false;
    int brackets = 0;
    for (qsizetype i = 0; i < code.size(); ++i) {
        const QChar c = code[i];
        if (c == u'"')
            quoted = !quoted;
        else if (quoted)
            continue;
        else if (c == u'\\' || c == u'_' || c == u'*')
            ++i;
        else if (c == u'[')
            ++brackets;
        else if (c == u']')
            --brackets;
        else if (brackets <= 0 && c == u';')
            return false;
        else if (brackets <= 0 && QStringLiteral("ymdhsYMDHS").contains(c))
            return true;
    }
    return false;
}

} // namespace

bool isDateFormat(int index, const QString& code) {
    if (!code.isEmpty())
        return hasDateLetter(code);
    return (index >= 14 && index <= 22) || (index >= 27 && index <= 36) || (index >= 45 && index <= 47) ||
           (index >= 50 && index <= 58);
}

QString serialText(double serial, bool from1904) {
    constexpr double lastSerial = 2958466; // the first day of the year 10000
    if (!std::isfinite(serial) || serial < 0 || serial >= lastSerial)
        return plainNumber(serial);
    auto days = qint64(std::floor(serial));
    auto seconds = qint64(std::llround((serial - double(days)) * 86400));
    if (seconds == 86400) {
        ++days;
        seconds = 0;
    }
    QString time = QStringLiteral("%1:%2:%3")
                       .arg(seconds / 3600)
                       .arg(seconds / 60 % 60, 2, 10, QChar(u'0'))
                       .arg(seconds % 60, 2, 10, QChar(u'0'));
    if (days == 0 && !from1904)
        return time;
    // The 29th of February 1900 counts, though it never was.
    const QDate first = from1904 ? QDate(1904, 1, 1) : days < 60 ? QDate(1899, 12, 31) : QDate(1899, 12, 30);
    const QDate date = first.addDays(days);
    const QString text = QStringLiteral("%1-%2-%3").arg(date.year()).arg(date.month()).arg(date.day());
    return seconds == 0 ? text : text + u' ' + time;
}
