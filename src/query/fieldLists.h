#pragma once

#include <QString>
#include <QStringList>

/// The fields that the search dialog offers for a searchCode; none for a code without a list.
QStringList searchFields(int searchCode);

/// The condition of a search: equality for the keys of customers, products and salespersons, else
/// containment. The value is not quoted further, so that an apostrophe in it breaks the condition.
QString searchCondition(const QString& field, const QString& value);
