// make_empty PATH: writes the empty database that is installed beside the program.
#include "data/schema.h"
#include "recordset/error.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    if (argc != 2)
        return 2;
    try {
        createDatabase(app.arguments().at(1));
    } catch (const RuntimeError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
