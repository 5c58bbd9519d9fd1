#pragma once

#include "import/tableReader.h"

#include <string>

/// The one of comma, tab and semicolon that stands most often in the header line outside quotes; comma on a
/// tie. `start`: a text up to its header line's end or further.
char delimiterOf(std::string_view start);

/// Takes delimited UTF-8 text apart as it comes; the first line that is not empty names the columns. A quote
/// at the start of a field opens it, a doubled one inside is one quote, line ends inside belong to the field.
/// Empty lines are skipped, short ones filled with nulls, long ones cut. Throws ImportError for a line or a
/// field that no table has.
class DelimitedParser {
public:
    DelimitedParser(char delimiter, RowSink& sink);

    void take(std::string_view piece);
    void finish();

private:
    enum class State { LineStart, FieldStart, Plain, Quoted, QuoteInQuoted };

    bool endsField(char c) const { return c == m_delimiter || c == '\r' || c == '\n'; }
    /// Takes a stretch of the piece that needs no look at each sign; gives where it ends.
    std::size_t takeRun(std::string_view piece, std::size_t at);
    void takeSign(char c);
    void keep(std::string_view part);
    void endField(std::string_view rest, char end);
    void endLine();

    char m_delimiter;
    RowSink& m_sink;
    State m_state = State::LineStart;
    std::string m_field; // what came of it before
    QStringList m_header;
    bool m_inHeader = true;
    qsizetype m_width = 0;
    qsizetype m_column = 0;
};
