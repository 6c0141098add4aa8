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
        if (transport->IsQuick())
            Scan(*transport);
    m_thread = std::thread([this] { Loop(); });
}

Scanner::~Scanner()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_stopping = true;
    }
    m_wakeUp.notify_all();
    m_thread.join();
}

void Scanner::Loop()
{
    do
    {
        for (const std::unique_ptr<Transport>& transport : m_transports)
        {
            if (Stopping())
                return;
            const CameraList::Changes changes = Scan(*transport);
            if (!changes.empty() && !Stopping())
                Guarded([&] { m_notify(changes); });
        }
    } while (WaitForNextScan());
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

bool Scanner::WaitForNextScan()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return !m_wakeUp.wait_for(lock, Pause, [this] { return m_stopping; });
}

bool Scanner::Stopping()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_stopping;
}

} // namespace OPX::KltAPI
