#include "controls/numberLimit.h"

#include "recordset/error.h"
#include "recordset/textNumber.h"

#include <cmath>

bool isReckonable(const QString& text) {
    constexpr double largest = 1e150; // two of this size multiplied stay finite
    try {
        return std::fabs(val(text)) <= largest;
    } catch (const RuntimeError&) {
        return false;
    }
}

QString tooLargeHint() {
    return QStringLiteral("数字太大，不能计算；已保留原值");
}

QValidator::State NumberLimit::validate(QString& text, int& /*position*/) const {
    return isReckonable(text) && (!m_check || m_check(text)) ? Acceptable : Invalid;
}
