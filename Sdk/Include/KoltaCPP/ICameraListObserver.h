#ifndef KOLTACPP_ICAMERALISTOBSERVER_H
#define KOLTACPP_ICAMERALISTOBSERVER_H

#include "KoltaCPP/Camera.h"
#include "KoltaCPP/KoltaExport.h"
#include "KoltaCPP/KoltaTypes.h"

namespace OPX
{
namespace KltAPI
{

/// Notified when the list of cameras changes, or one of them that is open has been lost.
class KOLTACPP_EXPORT ICameraListObserver
{
public:
    virtual ~ICameraListObserver() = default;

    /// Called once for every camera that came, went or was lost, on a thread of the library, and never after
    /// `KoltaSystem::Shutdown` has returned. Pass the work on and return: until then no scan runs, and
    /// `Shutdown` waits.
    /// \param camera the camera
    /// \param reason which of these. `UpdateTriggerOpenStateChanged` comes before the camera goes, if it does, and not
    ///     when the program itself opens or closes a camera. There may be more reasons in newer libraries.
    virtual void CameraListChanged(CameraPtr camera, UpdateTriggerType reason) = 0;
};

/// Handle to an observer.
typedef shared_ptr<ICameraListObserver> ICameraListObserverPtr;

} // namespace KltAPI
} // namespace OPX

#endif
