#include "recordset/columnStore.h"

#include "recordset/error.h"
#include "recordset/shownText.h"
#include "recordset/textNumber.h"

#include <bit>

namespace {

template <typename T>
void spreadCells(std::vector<T>& cells, const std::vector<T>& from, const std::vector<Row>& slots) {
    for (std::size_t i = 0; i < from.size(); ++i)
        cells[slots[i]] = from[i];
}

/// Nothing where this is not the vector of the column's type.
template <typename T>
void gatherCells(std::vector<T>& cells, const std::vector<T>& from, const std::vector<Row>& rows) {
    if (from.empty())
        return;
    for (const Row row : rows)
        cells.push_back(from[row]);
}

constexpr double kNullNumber = std::numeric_limits<double>::quiet_NaN();

template <typename T> std::size_t bytes(const std::vector<T>& cells) {
    return cells.capacity() * sizeof(T);
}

[[noreturn]] void mismatch(const ColumnInfo& column) {
    fail(ErrorNumber::TypeMismatch, QStringLiteral("类型不匹配：%1").arg(column.name));
}

CellValue convertedText(const CellValue& value, const ColumnInfo& column) {
    QString text = toText(value);
    if (text.size() > column.definedSize)
        fail(ErrorNumber::TextTooLong, QStringLiteral("文字太长：%1").arg(column.name));
    return text;
}

CellValue convertedNumber(const CellValue& value, const ColumnInfo& column) {
    if (std::holds_alternative<Moment>(value))
        mismatch(column);
    return checkedFinite(toNumber(value));
}

CellValue convertedDate(const CellValue& value, const ColumnInfo& column) {
    if (std::holds_alternative<Moment>(value))
        return value;
    if (const auto* text = std::get_if<QString>(&value))
        if (const auto moment = parseDate(*text))
            return *moment;
    mismatch(column);
}

} // namespace

ColumnInfo ColumnInfo::fromDeclaration(const QString& name, const QString& declaredType) {
    ColumnInfo info;
    info.name = name;
    const QString type = declaredType.toUpper();
    if (type.startsWith(u"TEXT")) {
        const qsizetype open = type.indexOf(u'(');
        const qsizetype close = type.indexOf(u')');
        info.type = ColumnType::Text;
        info.definedSize = open < 0 ? 255 : type.mid(open + 1, close - open - 1).toInt();
        info.declaration = declaredType + QStringLiteral(" COLLATE NOCASE");
        return info;
    }
    info.declaration = declaredType;
    if (type == u"REAL") {
        info.type = ColumnType::Number;
        info.definedSize = 8;
    } else if (type == u"DATETEXT") {
        info.type = ColumnType::Date;
        info.definedSize = 19;
    } else if (type == u"INTEGER") {
        info.type = name == u"流水号" ? ColumnType::Serial : ColumnType::Integer;
        info.definedSize = 4;
    } else {
        fail(ErrorNumber::Engine, QStringLiteral("列 %1 的类型 %2 无法识别").arg(name, declaredType));
    }
    return info;
}

CellValue ColumnStore::value(std::size_t row) const {
    switch (info.type) {
    case ColumnType::Text:
        return codes[row] == TextPool::Null ? CellValue() : CellValue(text(codes[row]));
    case ColumnType::Number:
        return std::isnan(numbers[row]) ? CellValue() : CellValue(numbers[row]);
    case ColumnType::Date:
        return moments[row] == NullMoment ? CellValue() : CellValue(Moment{moments[row]});
    default:
        return integers[row] == NullInteger ? CellValue() : CellValue(integers[row]);
    }
}

QString ColumnStore::text(TextPool::Code code) const {
    const std::string_view held = pool.text(code);
    return QString::fromUtf8(held.data(), qsizetype(held.size()));
}

QString ColumnStore::shown(std::size_t row) const {
    if (info.type != ColumnType::Text || codes[row] == TextPool::Null)
        return fieldText(value(row));
    return shownText(pool.text(codes[row]));
}

