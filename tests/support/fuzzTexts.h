#pragma once

#include <QString>

/// Feeds one text to the filter, find, sort and statement parsers, the filter and sort of a small recordset,
/// and the number and date readers. Anything but success or RuntimeError is a finding.
void fuzzText(const QString& text);
