#ifndef UNZIP_H
#define UNZIP_H

#include <string>

namespace OPX::KltAPI
{

/// Whether these are the bytes of a zip archive.
bool IsZip(const std::string& content);

/// The first .xml file in a zip archive, in any of its folders.
/// \param problem why there is none, empty if there is
std::string UnzipDescription(const std::string& content, std::string& problem);

} // namespace OPX::KltAPI

#endif
