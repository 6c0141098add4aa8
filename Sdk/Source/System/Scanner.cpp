#include "System/Scanner.h"

#include "Base/Report.h"

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
    m_stop.set_value();
    m_thread.join();
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
    } while (!IsStopped(Pause));
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
