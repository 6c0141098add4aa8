#include "System/Scanner.h"

#include "Base/Report.h"

#include <chrono>
#include <exception>
#include <utility>

namespace OPX::KltAPI
{
namespace
{

/// From the end of one scan to the beginning of the next.
const std::chrono::milliseconds Pause(750);

} // namespace

Scanner::Scanner(Transports transports, CameraList& list, Notify notify)
    : m_transports(std::move(transports)),
      m_list(list),
      m_notify(std::move(notify))
{
    for (const std::unique_ptr<Transport>& transport : m_transports)
    {
        transport->Watch([this] { Wake(m_isWoken); });
        if (transport->IsQuick())
            Scan(*transport);
    }
    m_thread = std::thread([this] { Loop(); });
}

Scanner::~Scanner()
{
    Wake(m_isStopped);
    m_thread.join();
}

void Scanner::Wake(bool& reason)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    reason = true;
    m_changed.notify_all();
}

bool Scanner::IsStopped()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_isStopped;
}

bool Scanner::Await()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_changed.wait_for(lock, Pause, [this] { return m_isWoken || m_isStopped; });
    m_isWoken = false;
    return !m_isStopped;
}

void Scanner::Loop()
{
    do
    {
        for (const std::unique_ptr<Transport>& transport : m_transports)
        {
            if (IsStopped())
                return;
            const CameraList::Changes changes = Scan(*transport);
            if (!changes.empty() && !IsStopped())
                Guarded([&] { m_notify(changes); });
        }
    } while (Await());
}

CameraList::Changes Scanner::Scan(Transport& transport)
{
    CameraList::Changes changes;
    Guarded([&] { changes = m_list.Update(transport, transport.Scan()); });
    return changes;
}

void Scanner::Guarded(const std::function<void()>& work)
{
    try
    {
        work();
    }
    catch (const std::exception& error)
    {
        if (m_reported.insert(error.what()).second)
            Report(std::string("While looking for cameras: ") + error.what());
    }
}

} // namespace OPX::KltAPI
