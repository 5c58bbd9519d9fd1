// A reader that takes three seconds for a table, and for ever for the one that is named "silent".
#include "import/tableServer.h"

#include <QFile>
#include <QThread>

#include <cstdio>

namespace {

class SlowSource : public ImportSource {
public:
    QStringList tables() override { return {}; }
    SourceRows read(const QString& table) override {
        for (int i = 0; i < 30 || table == u"silent"; ++i) {
            QThread::msleep(100);
            if (table != u"silent")
                signOfLife();
        }
        return {{QStringLiteral("column")}, {QStringLiteral("read")}};
    }
};

} // namespace

int main() {
    QFile in;
    QFile out;
    if (!in.open(stdin, QIODevice::ReadOnly) || !out.open(stdout, QIODevice::WriteOnly))
        return 2;
    SlowSource source;
    serveTables(source, in, out);
}
