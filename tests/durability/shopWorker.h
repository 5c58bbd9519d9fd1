#pragma once

#include "data/session.h"

#include <QString>

#include <random>

/// What a worker has been told is done: every action is counted only after its routine has returned.
struct Acknowledged {
    int customers = 0;
    int products = 0;
    int stockIns = 0;
    int orders = 0;

    QString text() const {
        return QStringLiteral("%1 %2 %3 %4").arg(customers).arg(products).arg(stockIns).arg(orders);
    }
    static Acknowledged fromText(const QString& text);
};

/// Works in a shop at random: adds customers, registers products, stocks up, fills and settles baskets.
/// Prices and quantities are multiples of 0.25, so that sums are exact in any order. The order numbered n has
/// 1 + n mod 5 lines.
class ShopWorker {
public:
    ShopWorker(Session& session, unsigned seed);
    virtual ~ShopWorker() = default;

    /// Opens the cursors as the program does at start.
    void open();
    /// One action, durable when it returns.
    virtual void step();
    const Acknowledged& acknowledged() const { return m_done; }

protected:
    void addCustomer();
    void addProduct();
    void stockUp();
    void sell();
    int below(int limit) { return int(m_random() % unsigned(limit)); }

    Session& m_session;
    std::mt19937 m_random;
    Acknowledged m_done;
};

/// What is wrong with the books, line by line; empty if every action is wholly in or wholly absent, nothing
/// that was acknowledged is missing, and the recount at start changes no figure.
QStringList faultsOfBooks(const QString& path, const Acknowledged& acknowledged);
