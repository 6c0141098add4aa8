#ifndef TURNS_H
#define TURNS_H

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace OPX::KltAPI
{

/// A mutex for which nobody waits beyond a deadline. (std::timed_mutex would do; ThreadSanitizer does not see all of
/// its locks.)
class Turns
{
public:
    /// \return whether it is the caller's turn now
    bool Take(std::chrono::steady_clock::time_point deadline)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        if (!m_given.wait_until(lock, deadline, [this] { return !m_taken; }))
            return false;
        m_taken = true;
        return true;
    }

    void Give()
    {
        // Within the lock: whoever comes next may be the last, and destroy this.
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_taken = false;
        m_given.notify_one();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_given;
    bool m_taken = false;
};

} // namespace OPX::KltAPI

#endif
