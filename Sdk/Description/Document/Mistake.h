#ifndef MISTAKE_H
#define MISTAKE_H

#include "Document/Texts.h"

#include <string>
#include <string_view>

namespace OPX::KltAPI
{

/// Where something stands in a file.
struct Position
{
    int line = 0;   ///< 0 for the whole file.
    int column = 0; ///< 0 for the whole line.
};

/// A line that editors understand, as compilers write them: "Camera.xml:7:3: warning: ...".
/// \param text a sentence
inline std::string InFile(
    const std::string& file, const Position& position, std::string_view severity, const std::string& text)
{
    std::string place = WithoutControls(file);
    for (const int number : {position.line, position.column})
        place += number == 0 ? "" : ":" + std::to_string(number);
    return place + ": " + std::string(severity) + ": " + WithoutControls(text);
}

/// \a text in a message.
inline std::string Quoted(std::string_view text)
{
    return "'" + std::string(text) + "'";
}

} // namespace OPX::KltAPI

#endif
