#include "Transport/CameraDescription.h"

#include "Document/DocumentLimits.h"
#include "Document/Unzip.h"

namespace OPX::KltAPI
{

Failure ReadBytes(RegisterAccess& camera, std::uint64_t address, std::string& bytes)
{
    Failure failure = camera.ReadMemory(
        address, static_cast<std::uint32_t>(bytes.size()), reinterpret_cast<std::uint8_t*>(&bytes[0]));
    if (!failure || failure.code == KltErrorTimeout || failure.code == KltErrorDeviceNotOpen)
        return failure;
    return {KltErrorOther, {"the camera does not let us read it"}};
}

Failure FetchDescriptionAt(
    RegisterAccess& camera, std::uint64_t address, std::uint64_t size, SafeDescription& description)
{
    if (size > MaximumDocumentSize)
        return {KltErrorOther, {"it is too large"}};
    std::string content(size, '\0');
    if (Failure failure = ReadBytes(camera, address, content))
        return failure;
    // The size can be that of the memory around it, which holds zeros or was never written. An archive may end so.
    if (!IsZip(content))
        content.erase(content.find_last_not_of(std::string("\0\xFF", 2)) + 1);
    description = CheckDescription(std::move(content), std::string());
    return description.problem ? Failure(KltErrorOther, description.problem) : Failure();
}

} // namespace OPX::KltAPI
