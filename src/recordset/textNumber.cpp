#include "recordset/textNumber.h"

#include "recordset/error.h"

#include <QRegularExpression>

#include <cmath>
#include <limits>

namespace {

bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

[[noreturn]] void overflow() {
    fail(ErrorNumber::Overflow, QStringLiteral("溢出"));
}

/// Digits of base 8 or 16 at the start, signed in 16 bits where they fit, else in 32.
std::optional<double> radixNumber(QStringView digits, int base, bool whole) {
    quint64 number = 0;
    qsizetype used = 0;
    for (; used < digits.size(); ++used) {
        const int digit = QStringLiteral("0123456789abcdef").indexOf(digits[used].toLower());
        if (digits[used].unicode() > 127 || digit < 0 || digit >= base)
            break;
        number = number * quint64(base) + quint64(digit);
        if (number > 0xFFFFFFFFULL)
            overflow();
    }
    if (used == 0 || (whole && used != digits.size()))
        return std::nullopt;
    return number <= 0xFFFF ? double(qint16(number)) : double(qint32(number));
}

std::optional<double> radixText(QStringView text, bool whole) {
    if (text.startsWith(u"&H", Qt::CaseInsensitive))
        return radixNumber(text.mid(2), 16, whole);
    if (text.startsWith(u"&O", Qt::CaseInsensitive))
        return radixNumber(text.mid(2), 8, whole);
    return std::nullopt;
}

qsizetype skipDigits(QStringView text, qsizetype at) {
    while (at < text.size() && isDigit(text[at]))
        ++at;
    return at;
}

/// Length of the longest decimal number at the start of `text`, 0 if none.
qsizetype decimalLength(QStringView text) {
    qsizetype at = text.startsWith(u'-') || text.startsWith(u'+') ? 1 : 0;
    const qsizetype whole = at;
    at = skipDigits(text, at);
    qsizetype digits = at - whole;
    if (at < text.size() && text[at] == u'.') {
        const qsizetype end = skipDigits(text, at + 1);
        digits += end - at - 1;
        at = end;
    }
    if (digits == 0)
        return 0;
    if (at < text.size() && QStringView(u"eEdD").contains(text[at])) {
        qsizetype exponent = at + 1;
        if (exponent < text.size() && (text[exponent] == u'-' || text[exponent] == u'+'))
            ++exponent;
        const qsizetype end = skipDigits(text, exponent);
        if (end > exponent)
            at = end;
    }
    return at;
}

double decimalValue(QStringView text) {
    QString number = text.toString();
    number.replace(QChar(u'd'), QChar(u'e'), Qt::CaseInsensitive);
    // The conversion reports a number that is too large as infinity, one that is too small as 0.
    return number.toDouble();
}

/// Decimal digits and exponent of a number: value = 0.d1d2d3... * 10^point.
struct Digits {
    bool negative = false;
    QByteArray digits;
    int point = 0;
};

Digits digitsOf(double value, int significant) {
    const QByteArray text = QByteArray::number(std::fabs(value), 'e', significant - 1);
    const qsizetype e = text.indexOf('e');
    Digits result;
    result.negative = value < 0;
    result.digits = text.left(e);
    result.digits.replace(".", "");
    while (result.digits.endsWith('0'))
        result.digits.chop(1);
    result.point = text.mid(e + 1).toInt() + 1;
    return result;
}

QByteArray exponentForm(const Digits& number) {
    QByteArray text = number.digits.left(1);
    if (number.digits.size() > 1)
        text += '.' + number.digits.mid(1);
    const int exponent = number.point - 1;
    return text + (exponent < 0 ? "E-" : "E+") +
           QByteArray::number(std::abs(exponent)).rightJustified(2, '0');
}

QByteArray decimalForm(const Digits& number) {
    if (number.point <= 0)
        return "0." + QByteArray(-number.point, '0') + number.digits;
    if (number.point >= number.digits.size())
        return number.digits.leftJustified(number.point, '0');
    return number.digits.left(number.point) + '.' + number.digits.mid(number.point);
}

enum class Form { Plain, Bare };

QString numberText(double value, int significant, Form form) {
    const Digits number = digitsOf(value, significant);
    if (number.digits.isEmpty())
        return QStringLiteral("0");
    const bool large = number.point - 1 >= significant;
    const bool small = number.point - 1 < -15;
    QByteArray text = large || (small && form == Form::Plain) ? exponentForm(number) : decimalForm(number);
    if (form == Form::Bare && text.startsWith("0."))
        text.remove(0, 1);
    return QString::fromLatin1(number.negative ? '-' + text : text);
}

template <typename Real> QString cutRate(Real rate) {
    if (rate == 0)
        return QStringLiteral("0");
    const QString text = bareNumber(rate);
    if (rate < 0)
        return text.left(4);
    if (rate < 1)
        return u'0' + text.left(3);
    return text.left(rate < 10 ? 4 : rate < 100 ? 5 : 6);
}

/// Takes one sign and one currency mark off one end of `text`, in either order.
void takeMarks(QStringView& text, bool atEnd, QString& marks) {
    for (int i = 0; i < 2 && !text.isEmpty(); ++i) {
        const QChar c = atEnd ? text.back() : text.front();
        if (!QStringView(u"+-￥¥").contains(c))
            return;
        marks += c;
        text = atEnd ? text.chopped(1) : text.mid(1);
    }
}

bool marksAreSound(const QString& marks) {
    return marks.count(u'+') + marks.count(u'-') <= 1 && marks.count(u'￥') + marks.count(u'¥') <= 1;
}

} // namespace

