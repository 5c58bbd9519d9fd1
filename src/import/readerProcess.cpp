#include "import/readerProcess.h"

#include "import/pickedFile.h"
#include "import/readerAnswer.h"
#include "import/tableServer.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <string>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int kGlance = 50;         // milliseconds from one look for a stop to the next
constexpr int kPipe = 1 << 20;      // bytes
constexpr int kAboveTheReader = 10; // descriptors from here on are none of the reader's
constexpr quint32 kMostTables = 65536;
constexpr quint32 kMostColumns = 4096;

struct KindOfReader {
    const char* word;
    const char16_t* unreadable;
};

/// By SourceKind.
constexpr KindOfReader kKinds[] = {
    {"dbf", u"不是 dBase 文件，或者文件已损坏。"},           {"txt", u"文件不能读取。"},
    {"xls", u"文件已损坏，或者不是 Excel 97 文件。"},        {"mdb", u"不是 Access 文件，或者文件已损坏。"},
    {"xlsx", u"文件已损坏，或者不是 Excel 的 .xlsx 文件。"}, {"txt", u"文件不能读取。"}};

/// The environment without what a library of the reader listens to: it would read other signs or other dates
/// than the file holds.
std::vector<char*> readerEnvironment() {
    std::vector<char*> kept;
    for (char** each = environ; *each; ++each)
        if (qstrncmp(*each, "MDB", 3) != 0)
            kept.push_back(*each);
    kept.push_back(nullptr);
    return kept;
}

/// The reader's descriptors: requests, answers, the file, the memos beside it.
class FileActions {
public:
    FileActions() { posix_spawn_file_actions_init(&m_actions); }
    ~FileActions() { posix_spawn_file_actions_destroy(&m_actions); }
    Q_DISABLE_COPY_MOVE(FileActions)

    void give(const Descriptor& own, int number) {
        if (own)
            posix_spawn_file_actions_adddup2(&m_actions, own.number(), number);
    }
    const posix_spawn_file_actions_t* finish() {
        posix_spawn_file_actions_addopen(&m_actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addclosefrom_np(&m_actions, 5);
        return &m_actions;
    }

private:
    posix_spawn_file_actions_t m_actions{};
};

/// The same open file under a number that none of the reader's can be.
Descriptor above(const Descriptor& own) {
    return Descriptor(own ? ::fcntl(own.number(), F_DUPFD_CLOEXEC, kAboveTheReader) : -1);
}

/// A process of the reader program; it goes with this.
class ReaderChild {
public:
    ReaderChild(const QString& program, std::vector<std::string> words, const Descriptor& file,
                const Descriptor& memos) {
        int requests[2];
        int answers[2];
        // A pair of sockets: to write into one whose reader has ended is a fault and no signal.
        if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, requests) != 0)
            return;
        const Descriptor itsRequests(requests[0]);
        m_requests = Descriptor(requests[1]);
        if (::pipe2(answers, O_CLOEXEC) != 0)
            return;
        m_answers = Descriptor(answers[0]);
        ::fcntl(m_answers.number(), F_SETPIPE_SZ, kPipe); // fewer turns from one process to the other
        const Descriptor itsAnswers(answers[1]);
        const std::array held{above(itsRequests), above(itsAnswers), above(file), above(memos)};
        FileActions actions;
        constexpr int numbers[] = {STDIN_FILENO, STDOUT_FILENO, 3, 4};
        for (std::size_t i = 0; i < held.size(); ++i)
            actions.give(held[i], numbers[i]);
        std::vector<char*> arguments;
        words.insert(words.begin(), QFile::encodeName(program).toStdString());
        for (std::string& word : words)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        if (::posix_spawn(&m_process, arguments[0], actions.finish(), nullptr, arguments.data(),
                          readerEnvironment().data()) != 0)
            m_process = -1;
    }
    ~ReaderChild() {
        if (m_process < 0)
            return;
        ::kill(m_process, SIGKILL);
        wait();
    }
    Q_DISABLE_COPY_MOVE(ReaderChild)

    bool started() const { return m_process >= 0; }
    int answers() const { return m_answers.number(); }
    /// Its exit code; -1 for another end.
    int wait() {
        int status = 0;
        while (::waitpid(m_process, &status, 0) < 0 && errno == EINTR)
            ;
        m_process = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    bool ask(const QByteArray& line) {
        return ::send(m_requests.number(), line.constData(), std::size_t(line.size()), MSG_NOSIGNAL) ==
               line.size();
    }

private:
    pid_t m_process = -1;
    Descriptor m_requests;
    Descriptor m_answers;
};

class SourceInProcess : public ImportSource {
public:
    SourceInProcess(SourceKind kind, const QString& path, const QStringList& ownFiles,
                    const std::function<bool()>& stop, const ReaderBounds& bounds)
        : m_kind(kKinds[int(kind)])
        , m_path(path)
        , m_bounds(bounds)
        , m_file(openPicked(path, ownFiles)) {
        shouldStop = stop;
        if (kind == SourceKind::Dbf)
            openMemos(ownFiles);
        start();
    }

    QStringList tables() override { return isOneTable() ? QStringList{tableOfFile(m_path)} : m_tables; }

