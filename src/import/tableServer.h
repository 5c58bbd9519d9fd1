#pragma once

#include "import/tableReader.h"

#include <functional>

/// How a reader in a process of its own talks: frames, each a head and its content, in the byte order of this
/// machine. The window that listens believes none of it.
namespace Frame {
enum Kind : quint32 {
    Alive = 1, // nothing yet, but the reader is at work
    Tables,    // texts: the answer to being started
    Columns,   // texts
    Rows,      // how many as quint32; the length of each cell as quint32, or Null; the texts
    End,       // of a table
    Refused,   // a text: why the file cannot be read
};
struct Head {
    quint32 kind = 0;
    quint32 length = 0; // of the content, bytes
};
inline constexpr quint32 Null = 0xFFFFFFFF;
inline constexpr quint32 BlockRows = 2000;
inline constexpr quint32 BlockBytes = 4U << 20;    // of texts, after which a block of rows is sent as it is
inline constexpr quint32 LongestFrame = 64U << 20; // bytes
} // namespace Frame

/// Opens a source by `open` and sends its tables to one descriptor, and then the columns and rows of each
/// table whose name comes in on a line from the other, until none comes. What cannot be read is told there
/// too.
void serveTables(const std::function<std::unique_ptr<TableReader>()>& open, int in, int out);
