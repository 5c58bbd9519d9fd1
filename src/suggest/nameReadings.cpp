#include "suggest/nameReadings.h"

#include <QRegularExpression>
#include <QVarLengthArray>

#include <unicode/translit.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/uscript.h>

#include <string>
#include <unordered_map>

namespace {

constexpr char16_t kDiaeresis = 0x0308;
constexpr char kUmlaut = 'v'; // as it is typed

bool isHan(char32_t sign) {
    UErrorCode error = U_ZERO_ERROR;
    return uscript_getScript(UChar32(sign), &error) == USCRIPT_HAN;
}

/// Letters of a reading without their tones, a u with two dots as kUmlaut.
std::string withoutTones(const QString& reading) {
    std::string letters;
    for (const QChar sign : reading.normalized(QString::NormalizationForm_D)) {
        if (sign.unicode() == kDiaeresis && !letters.empty() && letters.back() == 'u')
            letters.back() = kUmlaut;
        else if (sign.unicode() >= u'a' && sign.unicode() <= u'z')
            letters += char(sign.unicode());
    }
    return letters;
}

icu::UnicodeString unicodeOf(char32_t sign) {
    return icu::UnicodeString(UChar32(sign));
}

QString qtOf(const icu::UnicodeString& text) {
    return QString::fromUtf16(text.getBuffer(), text.length());
}

} // namespace

QString suggestionKey(const QString& text) {
    QString key;
    for (const QChar sign : text.normalized(QString::NormalizationForm_KC).toLower())
        if (!sign.isSpace() && sign != u'\'' && sign != u'’' && !sign.isNull())
            key += sign;
    return key;
}

/// The readings of one table of the library, a sign at a time.
class NameReadings::Reader {
public:
    explicit Reader(const char* table) {
        UErrorCode error = U_ZERO_ERROR;
        UParseError where;
        m_table.reset(icu::Transliterator::createInstance(table, UTRANS_FORWARD, where, error));
        if (U_FAILURE(error))
            m_table.reset();
        findContextual();
    }

    /// The reading of a Han sign, "" where there is none. `next`: the Han sign behind it, or 0.
    const std::string& reading(char32_t sign, bool isFirst, char32_t next) {
        const bool depends = next != 0 && m_contextual.find(sign) != std::u32string::npos;
        const quint64 key = quint64(sign) | quint64(isFirst) << 24 | quint64(depends ? next : 0) << 32;
        const auto known = m_known.find(key);
        if (known != m_known.end())
            return known->second;
        return m_known[key] = read(sign, isFirst, depends ? next : 0);
    }
    const std::u32string& contextual() const { return m_contextual; }

private:
    /// Asks with a sign in front where the sign does not begin its name.
    std::string read(char32_t sign, bool isFirst, char32_t next) const {
        if (!m_table)
            return {};
        icu::UnicodeString text;
        if (!isFirst)
            text += unicodeOf(U'一');
        text += unicodeOf(sign);
        if (next != 0)
            text += unicodeOf(next);
        m_table->transliterate(text);
        const QStringList syllables = qtOf(text).split(u' ', Qt::SkipEmptyParts);
        return withoutTones(syllables.value(isFirst ? 0 : 1));
    }

    /// A rule that looks at the sign behind names its own sign in braces, and the other one after them.
    void findContextual() {
        if (!m_table)
            return;
        icu::UnicodeString rules;
        m_table->toRules(rules, false);
        static const QRegularExpression rule(QStringLiteral("\\{([^}]{1,2})\\}[^>\\n]*[^\\s>][^>\\n]*>"));
        auto found = rule.globalMatch(qtOf(rules));
        while (found.hasNext())
            for (const char32_t sign : found.next().captured(1).toUcs4())
                if (isHan(sign))
                    m_contextual += sign;
    }

    std::unique_ptr<icu::Transliterator> m_table;
    std::u32string m_contextual;
    std::unordered_map<quint64, std::string> m_known;
};

NameReadings::NameReadings()
    : m_common(std::make_unique<Reader>("Han-Latin"))
    , m_surname(std::make_unique<Reader>("Han-Latin/Names")) {}

NameReadings::~NameReadings() = default;

const std::u32string& NameReadings::contextual() const {
    return m_common->contextual();
}

namespace {

/// The syllables of a name joined, and their first letters.
struct Reading {
    std::string whole;
    std::string initials;
    bool hasUmlaut = false;

    void add(const std::string& syllable) {
        whole += syllable;
        initials += syllable.front();
        hasUmlaut = hasUmlaut || syllable.find(kUmlaut) != std::string::npos;
    }
    void addAsItIs(char32_t sign) {
        const std::string bytes = QString::fromUcs4(&sign, 1).toStdString();
        whole += bytes;
        initials += bytes;
    }
};

void addKey(QStringList& keys, const QString& key) {
    if (!key.isEmpty() && !keys.contains(key))
        keys << key;
}

} // namespace

QStringList NameReadings::keysOf(const QString& name) {
    const QString key = suggestionKey(name);
    QStringList keys;
    addKey(keys, key);
    const auto signs = key.toUcs4();
    for (Reader* reader : {m_common.get(), m_surname.get()}) {
        Reading read;
        for (qsizetype i = 0; i < signs.size(); ++i) {
            const bool isFirst = i == 0 || !isHan(signs[i - 1]);
            const char32_t next = i + 1 < signs.size() && isHan(signs[i + 1]) ? signs[i + 1] : 0;
            const std::string* syllable =
                isHan(signs[i]) ? &reader->reading(signs[i], isFirst, next) : nullptr;
            if (syllable && !syllable->empty())
                read.add(*syllable);
            else if (syllable || QChar::isLetterOrNumber(signs[i]))
                read.addAsItIs(signs[i]);
        }
        const QString whole = QString::fromStdString(read.whole);
        addKey(keys, whole);
        addKey(keys, QString::fromStdString(read.initials));
        if (read.hasUmlaut)
            addKey(keys, QString(whole).replace(QLatin1Char(kUmlaut), u'u'));
    }
    return keys;
}
