#include "Transport/UsbTransport.h"

#include "Base/Report.h"
#include "Document/Texts.h"
#include "Transport/RegisterDevice.h"
#include "Transport/U3vChannel.h"
#include "Transport/U3vDescription.h"

#include <array>
#include <utility>

namespace OPX::KltAPI
{
namespace
{

void ReportDenial()
{
    Report("A USB3 Vision camera is plugged in, but you may not use it. Install 70-kolta-cameras.rules into "
           "/etc/udev/rules.d and plug it in again.");
}

/// Whether a device can be asked for more. One that stalls has no such text, or not yet; each further question to one
/// that does not answer would take a second.
bool Answers(int error)
{
    return error == LIBUSB_SUCCESS || error == LIBUSB_ERROR_PIPE;
}

/// Empty if the device has no such text, or does not say it.
std::string TextOf(const UsbHandle& handle, std::uint8_t descriptor, int& error)
{
    std::array<unsigned char, 256> text = {};
    if (descriptor == 0 || !Answers(error))
        return std::string();
    const int result =
        libusb_get_string_descriptor_ascii(handle.get(), descriptor, text.data(), static_cast<int>(text.size()));
    if (result < 0)
        error = result;
    return result < 0 ? std::string() : WithoutControls(reinterpret_cast<const char*>(text.data()));
}

Failure OpenChannel(const UsbDevice& device, U3vChannel& channel)
{
    Failure failure = channel.Open();
    int error = 0;
    if (failure.code == KltErrorInvalidAccess && !OpenUsb(device, error) && error == LIBUSB_ERROR_ACCESS)
        ReportDenial();
    return failure;
}

Failure ConnectUsb(const std::string& id, const std::shared_ptr<Places<UsbDevice>>& devices, Connection& connection)
{
    const UsbDevice device = devices->Of(id);
    if (!device)
        return KltErrorNotFound;
    auto camera = std::make_unique<U3vChannel>(device, connection.deadline);
    const auto description = std::make_shared<SafeDescription>();
    Failure failure = OpenChannel(device, *camera);
    if (!failure)
        failure = FetchDescription(*camera, *description);
    if (failure)
        return failure.code == KltErrorDeviceNotOpen ? KltErrorNotFound : failure;
    // Whoever plugs it in again gets another device.
    connection.isThere = [devices, id, used = device, known = camera.get()]
    { return !known->IsLost() && devices->Of(id) == used; };
    connection.device = NewRegisterDevice(std::move(camera), DeviceKind::Usb3Vision);
    return connection.Use(description);
}

} // namespace

UsbTransport::UsbTransport() : m_bus(std::make_shared<UsbBus>()), m_devices(std::make_shared<Places<UsbDevice>>())
{
}

UsbTransport::~UsbTransport()
{
    m_bus->Unwatch();
}

std::vector<CameraRecord> UsbTransport::Scan()
{
    std::vector<CameraRecord> records;
    std::map<UsbDevice, CameraRecord> known;
    std::map<std::string, UsbDevice> devices;
    for (const UsbDevice& device : m_bus->Devices())
    {
        const auto before = m_known.find(device);
        CameraRecord record;
        int error = 0;
        if (before != m_known.end())
            record = before->second;
        else if (!Read(device, record, error))
            continue;
        if (error == 0)
            known.emplace(device, record);
        devices.emplace(record.id, device);
        records.push_back(std::move(record));
    }
    m_known.swap(known);
    m_devices->Replace(std::move(devices));
    return records;
}

/// \return whether it is a camera that says who it is
bool UsbTransport::Read(const UsbDevice& device, CameraRecord& record, int& error)
{
    const std::optional<ControlInterface> control = ControlInterfaceOf(device);
    libusb_device_descriptor descriptor = {};
    if (!control || libusb_get_device_descriptor(device.get(), &descriptor) != 0)
        return false;
    const UsbHandle handle = OpenUsb(device, error);
    if (error == LIBUSB_ERROR_ACCESS && !std::exchange(m_hasWarned, true))
        ReportDenial();
    if (!handle)
        return false;
    const std::string guid = TextOf(handle, control->guidDescriptor, error);
    const std::string serialNumber = TextOf(handle, descriptor.iSerialNumber, error);
    record.id = TextOf(handle, descriptor.iManufacturer, error) + "-" + guid + "-" + serialNumber;
    const std::string product = TextOf(handle, descriptor.iProduct, error);
    record.name = product.empty() ? record.id : product;
    record.serialNumber = !serialNumber.empty() ? serialNumber : (!guid.empty() ? guid : record.id);
    record.transport = "usb3";
    record.address = "USB3";
    record.connect = [id = record.id, devices = m_devices](Connection& connection)
    { return ConnectUsb(id, devices, connection); };
    return Answers(error);
}

} // namespace OPX::KltAPI
