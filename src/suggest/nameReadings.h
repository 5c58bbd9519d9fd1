#pragma once

#include <QString>
#include <QStringList>

#include <memory>

/// A text as keys and typed letters are compared: width and case do not count, nor blanks and apostrophes.
QString suggestionKey(const QString& text);

/// How Chinese names are read, without tones: 张平 is "zhangping" and "zp". A sign that is read in another
/// way as a surname gives both readings, and ü is typed as v or as u. Digits and Latin letters stand for
/// themselves. Making one takes a while, the readings that it has found it keeps; it belongs to one thread at
/// a time.
class NameReadings {
public:
    NameReadings();
    ~NameReadings();
    NameReadings(const NameReadings&) = delete;
    NameReadings& operator=(const NameReadings&) = delete;

    /// The keys under which a name is found: itself, its syllables joined, and their first letters.
    QStringList keysOf(const QString& name);
    /// Signs whose reading the one behind them may change.
    const std::u32string& contextual() const;

private:
    class Reader;
    std::unique_ptr<Reader> m_common;
    std::unique_ptr<Reader> m_surname;
};
