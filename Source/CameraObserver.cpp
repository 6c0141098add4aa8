#include "CameraObserver.h"

#include <QMetaType>

CameraObserver::CameraObserver()
{
    // Without it the signal could not be queued from the SDK's thread into the window's.
    qRegisterMetaType<UpdateTriggerType>("UpdateTriggerType");
}

void CameraObserver::CameraListChanged(OPX::KltAPI::CameraPtr /*camera*/, UpdateTriggerType reason)
{
    if (ConcernsList(reason))
        emit CameraListChangedSignal(reason);
}

bool CameraObserver::ConcernsList(UpdateTriggerType reason)
{
    // As unsigned numbers: a negative reason is no change of the list either.
    return static_cast<unsigned int>(reason) <= static_cast<unsigned int>(UpdateTriggerCameraLeft);
}
