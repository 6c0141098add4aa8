#ifndef REGISTERDEVICE_H
#define REGISTERDEVICE_H

#include "Base/GlibPtr.h"
#include "Transport/RegisterAccess.h"

#include <arv.h>

#include <memory>

namespace OPX::KltAPI
{

enum class DeviceKind
{
    Plain,
    GigEVision ///< Aravis reads values of old cameras of this kind differently.
};

/// What Aravis takes for a camera: a device whose registers are these, and which knows nothing else. It has no
/// description.
///
/// Aravis tells a GigE Vision device by its class, and the constructor of that class connects to a camera, fetches its
/// description and parses it. So the device is one in name only: its class is derived from that one, none of whose own
/// code runs, and begins and ends as a plain device does.
ObjectPtr<ArvDevice> NewRegisterDevice(std::unique_ptr<RegisterAccess> registers, DeviceKind kind);

} // namespace OPX::KltAPI

#endif
