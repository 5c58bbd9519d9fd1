#pragma once

#include "durability/shopWorker.h"
#include "sales/orderMaintenance.h"

/// A shop worker who also changes finished orders, moves stock out by the three roads, and counts it. Every
/// step writes at most one transaction into the lasting tables.
class OrderWorker : public ShopWorker {
public:
    OrderWorker(Session& session, unsigned seed);

    void step() override;
    /// What the last step did.
    const QString& lastAction() const { return m_action; }

private:
    bool chooseSomeOrder();
    void saveLine();
    void deleteLine();
    void deleteOrder();
    void moveOut();
    void count();

    OrderMaintenance m_book;
    QString m_action;
};

/// A digest of every row of the lasting tables, in their order.
QByteArray digestOfBooks(const QString& path);
