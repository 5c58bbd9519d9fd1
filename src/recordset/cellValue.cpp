#include "recordset/cellValue.h"

#include "recordset/error.h"
#include "recordset/textNumber.h"

namespace {

struct TextOf {
    QString operator()(std::monostate) const { return {}; }
    QString operator()(const QString& text) const { return text; }
    QString operator()(double number) const { return plainNumber(number); }
    QString operator()(qint32 number) const { return QString::number(number); }
    QString operator()(const Moment& moment) const { return dateText(moment); }
};

} // namespace

QString toText(const CellValue& value) {
    return std::visit(TextOf{}, value);
}

QString fieldText(const CellValue& value) {
    return trimBlanks(toText(value));
}

double toNumber(const CellValue& value) {
    if (isNull(value))
        return 0;
    if (const auto* number = std::get_if<double>(&value))
        return *number;
    if (const auto* number = std::get_if<qint32>(&value))
        return *number;
    if (const auto* text = std::get_if<QString>(&value))
        if (const auto number = parseNumeric(*text))
            return *number;
    fail(ErrorNumber::TypeMismatch, QStringLiteral("类型不匹配"));
}
