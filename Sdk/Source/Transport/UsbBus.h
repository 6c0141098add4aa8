#ifndef USBBUS_H
#define USBBUS_H

#include "Base/Failure.h"

#include <libusb.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace OPX::KltAPI
{

typedef std::shared_ptr<libusb_device> UsbDevice;

struct CloseUsbHandle
{
    void operator()(libusb_device_handle* handle) const { libusb_close(handle); }
};
typedef std::unique_ptr<libusb_device_handle, CloseUsbHandle> UsbHandle;

/// The control interface of a USB3 Vision camera.
struct ControlInterface
{
    int number = 0;
    std::uint8_t in = 0; ///< Where it answers.
    std::uint8_t out = 0;
    std::size_t packetSize = 0;      ///< Of its answers.
    std::uint8_t guidDescriptor = 0; ///< Of the text that tells the camera from all others; 0 if there is none.
};

/// Nothing if the device is no USB3 Vision camera.
std::optional<ControlInterface> ControlInterfaceOf(const UsbDevice& device);

/// Opens the device. \param error what libusb says, 0 if it is open
UsbHandle OpenUsb(const UsbDevice& device, int& error);

/// For what libusb says when a device is opened.
KltErrorType CodeOfUsb(int error);

/// What is plugged in. Lives as long as one of its devices is held. Any thread.
class UsbBus : public std::enable_shared_from_this<UsbBus>
{
public:
    UsbBus();
    ~UsbBus();
    UsbBus(const UsbBus&) = delete;
    UsbBus& operator=(const UsbBus&) = delete;

    /// The same one as before for what has not been unplugged, if somebody holds it. Throws if they cannot be listed;
    /// where there is no USB, there are none.
    std::vector<UsbDevice> Devices();

    /// Has \a notify called whenever something is plugged in or unplugged, if the system tells. Once.
    void Watch(const std::function<void()>& notify);

    /// Nothing is called after this.
    void Unwatch();

private:
    static int LIBUSB_CALL OnPlug(
        libusb_context* context, libusb_device* device, libusb_hotplug_event event, void* bus);

    libusb_context* m_context = nullptr;
    std::mutex m_mutex; ///< Around m_notify, which is called under it.
    std::function<void()> m_notify;
    libusb_hotplug_callback_handle m_callback = 0;
    std::atomic<bool> m_isWatching{false};
    std::thread m_watcher;
};

} // namespace OPX::KltAPI

#endif
