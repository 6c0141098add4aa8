#ifndef U3VDESCRIPTION_H
#define U3VDESCRIPTION_H

#include "Base/Failure.h"
#include "Safety/SafeDescription.h"
#include "Transport/U3vChannel.h"

namespace OPX::KltAPI
{

/// Reads the camera's description and checks it: of those that the camera lists, the newest one that can be used.
/// \return KltErrorTimeout or KltErrorDeviceNotOpen if the camera does not answer; KltErrorOther, with the reason, if
/// there is no description that can be used
Failure FetchDescription(U3vChannel& camera, SafeDescription& description);

} // namespace OPX::KltAPI

#endif
