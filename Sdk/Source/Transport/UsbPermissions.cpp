#include "Transport/UsbPermissions.h"

#include <libusb.h>

#include <algorithm>

namespace OPX::KltAPI
{
namespace
{

/// The control interface of a USB3 Vision device.
bool IsVisionInterface(const libusb_interface& interface)
{
    return std::any_of(interface.altsetting, interface.altsetting + interface.num_altsetting,
        [](const libusb_interface_descriptor& setting)
        { return setting.bInterfaceClass == 0xEF && setting.bInterfaceSubClass == 0x05; });
}

bool IsCamera(libusb_device* device)
{
    libusb_config_descriptor* configuration = nullptr;
    if (libusb_get_active_config_descriptor(device, &configuration) != 0)
        return false;
    const bool isCamera = std::any_of(
        configuration->interface, configuration->interface + configuration->bNumInterfaces, IsVisionInterface);
    libusb_free_config_descriptor(configuration);
    return isCamera;
}

bool IsOutOfReach(libusb_device* device)
{
    libusb_device_handle* handle = nullptr;
    const int result = libusb_open(device, &handle);
    if (result == 0)
        libusb_close(handle);
    return result == LIBUSB_ERROR_ACCESS;
}

} // namespace

bool IsUsbCameraOutOfReach()
{
    libusb_context* context = nullptr;
    if (libusb_init(&context) != 0)
        return false;
    libusb_device** devices = nullptr;
    const ssize_t count = libusb_get_device_list(context, &devices);
    const bool outOfReach = std::any_of(devices, devices + std::max<ssize_t>(count, 0),
        [](libusb_device* device) { return IsCamera(device) && IsOutOfReach(device); });
    if (count >= 0)
        libusb_free_device_list(devices, 1);
    libusb_exit(context);
    return outOfReach;
}

} // namespace OPX::KltAPI
