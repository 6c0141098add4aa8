#ifndef USBPERMISSIONS_H
#define USBPERMISSIONS_H

namespace OPX::KltAPI
{

/// Whether a USB3 Vision camera is plugged in that this user may not open. Such a camera is not listed, and nothing
/// else says why.
bool IsUsbCameraOutOfReach();

} // namespace OPX::KltAPI

#endif
