#include "import/mdbProcess.h"

#include <QCoreApplication>
#include <QDataStream>
#include <QProcess>

namespace {

constexpr int kSilence = 8000;                  // milliseconds without a word until the reader is given up
constexpr qint64 kMostOutput = qint64(3) << 29; // bytes

[[noreturn]] void unreadable(const QString& why) {
    throw ImportError(why.isEmpty() ? QStringLiteral("不是 Access 文件，或者文件已损坏。") : why);
}

/// What the reader says about a file, to its end.
QByteArray readerOutput(const QStringList& arguments) {
    QProcess reader;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // The library listens to these, and would read other signs or other dates than the file holds.
    for (const char* name : {"MDBICONV", "MDB_ICONV", "MDB_JET3_CHARSET", "MDBOPTS"})
        environment.remove(QString::fromLatin1(name));
    reader.setProcessEnvironment(environment);
    reader.start(QCoreApplication::applicationDirPath() + QStringLiteral("/hengshanghui-reader"), arguments);
    if (!reader.waitForStarted())
        unreadable(QStringLiteral("找不到读取 Access 文件的程序。"));
    QByteArray output;
    while (reader.state() == QProcess::Running || reader.bytesAvailable() > 0) {
        const bool spoke = reader.bytesAvailable() > 0 || reader.waitForReadyRead(kSilence);
        output += reader.readAllStandardOutput();
        if ((!spoke && reader.state() == QProcess::Running) || output.size() > kMostOutput) {
            reader.kill();
            reader.waitForFinished();
            unreadable({});
        }
    }
    if (reader.exitStatus() != QProcess::NormalExit || reader.exitCode() != 0)
        unreadable(QString::fromUtf8(reader.readAllStandardError()).section(u'\n', -2, -2).startsWith(u'!')
                       ? QString::fromUtf8(reader.readAllStandardError())
                       : QString());
    return output;
}

class MdbInProcess : public ImportSource {
public:
    explicit MdbInProcess(const QString& path)
        : m_path(path) {
        const QByteArray output = readerOutput({path});
        QDataStream stream(output);
        stream >> m_tables;
        if (stream.status() != QDataStream::Ok)
            unreadable({});
    }

    QStringList tables() override { return m_tables; }

    SourceRows read(const QString& table) override {
        const QByteArray output = readerOutput({m_path, table});
        QDataStream stream(output);
        SourceRows rows;
        stream >> rows.columns;
        QString cell;
        while (stream.status() == QDataStream::Ok && !stream.atEnd()) {
            stream >> cell;
            rows.cells.push_back(cell);
        }
        if (stream.status() != QDataStream::Ok || rows.columns.isEmpty() ||
            rows.cells.size() % std::size_t(rows.columns.size()) != 0)
            unreadable({});
        return rows;
    }

private:
    QString m_path;
    QStringList m_tables;
};

} // namespace

std::unique_ptr<ImportSource> openMdbInProcess(const QString& path) {
    return std::make_unique<MdbInProcess>(path);
}
