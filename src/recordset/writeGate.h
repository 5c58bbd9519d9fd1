#pragma once

#include <atomic>
#include <mutex>

/// Keeps a thread that reads the file on its own connection away from transactions. A writer waits for one
/// step of the reader at most.
class WriteGate {
public:
    void beginWriting() {
        m_wanted = true;
        m_mutex.lock();
        m_wanted = false;
    }
    void endWriting() { m_mutex.unlock(); }

    /// Runs one short step of a reader; false, without it, while somebody writes or wants to.
    template <typename Step> bool tryReading(Step&& step) {
        if (m_wanted || !m_mutex.try_lock())
            return false;
        const std::lock_guard lock(m_mutex, std::adopt_lock);
        step();
        return true;
    }

private:
    std::atomic<bool> m_wanted = false;
    std::mutex m_mutex;
};
