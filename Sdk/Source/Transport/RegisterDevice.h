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
    Plain, ///< Memory.
    Usb3Vision,
    /// Aravis reads values of old cameras of this kind differently, and all of them read and write whole words only:
    /// the device turns what is shorter, or lies at another address, into the words around it.
    GigEVision
};

/// What Aravis takes for a camera: a device whose registers are these, and which knows nothing else. It has no
/// description.
///
/// Aravis tells a GigE Vision device by its class, and the constructor of that class connects to a camera, fetches its
/// description and parses it. So the device is one in name only: its class is derived from that one, none of whose own
/// code runs, and begins and ends as a plain device does.
ObjectPtr<ArvDevice> NewRegisterDevice(std::unique_ptr<RegisterAccess> registers, DeviceKind kind);

/// While it lives, nothing is read twice from a camera, unless something was written in between: one call asks for a
/// register once, however many limits, conditions and formulas need it. Does nothing for plain devices.
class ReadOnce
{
public:
    explicit ReadOnce(ArvDevice* device);
    ~ReadOnce();
    ReadOnce(const ReadOnce&) = delete;
    ReadOnce& operator=(const ReadOnce&) = delete;

private:
    void Remember(bool remember) const;

    ArvDevice* const m_device;
};

} // namespace OPX::KltAPI

#endif
