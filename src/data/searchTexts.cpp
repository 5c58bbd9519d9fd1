#include "data/searchTexts.h"

#include "recordset/condition.h"
#include "recordset/error.h"

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

bool setTypedFilter(const RecordsetPtr& recordset, const std::function<QString(const QString&)>& filterFor,
                    const QString& text) {
    for (const QString& typed : {text, quotedInside(text)}) {
        try {
            recordset->setFilter(filterFor(typed));
            return true;
        } catch (const RuntimeError& error) {
            if (error.number() != ErrorNumber::BadText)
                throw;
        }
    }
    return false;
}
