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
        : m_path(path)
        , m_program(program)
        , m_silence(silence) {
        start();
    }
    ~MdbInProcess() override { end(); }

    QStringList tables() override { return m_tables; }

    SourceRows read(const QString& table) override {
        if (!m_reader)
            start();
        m_reader->write(table.toUtf8() + '\n');
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
    void start() {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        // The library listens to these, and would read other signs or other dates than the file holds.
        for (const char* name : {"MDBICONV", "MDB_ICONV", "MDB_JET3_CHARSET", "MDBOPTS"})
            environment.remove(QString::fromLatin1(name));
        m_reader = std::make_unique<QProcess>();
        m_reader->setProcessEnvironment(environment);
        m_reader->start(m_program, {m_path});
        if (!m_reader->waitForStarted())
            throw ImportError(QStringLiteral("找不到读取 Access 文件的程序。"));
        const QByteArray bytes = answer();
        QDataStream stream(bytes);
        stream.setByteOrder(QDataStream::LittleEndian);
        stream >> m_tables;
        if (stream.status() != QDataStream::Ok)
            unreadable();
    }
    void end() {
        if (!m_reader)
            return;
        m_reader->kill();
        m_reader->waitForFinished();
        m_reader.reset();
    }
    /// Another table of the file may be sound: a new reader is started for it.
    [[noreturn]] void unreadable() {
        end();
        throw ImportError(QStringLiteral("不是 Access 文件，或者文件已损坏。"));
    }

    /// The bytes that come next; nobody waits for a reader that has ended or fallen silent.
    QByteArray bytes(qint64 count) {
        while (m_reader->bytesAvailable() < count)
            if (m_reader->state() != QProcess::Running || !m_reader->waitForReadyRead(m_silence))
                if (m_reader->bytesAvailable() < count)
                    unreadable();
        return m_reader->read(count);
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

    QString m_path;
    QString m_program;
    int m_silence; // milliseconds
    std::unique_ptr<QProcess> m_reader;
    QStringList m_tables;
};

} // namespace

QString readerProgram() {
    return QCoreApplication::applicationDirPath() + QStringLiteral("/hengshanghui-reader");
}

std::unique_ptr<ImportSource> openMdbInProcess(const QString& path, const QString& program, int silence) {
    return std::make_unique<MdbInProcess>(path, program, silence);
}
