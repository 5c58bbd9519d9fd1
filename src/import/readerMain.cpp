// hengshanghui-reader FILE: tells the tables of an Access file to the program that started it, and then the
// columns and rows of each table that it is asked for by a line with its name. It may die or fall silent on a
// damaged file; then the file cannot be read.
#include "import/importSource.h"

#include <QDataStream>
#include <QFile>

#include <cstdio>
#include <sys/resource.h>

namespace {

void limit(int resource, rlim_t value) {
    const rlimit bound{value, value};
    setrlimit(resource, &bound);
}

/// One answer: its length, then its bytes.
void answer(QFile& out, const QByteArray& bytes) {
    QByteArray length;
    QDataStream(&length, QIODevice::WriteOnly) << qint64(bytes.size());
    out.write(length);
    out.write(bytes);
    out.flush();
}

QByteArray tablesOf(ImportSource& source) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << source.tables();
    return bytes;
}

QByteArray rowsOf(ImportSource& source, const QString& table) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    const SourceRows rows = source.read(table);
    stream << rows.columns;
    for (const QString& cell : rows.cells)
        stream << cell;
    return bytes;
}

/// Answers with the tables, and then with the rows of each table whose name comes in, until none comes.
void serve(const QString& path, QFile& in, QFile& out) {
    const auto source = openMdbSource(path);
    answer(out, tablesOf(*source));
    for (QByteArray name = in.readLine(); !name.isEmpty(); name = in.readLine())
        answer(out, rowsOf(*source, QString::fromUtf8(name.chopped(1))));
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
        serve(QString::fromLocal8Bit(argv[1]), in, out);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
