#pragma once

#include "suggest/rowSuggestions.h"

/// What search boxes offer while something is typed into them.
struct Suggestions {
    explicit Suggestions(Connection& connection)
        : customers(connection, QStringLiteral("clientTable"),
                    {QStringLiteral("客户编号"), QStringLiteral("单位名称"), QStringLiteral("联系人")})
        , products(connection, QStringLiteral("productTable"),
                   {QStringLiteral("产品编号"), QStringLiteral("品名")}) {}

    /// Begins to read, when the first view stands.
    void start() {
        customers.start();
        products.start();
    }

    RowSuggestions customers;
    RowSuggestions products;
};
