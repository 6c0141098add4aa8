#include "Transport/GvcpDescription.h"

#include "Document/Texts.h"
#include "Transport/CameraDescription.h"

#include <charconv>
#include <string>
#include <string_view>
#include <system_error>

namespace OPX::KltAPI
{
namespace
{

/// Where the two addresses of the description are.
const std::uint32_t AddressRegisters[] = {0x200, 0x400};
const std::uint32_t TextSize = 512;

/// Takes a number of up to eight hexadecimal digits from the front of \a text, and the white space around it.
bool TakeNumber(std::string_view& text, std::uint64_t& number)
{
    text = Trimmed(text);
    if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X'))
        text.remove_prefix(2);
    const std::string_view digits = text.substr(0, 8);
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
    text = Trimmed(text.substr(static_cast<std::size_t>(read.ptr - digits.data())));
    return read.ec == std::errc();
}

/// Reads an address in the camera, which is like "Local:Camera.zip;F0F00000;2A3B". A question mark may follow, and
/// more.
bool ReadPlace(std::string_view text, std::uint64_t& address, std::uint64_t& size)
{
    text = Trimmed(text);
    const std::size_t nameEnd = text.find(';');
    if (!HasExtension(text.substr(0, 6), "local:") || nameEnd == std::string_view::npos)
        return false;
    text.remove_prefix(nameEnd + 1);
    if (!TakeNumber(text, address) || text.empty() || text[0] != ';')
        return false;
    text.remove_prefix(1);
    return TakeNumber(text, size) && (text.empty() || text[0] == '?');
}

/// Reads the description whose address is in this register.
Failure FetchFrom(GvcpChannel& camera, std::uint32_t addressRegister, SafeDescription& description)
{
    std::string text(TextSize, '\0');
    if (Failure failure = ReadBytes(camera, addressRegister, text))
        return failure;
    std::uint64_t address = 0;
    std::uint64_t size = 0;
    if (!ReadPlace(text.c_str(), address, size))
        return {KltErrorOther, {"it is not in the camera"}};
    return FetchDescriptionAt(camera, address, size, description);
}

} // namespace

Failure FetchDescription(GvcpChannel& camera, SafeDescription& description)
{
    return FetchFirst(AddressRegisters,
        [&](std::uint32_t addressRegister) { return FetchFrom(camera, addressRegister, description); });
}

} // namespace OPX::KltAPI
