#ifndef DOCUMENTREADER_H
#define DOCUMENTREADER_H

#include "Safety/SafeDescription.h"

#include <string>

namespace OPX::KltAPI
{

/// Reads a whole description once, without keeping it, and checks that it is well-formed, that Aravis' document of it
/// fits into the memory, and that its registers and references are sound.
/// \param firstLine the line of the file in which it begins
/// \param description gets the copies of values, and the model's name if there is one
/// \return what is wrong, empty if nothing is
Problem ProblemOfDocument(const std::string& xml, int firstLine, SafeDescription& description);

} // namespace OPX::KltAPI

#endif
