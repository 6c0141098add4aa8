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
    /// Ends the pause after a scan.
    void Wake(bool& reason);

    void Loop();
    CameraList::Changes Scan(Transport& transport);

    /// No exception leaves the thread: that would end the program. Each is reported once.
    void Guarded(const std::function<void()>& work);

    bool IsStopped();

    /// Waits for the next scan. \return false if there is none
    bool Await();

    std::mutex m_mutex; ///< Around what follows, which outlives the transports: they set it.
    std::condition_variable m_changed;
    bool m_isWoken = false;
    bool m_isStopped = false;

    const Transports m_transports;
    CameraList& m_list;
    const Notify m_notify;
    std::set<std::string> m_reported;
    std::thread m_thread;
};

} // namespace OPX::KltAPI

#endif