QString trimBlanks(QStringView text) {
    qsizetype first = 0;
    qsizetype last = text.size();
    while (first < last && text[first] == u' ')
        ++first;
    while (last > first && text[last - 1] == u' ')
        --last;
    return text.mid(first, last - first).toString();
}

QString leftPart(QStringView text, int count) {
    if (count < 0)
        fail(ErrorNumber::BadArgument, QStringLiteral("无效的参数"));
    return text.left(count).toString();
}

double val(QStringView text) {
    QString packed;
    packed.reserve(text.size());
    for (const QChar c : text)
        if (c != u' ' && c != u'\t' && c != u'\n' && c != u'\r')
            packed += c;
    if (packed.startsWith(u'&'))
        return radixText(packed, false).value_or(0);
    const double number = decimalValue(QStringView(packed).left(decimalLength(packed)));
    return checkedFinite(number) + 0.0;
}

std::optional<double> parseNumeric(QStringView text) {
    const QString trimmed = trimBlanks(text);
    QStringView body = trimmed;
    if (body.startsWith(u'&')) {
        try {
            return radixText(body, true);
        } catch (const RuntimeError&) {
            return std::nullopt;
        }
    }
    const bool bracketed = body.startsWith(u'(') && body.endsWith(u')') && body.size() > 2;
    if (bracketed)
        body = body.mid(1, body.size() - 2);
    QString marks;
    takeMarks(body, false, marks);
    takeMarks(body, true, marks);
    if (!marksAreSound(marks) || (bracketed && (marks.contains(u'-') || marks.contains(u'+'))))
        return std::nullopt;
    static const QRegularExpression number(
        QStringLiteral("^(?:[0-9](?:[0-9,]*[0-9])?(?:\\.[0-9]*)?|\\.[0-9]+)(?:[eEdD][+-]?[0-9]+)?$"),
        QRegularExpression::DontCaptureOption);
    if (!number.match(body.toString()).hasMatch() || body.endsWith(u'\n'))
        return std::nullopt;
    const double value = decimalValue(body.toString().remove(u','));
    if (!std::isfinite(value))
        return std::nullopt;
    return bracketed || marks.contains(u'-') ? -value : value;
}

bool isNumeric(QStringView text) {
    return parseNumeric(text).has_value();
}

qint16 toInt16(double value) {
    const double whole = std::nearbyint(value);
    if (!(whole >= -32768.0 && whole <= 32767.0))
        overflow();
    return qint16(whole);
}

qint32 toInt32(double value) {
    const double whole = std::nearbyint(value);
    if (!(whole >= -2147483648.0 && whole <= 2147483647.0))
        overflow();
    return qint32(whole);
}

QString plainNumber(double value) {
    return numberText(value, 15, Form::Plain);
}

QString bareNumber(double value) {
    return numberText(value, 15, Form::Bare);
}

QString plainNumber(float value) {
    return numberText(double(value), 7, Form::Plain);
}

QString bareNumber(float value) {
    return numberText(double(value), 7, Form::Bare);
}

QString rateText(double rate) {
    return cutRate(rate);
}

QString rateText(float rate) {
    return cutRate(rate);
}
