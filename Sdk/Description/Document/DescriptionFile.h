#ifndef DESCRIPTIONFILE_H
#define DESCRIPTIONFILE_H

#include <string>

namespace OPX::KltAPI
{

/// Reads a regular file of at most `MaximumDocumentSize` bytes. Takes as long as the file system: that of a share whose
/// server is gone does not answer.
/// \return what is wrong, empty if nothing is
std::string ReadFile(const std::string& path, std::string& content);

/// Reads up to the end of an open file, which may also be a pipe or a terminal: what a shell makes of <(command), or
/// the standard input. \return what is wrong, empty if nothing is
std::string ReadStream(int descriptor, std::string& content);

} // namespace OPX::KltAPI

#endif
