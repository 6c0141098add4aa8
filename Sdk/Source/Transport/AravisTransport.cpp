#include "Transport/AravisTransport.h"

#include "Base/Failure.h"
#include "Base/Report.h"
#include "Document/Texts.h"
#include "Nodes/NodeMap.h"
#include "Safety/SafeDescription.h"
#include "Transport/GvcpCamera.h"
#include "Transport/GvcpDescription.h"
#include "Transport/RegisterDevice.h"
#include "Transport/UsbPermissions.h"

#include <arv.h>

#include <map>
#include <mutex>
#include <utility>

namespace OPX::KltAPI
{
namespace
{

const char GigEVision[] = "GigEVision";
const char Usb3Vision[] = "USB3Vision";

void Enable(const char* interface, bool enabled)
{
    if (enabled)
        arv_enable_interface(interface);
    else
        arv_disable_interface(interface);
}

/// The texts that Aravis hands out live until its next listing.
std::string Text(const char* text)
{
    return text == nullptr ? std::string() : WithoutControls(text);
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
    const std::string deviceId = arv_get_device_id(index);
    record.id = deviceId;
    record.name = Text(arv_get_device_model(index));
    if (record.name.empty())
        record.name = Text(deviceId.c_str());
    record.serialNumber = Text(arv_get_device_serial_nbr(index));
    if (record.serialNumber.empty())
        record.serialNumber = Text(arv_get_device_physical_id(index));
    if (record.serialNumber.empty())
        record.serialNumber = Text(deviceId.c_str());
    record.address = Text(arv_get_device_address(index));
    return record;
}

} // namespace

/// Where the network cameras were in the last scan.
class AravisTransport::Addresses
{
public:
    void Replace(std::map<std::string, std::string> addresses)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_addresses.swap(addresses);
    }

    /// Empty if the camera was not seen.
    std::string Of(const std::string& deviceId) const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto found = m_addresses.find(deviceId);
        return found == m_addresses.end() ? std::string() : found->second;
    }

private:
    mutable std::mutex m_mutex;
    std::map<std::string, std::string> m_addresses; ///< By device id.
};

AravisTransport::AravisTransport(bool gige, bool usb3) : m_warnsOfUsb(usb3), m_addresses(std::make_shared<Addresses>())
{
    // Aravis' own fake device is always listed unless it is switched off.
    for (unsigned int i = 0; i < arv_get_n_interfaces(); ++i)
        arv_disable_interface(arv_get_interface_id(i));
    Enable(GigEVision, gige);
    Enable(Usb3Vision, usb3);
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
    m_addresses->Replace(std::move(addresses));
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
