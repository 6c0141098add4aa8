// With a scripted libusb in place of the real one.

#include "UsbPermissions.h"

#include <gtest/gtest.h>
#include <libusb.h>

#include <vector>

struct libusb_device
{
    std::uint8_t interfaceClass;
    std::uint8_t interfaceSubClass;
    int openResult;
};

namespace
{

std::vector<libusb_device> g_plugged;
int g_opened = 0;
int g_initResult = 0;
libusb_interface_descriptor g_setting;
libusb_interface g_interface;
libusb_config_descriptor g_configuration;

} // namespace

extern "C"
{
    int libusb_init(libusb_context**)
    {
        return g_initResult;
    }

    void libusb_exit(libusb_context*)
    {
    }

    ssize_t libusb_get_device_list(libusb_context*, libusb_device*** list)
    {
        *list = new libusb_device*[g_plugged.size() + 1]();
        for (std::size_t i = 0; i < g_plugged.size(); ++i)
            (*list)[i] = &g_plugged[i];
        return static_cast<ssize_t>(g_plugged.size());
    }

    void libusb_free_device_list(libusb_device** list, int)
    {
        delete[] list;
    }

    int libusb_get_active_config_descriptor(libusb_device* device, libusb_config_descriptor** configuration)
    {
        g_setting.bInterfaceClass = device->interfaceClass;
        g_setting.bInterfaceSubClass = device->interfaceSubClass;
        g_interface.altsetting = &g_setting;
        g_interface.num_altsetting = 1;
        g_configuration.interface = &g_interface;
        g_configuration.bNumInterfaces = 1;
        *configuration = &g_configuration;
        return 0;
    }

    void libusb_free_config_descriptor(libusb_config_descriptor*)
    {
    }

    int libusb_open(libusb_device* device, libusb_device_handle**)
    {
        g_opened += device->openResult == 0 ? 1 : 0;
        return device->openResult;
    }

    void libusb_close(libusb_device_handle*)
    {
        --g_opened;
    }
}

TEST(UsbPermissions, MattersForCamerasThatMayNotBeOpened)
{
    const libusb_device camera = {0xEF, 0x05, 0};
    const libusb_device forbiddenCamera = {0xEF, 0x05, LIBUSB_ERROR_ACCESS};
    const libusb_device busyCamera = {0xEF, 0x05, LIBUSB_ERROR_BUSY};
    const libusb_device forbiddenWebcam = {0xEF, 0x02, LIBUSB_ERROR_ACCESS};
    const libusb_device forbiddenStick = {0x08, 0x05, LIBUSB_ERROR_ACCESS};
    const struct
    {
        std::vector<libusb_device> plugged;
        bool expected;
    } rows[] = {
        {{}, false},
        {{camera, busyCamera, forbiddenWebcam, forbiddenStick}, false},
        {{camera, forbiddenStick, forbiddenCamera}, true},
    };
    for (const auto& row : rows)
    {
        g_plugged = row.plugged;
        EXPECT_EQ(OPX::KltAPI::IsUsbCameraOutOfReach(), row.expected) << row.plugged.size();
        EXPECT_EQ(g_opened, 0);
    }
    g_initResult = LIBUSB_ERROR_OTHER;
    EXPECT_FALSE(OPX::KltAPI::IsUsbCameraOutOfReach());
}
