#pragma once

#include "support/testBooks.h"

/// Two customers, "7" (甲) and "8" (乙), and two products: "p1" (纸, 10 pieces at a cost of 2 and a price of
/// 5) and "p2" (笔, 3 pieces at 1 and 4). A test adds the lines that it is about.
inline void addSmallShop(TestBooks& books) {
    books.addClient(QStringLiteral("7"), QStringLiteral("甲"));
    books.addClient(QStringLiteral("8"), QStringLiteral("乙"));
    books.addProduct(QStringLiteral("p1"), QStringLiteral("纸"), 10, 2, 5);
    books.addProduct(QStringLiteral("p2"), QStringLiteral("笔"), 3, 1, 4);
}
