#include "Document/Texts.h"

#include <algorithm>
#include <iterator>
#include <sstream>

namespace OPX::KltAPI
{

namespace
{

struct Range
{
    char32_t first;
    char32_t last;
};

/// Control characters, and invisible ones that change how others look: separators of lines and paragraphs, directions
/// of writing, fillers, marks of other programs. Joiners of letters stay: some languages cannot be written without
/// them.
const Range NoText[] = {{0, 0x1F}, {0x7F, 0x9F}, {0xAD, 0xAD}, {0x34F, 0x34F}, {0x61C, 0x61C}, {0x115F, 0x1160},
    {0x17B4, 0x17B5}, {0x180B, 0x180F}, {0x200B, 0x200B}, {0x200E, 0x200F}, {0x2028, 0x202E}, {0x2060, 0x206F},
    {0x3164, 0x3164}, {0xFE00, 0xFE0F}, {0xFEFF, 0xFEFF}, {0xFFA0, 0xFFA0}, {0xFFF0, 0xFFFB}, {0xE0000, 0xE0FFF}};

bool IsText(char32_t character)
{
    return std::none_of(std::begin(NoText), std::end(NoText),
        [character](const Range& range) { return character >= range.first && character <= range.last; });
}

/// The character that \a text begins with, and how many bytes it has. A byte that does not begin a character counts as
/// one of its own, as it does for terminals.
char32_t FirstCharacter(std::string_view text, std::size_t& length)
{
    const auto lead = static_cast<unsigned char>(text[0]);
    length =
        lead >= 0xF0 && lead < 0xF5 ? 4 : (lead >= 0xE0 && lead < 0xF0 ? 3 : (lead >= 0xC2 && lead < 0xE0 ? 2 : 1));
    char32_t character = length == 1 ? lead : lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i)
    {
        const auto next = i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
        if ((next & 0xC0U) != 0x80U)
        {
            length = 1;
            return lead;
        }
        character = (character << 6U) | (next & 0x3FU);
    }
    return character;
}

} // namespace

std::string WithoutControls(const std::string& text)
{
    std::string cleaned;
    std::size_t length = 0;
    for (std::string_view rest = text; !rest.empty(); rest.remove_prefix(length))
    {
        if (IsText(FirstCharacter(rest, length)))
            cleaned += rest.substr(0, length);
        else
            cleaned += '_';
    }
    return cleaned;
}

std::string InOneLine(std::string_view text)
{
    std::istringstream words{std::string(text)};
    std::string line;
    for (std::string word; words >> word;)
        line += (line.empty() ? "" : " ") + WithoutControls(word);
    return line;
}

std::string WithoutLineEnd(std::string text)
{
    const std::size_t end = text.find_last_not_of(' ');
    if (end == std::string::npos)
        return text;
    if (text[end] == '\\' || (end >= 2 && text.compare(end - 2, 3, "?\?/") == 0))
        text[end] = '_';
    return text;
}

bool HasExtension(std::string_view text, std::string_view extension)
{
    return text.size() >= extension.size() &&
           std::equal(extension.begin(), extension.end(), text.end() - static_cast<std::ptrdiff_t>(extension.size()),
               [](char wanted, char letter)
               { return wanted == (letter >= 'A' && letter <= 'Z' ? letter - 'A' + 'a' : letter); });
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

} // namespace OPX::KltAPI
