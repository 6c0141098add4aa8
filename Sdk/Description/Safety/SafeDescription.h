#ifndef SAFEDESCRIPTION_H
#define SAFEDESCRIPTION_H

#include "Document/Problem.h"
#include "Safety/ValueCopies.h"

#include <string>

namespace OPX::KltAPI
{

/// A camera's description that is safe to give to Aravis: well-formed, and without anything that brings down its parser
/// or its evaluation.
struct SafeDescription
{
    std::string xml;       ///< Empty where there is a problem.
    std::string modelName; ///< Human-readable; never empty.
    ValueCopies copies;
    Problem problem; ///< Why the description cannot be used.
};

/// Checks a description, which may be zipped and may have something before its first element.
/// \param content the bytes of the file
/// \param fallbackName the model's name if the description does not name it
SafeDescription CheckDescription(std::string content, const std::string& fallbackName);

/// Reads and checks the file at \a path. Reading errors are problems, too.
SafeDescription ReadDescription(const std::string& path);

} // namespace OPX::KltAPI

#endif
