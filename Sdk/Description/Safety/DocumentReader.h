#ifndef DOCUMENTREADER_H
#define DOCUMENTREADER_H

#include <string>

namespace OPX::KltAPI
{

/// Reads a whole description once, without keeping it, and checks that it is well-formed, that Aravis' document of it
/// fits into the memory, and that its registers and references are sound.
/// \param firstLine the line of the file in which it begins
/// \param modelName is replaced by the model's name if the description names it
/// \return what is wrong, empty if nothing is
std::string ProblemOfDocument(const std::string& xml, int firstLine, std::string& modelName);

} // namespace OPX::KltAPI

#endif
