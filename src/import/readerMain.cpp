// hengshanghui-reader FILE: tells the tables of an Access file to the program that started it, and then the
// columns and rows of each table that it is asked for by a line with its name. It may die or fall silent on a
// damaged file; then the file cannot be read.
#include "import/tableServer.h"

#include <QFile>

#include <cstdio>
#include <sys/resource.h>

namespace {

void limit(int resource, rlim_t value) {
    const rlimit bound{value, value};
    setrlimit(resource, &bound);
}

} // namespace

int main(int argc, char** argv) {
#ifndef __SANITIZE_ADDRESS__ // which reserves terabytes of addresses
    limit(RLIMIT_AS, rlim_t(4) << 30);
#endif
    limit(RLIMIT_CPU, 300);
    limit(RLIMIT_CORE, 0);
    QFile in;
    QFile out;
    if (argc < 2 || !in.open(stdin, QIODevice::ReadOnly) || !out.open(stdout, QIODevice::WriteOnly))
        return 2;
    try {
        serveTables(*openMdbSource(QString::fromLocal8Bit(argv[1])), in, out);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
