#ifndef GVCPDEVICE_H
#define GVCPDEVICE_H

#include "Base/GlibPtr.h"
#include "Transport/GvcpChannel.h"

#include <arv.h>

#include <memory>

namespace OPX::KltAPI
{

/// \return KltErrorInvalidAccess if another program controls the camera
Failure CheckUnused(GvcpChannel& camera);

/// Takes control of a camera, and keeps it until the device is destroyed, which takes half a second at most.
/// \param device gets a device without a description
Failure TakeControl(std::unique_ptr<GvcpChannel> camera, ObjectPtr<ArvDevice>& device);

} // namespace OPX::KltAPI

#endif
