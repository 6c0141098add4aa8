#include "KoltaCPP/KoltaSystem.h"

#include "Base/Report.h"
#include "Base/TwoCalls.h"
#include "Document/Texts.h"
#include "System/CameraList.h"
#include "System/Scanner.h"
#include "Transport/GigeTransport.h"
#include "Transport/SimulatedTransport.h"
#include "Transport/UsbTransport.h"

#include <cstdlib>
#include <exception>
#include <map>
#include <optional>
#include <sstream>

namespace OPX::KltAPI
{
namespace
{

/// The list whose length the calling thread has got, until it asks for the content.
thread_local std::optional<CameraPtrVector> g_counted;

/// Set while the calling thread is in an observer.
thread_local bool g_notifying = false;

const char Variable[] = "KOLTA_TRANSPORTS";

/// The transports that the environment variable names; all if it is not set or empty. Other words are reported.
Transports ChosenTransports()
{
    const char* chosen = std::getenv(Variable);
    std::istringstream stream(chosen == nullptr || *chosen == '\0' ? "simulated,gige,usb3" : chosen);
    std::map<std::string, bool> isChosen = {{"simulated", false}, {"gige", false}, {"usb3", false}};
    for (std::string word; std::getline(stream, word, ',');)
    {
        const auto known = isChosen.find(Trimmed(word));
        if (known != isChosen.end())
            known->second = true;
        else
            Report(
                std::string(Variable) + " names '" + Trimmed(word) + "', which is not one of simulated, gige, usb3.");
    }
    Transports transports;
    if (isChosen["simulated"])
        transports.push_back(std::make_unique<SimulatedTransport>());
    if (isChosen["gige"])
        transports.push_back(std::make_unique<GigeTransport>());
    if (isChosen["usb3"])
        transports.push_back(std::make_unique<UsbTransport>());
    return transports;
}

} // namespace

/// Hidden: it would be exported along with its class.
struct __attribute__((visibility("hidden"))) KoltaSystem::Impl
{
    void Notify(const CameraList::Changes& changes);

    std::mutex sessionMutex; ///< Around start and shutdown: starts and scanner.
    int starts = 0;

    /// In a second handle, so that no lock of the handle within is taken under one of ours: its owner holds that lock
    /// while the observer dies.
    typedef std::vector<std::shared_ptr<const ICameraListObserverPtr>> Observers;

    std::mutex mutex; ///< Around what follows.
    bool running = false;
    Observers observers;

    CameraList cameras;

    /// Last, so that it is gone before what it works on: programs may end without a shutdown.
    std::unique_ptr<Scanner> scanner;
};

void KoltaSystem::Impl::Notify(const CameraList::Changes& changes)
{
    Observers told;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        told = observers;
    }
    struct Notifying
    {
        Notifying() { g_notifying = true; }
        ~Notifying() { g_notifying = false; } // Whatever observers throw.
    } const notifying;
    for (const CameraList::Changes::value_type& change : changes)
        for (const Observers::value_type& observer : told)
            (*observer)->CameraListChanged(change.first, change.second);
}

KoltaSystem::KoltaSystem() : m_impl(new Impl)
{
}

KoltaSystem::~KoltaSystem()
{
    delete m_impl;
}

KoltaSystem& KoltaSystem::GetInstance()
{
    static KoltaSystem instance;
    return instance;
}

KltErrorType KoltaSystem::Startup()
try
{
    if (g_notifying)
        return KltErrorInvalidCall;
    const std::lock_guard<std::mutex> session(m_impl->sessionMutex);
    if (m_impl->starts == 0)
    {
        Transports transports = ChosenTransports();
        if (transports.empty())
            return KltErrorNoTransportLayer;
        m_impl->scanner = std::make_unique<Scanner>(std::move(transports), m_impl->cameras,
            [this](const CameraList::Changes& changes) { m_impl->Notify(changes); });
        const std::lock_guard<std::mutex> lock(m_impl->mutex);
        m_impl->running = true;
    }
    ++m_impl->starts;
    return KltErrorSuccess;
}
catch (const std::exception&) // Too little memory, or too many threads.
{
    return KltErrorResources;
}

KltErrorType KoltaSystem::Shutdown()
{
    if (g_notifying)
        return KltErrorInvalidCall;
    // Observers may do anything when they are destroyed: declared before the lock, they outlive it.
    Impl::Observers observers;
    const std::lock_guard<std::mutex> session(m_impl->sessionMutex);
    if (m_impl->starts == 0 || --m_impl->starts > 0)
        return KltErrorSuccess;
    {
        const std::lock_guard<std::mutex> lock(m_impl->mutex);
        m_impl->running = false;
        m_impl->observers.swap(observers);
    }
    m_impl->scanner.reset();
    m_impl->cameras.Clear();
    return KltErrorSuccess;
}

KltErrorType KoltaSystem::RegisterCameraListObserver(const shared_ptr<ICameraListObserver>& observer)
try
{
    if (observer.get() == nullptr)
        return KltErrorBadParameter;
    const auto shared = std::make_shared<const ICameraListObserverPtr>(observer);
    const std::lock_guard<std::mutex> lock(m_impl->mutex);
    if (!m_impl->running)
        return KltErrorApiNotStarted;
    m_impl->observers.push_back(shared);
    return KltErrorSuccess;
}
catch (const std::exception&) // Too little memory, or too many threads.
{
    return KltErrorResources;
}

KltErrorType KoltaSystem::GetCameras(CameraPtr* cameras, unsigned int& count)
try
{
    {
        const std::lock_guard<std::mutex> lock(m_impl->mutex);
        if (!m_impl->running)
            return KltErrorApiNotStarted;
    }
    if (cameras == nullptr || !g_counted)
        g_counted = m_impl->cameras.Cameras();
    const KltErrorType result = DeliverList(*g_counted, cameras, count);
    if (cameras != nullptr && result == KltErrorSuccess)
        g_counted.reset();
    return result;
}
catch (const std::exception&) // Too little memory, or too many threads.
{
    return KltErrorResources;
}

} // namespace OPX::KltAPI
