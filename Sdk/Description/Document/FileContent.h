#ifndef FILECONTENT_H
#define FILECONTENT_H

#include <string>

namespace OPX::KltAPI
{

/// Reads a file of at most `MaximumDocumentSize` bytes. A file that does not answer is given up on after three seconds.
/// \return what is wrong, empty if nothing is
std::string ReadFile(const std::string& path, std::string& content);

} // namespace OPX::KltAPI

#endif
