// Damaged variants of the sample files through the whole reading road: whatever they hold, a reader ends
// soon, in bounds, with rows or with a refusal.
#include "import/importSource.h"
#include "import/zipFile.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sys/resource.h>

namespace {

/// Mutants of a kind in this run: its own number, or as many as the environment asks for.
int mutantCount(int usual) {
    const int asked = qEnvironmentVariableIntValue("IMPORT_MUTANTS");
    return asked > 0 ? asked : usual;
}

struct Kind {
    SourceKind kind;
    const char* name;
    std::vector<const char*> samples;
    int usual = 60;
};

class Mutator {
public:
    explicit Mutator(unsigned seed)
        : m_random(seed) {}

    QByteArray mutant(QByteArray bytes) {
        for (int i = 1 + below(3); i > 0; --i)
            change(bytes);
        return bytes;
    }
    std::size_t oneOf(std::size_t count) { return std::size_t(below(qsizetype(count))); }

private:
    int below(qsizetype limit) { return limit <= 0 ? 0 : int(m_random() % quint64(limit)); }
    /// Near the start, where the headers are, or anywhere.
    qsizetype place(const QByteArray& bytes) {
        return below(below(2) ? bytes.size() : std::min<qsizetype>(bytes.size(), 4096));
    }

    void change(QByteArray& bytes) {
        if (bytes.isEmpty())
            return;
        switch (below(5)) {
        case 0:
            for (int i = 1 + below(30); i > 0; --i)
                bytes[place(bytes)] = char(below(256));
            return;
        case 1:
            return bytes.truncate(below(bytes.size()));
        case 2: {
            const qsizetype at = place(bytes);
            bytes.insert(at, bytes.mid(at, 1 + below(4096)));
            return;
        }
        case 3:
            bytes.remove(place(bytes), 1 + below(600));
            return;
        default: // a size raised
            const qsizetype at = place(bytes);
            for (qsizetype i = at; i < std::min(bytes.size(), at + 1 + below(4)); ++i)
                bytes[i] = '\xFF';
        }
    }

    std::mt19937_64 m_random;
};

class Mutants : public testing::TestWithParam<int> {
protected:
    static const Kind& kind() {
        static const Kind kinds[] = {
            {SourceKind::Dbf, "dbf", {"customers.dbf", "products.dbf", "edge/memo_types.dbf"}},
            {SourceKind::Txt, "txt", {"customers.txt", "edge/quotes.txt", "edge/utf8_bom.txt"}},
            {SourceKind::Xls,
             "xls",
             {"customers.xls", "products.xls", "edge/formulas.xls", "edge/several_sheets.xls"}},
            {SourceKind::Mdb, "mdb", {"products.mdb", "edge/types.mdb", "edge/several_tables.mdb"}},
            {SourceKind::Xlsx,
             "xlsx",
             {"products.xlsx", "edge/openpyxl.xlsx", "edge/office.xlsx", "edge/writer.xlsx",
              "edge/writerInline.xlsx"},
             500},
            {SourceKind::Csv, "csv", {"customers.csv", "edge/semicolon.csv", "edge/tab.csv"}, 500}};
        return kinds[GetParam()];
    }
    static QByteArray contents(const char* name) {
        QFile file(QStringLiteral(SAMPLES "/import/") + QString::fromUtf8(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static void writeBytes(const QString& path, const QByteArray& bytes) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    static void writeInnerMutant(const QString& path, const char* sample, Mutator& mutator) {
        ZipContent content = readZip(QStringLiteral(SAMPLES "/import/") + QString::fromUtf8(sample));
        ASSERT_FALSE(content.empty());
        QByteArray& part = content[mutator.oneOf(content.size())].second;
        part = mutator.mutant(part);
        ASSERT_TRUE(writeZip(path, content));
    }
};

TEST_P(Mutants, AreReadOrRefusedInTimeAndWithinMemory) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("mutant.%1").arg(QString::fromUtf8(kind().name)));
    int read = 0;
    int refused = 0;
    qint64 slowest = 0;
    const int count = mutantCount(kind().usual);
    for (int i = 0; i < count; ++i) {
        Mutator mutator(unsigned(i) * 6 + unsigned(GetParam()));
        const char* sample = kind().samples[std::size_t(i) % kind().samples.size()];
        // Of an archive every second one is damaged inside, and whole as an archive.
        if (kind().kind == SourceKind::Xlsx && i % 2 == 1)
            writeInnerMutant(path, sample, mutator);
        else
            writeBytes(path, mutator.mutant(contents(sample)));
        QElapsedTimer clock;
        clock.start();
        try {
            const auto source = openImportSource(kind().kind, path);
            for (const QString& table : source->tables()) {
                const SourceRows rows = source->read(table);
                ASSERT_EQ(rows.cellCount(), std::size_t(rows.rowCount()) * std::size_t(rows.columns.size()));
            }
            ++read;
        } catch (const ImportError&) {
            ++refused;
        }
        slowest = std::max(slowest, clock.elapsed());
        ASSERT_LT(clock.elapsed(), 10000) << "mutant " << i;
    }
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    rusage children{};
    getrusage(RUSAGE_CHILDREN, &children);
    std::printf(
        "%s: %d mutants, %d read, %d refused, slowest %lld ms, memory %ld MiB, of the reader %ld MiB\n",
        kind().name, count, read, refused, static_cast<long long>(slowest), usage.ru_maxrss / 1024,
        children.ru_maxrss / 1024);
    EXPECT_LT(usage.ru_maxrss / 1024, 2048);
}

INSTANTIATE_TEST_SUITE_P(Kinds, Mutants, testing::Values(0, 1, 2, 3, 4, 5));

} // namespace
