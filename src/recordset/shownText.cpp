#include "recordset/shownText.h"

#include "recordset/textNumber.h"

namespace {

std::string_view withoutBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

} // namespace

QString beginningOf(QStringView text, qsizetype letters) {
    if (text.size() <= letters)
        return text.toString();
    // A letter of two units is not torn.
    const bool torn = text[letters - 1].isHighSurrogate() && text[letters].isLowSurrogate();
    return text.left(torn ? letters - 1 : letters).toString() + u'…';
}

QString shownText(QStringView text, qsizetype letters) {
    return beginningOf(withoutBlanks(text), letters);
}

QString shownText(std::string_view utf8) {
    const std::string_view whole = withoutBlanks(utf8);
    // A letter that the end cuts lies behind what is shown.
    const std::string_view read = whole.substr(0, kMostShownBytes);
    return shownText(QString::fromUtf8(read.data(), qsizetype(read.size())));
}
