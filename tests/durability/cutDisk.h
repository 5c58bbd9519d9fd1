#pragma once

#include <QByteArray>
#include <QString>

#include <map>
#include <random>
#include <vector>

/// A disk in memory behind the storage engine, whose power can be cut: what was not synced is then lost, kept
/// or torn at random, sector by sector.
class CutDisk {
public:
    /// Becomes the storage engine's disk for every file opened from now on.
    CutDisk();
    ~CutDisk();
    CutDisk(const CutDisk&) = delete;
    CutDisk& operator=(const CutDisk&) = delete;

    /// The power goes at the n-th write, truncation or sync from now on, before it is done.
    void cutAfter(int operations) { m_untilCut = operations; }
    bool isCut() const { return m_cut; }
    /// The power is back; files hold what had reached the disk.
    void powerOn(std::mt19937& random);
    /// A disk that says it synced and did not: to see that the test would notice.
    void lieAboutSync() { m_liar = true; }
    int operations() const { return m_operations; }

    struct Change {
        bool truncates = false;
        qint64 offset = 0; // of the write, or the new size
        QByteArray bytes;
    };
    struct File {
        QByteArray now;
        QByteArray synced;
        std::vector<Change> unsynced;
        bool entrySynced = false; // whether its name has reached the disk
    };

    // For the engine's side.
    File* open(const QString& name, bool create);
    bool exists(const QString& name) const { return m_files.count(name) > 0; }
    bool write(File& file, qint64 offset, const QByteArray& bytes);
    bool truncate(File& file, qint64 size);
    bool sync(File& file);
    void remove(const QString& name) { m_files.erase(name); }

private:
    bool spend();
    static void apply(QByteArray& to, const Change& change, std::mt19937& random);

    std::map<QString, File> m_files;
    int m_untilCut = -1;
    int m_operations = 0;
    bool m_cut = false;
    bool m_liar = false;
};
