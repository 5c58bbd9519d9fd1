#include "app/notYet.h"

const QStringList& commandsNotYet() {
    static const QStringList names{
        QStringLiteral("show_one_client1"),     QStringLiteral("show_sales"),
        QStringLiteral("show_product_client"),  QStringLiteral("show_one_sale_product"),
        QStringLiteral("statistic_one_client"),
    };
    return names;
}
