#pragma once

#include "recordset/recordset.h"

#include <QString>
#include <QStringList>

#include <functional>

/// "c Like '%text%'" for each column, joined by Or. The text stands as it is typed.
QString containedInAny(const QStringList& columns, const QString& text);

/// The search over products: number equal, or name, spec, place or maker containing the text. No quote is
/// escaped.
QString productSearch(const QString& text);

/// Puts a search on a cursor. A typed apostrophe that the grammar refuses is tried again doubled; false where
/// the text is refused all the same, and nothing was changed.
bool setTypedFilter(const RecordsetPtr& recordset, const std::function<QString(const QString&)>& filterFor,
                    const QString& text);
