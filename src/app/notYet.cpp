#include "app/notYet.h"

const QStringList& commandsNotYet() {
    static const QStringList names{
        QStringLiteral("show_whole_client"),
        QStringLiteral("show_one_client1"),
        QStringLiteral("show_sales"),
        QStringLiteral("show_product_client"),
        QStringLiteral("show_one_sale_product"),
        QStringLiteral("data_statistic1"),
        QStringLiteral("statistic_one_client"),
        QStringLiteral("proporation_analysis1"),
        QStringLiteral("proporation_analysis2"),
        QStringLiteral("proporation_analysis3"),
        QStringLiteral("proporation_analysis4"),
        QStringLiteral("proporation_analysis5"),
        QStringLiteral("proporation_analysis6"),
        QStringLiteral("count_Month"),
        QStringLiteral("count_season"),
        QStringLiteral("count_half_year"),
        QStringLiteral("count_Year"),
        QStringLiteral("buy_frequence"),
        QStringLiteral("distribution_analysis1"),
        QStringLiteral("distribution_analysis2"),
        QStringLiteral("statistic_achievement"),
    };
    return names;
}
