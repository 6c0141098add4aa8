#include "Base/Texts.h"

namespace OPX
{
namespace KltAPI
{

std::string WithoutControls(std::string text)
{
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        const auto byte = static_cast<unsigned char>(text[i]);
        const unsigned char next = i + 1 < text.size() ? static_cast<unsigned char>(text[i + 1]) : 0;
        if (byte < 0x20 || byte == 0x7F)
            text[i] = '_';
        else if (byte == 0xC2 && next >= 0x80 && next < 0xA0)
            text.replace(i, 2, "_"); // The second set of control characters: two bytes in UTF-8.
        else if (byte == 0xE2 && next == 0x80 && i + 2 < text.size() &&
                 (static_cast<unsigned char>(text[i + 2]) & 0xFE) == 0xA8)
            text.replace(i, 3, "_"); // Line and paragraph separator.
    }
    return text;
}

std::string Trimmed(const std::string& text)
{
    return std::string(Trimmed(std::string_view(text)));
}

std::string_view Trimmed(std::string_view text)
{
    const char* const space = " \t\r\n";
    const std::size_t begin = text.find_first_not_of(space);
    const std::size_t end = text.find_last_not_of(space);
    return begin == std::string::npos ? std::string_view() : text.substr(begin, end - begin + 1);
}

} // namespace KltAPI
} // namespace OPX
