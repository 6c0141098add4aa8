#ifndef SCANNER_H
#define SCANNER_H

#include "System/CameraList.h"
#include "Transport/Transport.h"

#include <chrono>
#include <functional>
#include <future>
#include <set>
#include <string>
#include <thread>

namespace OPX::KltAPI
{

/// Keeps a list of cameras up to date from a thread of its own.
class Scanner
{
public:
    /// Called on the scanner's thread, with no lock held.
    typedef std::function<void(const CameraList::Changes& changes)> Notify;

    /// Scans the quick transports at once, so that their cameras are in \a list when this returns, and all of them
    /// from then on. \a list outlives the scanner.
    Scanner(Transports transports, CameraList& list, Notify notify);

    /// Ends the thread; waits for a scan or a notification that is under way.
    ~Scanner();

private:
    void Loop();
    CameraList::Changes Scan(Transport& transport);

    /// No exception leaves the thread: that would end the program. Each is reported once.
    void Guarded(const std::function<void()>& work);

    /// Waits for it for some time.
    bool IsStopped(std::chrono::milliseconds wait = {}) const
    {
        return m_stopped.wait_for(wait) == std::future_status::ready;
    }

    const Transports m_transports;
    CameraList& m_list;
    const Notify m_notify;
    std::set<std::string> m_reported;
    std::promise<void> m_stop;
    const std::future<void> m_stopped = m_stop.get_future();
    std::thread m_thread;
};

} // namespace OPX::KltAPI

#endif
