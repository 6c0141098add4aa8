#include "Transport/AravisTransport.h"

#include "Base/ErrorCodes.h"
#include "Base/ParserLock.h"
#include "Base/Report.h"
#include "Base/Texts.h"
#include "Description/CheckedDescription.h"
#include "Transport/UsbPermissions.h"

#include <arv.h>

#include <cstring>

namespace OPX
{
namespace KltAPI
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

/// Aravis has parsed the description, but nothing was evaluated yet.
std::string TakeDescription(Connection& connection)
{
    std::size_t size = 0;
    const char* xml = arv_device_get_genicam_xml(connection.device.get(), &size);
    if (xml == nullptr)
        return "there is none";
    connection.xml.assign(xml, size);
    return CheckDescription(connection.xml, std::string()).problem;
}

KltErrorType Connect(const std::string& deviceId, Connection& connection)
{
    const std::lock_guard<std::mutex> lock(ParserLock());
    CallError error;
    connection.device.reset(arv_open_device(deviceId.c_str(), error.Out()));
    if (!connection.device)
        return error.Get() == nullptr ? static_cast<KltErrorType>(KltErrorNotFound) : CodeOf(error.Get());
    // Who is not in control is let in all the same, and finds out with the first value that is written.
    if (ARV_IS_GV_DEVICE(connection.device.get()) &&
        !arv_gv_device_is_controller(ARV_GV_DEVICE(connection.device.get())))
        return KltErrorInvalidAccess;
    ArvGc* description = arv_device_get_genicam(connection.device.get());
    const std::string problem = TakeDescription(connection);
    if (description == nullptr || !problem.empty())
    {
        Report("The description of " + deviceId + " cannot be used: " + problem);
        return KltErrorOther;
    }
    connection.description.reset(ARV_GC(g_object_ref(description)));
    return KltErrorSuccess;
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
    record.transport = std::string(arv_get_device_protocol(index)) == Usb3Vision ? "usb3" : "gige";
    record.address = Text(arv_get_device_address(index));
    record.connect = [deviceId](Connection& connection) { return Connect(deviceId, connection); };
    return record;
}

} // namespace

AravisTransport::AravisTransport(bool gige, bool usb3) : m_warnsOfUsb(usb3)
{
    // Aravis' own fake device is always there unless it is switched off.
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
    const unsigned int count = arv_get_n_devices();
    for (unsigned int i = 0; i < count; ++i)
        if (arv_get_device_id(i) != nullptr)
            records.push_back(RecordOf(i));
    return records;
}

} // namespace KltAPI
} // namespace OPX
