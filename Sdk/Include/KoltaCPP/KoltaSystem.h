#ifndef KOLTACPP_KOLTASYSTEM_H
#define KOLTACPP_KOLTASYSTEM_H

#include "KoltaCPP/Camera.h"
#include "KoltaCPP/ICameraListObserver.h"
#include "KoltaCPP/KoltaTypes.h"

namespace OPX
{
namespace KltAPI
{

/// The library: started once, asked for cameras, shut down once. Calls may come from any thread.
class KoltaSystem
{
public:
    struct Impl;

    KoltaSystem(const KoltaSystem&) = delete;
    KoltaSystem& operator=(const KoltaSystem&) = delete;

    /// The one object, the same for the life of the process.
    static KoltaSystem& GetInstance();

    /// Starts looking for cameras. -16 when no transport can be used, -15 when called from an observer.
    /// Every successful call wants a `Shutdown`.
    KltErrorType Startup();

    /// Stops looking for cameras and drops all observers; none is called after this has returned. Handles of cameras
    /// and features may be released later. Harmless when nothing was started; -15 when called from an observer.
    KltErrorType Shutdown();

    /// Has \a observer called at every change of the list from now on; the library shares its ownership until
    /// `Shutdown`. -2 before `Startup`, -7 for an empty handle.
    KltErrorType RegisterCameraListObserver(const shared_ptr<ICameraListObserver>& observer);

    /// The cameras that the last scan found; does not wait for a scan. With a null array the call stores their number,
    /// with an array it expects the array's length in \a count; both see the same list. -2 before `Startup`.
    KltErrorType GetCameras(CameraPtr* cameras, unsigned int& count);

private:
    KoltaSystem();
    ~KoltaSystem();

    Impl* m_impl;
};

} // namespace KltAPI
} // namespace OPX

#endif