    SourceRows read(const QString& table) override {
        if (!m_reader)
            start();
        const QByteArray name = isOneTable() ? QByteArray() : table.toUtf8().replace('\n', ' ');
        if (!m_reader->ask(name + '\n'))
            unreadable();
        SourceRows rows;
        bool begun = false;
        answer([&](quint32 kind, const QByteArray& content) {
            if (kind == Frame::Rows && begun)
                takeBlock(content, rows);
            else if (kind == Frame::Columns && !begun)
                rows.begin(textsOf(content, kMostColumns));
            else if (kind != Frame::End || !begun)
                throw BadAnswer();
            begun = true;
            if (qint64(rows.cellCount()) > m_bounds.mostCells)
                tooLarge();
            return kind == Frame::End;
        });
        return rows;
    }

private:
    bool isOneTable() const { return m_tables == QStringList{QString()}; }

    void openMemos(const QStringList& ownFiles) {
        const QString path = memoPathOf(m_path);
        try {
            if (!path.isEmpty())
                m_memos = openPicked(path, ownFiles);
            m_memoKind = isFoxProMemo(path) ? "fpt" : "dbt";
        } catch (const ImportError&) {
            // The table is there all the same, its memos empty.
        }
    }

    void start() {
        std::vector<std::string> words{m_kind.word};
        if (m_memos)
            words.emplace_back(m_memoKind);
        m_reader = std::make_unique<ReaderChild>(m_bounds.program, words, m_file, m_memos);
        if (!m_reader->started()) {
            m_reader.reset();
            throw ImportError(QStringLiteral("找不到读取文件的程序。"));
        }
        answer([this](quint32 kind, const QByteArray& content) {
            if (kind != Frame::Tables)
                throw BadAnswer();
            m_tables = textsOf(content, kMostTables);
            return true;
        });
    }

    /// Another table of the file may be sound: a new reader is started for it.
    template <typename Fault = ImportError> [[noreturn]] void giveUp(const Fault& fault) {
        m_reader.reset();
        throw fault;
    }
    [[noreturn]] void unreadable() { giveUp(ImportError(QString::fromUtf16(m_kind.unreadable))); }
    [[noreturn]] void tooLarge() { giveUp(ImportError(QStringLiteral("内容太多，不能读取。"))); }

    /// Hands the frames of an answer to `take` until that has all it wants.
    template <typename Take> void answer(Take&& take) {
        m_answerClock.start();
        m_answerBytes = 0;
        try {
            for (bool complete = false; !complete;) {
                Frame::Head head;
                fill(reinterpret_cast<char*>(&head), sizeof head);
                if (head.kind == Frame::Alive && head.length == 0) {
                    if (signOfLife)
                        signOfLife();
                    continue;
                }
                if (head.length > Frame::LongestFrame)
                    throw BadAnswer();
                m_answerBytes += head.length;
                if (m_answerBytes > m_bounds.mostBytes)
                    tooLarge();
                m_content.resize(qsizetype(head.length));
                fill(m_content.data(), m_content.size());
                if (head.kind == Frame::Refused)
                    giveUp(ImportError(shownText(m_content)));
                complete = take(head.kind, m_content);
            }
        } catch (const BadAnswer&) {
            unreadable();
        }
        m_content = QByteArray();
    }

    /// The bytes that come next.
    void fill(char* bytes, qsizetype count) {
        QElapsedTimer silence;
        silence.start();
        while (count > 0) {
            glance();
            pollfd waiting{m_reader->answers(), POLLIN, 0};
            if (::poll(&waiting, 1, kGlance) > 0) {
                const ssize_t come = ::read(m_reader->answers(), bytes, std::size_t(count));
                if (come <= 0)
                    unreadable();
                bytes += come;
                count -= come;
                silence.start();
            } else if (silence.elapsed() > m_bounds.silence) {
                unreadable();
            }
        }
    }

    /// Looks for a stop, and at the time.
    void glance() {
        if (m_sinceGlance.isValid() && m_sinceGlance.elapsed() < kGlance)
            return;
        m_sinceGlance.start();
        if (shouldStop && shouldStop())
            giveUp(ImportStopped());
        if (m_answerClock.elapsed() > m_bounds.patience)
            giveUp(ImportError(QStringLiteral("读取时间太长，已停止。")));
    }

    KindOfReader m_kind;
    QString m_path;
    ReaderBounds m_bounds;
    Descriptor m_file;
    Descriptor m_memos;
    const char* m_memoKind = "";
    std::unique_ptr<ReaderChild> m_reader;
    QStringList m_tables;
    QElapsedTimer m_answerClock;
    QElapsedTimer m_sinceGlance;
    qint64 m_answerBytes = 0;
    QByteArray m_content;
};

} // namespace

QString readerProgram() {
    return QCoreApplication::applicationDirPath() + QStringLiteral("/hengshanghui-reader");
}

std::unique_ptr<ImportSource> openInProcess(SourceKind kind, const QString& path, const QStringList& ownFiles,
                                            const std::function<bool()>& shouldStop,
                                            const ReaderBounds& bounds) {
    return std::make_unique<SourceInProcess>(kind, path, ownFiles, shouldStop, bounds);
}

bool wallsState() {
    static const bool stand = [] {
        ReaderChild reader(readerProgram(), {"--walls"}, Descriptor(), Descriptor());
        return reader.started() && reader.wait() == 0;
    }();
    return stand;
}
