#include "Transport/GigeTransport.h"

#include "Document/Texts.h"
#include "Transport/GvcpCamera.h"
#include "Transport/GvcpDescription.h"
#include "Transport/RegisterDevice.h"

#include <arv.h>

#include <initializer_list>
#include <utility>

namespace OPX::KltAPI
{
namespace
{

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

/// Of the camera with this id. Cameras can get another address, and can be missed by a scan.
Connector ConnectorOf(
    const std::string& id, const std::string& first, const std::shared_ptr<Places<std::string>>& addresses)
{
    return [=](Connection& connection)
    {
        const std::string address = addresses->Of(id);
        Failure failure = ConnectGige(address.empty() ? first : address, connection);
        return failure.code == KltErrorTimeout && addresses->Of(id).empty() ? KltErrorNotFound : failure;
    };
}

CameraRecord RecordOf(unsigned int index)
{
    CameraRecord record;
    record.id = arv_get_device_id(index);
    record.name = FirstOf({arv_get_device_model(index), record.id.c_str()});
    record.serialNumber =
        FirstOf({arv_get_device_serial_nbr(index), arv_get_device_physical_id(index), record.id.c_str()});
    record.transport = "gige";
    record.address = FirstOf({arv_get_device_address(index)});
    return record;
}

} // namespace

GigeTransport::GigeTransport() : m_addresses(std::make_shared<Places<std::string>>())
{
    // Aravis' own fake device is always listed unless it is switched off.
    for (unsigned int i = 0; i < arv_get_n_interfaces(); ++i)
    {
        const std::string interface = arv_get_interface_id(i);
        (interface == "GigEVision" ? arv_enable_interface : arv_disable_interface)(interface.c_str());
    }
}

std::vector<CameraRecord> GigeTransport::Scan()
{
    arv_update_device_list();
    std::vector<CameraRecord> records;
    std::map<std::string, std::string> addresses;
    const unsigned int count = arv_get_n_devices();
    for (unsigned int i = 0; i < count; ++i)
    {
        if (arv_get_device_id(i) == nullptr)
            continue;
        CameraRecord record = RecordOf(i);
        record.connect = ConnectorOf(record.id, record.address, m_addresses);
        addresses[record.id] = record.address;
        records.push_back(std::move(record));
    }
    m_addresses->Replace(std::move(addresses));
    return records;
}

} // namespace OPX::KltAPI
