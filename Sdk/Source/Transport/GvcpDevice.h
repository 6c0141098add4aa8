#ifndef GVCPDEVICE_H
#define GVCPDEVICE_H

#include "Base/GlibPtr.h"
#include "Transport/GvcpChannel.h"

#include <arv.h>

#include <memory>

namespace OPX::KltAPI
{

/// Whether another program controls the camera.
bool IsInUse(GvcpChannel& camera, GError** error);

/// Takes control of a camera, and keeps it until the device is destroyed, which takes half a second at most.
/// \return a device without a description; null after an error
ObjectPtr<ArvDevice> NewGvcpDevice(std::unique_ptr<GvcpChannel> camera, GError** error);

} // namespace OPX::KltAPI

#endif
