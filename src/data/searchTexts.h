#pragma once

#include <QString>
#include <QStringList>

/// "c Like '%text%'" for each column, joined by Or. The text stands as it is typed.
QString containedInAny(const QStringList& columns, const QString& text);

/// The search over products: number equal, or name, spec, place or maker containing the text. No quote is
/// escaped.
QString productSearch(const QString& text);
