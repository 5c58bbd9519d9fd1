#pragma once

#include <QString>

#include <exception>

/// Numbers that a run-time error carries; the error report shows them.
namespace ErrorNumber {
inline constexpr int BadArgument = 5;
inline constexpr int Overflow = 6;
inline constexpr int TypeMismatch = 13;
inline constexpr int NullValue = 94;
inline constexpr int BadText = 3001; // Filter, Sort or Find text, position or bookmark, date literal
inline constexpr int TableExists = 3010;
inline constexpr int NoCurrentRow = 3021;
inline constexpr int TableMissing = 3078;
inline constexpr int NotPossibleNow = 3219;
inline constexpr int ReadOnly = 3251;
inline constexpr int NoSuchField = 3265;
inline constexpr int DropMissing = 3376;
inline constexpr int TextTooLong = 3421;
inline constexpr int IsClosed = 3704;
inline constexpr int IsOpen = 3705;
inline constexpr int Engine = 3146; // the storage engine refused: its own words are in the text
} // namespace ErrorNumber

/// The one exception of the data engine and the text rules: what a routine that ignores errors passes over.
class RuntimeError : public std::exception {
public:
    RuntimeError(int number, QString text, QString statement = {});

    int number() const { return m_number; }
    /// What failed, in the engine's words.
    const QString& text() const { return m_text; }
    /// The statement or condition that failed; empty where there is none.
    const QString& statement() const { return m_statement; }
    const char* what() const noexcept override { return m_what.constData(); }

private:
    int m_number;
    QString m_text;
    QString m_statement;
    QByteArray m_what;
};

/// What became of an action under which the disk failed.
enum class Outcome {
    TakenBack, // nothing of it is in the file, nor in memory
    Booked,    // all of it is in the file and in memory
    Unknown,   // the file could not be asked; memory is as before the action
};

/// The disk or the file failed: full, not readable, not writable, damaged. Never passed over.
class DatabaseLost : public std::exception {
public:
    explicit DatabaseLost(const QString& text, Outcome outcome = Outcome::TakenBack, bool ofTheFile = false);
    Outcome outcome() const { return m_outcome; }
    /// Whether the file may have suffered, so that a backup may be wanted.
    bool isOfTheFile() const { return m_ofTheFile; }
    QString text() const { return QString::fromUtf8(m_what); }
    const char* what() const noexcept override { return m_what.constData(); }

private:
    QByteArray m_what;
    Outcome m_outcome;
    bool m_ofTheFile;
};

/// The action ends here and the program goes on: a disk that failed where errors are passed over, or a user
/// who would not wait for another program any longer. Nothing of it is done, unless it is booked.
class ActionEnded : public std::exception {
public:
    /// `text`: what the user is to be told; empty where he knows.
    explicit ActionEnded(const QString& text, bool booked = false);
    bool isBooked() const { return m_booked; }
    QString text() const { return QString::fromUtf8(m_what); }
    const char* what() const noexcept override { return m_what.constData(); }

private:
    QByteArray m_what;
    bool m_booked;
};

[[noreturn]] void fail(int number, const QString& text, const QString& statement = {});

/// `value` itself. Throws Overflow where it is not finite.
double checkedFinite(double value);
