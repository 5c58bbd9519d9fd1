// make_sample PATH [CUSTOMERS PRODUCTS LINES]: writes a sample shop, make_sample --empty PATH an empty one.
#include "data/schema.h"
#include "recordset/error.h"
#include "support/sampleData.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList words = app.arguments().mid(1);
    if (words.isEmpty() || QFile::exists(words.last())) {
        std::fputs("make_sample [--empty] PATH | PATH CUSTOMERS PRODUCTS LINES (PATH must not exist)\n",
                   stderr);
        return 2;
    }
    try {
        if (words.first() == u"--empty") {
            createDatabase(words.last());
            return 0;
        }
        SampleSize size;
        if (words.size() == 4)
            size = {words[1].toInt(), words[2].toInt(), words[3].toInt()};
        makeSample(words.first(), size);
    } catch (const RuntimeError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
