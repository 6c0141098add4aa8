#include "Document/DocumentLimits.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <iterator>

namespace OPX::KltAPI
{
namespace
{

/// The parser compares every attribute of an element with all others.
const std::size_t MaximumAttributesOfOne = 200;

/// The encoding in the XML declaration, in lower case.
std::string DeclaredEncoding(const std::string& xml)
{
    const std::size_t end = xml.compare(0, 5, "<?xml") == 0 ? xml.find("?>") : std::string::npos;
    const std::size_t word = xml.find("encoding");
    if (end == std::string::npos || word >= end)
        return std::string();
    const std::size_t begin = xml.find_first_of("'\"", word);
    const std::size_t close = begin < end ? xml.find(xml[begin], begin + 1) : std::string::npos;
    if (close == std::string::npos)
        return std::string();
    std::string encoding = xml.substr(begin + 1, close - begin - 1);
    std::transform(encoding.begin(), encoding.end(), encoding.begin(),
        [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return encoding;
}

/// Whether every ASCII character of the text is one byte, and that byte.
bool HidesNothing(const std::string& xml)
{
    static const char* const encodings[] = {
        "", "utf-8", "us-ascii", "ascii", "iso-8859-1", "iso-8859-15", "windows-1252"};
    return std::find(std::begin(encodings), std::end(encodings), DeclaredEncoding(xml)) != std::end(encodings) &&
           xml.find('\0') == std::string::npos;
}

/// Whether an attribute's value begins after this equals sign.
bool IsAttribute(const std::string& xml, std::size_t equals)
{
    std::size_t next = equals + 1;
    while (next < xml.size() && std::isspace(static_cast<unsigned char>(xml[next])) != 0)
        ++next;
    return next < xml.size() && (xml[next] == '"' || xml[next] == '\'');
}

} // namespace

Problem ProblemOfText(const std::string& xml, int firstLine)
{
    if (!HidesNothing(xml))
        return {"its encoding is not supported"};
    std::size_t attributes = 0;
    std::size_t elements = 0;
    int line = firstLine;
    // Most characters mean nothing here. None is a null.
    const auto next = [&xml](std::size_t from) { return from + std::strcspn(xml.c_str() + from, "\n<=!"); };
    for (std::size_t i = next(0); i < xml.size(); i = next(i + 1))
    {
        if (xml[i] == '\n')
            ++line;
        else if (xml[i] == '<')
        {
            attributes = 0;
            const bool begins = i + 1 < xml.size() && xml[i + 1] != '/' && xml[i + 1] != '!';
            if (begins && ++elements > MaximumSize / SizeOfElement)
                return {"it has too many elements", line};
        }
        else if (xml[i] == '=' && IsAttribute(xml, i) && ++attributes > MaximumAttributesOfOne)
            return {"an element has too many attributes", line};
        else if (xml[i] == '!' && xml.compare(i, 8, "!DOCTYPE") == 0)
            return {"it has a document type declaration", line};
    }
    return Problem();
}

} // namespace OPX::KltAPI
