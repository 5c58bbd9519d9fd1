#pragma once

#include <QString>

#include <ostream>

/// Lets the test library print Qt texts in its messages.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}
