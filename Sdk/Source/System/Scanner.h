#ifndef SCANNER_H
#define SCANNER_H

#include "System/CameraList.h"
#include "Transport/Transport.h"

#include <condition_variable>
#include <functional>
#include <mutex>
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
    bool WaitForNextScan();
    bool Stopping();

    const Transports m_transports;
    CameraList& m_list;
    const Notify m_notify;
    std::set<std::string> m_reported;
    std::mutex m_mutex;
    std::condition_variable m_wakeUp;
    bool m_stopping = false;
    std::thread m_thread;
};

} // namespace OPX::KltAPI

#endif
