#include "data/journalFiles.h"

#include "data/booksLock.h"
#include "recordset/error.h"
#include "recordset/fileMark.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <optional>

namespace {

const QByteArray kJournalSign = QByteArray::fromHex("d9d505f920a163d7");
const QByteArray kDatabaseSign("SQLite format 3\0", 16);
constexpr int kPageHeader = 100;

quint32 numberAt(const QByteArray& bytes, int place) {
    return qFromBigEndian<quint32>(bytes.constData() + place);
}

QString journalOf(const QString& path) {
    return path + QStringLiteral("-journal");
}

QByteArray bytesAt(QFile& file, qint64 place, qint64 count) {
    return file.seek(place) ? file.read(count) : QByteArray();
}

struct FirstRecord {
    quint32 page = 0;
    FileMark mark; // of the first page, where it is that
};

/// The first record of a journal, https://www.sqlite.org/fileformat2.html#the_rollback_journal; nothing where
/// there is none to its end.
std::optional<FirstRecord> firstRecord(QFile& journal) {
    const QByteArray header = bytesAt(journal, 0, 28);
    if (header.size() < 28 || !header.startsWith(kJournalSign))
        return std::nullopt;
    const qint64 sector = numberAt(header, 20);
    const qint64 pageSize = numberAt(header, 24);
    const QByteArray record = bytesAt(journal, sector, 4 + kPageHeader);
    if (pageSize < 512 || journal.size() < sector + 4 + pageSize + 4 || record.size() < 4 + kPageHeader)
        return std::nullopt;
    return FirstRecord{numberAt(record, 0), markIn(record.mid(4))};
}

std::optional<FileMark> markOfFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray page = file.read(kPageHeader);
    if (page.size() < kPageHeader || !page.startsWith(kDatabaseSign))
        return std::nullopt;
    return markIn(page);
}

/// Whose the action is that a record is of: this file's where it began in a state that the file was in last
/// or is in.
JournalState ownerOf(const FirstRecord& record, const FileMark& file) {
    // Who does not mark does not begin with the first page either; a file is his while it bears no mark.
    if (record.page != 1)
        return file.now == 0 ? JournalState::Ours : JournalState::Unknown;
    return record.mark.now == file.now || record.mark.now == file.before ? JournalState::Ours
                                                                         : JournalState::Foreign;
}

QString strayName(const QString& path, const QString& ending) {
    for (int i = 1;; ++i) {
        QString name =
            QStringLiteral("%1.不属于此文件%2%3").arg(path, i == 1 ? QString() : QString::number(i), ending);
        if (!QFileInfo::exists(name))
            return name;
    }
}

QStringList strayEndings(const QString& path) {
    QStringList endings;
    if (const JournalState state = journalState(path);
        state == JournalState::Foreign || state == JournalState::Unknown)
        endings << QStringLiteral("-journal");
    for (const QString& ending : {QStringLiteral("-wal"), QStringLiteral("-shm")})
        if (QFileInfo::exists(path + ending))
            endings << ending;
    return endings;
}

} // namespace

JournalState journalState(const QString& path) {
    QFile journal(journalOf(path));
    if (!journal.exists())
        return JournalState::None;
    if (!kindFault(journal.fileName()).isEmpty())
        return JournalState::Foreign; // a pipe, say: not even looked into
    if (!journal.open(QIODevice::ReadOnly))
        return JournalState::Foreign; // what cannot be looked at is not trusted
    // Its sign is written when all its records are on the disk: before that nothing has reached the file.
    const QByteArray start = journal.read(kJournalSign.size());
    if (start.isEmpty() || start[0] == 0)
        return JournalState::Empty;
    const auto record = firstRecord(journal);
    const auto mark = markOfFile(path);
    return record && mark ? ownerOf(*record, *mark) : JournalState::Foreign;
}

bool hasStrays(const QString& path) {
    return !strayEndings(path).isEmpty();
}

QStringList putStraysAside(const QString& path) {
    QStringList names;
    for (const QString& ending : strayEndings(path)) {
        names << strayName(path, ending);
        if (!QFile::rename(path + ending, names.last()))
            fail(ErrorNumber::Engine, QStringLiteral("不属于此数据库的文件不能移开"), path + ending);
    }
    return names;
}
