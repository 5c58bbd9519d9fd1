// durability_worker PATH SEED [orders]: works in the shop until it is killed, with "orders" on finished
// orders and movements too; prints what is acknowledged after each action, then the number of actions.
#include "durability/orderWorker.h"

#include <QCoreApplication>

#include <cstdio>

namespace {

template <typename Worker> int workOn(Session& session, unsigned seed, bool countSteps) {
    Worker worker(session, seed);
    worker.open();
    for (int steps = 0;; ++steps) {
        std::printf("%s\n",
                    qUtf8Printable(countSteps ? QString::number(steps) : worker.acknowledged().text()));
        std::fflush(stdout);
        worker.step();
    }
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList words = app.arguments();
    Session session(words.at(1));
    const unsigned seed = words.at(2).toUInt();
    if (words.size() > 3)
        return workOn<OrderWorker>(session, seed, true);
    return workOn<ShopWorker>(session, seed, false);
}
