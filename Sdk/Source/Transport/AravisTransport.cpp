#include "Transport/AravisTransport.h"

#include "Base/Failure.h"
#include "Base/Report.h"
#include "Document/Texts.h"
#include "Nodes/NodeMap.h"
#include "Safety/SafeDescription.h"
#include "Transport/GvcpCamera.h"
#include "Transport/GvcpDescription.h"
#include "Transport/RegisterDevice.h"

#include <arv.h>
#include <libusb.h>

#include <algorithm>
#include <map>
#include <mutex>
#include <utility>

namespace OPX::KltAPI
{
namespace
{

const char Usb3Vision[] = "USB3Vision";

/// The first of these texts that is not empty. Those that Aravis hands out live until its next listing.
std::string FirstOf(std::initializer_list<const char*> texts)
{
    for (const char* text : texts)
        if (text != nullptr && *text != '\0')
            return WithoutControls(text);
    return std::string();
}

Failure ConnectGige(const std::string& address, Connection& connection)
{
    auto camera = std::make_unique<GvcpCamera>(address, connection.deadline);
    // Before the description is read, which takes much longer.
    if (Failure failure = camera->CheckUnused())
        return failure;
    const auto description = std::make_shared<SafeDescription>();
    if (Failure failure = FetchDescription(*camera, *description))
        return failure;
    if (Failure failure = camera->TakeControl())
        return failure;
    connection.isThere = [known = camera.get()] { return !known->IsLost(); };
    connection.device = NewRegisterDevice(std::move(camera), DeviceKind::GigEVision);
    return connection.Use(description);
}

Failure OpenUsb3(const std::string& deviceId, Connection& connection)
{
    const std::lock_guard<std::mutex> lock(ParserLock());
    CallError error;
    connection.device.reset(arv_open_device(deviceId.c_str(), error.Out()));
    return connection.device || error.Get() != nullptr ? error.Code() : static_cast<KltErrorType>(KltErrorNotFound);
}

/// By then Aravis has parsed the description, but nothing has been evaluated.
Failure ConnectUsb3(const std::string& deviceId, Connection& connection)
{
    if (Failure failure = OpenUsb3(deviceId, connection))
        return failure;
    std::size_t size = 0;
    const char* xml = arv_device_get_genicam_xml(connection.device.get(), &size);
    std::string content = xml == nullptr ? std::string() : std::string(xml, size);
    return connection.Use(std::make_shared<const SafeDescription>(CheckDescription(std::move(content), std::string())));
}

CameraRecord RecordOf(unsigned int index)
{
    CameraRecord record;
    record.id = arv_get_device_id(index);
    record.name = FirstOf({arv_get_device_model(index), record.id.c_str()});
    record.serialNumber =
        FirstOf({arv_get_device_serial_nbr(index), arv_get_device_physical_id(index), record.id.c_str()});
    record.address = FirstOf({arv_get_device_address(index)});
    return record;
}

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

/// Whether a USB3 Vision camera is plugged in that this user may not open. Such a camera is not listed, and nothing
/// else says why.
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

} // namespace

/// Where the network cameras were in the last scan.
struct AravisTransport::Addresses
{
    /// Empty if the camera was not seen.
    std::string Of(const std::string& deviceId)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        return byId[deviceId];
    }

    std::mutex mutex;
    std::map<std::string, std::string> byId;
};

AravisTransport::AravisTransport(bool gige, bool usb3) : m_warnsOfUsb(usb3), m_addresses(std::make_shared<Addresses>())
{
    // Aravis' own fake device is always listed unless it is switched off.
    for (unsigned int i = 0; i < arv_get_n_interfaces(); ++i)
    {
        const std::string interface = arv_get_interface_id(i);
        const bool isChosen = (gige && interface == "GigEVision") || (usb3 && interface == Usb3Vision);
        (isChosen ? arv_enable_interface : arv_disable_interface)(interface.c_str());
    }
}

std::vector<CameraRecord> AravisTransport::Scan()
{
    if (m_warnsOfUsb && IsUsbCameraOutOfReach())
    {
        Report("A USB3 Vision camera is plugged in, but you may not use it. Install 70-kolta-cameras.rules into "
               "/etc/udev/rules.d and plug it in again.");
        m_warnsOfUsb = false;
    }
    arv_update_device_list();
    std::vector<CameraRecord> records;
    std::map<std::string, std::string> addresses;
    const unsigned int count = arv_get_n_devices();
    for (unsigned int i = 0; i < count; ++i)
    {
        if (arv_get_device_id(i) == nullptr)
            continue;
        CameraRecord record = RecordOf(i);
        const bool isUsb3 = std::string(arv_get_device_protocol(i)) == Usb3Vision;
        record.transport = isUsb3 ? "usb3" : "gige";
        record.connect = isUsb3 ? [id = record.id](Connection& connection) { return ConnectUsb3(id, connection); }
                                : GigeConnector(record);
        if (!isUsb3)
            addresses[record.id] = record.address;
        records.push_back(std::move(record));
    }
    const std::lock_guard<std::mutex> lock(m_addresses->mutex);
    m_addresses->byId.swap(addresses);
    return records;
}

Connector AravisTransport::GigeConnector(const CameraRecord& record) const
{
    return [id = record.id, first = record.address, addresses = m_addresses](Connection& connection)
    {
        // Cameras can get another address, and can be missed by a scan.
        const std::string address = addresses->Of(id);
        Failure failure = ConnectGige(address.empty() ? first : address, connection);
        return failure.code == KltErrorTimeout && addresses->Of(id).empty() ? KltErrorNotFound : failure;
    };
}

} // namespace OPX::KltAPI
