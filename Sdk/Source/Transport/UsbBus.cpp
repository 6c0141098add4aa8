#include "Transport/UsbBus.h"

#include <algorithm>
#include <stdexcept>

namespace OPX::KltAPI
{
namespace
{

/// A control interface with both directions, or nothing.
std::optional<ControlInterface> ReadSetting(const libusb_interface_descriptor& setting)
{
    if (setting.bInterfaceClass != 0xEF || setting.bInterfaceSubClass != 0x05 || setting.bInterfaceProtocol != 0x00)
        return std::nullopt;
    ControlInterface control;
    control.number = setting.bInterfaceNumber;
    for (int i = 0; i < setting.bNumEndpoints; ++i)
    {
        const libusb_endpoint_descriptor& endpoint = setting.endpoint[i];
        const bool isIn = (endpoint.bEndpointAddress & LIBUSB_ENDPOINT_IN) != 0;
        if ((endpoint.bmAttributes & LIBUSB_TRANSFER_TYPE_MASK) != LIBUSB_TRANSFER_TYPE_BULK)
            continue;
        (isIn ? control.in : control.out) = endpoint.bEndpointAddress;
        if (isIn)
            control.packetSize = std::max<std::size_t>(endpoint.wMaxPacketSize & 0x7FFU, 8);
    }
    if (setting.extra_length > 11)
        control.guidDescriptor = setting.extra[11];
    return control.in != 0 && control.out != 0 ? std::make_optional(control) : std::nullopt;
}

std::optional<ControlInterface> ReadConfiguration(const libusb_config_descriptor& configuration)
{
    std::optional<ControlInterface> control;
    for (int i = 0; i < configuration.bNumInterfaces && !control; ++i)
        for (int j = 0; j < configuration.interface[i].num_altsetting && !control; ++j)
            control = ReadSetting(configuration.interface[i].altsetting[j]);
    return control;
}

} // namespace

std::optional<ControlInterface> ControlInterfaceOf(const UsbDevice& device)
{
    libusb_config_descriptor* configuration = nullptr;
    if (libusb_get_active_config_descriptor(device.get(), &configuration) != 0)
        return std::nullopt;
    std::optional<ControlInterface> control = ReadConfiguration(*configuration);
    libusb_free_config_descriptor(configuration);
    return control;
}

UsbHandle OpenUsb(const UsbDevice& device, int& error)
{
    libusb_device_handle* handle = nullptr;
    error = libusb_open(device.get(), &handle);
    return UsbHandle(error == 0 ? handle : nullptr);
}

KltErrorType CodeOfUsb(int error)
{
    switch (error)
    {
    case LIBUSB_SUCCESS:
        return KltErrorSuccess;
    case LIBUSB_ERROR_ACCESS:
    case LIBUSB_ERROR_BUSY:
        return KltErrorInvalidAccess;
    case LIBUSB_ERROR_NO_DEVICE:
    case LIBUSB_ERROR_NOT_FOUND:
        return KltErrorNotFound;
    case LIBUSB_ERROR_NO_MEM:
        return KltErrorResources;
    default:
        return KltErrorInternalFault;
    }
}

UsbBus::UsbBus()
{
    if (libusb_init(&m_context) != 0)
        m_context = nullptr; // Which libusb would take for a context of its own.
}

UsbBus::~UsbBus()
{
    Unwatch();
    if (m_context != nullptr)
        libusb_exit(m_context);
}

std::vector<UsbDevice> UsbBus::Devices()
{
    std::vector<UsbDevice> devices;
    if (m_context == nullptr)
        return devices;
    libusb_device** list = nullptr;
    const ssize_t count = libusb_get_device_list(m_context, &list);
    if (count < 0)
        throw std::runtime_error("the devices on USB cannot be listed");
    for (ssize_t i = 0; i < count; ++i)
        devices.emplace_back(libusb_ref_device(list[i]),
            [bus = shared_from_this()](libusb_device* device) { libusb_unref_device(device); });
    libusb_free_device_list(list, 1);
    return devices;
}

int UsbBus::OnPlug(libusb_context* /*context*/, libusb_device* /*device*/, libusb_hotplug_event /*event*/, void* bus)
{
    auto* const self = static_cast<UsbBus*>(bus);
    const std::lock_guard<std::mutex> lock(self->m_mutex);
    if (self->m_notify)
        self->m_notify();
    return 0;
}

void UsbBus::Watch(const std::function<void()>& notify)
{
    m_notify = notify;
    const auto all =
        static_cast<libusb_hotplug_event>(LIBUSB_HOTPLUG_EVENT_DEVICE_ARRIVED | LIBUSB_HOTPLUG_EVENT_DEVICE_LEFT);
    const int any = LIBUSB_HOTPLUG_MATCH_ANY;
    if (m_context == nullptr || libusb_has_capability(LIBUSB_CAP_HAS_HOTPLUG) == 0 ||
        libusb_hotplug_register_callback(
            m_context, all, static_cast<libusb_hotplug_flag>(0), any, any, any, &OnPlug, this, &m_callback) != 0)
        return;
    m_isWatching = true;
    m_watcher = std::thread(
        [this]
        {
            while (m_isWatching)
            {
                timeval longest = {1, 0};
                libusb_handle_events_timeout_completed(m_context, &longest, nullptr);
            }
        });
}

void UsbBus::Unwatch()
{
    {
        // Whoever waits for an answer of a camera may be in the callback.
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_notify = nullptr;
    }
    if (!m_watcher.joinable())
        return;
    m_isWatching = false;
    libusb_hotplug_deregister_callback(m_context, m_callback);
    libusb_interrupt_event_handler(m_context);
    m_watcher.join();
}

} // namespace OPX::KltAPI
