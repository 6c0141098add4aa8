#ifndef DOCUMENTLIMITS_H
#define DOCUMENTLIMITS_H

#include <cstddef>
#include <string>

namespace OPX
{
namespace KltAPI
{

/// Far above the largest descriptions that cameras have (some megabytes).
const std::size_t MaximumDocumentSize = 64U << 20;

/// In bytes. Registers are a few bytes long, sometimes a few kilobytes.
const long long MaximumRegisterLength = 64LL << 20;

/// Looks for what would cost a parser minutes or gigabytes: entities that multiply, millions of elements, elements with
/// thousands of attributes, encodings in which nobody sees all that. To be asked before anything parses \a xml.
/// \return what is wrong, empty if nothing is
std::string ProblemOfText(const std::string& xml);

} // namespace KltAPI
} // namespace OPX

#endif
