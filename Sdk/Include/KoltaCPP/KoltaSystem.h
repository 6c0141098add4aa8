#ifndef KOLTACPP_KOLTASYSTEM_H
#define KOLTACPP_KOLTASYSTEM_H

#include "KoltaCPP/Camera.h"
#include "KoltaCPP/ICameraListObserver.h"
#include "KoltaCPP/KoltaExport.h"
#include "KoltaCPP/KoltaTypes.h"

namespace OPX
{
namespace KltAPI
{

/// The library: started once, asked for cameras, shut down once. Calls may come from any thread.
class KOLTACPP_EXPORT KoltaSystem
{
public:
    struct Impl;

    KoltaSystem(const KoltaSystem&) = delete;
    KoltaSystem& operator=(const KoltaSystem&) = delete;

    /// The one object, the same for the life of the process.
    static KoltaSystem& GetInstance();

    /// Starts looking for cameras, on a thread of the library. Every successful call needs a `Shutdown`; starts after
    /// the first one are only counted.
    ///
    /// All descriptions of simulated cameras are read and checked before this returns, which can take a while if they
    /// are large, and as long as the file system does; these cameras are listed at once, and so are those on USB. Those
    /// in a network follow when they are found.
    ///
    /// Two environment variables are read here. KOLTA_TRANSPORTS says how cameras are reached: any of `simulated`,
    /// `gige` and `usb3`, separated by commas; all three if it is not set or empty. KOLTA_CAMERA_PATH lists files and
    /// folders, separated by colons, with descriptions (.xml or .zip) of cameras to simulate besides those that come
    /// with the library and those in $XDG_DATA_HOME/KoltaCPP/Cameras (~/.local/share/KoltaCPP/Cameras if that is not
    /// set).
    /// \return `KltErrorNoTransportLayer` when KOLTA_TRANSPORTS names none of the three, `KltErrorInvalidCall` when
    ///     called from an observer
    KltErrorType Startup();

    /// Stops looking for cameras and drops all observers; none is called after this has returned. Handles of cameras
    /// and features may be released later. Waits for a scan that is under way. Harmless when nothing was started.
    /// \return `KltErrorInvalidCall` when called from an observer
    KltErrorType Shutdown();

    /// Has \a observer called at every change of the list from now on; the library shares ownership of it until
    /// `Shutdown`.
    /// \return `KltErrorApiNotStarted` before `Startup`, `KltErrorBadParameter` for an empty handle
    KltErrorType RegisterCameraListObserver(const shared_ptr<ICameraListObserver>& observer);

    /// The cameras that the last scan found. Does not wait for a scan: after `Startup`, cameras in a network take a
    /// second or two to appear.
    /// \param cameras room for \a count handles. With a null pointer, as from `data()` of an empty vector, the call
    ///     only stores how many there are; the same thread's next call with room for them sees the same list.
    /// \param count the length of \a cameras; afterwards the number of cameras
    /// \return `KltErrorApiNotStarted` before `Startup`, `KltErrorMoreData` when \a count is too small
    KltErrorType GetCameras(CameraPtr* cameras, unsigned int& count);

private:
    KoltaSystem();
    ~KoltaSystem();

    Impl* m_impl;
};

} // namespace KltAPI
} // namespace OPX

#endif
