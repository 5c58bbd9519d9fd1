#pragma once

#include <QString>
#include <QStringView>

#include <string_view>

/// Letters of a text that grids, boxes and paper show at most. The widest column takes far fewer; a longer
/// text was put into the file by another program.
inline constexpr qsizetype kShownLetters = 1000;
/// Bytes in UTF-8 of which at least so many letters come.
inline constexpr std::size_t kMostShownBytes = 4 * std::size_t(kShownLetters + 1);
/// Letters of a text within a line of a label or a caption.
inline constexpr qsizetype kCaptionLetters = 100;

/// The text; of a longer one than is shown its beginning and "…".
QString beginningOf(QStringView text, qsizetype letters = kShownLetters);
/// The same without the blanks at the ends of the text.
QString shownText(QStringView text, qsizetype letters = kShownLetters);
/// The same of a text that stands in a line of a label or a caption.
inline QString captionText(QStringView text) {
    return shownText(text, kCaptionLetters);
}
/// The same of a text in UTF-8, of which no more is read than is shown.
QString shownText(std::string_view utf8);
