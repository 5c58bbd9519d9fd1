#include "data/searchTexts.h"

QString containedInAny(const QStringList& columns, const QString& text) {
    QStringList parts;
    for (const QString& column : columns)
        parts << column + QStringLiteral(" Like '%") + text + QStringLiteral("%'");
    return parts.join(QStringLiteral(" Or "));
}

QString productSearch(const QString& text) {
    return QStringLiteral("产品编号 = '") + text + QStringLiteral("' Or ") +
           containedInAny({QStringLiteral("品名"), QStringLiteral("规格"), QStringLiteral("产地"),
                           QStringLiteral("厂家")},
                          text);
}
