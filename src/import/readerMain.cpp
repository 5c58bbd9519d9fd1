// hengshanghui-reader FILE [TABLE]: writes the tables of an Access file, or the columns and rows of one, for
// the program that started it. It may die or fall silent on a damaged file; then the file cannot be read.
#include "import/importSource.h"

#include <QCoreApplication>
#include <QDataStream>
#include <QFile>

#include <cstdio>
#include <sys/resource.h>

namespace {

void limit(int resource, rlim_t value) {
    const rlimit bound{value, value};
    setrlimit(resource, &bound);
}

void write(const QStringList& words, QFile& out) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    const auto source = openMdbSource(words[1]);
    if (words.size() == 2) {
        stream << source->tables();
    } else {
        const SourceRows rows = source->read(words[2]);
        stream << rows.columns;
        for (const QString& cell : rows.cells)
            stream << cell;
    }
    out.write(bytes);
}

} // namespace

int main(int argc, char** argv) {
    limit(RLIMIT_AS, rlim_t(4) << 30);
    limit(RLIMIT_CPU, 300);
    limit(RLIMIT_CORE, 0);
    QCoreApplication app(argc, argv);
    QFile out;
    if (app.arguments().size() < 2 || !out.open(stdout, QIODevice::WriteOnly))
        return 2;
    try {
        write(app.arguments(), out);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
