// durability_worker PATH SEED: works in the shop until it is killed; prints what is acknowledged after each
// action.
#include "durability/shopWorker.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList words = app.arguments();
    Session session(words.at(1));
    ShopWorker worker(session, words.at(2).toUInt());
    worker.open();
    for (;;) {
        std::printf("%s\n", qUtf8Printable(worker.acknowledged().text()));
        std::fflush(stdout);
        worker.step();
    }
}
