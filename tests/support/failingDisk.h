#pragma once

#include <functional>

/// The real disk behind the storage engine, of which single calls can be made to fail. Counts what changes a
/// file: writes, truncations and syncs.
class FailingDisk {
public:
    /// How a call fails: the disk is full, or it cannot write at all.
    enum class Kind { Full, Broken };

    /// Becomes the storage engine's disk for every file opened from now on.
    FailingDisk();
    ~FailingDisk();
    FailingDisk(const FailingDisk&) = delete;
    FailingDisk& operator=(const FailingDisk&) = delete;

    /// The n-th change from now on fails, counted from 0; `forGood`: and every one after it.
    void failAt(int change, Kind kind, bool forGood);
    /// The last call is done and reported as failed all the same.
    void lieAboutFailure() { m_lies = true; }
    void heal() { m_failAt = -1; }
    /// Changes since failAt, failed ones included.
    int changes() const { return m_changes; }
    bool hasFailed() const { return m_failed; }
    /// Called before each change; a test may end its process there.
    std::function<void(int)> beforeChange;

    // For the engine's side.

    enum class Verdict { Do, Fail, DoAndFail };
    Verdict judge();
    Kind kind() const { return m_kind; }

private:
    int m_failAt = -1;
    int m_changes = 0;
    bool m_forGood = false;
    bool m_failed = false;
    bool m_lies = false;
    Kind m_kind = Kind::Full;
};
