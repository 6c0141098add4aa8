#ifndef TIMEDMUTEX_H
#define TIMEDMUTEX_H

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace OPX::KltAPI
{

/// A mutex for which nobody waits beyond a deadline. (std::timed_mutex would do; ThreadSanitizer does not see all of
/// its locks.)
class TimedMutex
{
public:
    /// \return whether it is locked now
    bool LockUntil(std::chrono::steady_clock::time_point deadline)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        if (!m_unlocked.wait_until(lock, deadline, [this] { return !m_locked; }))
            return false;
        m_locked = true;
        return true;
    }

    void Unlock()
    {
        // Within the lock: whoever comes next may be the last, and destroy this.
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_locked = false;
        m_unlocked.notify_one();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_unlocked;
    bool m_locked = false;
};

} // namespace OPX::KltAPI

#endif
