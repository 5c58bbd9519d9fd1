#include "import/mdbProcess.h"

#include "import/tableServer.h"

#include <QCoreApplication>
#include <QDataStream>
#include <QProcess>

namespace {

constexpr qint64 kMostOutput = qint64(3) << 29; // bytes

class MdbInProcess : public ImportSource {
public:
    MdbInProcess(const QString& path, const QString& program, int silence)
        : m_silence(silence) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        // The library listens to these, and would read other signs or other dates than the file holds.
        for (const char* name : {"MDBICONV", "MDB_ICONV", "MDB_JET3_CHARSET", "MDBOPTS"})
            environment.remove(QString::fromLatin1(name));
        m_reader.setProcessEnvironment(environment);
        m_reader.start(program, {path});
        if (!m_reader.waitForStarted())
            throw ImportError(QStringLiteral("找不到读取 Access 文件的程序。"));
        const QByteArray bytes = answer();
        QDataStream stream(bytes);
        stream.setByteOrder(QDataStream::LittleEndian);
        stream >> m_tables;
        if (stream.status() != QDataStream::Ok)
            unreadable();
    }
    ~MdbInProcess() override {
        m_reader.kill();
        m_reader.waitForFinished();
    }

    QStringList tables() override { return m_tables; }

    SourceRows read(const QString& table) override {
        m_reader.write(table.toUtf8() + '\n');
        const QByteArray bytes = answer();
        QDataStream stream(bytes);
        stream.setByteOrder(QDataStream::LittleEndian);
        SourceRows rows;
        stream >> rows.columns;
        QString cell;
        while (stream.status() == QDataStream::Ok && !stream.atEnd()) {
            stream >> cell;
            rows.cells.push_back(cell);
        }
        if (stream.status() != QDataStream::Ok || rows.columns.isEmpty() ||
            rows.cells.size() % std::size_t(rows.columns.size()) != 0)
            unreadable();
        return rows;
    }

private:
    [[noreturn]] void unreadable() {
        m_reader.kill();
        throw ImportError(QStringLiteral("不是 Access 文件，或者文件已损坏。"));
    }

    /// The bytes that come next; nobody waits for a reader that has ended or fallen silent.
    QByteArray bytes(qint64 count) {
        while (m_reader.bytesAvailable() < count)
            if (m_reader.state() != QProcess::Running || !m_reader.waitForReadyRead(m_silence))
                if (m_reader.bytesAvailable() < count)
                    unreadable();
        return m_reader.read(count);
    }
    qint64 nextLength() {
        qint64 length = 0;
        const QByteArray head = bytes(sizeof length);
        QDataStream(head) >> length;
        return length;
    }
    QByteArray answer() {
        QByteArray parts;
        for (qint64 length = nextLength(); length != AnswerPart::End; length = nextLength()) {
            if (length < 0 || parts.size() + length > kMostOutput)
                unreadable();
            if (length == AnswerPart::SignOfLife && signOfLife)
                signOfLife();
            parts += bytes(length);
        }
        return parts;
    }

    int m_silence; // milliseconds
    QProcess m_reader;
    QStringList m_tables;
};

} // namespace

QString readerProgram() {
    return QCoreApplication::applicationDirPath() + QStringLiteral("/hengshanghui-reader");
}

std::unique_ptr<ImportSource> openMdbInProcess(const QString& path, const QString& program, int silence) {
    return std::make_unique<MdbInProcess>(path, program, silence);
}
