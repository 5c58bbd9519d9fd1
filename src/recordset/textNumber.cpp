#include "recordset/textNumber.h"

#include "recordset/error.h"

#include <QRegularExpression>

#include <charconv>
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
    char digits[20] = {};
    int count = 0; // digits without trailing zeros
    int point = 0;
};

Digits digitsOf(double value, int significant) {
    char text[40];
    const auto written = std::to_chars(text, text + sizeof text, std::fabs(value),
                                       std::chars_format::scientific, significant - 1);
    Digits result;
    result.negative = value < 0;
    const char* at = text;
    for (; at < written.ptr && *at != 'e'; ++at)
        if (*at != '.')
            result.digits[result.count++] = *at;
    while (result.count > 0 && result.digits[result.count - 1] == '0')
        --result.count;
    const bool negativeExponent = at + 1 < written.ptr && at[1] == '-';
    int exponent = 0;
    for (at += 2; at < written.ptr; ++at)
        exponent = exponent * 10 + (*at - '0');
    result.point = (negativeExponent ? -exponent : exponent) + 1;
    return result;
}

/// A short text in the making, without allocations.
class NumberWriter {
public:
    void put(char c) { m_text[m_size++] = c; }
    void put(const char* from, int count) {
        for (int i = 0; i < count; ++i)
            put(from[i]);
    }
    void zeros(int count) {
        for (int i = 0; i < count; ++i)
            put('0');
    }
    QString text() const { return QString::fromLatin1(m_text, m_size); }

private:
    char m_text[400]; // the longest bare form has some 330 zeros
    int m_size = 0;
};

void writeExponentForm(NumberWriter& out, const Digits& number) {
    out.put(number.digits[0]);
    if (number.count > 1) {
        out.put('.');
        out.put(number.digits + 1, number.count - 1);
    }
    const int exponent = number.point - 1;
    out.put('E');
    out.put(exponent < 0 ? '-' : '+');
    const QByteArray digits = QByteArray::number(std::abs(exponent)).rightJustified(2, '0');
    out.put(digits.constData(), int(digits.size()));
}

void writeDecimalForm(NumberWriter& out, const Digits& number, bool leadingZero) {
    if (number.point <= 0) {
        if (leadingZero)
            out.put('0');
        out.put('.');
        out.zeros(-number.point);
        return out.put(number.digits, number.count);
    }
    const int whole = std::min(number.point, number.count);
    out.put(number.digits, whole);
    out.zeros(number.point - whole);
    if (number.count > whole) {
        out.put('.');
        out.put(number.digits + whole, number.count - whole);
    }
}

enum class Form { Plain, Bare };

QString numberText(double value, int significant, Form form) {
    const Digits number = digitsOf(value, significant);
    if (number.count == 0)
        return QStringLiteral("0");
    const bool large = number.point - 1 >= significant;
    const bool small = number.point - 1 < -15;
    NumberWriter out;
    if (number.negative)
        out.put('-');
    if (large || (small && form == Form::Plain))
        writeExponentForm(out, number);
    else
        writeDecimalForm(out, number, form == Form::Plain);
    return out.text();
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

QStringView withoutBlanks(QStringView text) {
    qsizetype first = 0;
    qsizetype last = text.size();
    while (first < last && text[first] == u' ')
        ++first;
    while (last > first && text[last - 1] == u' ')
        --last;
    return text.mid(first, last - first);
}

QString trimBlanks(QStringView text) {
    return withoutBlanks(text).toString();
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
