#ifndef TEXTS_H
#define TEXTS_H

#include <string>
#include <string_view>

namespace OPX
{
namespace KltAPI
{

/// \a text without control characters: they are replaced by underscores.
std::string WithoutControls(std::string text);

/// \a text without the white space around it.
std::string Trimmed(const std::string& text);
std::string_view Trimmed(std::string_view text);

} // namespace KltAPI
} // namespace OPX

#endif
