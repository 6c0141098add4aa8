#include "Transport/GvcpDescription.h"

#include "Document/DocumentLimits.h"
#include "Document/Unzip.h"

#include <cstring>
#include <regex>
#include <string>
#include <utility>

namespace OPX::KltAPI
{
namespace
{

/// Where the two addresses of the description are.
const std::uint32_t AddressRegisters[] = {0x200, 0x400};
const std::uint32_t AddressSize = 512;

Failure ReadText(GvcpChannel& camera, std::uint64_t address, std::string& text)
{
    Failure failure =
        camera.ReadMemory(address, static_cast<std::uint32_t>(text.size()), reinterpret_cast<std::uint8_t*>(&text[0]));
    if (!failure || failure.code == KltErrorTimeout)
        return failure;
    return {KltErrorOther, {"the camera does not let us read it"}};
}

/// Reads the description whose address is in this register.
Failure FetchFrom(GvcpChannel& camera, std::uint32_t addressRegister, SafeDescription& description)
{
    std::string address(AddressSize, '\0');
    if (Failure failure = ReadText(camera, addressRegister, address))
        return failure;
    address.resize(std::strlen(address.c_str()));
    // An address in the camera is like "Local:Camera.zip;F0F00000;2A3B".
    static const std::regex local(
        R"(\s*local:[^;]*;\s*(0x)?([0-9a-f]{1,8})\s*;\s*(0x)?([0-9a-f]{1,8})\s*([?].*)?)", std::regex::icase);
    std::smatch found;
    if (!std::regex_match(address, found, local))
        return {KltErrorOther, {"it is not in the camera"}};
    const std::uint64_t size = std::stoull(found[4], nullptr, 16);
    if (size > MaximumDocumentSize)
        return {KltErrorOther, {"it is too large"}};
    std::string content(size, '\0');
    if (Failure failure = ReadText(camera, std::stoull(found[2], nullptr, 16), content))
        return failure;
    // The size can be that of the memory around it, which holds zeros or was never written. An archive may end so.
    if (!IsZip(content))
        content.erase(content.find_last_not_of(std::string("\0\xFF", 2)) + 1);
    description = CheckDescription(std::move(content), std::string());
    return description.problem ? Failure(KltErrorOther, description.problem) : Failure();
}

} // namespace

Failure FetchDescription(GvcpChannel& camera, SafeDescription& description)
{
    Failure first;
    for (const std::uint32_t addressRegister : AddressRegisters)
    {
        Failure failure = FetchFrom(camera, addressRegister, description);
        if (!failure || failure.code == KltErrorTimeout)
            return failure;
        if (!first)
            first = std::move(failure);
    }
    return first;
}

} // namespace OPX::KltAPI
