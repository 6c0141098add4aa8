#ifndef MISTAKE_H
#define MISTAKE_H

#include "Document/Texts.h"

#include <string>
#include <string_view>

namespace OPX::KltAPI
{

/// A line that editors understand, as compilers write them: "Camera.xml:7: warning: ...".
/// \param line 0 for the whole file
/// \param text a sentence
inline std::string InFile(const std::string& file, int line, const char* severity, const std::string& text)
{
    return WithoutControls(file) + (line == 0 ? "" : ":" + std::to_string(line)) + ": " + severity + ": " +
           WithoutControls(text);
}

/// Something in a file that is not as its author meant it. The file can be used all the same.
struct Mistake
{
    int line;
    std::string text; ///< A sentence.
};

/// \a text in a message.
inline std::string Quoted(std::string_view text)
{
    return "'" + std::string(text) + "'";
}

} // namespace OPX::KltAPI

#endif