void ColumnStore::set(std::size_t row, const CellValue& value) {
    switch (info.type) {
    case ColumnType::Text:
        codes[row] = TextPool::Null;
        if (const auto* held = std::get_if<QString>(&value)) {
            const QByteArray utf8 = held->toUtf8();
            codes[row] = pool.intern({utf8.constData(), std::size_t(utf8.size())});
        }
        break;
    case ColumnType::Number:
        numbers[row] = isNull(value) ? kNullNumber : std::get<double>(value);
        break;
    case ColumnType::Date:
        moments[row] = isNull(value) ? NullMoment : std::get<Moment>(value).seconds;
        break;
    default:
        integers[row] = isNull(value) ? NullInteger : std::get<qint32>(value);
    }
}

void ColumnStore::appendNull() {
    switch (info.type) {
    case ColumnType::Text:
        codes.push_back(TextPool::Null);
        break;
    case ColumnType::Number:
        numbers.push_back(kNullNumber);
        break;
    case ColumnType::Date:
        moments.push_back(NullMoment);
        break;
    default:
        integers.push_back(NullInteger);
    }
}

void ColumnStore::reserve(std::size_t rows) {
    switch (info.type) {
    case ColumnType::Text:
        return codes.reserve(rows);
    case ColumnType::Number:
        return numbers.reserve(rows);
    case ColumnType::Date:
        return moments.reserve(rows);
    default:
        return integers.reserve(rows);
    }
}

void ColumnStore::resize(std::size_t rows) {
    switch (info.type) {
    case ColumnType::Text:
        return codes.resize(rows, TextPool::Null);
    case ColumnType::Number:
        return numbers.resize(rows, kNullNumber);
    case ColumnType::Date:
        return moments.resize(rows, NullMoment);
    default:
        return integers.resize(rows, NullInteger);
    }
}

quint64 ColumnStore::ordinal(std::size_t row) const {
    switch (info.type) {
    case ColumnType::Number:
        return std::isnan(numbers[row]) ? 0 : ordinalOf(numbers[row]);
    case ColumnType::Date:
        return moments[row] == NullMoment ? 0 : ordinalOf(moments[row]);
    case ColumnType::Text:
        return codes[row];
    default:
        return integers[row] == NullInteger ? 0 : ordinalOf(qint64(integers[row]));
    }
}

std::size_t ColumnStore::memory() const {
    return bytes(codes) + bytes(numbers) + bytes(integers) + bytes(moments) + pool.memory();
}

quint64 ordinalOf(double number) {
    const quint64 bits = std::bit_cast<quint64>(number + 0.0);
    return bits >> 63 ? ~bits : bits | (1ULL << 63);
}

quint64 ordinalOf(qint64 number) {
    return quint64(number) ^ (1ULL << 63);
}

CellValue converted(const CellValue& value, const ColumnInfo& column) {
    if (isNull(value))
        return value;
    switch (column.type) {
    case ColumnType::Text:
        return convertedText(value, column);
    case ColumnType::Number:
        return convertedNumber(value, column);
    case ColumnType::Date:
        return convertedDate(value, column);
    default:
        return toInt32(toNumber(value));
    }
}

ColumnStore ColumnStore::spread(const std::vector<Row>& slots, std::size_t rows) const {
    ColumnStore result;
    result.info = info;
    result.loaded = loaded;
    result.reserve(rows + kRoom);
    result.resize(rows);
    result.pool = pool;
    spreadCells(result.codes, codes, slots);
    spreadCells(result.numbers, numbers, slots);
    spreadCells(result.integers, integers, slots);
    spreadCells(result.moments, moments, slots);
    return result;
}

ColumnStore ColumnStore::gathered(const std::vector<Row>& rows) const {
    ColumnStore result;
    result.info = info;
    result.loaded = loaded;
    result.reserve(rows.size() + kRoom);
    gatherCells(result.numbers, numbers, rows);
    gatherCells(result.integers, integers, rows);
    gatherCells(result.moments, moments, rows);
    gatherCells(result.codes, codes, rows);
    std::vector<TextPool::Code> codeOf(pool.last() + 1, TextPool::Null);
    for (TextPool::Code& code : result.codes) {
        if (code == TextPool::Null)
            continue;
        if (codeOf[code] == TextPool::Null)
            codeOf[code] = result.pool.intern(pool.text(code));
        code = codeOf[code];
    }
    return result;
}
