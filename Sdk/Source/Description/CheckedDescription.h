#ifndef CHECKEDDESCRIPTION_H
#define CHECKEDDESCRIPTION_H

#include <string>

namespace OPX
{
namespace KltAPI
{

/// A camera's description that Aravis can be given: well-formed, and without anything that takes its parser or its
/// evaluation down.
struct CheckedDescription
{
    std::string xml;       ///< Empty where there is a problem.
    std::string modelName; ///< For people; never empty.
    std::string problem;   ///< Why the description cannot be used; empty if it can.
};

/// Checks a description, which may be zipped and may have something before its first element.
/// \param content the bytes of the file
/// \param fallbackName the model's name where the description does not tell it
CheckedDescription CheckDescription(std::string content, const std::string& fallbackName);

/// Reads and checks the file at \a path. Errors of reading are problems, too.
CheckedDescription ReadDescription(const std::string& path);

} // namespace KltAPI
} // namespace OPX

#endif
