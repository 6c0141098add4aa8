#include "Transport/GvcpDescription.h"

#include "Base/ErrorCodes.h"
#include "Base/GlibPtr.h"
#include "Document/DocumentLimits.h"
#include "Document/Unzip.h"

#include <cstring>
#include <regex>
#include <string>

namespace OPX::KltAPI
{
namespace
{

/// Where the two addresses of the description are.
const std::uint32_t AddressRegisters[] = {0x200, 0x400};
const std::uint32_t AddressSize = 512;

/// Where the description is.
struct Place
{
    std::uint64_t address;
    std::uint64_t size;
};

/// What an address like "Local:Camera.zip;F0F00000;2A3B" says. \return whether it is one in the camera
bool FindPlace(const std::string& address, Place& place)
{
    static const std::regex local(
        R"(\s*local:[^;]*;\s*(0x)?([0-9a-f]{1,8})\s*;\s*(0x)?([0-9a-f]{1,8})\s*([?].*)?)", std::regex::icase);
    std::smatch found;
    if (!std::regex_match(address, found, local))
        return false;
    place.address = std::stoull(found[2], nullptr, 16);
    place.size = std::stoull(found[4], nullptr, 16);
    return true;
}

KltErrorType Read(GvcpChannel& camera, std::uint64_t address, std::string& content)
{
    CallError error;
    camera.ReadMemory(
        address, static_cast<std::uint32_t>(content.size()), reinterpret_cast<std::uint8_t*>(&content[0]), error.Out());
    return CodeOf(error.Get());
}

/// What the camera delivers at \a place.
KltErrorType ReadContent(GvcpChannel& camera, const Place& place, SafeDescription& description)
{
    if (place.size > MaximumDocumentSize)
    {
        description.problem.text = "it is too large";
        return KltErrorSuccess;
    }
    std::string content(place.size, '\0');
    const KltErrorType result = Read(camera, place.address, content);
    // The size can be that of the memory around it. An archive may end with zeros.
    if (!IsZip(content))
        content.erase(content.find_last_not_of('\0') + 1);
    if (result == KltErrorSuccess)
        description = CheckDescription(content, std::string());
    return result;
}

} // namespace

KltErrorType FetchDescription(GvcpChannel& camera, SafeDescription& description)
{
    SafeDescription first;
    for (const std::uint32_t addressRegister : AddressRegisters)
    {
        description = SafeDescription();
        std::string address(AddressSize, '\0');
        KltErrorType result = Read(camera, addressRegister, address);
        address.resize(std::strlen(address.c_str()));
        Place place{};
        if (result == KltErrorSuccess && !FindPlace(address, place))
            description.problem.text = "it is not in the camera";
        else if (result == KltErrorSuccess)
            result = ReadContent(camera, place, description);
        if (result == KltErrorTimeout)
            return result;
        if (result != KltErrorSuccess)
            description.problem.text = "the camera does not let us read it";
        if (!description.problem)
            return KltErrorSuccess;
        if (!first.problem)
            first = description;
    }
    description = first;
    return KltErrorOther;
}

} // namespace OPX::KltAPI
